#include "SessionOutput.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

#include "ByteFormat.h"
#include "Date.h"
#include "PowerSessionMetrics.h"
#include "RawEnum.h"
#include "Text.h"

namespace quorvex {

namespace {

constexpr std::string_view separator = " · ";
constexpr std::size_t mostFamilies = 5;
constexpr std::size_t timeRangeWidth = 22;
constexpr std::size_t phaseWidth = 28;

/// "2026-01-31 09:30:05 +0000".
std::string dateText(Date date) {
  std::string text = iso8601(date);
  text.pop_back();
  std::ranges::replace(text, 'T', ' ');
  return text + " +0000";
}

/// A value in the form given, or what stands for its absence.
template <typename Value>
std::string valueOr(fmt::format_string<const Value&> form, const std::optional<Value>& value,
                    std::string_view absent) {
  return value ? fmt::format(form, *value) : std::string{absent};
}

std::string displayText(PowerSessionThermalDigest::Verdict verdict) {
  using Verdict = PowerSessionThermalDigest::Verdict;
  switch (verdict) {
    case Verdict::cool:
      return "Cool";
    case Verdict::warm:
      return "Warm";
    case Verdict::hotControlled:
      return "Hot (controlled)";
    case Verdict::throttled:
      return "Throttling";
  }
  return {};
}

/// Why the whole session has no such figure: nothing was sampled, samples lie too far apart, or it
/// ran on several sources, whose segments have theirs.
std::string withheld(const PowerSessionSummary& summary, const std::optional<std::string>& note,
                     std::string_view unit) {
  if (note == PowerSessionMetrics::sparsePowerCoverageNote) {
    return fmt::format("sparse {}", unit);
  }
  return summary.powerSegments.size() < 2 ? fmt::format("{} unavailable", unit)
                                          : fmt::format("segmented {}", unit);
}

std::string sampleIntervalLine(const PowerSessionReport& report) {
  const PowerSessionSummary& summary = report.summary;
  if (summary.sampleCount < 2 || summary.durationSeconds <= 0.0) {
    return fmt::format("Sample interval: {:.1f}s\n", report.sampleInterval);
  }
  return fmt::format("Sample interval: configured {:.1f}s · effective {:.2f}s avg\n",
                     report.sampleInterval,
                     summary.durationSeconds / static_cast<double>(summary.sampleCount - 1));
}

std::string consistencyLines(std::span<const PowerSessionTelemetryConsistencyCheck> checks) {
  std::string text = checks.empty() ? "" : "Telemetry consistency:\n";
  for (const auto& check : checks) {
    text +=
        fmt::format("  {}: {} ({} samples)\n", check.severity, check.message, check.sampleCount);
  }
  return text;
}

std::string contributorLines(std::span<const PowerSessionContributor> contributors) {
  std::string single;
  std::vector<std::string_view> aggregates;
  for (const PowerSessionContributor& item : contributors) {
    if (item.isAggregate) {
      aggregates.push_back(item.name);
    } else {
      single += fmt::format("  {} ({}, {}): {:.1f}\n", item.name, item.source, item.confidence,
                            item.score);
    }
  }
  std::string text = single.empty() ? "" : "Top contributors:\n" + single;
  if (!aggregates.empty()) {
    text += fmt::format("  Aggregate rows: {}\n", fmt::join(aggregates, ", "));
  }
  return text;
}

std::string familyLines(std::span<const PowerSessionProcessFamilySummary> families) {
  std::string text = families.empty() ? "" : "Process families (relative observed impact):\n";
  for (const auto& family : families.first(std::min(families.size(), mostFamilies))) {
    text += fmt::format("  {}: {:.1f}\n", family.family, family.score);
  }
  return text;
}

std::string overheadLine(const PowerSessionMeasurementOverhead& overhead) {
  if (!overhead.observed) {
    return {};
  }
  const std::string share = overhead.overheadFraction
                                ? fmt::format("{:.0f}%", *overhead.overheadFraction * 100.0)
                                : "unknown";
  return fmt::format("Measurement overhead observed: {} of process impact ({})\n", share,
                     fmt::join(overhead.processNames, ", "));
}

std::string networkLines(std::span<const PowerSessionNetworkAppUsage> apps) {
  std::string text = apps.empty() ? ""
                                  : "Peak network activity (observed counters, not power "
                                    "causality):\n";
  for (const auto& app : apps) {
    text += fmt::format("  {} ({}): ↓{} ↑{}\n", app.name, app.source,
                        formatBytes(app.totalBytesIn, ByteFormatStyle::si),
                        formatBytes(app.totalBytesOut, ByteFormatStyle::si));
  }
  return text;
}

std::string chargeRunText(const PowerSessionChargeRun& run) {
  const std::string percents =
      run.batteryPercentStart && run.batteryPercentEnd
          ? fmt::format("{}%→{}%", *run.batteryPercentStart, *run.batteryPercentEnd)
          : "unknown %";
  return percents + ", " +
         valueOr("{:.1f}W avg input", run.averageChargeInputWatts, "input unavailable");
}

}  // namespace

std::string formatSession(const PowerSessionReport& report, const PowerSessionStory* story) {
  const PowerSessionSummary& summary = report.summary;
  std::string text =
      fmt::format("{}\nID: {}\nStatus: {}\nStarted: {}\n", report.title, report.sessionID.text(),
                  report.status, dateText(report.startedAt));
  if (report.endedAt) {
    text += fmt::format("Ended: {}\n", dateText(*report.endedAt));
  }
  text += formatSummary(summary) + "\n";
  text += sampleIntervalLine(report);
  text += formatSamplingConfidence(summary.samplingConfidence) + "\n";
  text += consistencyLines(summary.telemetryConsistencyChecks);
  if (summary.batteryInsights) {
    text += formatBatteryInsights(*summary.batteryInsights) + "\n";
  }
  if (!summary.chargeBehavior.chargeRuns.empty()) {
    text += formatChargeBehavior(summary.chargeBehavior.chargeRuns,
                                 summary.chargeBehavior.taperMilestones) +
            "\n";
  }
  text += formatThermalDigest(report.thermalDigest) + "\n";
  text += formatThermalSummary(summary.thermalSummary) + "\n";
  if (story != nullptr) {
    text += formatStory(*story);
  }
  text += contributorLines(summary.topContributors);
  text += familyLines(summary.processFamilies);
  text += overheadLine(summary.measurementOverhead);
  text += networkLines(summary.topNetworkApps);
  return text;
}

std::string formatListLine(const PowerSession& session, const PowerSessionSummary& summary) {
  return fmt::format("{}  {}  {}  {}\n", session.id().text(), rawValue(session.status()),
                     session.title(), formatSummary(summary));
}

std::string formatSummary(const PowerSessionSummary& summary) {
  return fmt::format(
      "{:.0f}s, {}, {}, {}, {} samples", std::round(summary.durationSeconds),
      valueOr("{:.1f}W avg", summary.averageWatts,
              withheld(summary, summary.averageWattsNote, "avg")),
      valueOr("{:.3f}Wh", summary.totalWattHours,
              withheld(summary, summary.totalWattHoursNote, "Wh")),
      valueOr("{}% battery", summary.batteryPercentDelta, "battery delta unavailable"),
      summary.sampleCount);
}

std::string formatSamplingConfidence(const PowerSessionSamplingConfidence& confidence) {
  std::vector<std::string> parts{
      fmt::format("Sampling: wall {:.0f}s", confidence.wallClockDurationSeconds),
      fmt::format("active {:.0f}s", confidence.activeSampledDurationSeconds),
      fmt::format("{} samples", confidence.sampleCount)};
  if (confidence.medianIntervalSeconds) {
    parts.push_back(fmt::format("median {:.1f}s", *confidence.medianIntervalSeconds));
  }
  if (confidence.gapsOver60Seconds >= 1) {
    parts.push_back(fmt::format("{} gaps >60s ({:.0f}s)", confidence.gapsOver60Seconds,
                                confidence.totalGapSeconds));
  }
  if (!confidence.flags.empty()) {
    parts.push_back(fmt::format("flags {}", fmt::join(confidence.flags, ",")));
  }
  return fmt::format("{}", fmt::join(parts, separator));
}

std::string formatBatteryInsights(const PowerSessionBatteryCycleInsights& insights) {
  std::vector<std::string> parts{
      fmt::format("Battery cycle: {}% discharged", insights.totalPercentDischarged),
      fmt::format("{}% gained", insights.totalPercentGained),
      fmt::format("net {:+}%", insights.netPercent)};
  if (insights.estimatedUsableFullBatteryWattHours) {
    parts.push_back(fmt::format("usable {:.1f}Wh", *insights.estimatedUsableFullBatteryWattHours));
  }
  if (insights.reportedHealthPercent) {
    parts.push_back(fmt::format("reported health {}%", *insights.reportedHealthPercent));
  }
  return fmt::format("{}", fmt::join(parts, separator));
}

std::string formatChargeBehavior(std::span<const PowerSessionChargeRun> runs,
                                 std::span<const PowerSessionChargeMilestone> milestones) {
  std::vector<std::string> runTexts;
  for (const PowerSessionChargeRun& run : runs) {
    runTexts.push_back(chargeRunText(run));
  }
  std::string text = fmt::format("Charge behavior: {}", fmt::join(runTexts, "; "));
  if (!milestones.empty()) {
    std::vector<std::string> milestoneTexts;
    for (const PowerSessionChargeMilestone& milestone : milestones) {
      milestoneTexts.push_back(
          fmt::format("{}% {}", milestone.percent, valueOr("{:.1f}W", milestone.inputWatts, "--")));
    }
    text += fmt::format(" · taper {}", fmt::join(milestoneTexts, ", "));
  }
  return text;
}

std::string formatThermalDigest(const PowerSessionThermalDigest& digest) {
  constexpr double secondsInMinute = 60.0;
  std::string text =
      fmt::format("Thermal: peak {}, {}", valueOr("{:.0f}°C", digest.peakTemperatureCelsius, "--"),
                  displayText(digest.verdict));
  if (digest.timeAbove80C > 0.0) {
    text += fmt::format("{}{:.0f} min >80°C", separator, digest.timeAbove80C / secondsInMinute);
  }
  if (digest.thermalPressureWasTriggered) {
    text += fmt::format("{}pressure level {}", separator, digest.maxThermalPressure);
  }
  return text;
}

std::string formatThermalSummary(const PowerSessionThermalSummary& summary) {
  return fmt::format(
      "Thermal detail: {} · {} · {} · {}",
      valueOr("{:.0f}°C median", summary.medianMaxSensorTemperatureCelsius, "median --"),
      valueOr("{:.0f}°C p95", summary.p95MaxSensorTemperatureCelsius, "p95 --"),
      valueOr("{} RPM max fan", summary.maxFanRPM, "fan --"), summary.verdict);
}

std::string formatStory(const PowerSessionStory& story) {
  std::string text = fmt::format("Story: {}\n", story.headline);
  for (const PowerSessionStory::Episode& episode : story.episodes) {
    text += fmt::format("  {}  {}  {}\n", text::paddedOrCut(episode.timeRange, timeRangeWidth),
                        text::paddedOrCut(episode.phase, phaseWidth), episode.narrative);
    for (const std::string& highlight : episode.highlights) {
      text += fmt::format("    {}\n", highlight);
    }
  }
  return text;
}

}  // namespace quorvex
