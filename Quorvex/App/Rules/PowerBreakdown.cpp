#include "PowerBreakdown.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "DropdownFormat.h"
#include "PowerSourceDescription.h"

namespace quorvex {

namespace {

using OptionalSnapshot = std::optional<ProTelemetrySnapshot>;

constexpr double freshSeconds = ProTelemetrySnapshot::defaultFreshnessWindow;
constexpr std::string_view privilegedLabel = "Pro Telemetry silicon power";
constexpr std::string_view privilegedSummary = "Privileged powermetrics CPU/GPU/ANE sample";

std::optional<double> privilegedTotal(const OptionalSnapshot& proTelemetry, Date now) {
  return proTelemetry ? proTelemetry->freshPowerTotal(now, freshSeconds) : std::nullopt;
}

PowerBar componentBar(std::string label, double watts, double maxWatts) {
  return powerBar(std::move(label), watts, maxWatts, componentTint(watts));
}

std::vector<PowerBar> componentBreakdown(const SystemPowerState& state, double maxWatts) {
  std::vector<PowerBar> bars{componentBar("CPU", state.power->cpuPower, maxWatts),
                             componentBar("GPU", state.power->gpuPower, maxWatts),
                             componentBar("ANE", state.power->anePower, maxWatts),
                             componentBar("DRAM", state.power->ramPower, maxWatts)};
  if (const std::optional<double> residual = state.unattributedPower()) {
    bars.push_back(componentBar(state.siliconChannelsComplete() ? "Other" : "Other (incomplete)",
                                *residual, maxWatts));
  }
  return bars;
}

std::vector<PowerBar> proTelemetryBreakdown(const ProTelemetrySnapshot& snapshot, double maxWatts) {
  std::vector<PowerBar> bars;
  const auto add = [&](const char* label, std::optional<double> watts) {
    if (watts) {
      bars.push_back(componentBar(label, *watts, maxWatts));
    }
  };
  add("CPU", snapshot.cpuPowerWatts);
  add("GPU", snapshot.gpuPowerWatts);
  add("ANE", snapshot.anePowerWatts);
  return bars;
}

}  // namespace

DisplayPowerReading displayPowerReading(const PowerReading& reading) {
  const bool isSilicon = reading.kind == PowerReadingKind::ioReportSiliconPower;
  return {.watts = reading.watts,
          .kind = std::string{rawValue(reading.kind)},
          .label = reading.label,
          .summary = reading.summary,
          .barLabel = isSilicon ? "Silicon" : "Battery",
          .isChargeInput = reading.kind == PowerReadingKind::batteryChargeInput};
}

std::optional<DisplayPowerReading> currentPowerReading(const SystemPowerState& state,
                                                       const OptionalSnapshot& proTelemetry,
                                                       Date now) {
  if (const std::optional<PowerReading> reading = state.primaryPowerReading()) {
    return displayPowerReading(*reading);
  }
  if (const std::optional<double> total = privilegedTotal(proTelemetry, now)) {
    return DisplayPowerReading{.watts = *total,
                               .kind = "proTelemetrySiliconPower",
                               .label = std::string{privilegedLabel},
                               .summary = std::string{privilegedSummary},
                               .barLabel = "Silicon",
                               .isChargeInput = false};
  }
  return std::nullopt;
}

std::string powerSourceTitle(const SystemPowerState& state, const OptionalSnapshot& proTelemetry,
                             Date now) {
  const std::optional<DisplayPowerReading> reading = currentPowerReading(state, proTelemetry, now);
  return reading ? reading->label : std::string{powerSourceLabel(state)};
}

std::string powerSourceSummary(const SystemPowerState& state, const OptionalSnapshot& proTelemetry,
                               Date now) {
  if (const std::optional<DisplayPowerReading> reading =
          currentPowerReading(state, proTelemetry, now)) {
    return reading->summary;
  }
  return state.battery && state.battery->acConnected
             ? "Battery is full on AC; controller reports 0W"
             : "No usable power source";
}

double maxComponentWatts(const SystemPowerState& state, const OptionalSnapshot& proTelemetry,
                         Date now) {
  double largest = 1.0;
  // The comparison leaves NaN out.
  const auto include = [&largest](std::optional<double> watts) {
    if (watts && *watts > largest) {
      largest = *watts;
    }
  };
  if (state.power) {
    include(state.power->cpuPower);
    include(state.power->gpuPower);
    include(state.power->anePower);
    include(state.power->ramPower);
  }
  if (proTelemetry) {
    include(proTelemetry->cpuPowerWatts);
    include(proTelemetry->gpuPowerWatts);
    include(proTelemetry->anePowerWatts);
  }
  include(state.unattributedPower());
  if (const std::optional<DisplayPowerReading> reading =
          currentPowerReading(state, proTelemetry, now)) {
    include(reading->watts);
  }
  return largest;
}

ColorName componentTint(double watts) {
  return DropdownFormat::colorForWatts(watts, false);
}

PowerBar powerBar(std::string label, double watts, double maxWatts, ColorName tint) {
  const double share = maxWatts > 0.0 ? watts / maxWatts : 0.0;
  PowerBar bar{.label = std::move(label),
               .value = DropdownFormat::formatWatts(watts),
               .fraction = std::isnan(share) ? 0.0 : std::clamp(share, 0.0, 1.0),
               .tint = tint};
  bar.accessibilityText = bar.label + ": " + bar.value;
  return bar;
}

PowerBreakdown powerBreakdown(const SystemPowerState& state,
                              std::span<const SystemPowerState> history,
                              const OptionalSnapshot& proTelemetry, Date now) {
  const std::optional<DisplayPowerReading> reading = currentPowerReading(state, proTelemetry, now);
  const double maxWatts = maxComponentWatts(state, proTelemetry, now);

  PowerBreakdown breakdown{.total = {"--", ColorName::secondary},
                           .title = powerSourceTitle(state, proTelemetry, now),
                           .summary = powerSourceSummary(state, proTelemetry, now)};
  if (reading) {
    breakdown.total = {DropdownFormat::formatWatts(reading->watts),
                       DropdownFormat::colorForWatts(reading->watts, reading->isChargeInput)};
    breakdown.bar = powerBar(reading->barLabel, reading->watts, maxWatts, ColorName::green);
  }
  if (std::vector<double> totals = totalPowerHistory(history); !totals.empty()) {
    breakdown.history = sparklineContent({.values = std::move(totals), .label = "Total Power"});
  }
  if (state.power) {
    breakdown.components = componentBreakdown(state, maxWatts);
  } else if (privilegedTotal(proTelemetry, now)) {
    breakdown.components = proTelemetryBreakdown(*proTelemetry, maxWatts);
  } else {
    breakdown.unavailableSymbol = "info.circle";
    breakdown.unavailableText = "Component attribution unavailable for this source";
  }
  breakdown.accessibilityText =
      fmt::format("Total power {}, {}. {}", reading ? breakdown.total.text : "not available",
                  breakdown.title, breakdown.summary);
  return breakdown;
}

}  // namespace quorvex
