#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Appearance.h"
#include "Date.h"
#include "PowerBreakdown.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "SystemPowerState.h"

namespace quorvex {

/// A process and its figures.
struct ProcessFiguresRow {
  std::string name;
  std::vector<std::string> figures;
  std::string accessibilityText;

  bool operator==(const ProcessFiguresRow&) const = default;
};

/// The privileged sample in full.
struct ProTelemetrySection {
  std::string heading;
  std::vector<LabelledValue> rows;
  std::optional<ColoredText> error;
  std::vector<ProcessFiguresRow> processes;
  std::string emptyText;  ///< in place of the processes; empty when there are some

  bool operator==(const ProTelemetrySection&) const = default;
};

/// Where the total comes from, how far to trust it, and which processes contribute. Below the power
/// breakdown, while the user wants advanced metrics.
struct AdvancedMetrics {
  std::string heading;
  std::vector<LabelledValue> rows;
  std::string activityHeading;
  std::string activityCaption;
  std::vector<ProcessFiguresRow> activities;
  std::string activityEmptyText;  ///< in place of the activities; empty when there are some
  std::optional<ProTelemetrySection> proTelemetry;

  bool operator==(const AdvancedMetrics&) const = default;
};

/// What the process sampler has: its last list, and what it is doing if that is to be told.
struct ProcessSamplerState {
  std::vector<ProcessActivityInfo> activities;
  std::optional<std::string> status;
};

[[nodiscard]] AdvancedMetrics advancedMetrics(
    const SystemPowerState& state, std::span<const SystemPowerState> history,
    const std::optional<ProTelemetrySnapshot>& proTelemetry, const ProcessSamplerState& sampler,
    Date now);

/// For how long the displayed total has stayed the same (within 0.05 W and of one kind), which
/// exposes a battery controller that no longer updates. "N/A" without a total.
[[nodiscard]] std::string valueUnchangedDescription(
    const SystemPowerState& state, std::span<const SystemPowerState> history,
    const std::optional<ProTelemetrySnapshot>& proTelemetry, Date now);

/// The process sampler runs while the power breakdown is visible and advanced metrics are wanted:
/// it tells `samplingStatus`, samples, tells `statusAfterSampling`, sleeps, and begins anew.
namespace ProcessSampler {
inline constexpr std::string_view samplingStatus = "Sampling process activity...";

/// Absent unless the sample was empty.
[[nodiscard]] std::optional<std::string> statusAfterSampling(
    std::span<const ProcessActivityInfo> activities);

/// Seconds between two samples: the refresh interval, and at least 2.
[[nodiscard]] double sleepSeconds(double refreshInterval);
}  // namespace ProcessSampler

namespace AdvancedMetricsFormat {
/// An age in seconds: "<1s", rounded "15s" below a minute, then cut "1m 15s". 59.6 reads "60s".
[[nodiscard]] std::string formatDuration(double seconds);
}  // namespace AdvancedMetricsFormat

}  // namespace quorvex
