#include "AdvancedMetrics.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "CheckedArithmetic.h"

namespace quorvex {

namespace {

using OptionalSnapshot = std::optional<ProTelemetrySnapshot>;

/// The stretch of time in which the displayed total stays the same.
class UnchangedStretch {
 public:
  void add(std::string_view kind, double watts, Date timestamp) {
    constexpr double sameWatts = 0.05;
    const bool continues = startedAt_ && kind == kind_ && std::abs(watts - watts_) <= sameWatts;
    if (!continues) {
      kind_ = kind;
      watts_ = watts;
      startedAt_ = timestamp;
    }
  }

  [[nodiscard]] std::optional<Date> startedAt() const { return startedAt_; }

 private:
  std::string kind_;
  double watts_ = 0.0;
  std::optional<Date> startedAt_;
};

std::string rawBatteryText(const BatteryInfo& battery) {
  return fmt::format("{:.3f}V x {:.3f}A = {:.1f}W", battery.voltage, battery.amperage,
                     battery.wattage);
}

std::string energyChannelsText(const std::optional<PowerMetrics>& power) {
  if (!power) {
    return "No CPU/GPU/ANE/DRAM energy channels returned";
  }
  return fmt::format("CPU {:.1f}W, GPU {:.1f}W, ANE {:.1f}W, DRAM {:.1f}W", power->cpuPower,
                     power->gpuPower, power->anePower, power->ramPower);
}

std::string ageText(Date then, Date now) {
  return AdvancedMetricsFormat::formatDuration(secondsBetween(then, now));
}

ProcessFiguresRow figuresRow(std::string name, std::vector<std::string> figures) {
  std::string words = fmt::format("{}: {}", name, fmt::join(figures, ", "));
  return {std::move(name), std::move(figures), std::move(words)};
}

ProcessFiguresRow processActivityRow(const ProcessActivityInfo& process) {
  std::vector<std::string> figures;
  if (process.energyWattsEstimate) {
    figures.push_back(fmt::format("{:.2f}W est", *process.energyWattsEstimate));
  }
  figures.push_back(fmt::format("{:.0f}% CPU", process.cpuPercent));
  if (process.wakeupsPerSecond >= 1.0) {
    figures.push_back(fmt::format("{:.0f} wake/s", process.wakeupsPerSecond));
  }
  return figuresRow(process.name, std::move(figures));
}

ProcessFiguresRow proProcessRow(const ProProcessEnergy& process) {
  std::vector<std::string> figures{fmt::format("pid {}", process.pid)};
  if (process.energyImpact) {
    figures.push_back(fmt::format("EI {:.1f}", *process.energyImpact));
  }
  if (process.cpuTimePercent) {
    figures.push_back(fmt::format("{:.0f}% CPU", *process.cpuTimePercent));
  }
  return figuresRow(process.name, std::move(figures));
}

ProTelemetrySection proTelemetrySection(const ProTelemetrySnapshot& snapshot, Date now) {
  ProTelemetrySection section{
      .heading = "Pro Telemetry",
      .rows = {{"Source", snapshot.source}, {"Sample age", ageText(snapshot.sampledAt, now)}}};
  if (snapshot.rawSampleSummary) {
    section.rows.push_back({"Power keys", *snapshot.rawSampleSummary});
  }
  if (snapshot.error) {
    section.error = ColoredText{*snapshot.error, ColorName::orange};
  }
  for (const ProProcessEnergy& process : snapshot.processes) {
    section.processes.push_back(proProcessRow(process));
  }
  if (section.processes.empty()) {
    section.emptyText = "No privileged process energy rows returned";
  }
  return section;
}

}  // namespace

AdvancedMetrics advancedMetrics(const SystemPowerState& state,
                                std::span<const SystemPowerState> history,
                                const OptionalSnapshot& proTelemetry,
                                const ProcessSamplerState& sampler, Date now) {
  AdvancedMetrics metrics{
      .heading = "Source & Trust",
      .rows = {{"Source", powerSourceTitle(state, proTelemetry, now)},
               {"Sample age", ageText(state.timestamp, now)},
               {"Value unchanged", valueUnchangedDescription(state, history, proTelemetry, now)}},
      .activityHeading = "Top Activity Estimate",
      .activityCaption =
          "Ranked by process CPU time, wakeups, I/O, and any macOS energy counter "
          "available without sudo. This is a contributor hint, not exact watts."};
  if (state.battery) {
    metrics.rows.push_back({"Raw battery", rawBatteryText(*state.battery)});
  }
  metrics.rows.push_back({"IOReport", energyChannelsText(state.power)});
  for (const ProcessActivityInfo& process : sampler.activities) {
    metrics.activities.push_back(processActivityRow(process));
  }
  if (metrics.activities.empty()) {
    metrics.activityEmptyText = sampler.status.value_or("No process activity sample yet");
  }
  if (proTelemetry) {
    metrics.proTelemetry = proTelemetrySection(*proTelemetry, now);
  }
  return metrics;
}

std::string valueUnchangedDescription(const SystemPowerState& state,
                                      std::span<const SystemPowerState> history,
                                      const OptionalSnapshot& proTelemetry, Date now) {
  const std::optional<DisplayPowerReading> current = currentPowerReading(state, proTelemetry, now);
  if (!current) {
    return "N/A";
  }
  UnchangedStretch stretch;
  for (const SystemPowerState& entry : history) {
    if (const std::optional<PowerReading> reading = entry.primaryPowerReading()) {
      stretch.add(rawValue(reading->kind), reading->watts, entry.timestamp);
    }
  }
  stretch.add(current->kind, current->watts, state.timestamp);
  return ageText(stretch.startedAt().value_or(state.timestamp), now);
}

std::optional<std::string> ProcessSampler::statusAfterSampling(
    std::span<const ProcessActivityInfo> activities) {
  if (activities.empty()) {
    return "No accessible process activity counters";
  }
  return std::nullopt;
}

double ProcessSampler::sleepSeconds(double refreshInterval) {
  constexpr double shortest = 2.0;
  return refreshInterval > shortest ? refreshInterval : shortest;
}

std::string AdvancedMetricsFormat::formatDuration(double seconds) {
  // The longest duration that is worded is well within 64 bits.
  constexpr double longest = 1e15;
  if (!(seconds >= 1.0)) {
    return "<1s";
  }
  if (seconds < 60.0) {
    return fmt::format("{:.0f}s", std::round(seconds));
  }
  const std::int64_t whole = checkedTruncate(std::min(seconds, longest));
  return fmt::format("{}m {}s", whole / 60, whole % 60);
}

}  // namespace quorvex
