#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "Observation.h"
#include "PowerSegmentAccumulator.h"
#include "PowerSessionSummary.h"
#include "PowerSourceDescription.h"
#include "ProTelemetrySnapshot.h"
#include "SessionFacts.h"
#include "SystemPowerState.h"
#include "WattHours.h"

/// What stored samples come to: how long, how much energy on which sources, what was hot, which
/// processes and apps stood out. Pure functions; any thread.
namespace quorvex::PowerSessionMetrics {

// The words for a live state's source stand with the other functions here.
using quorvex::powerSourceKind;
using quorvex::powerSourceLabel;
using quorvex::totalWatts;
using quorvex::totalWattsConfidence;
using quorvex::wattHours;

/// Why a session's energy is withheld. Views compare a summary's notes with it.
inline constexpr std::string_view sparsePowerCoverageNote =
    "Large sampling gaps; energy totals unavailable.";
inline constexpr std::string_view mixedPowerSourcesNote =
    "Mixed power sources; use powerSegments for per-source averages.";

/// Rows of a summary's contributors and network apps.
inline constexpr std::size_t topCount = 5;

/// Names under which powermetrics reports groups, not processes.
inline constexpr std::array<std::string_view, 2> knownAggregateProcessNames{"ALL_TASKS",
                                                                            "DEAD_TASKS"};
[[nodiscard]] constexpr bool isKnownAggregate(std::string_view processName) {
  return std::find(knownAggregateProcessNames.begin(), knownAggregateProcessNames.end(),
                   processName) != knownAggregateProcessNames.end();
}

/// The figure that ranks a row of the privileged telemetry: the first present of energy impact, CPU
/// time and wakeups.
[[nodiscard]] std::optional<double> contributorScore(const ProProcessEnergy& process);

/// The point of a live state. Its texts are static.
[[nodiscard]] PowerSamplePoint livePowerPoint(const SystemPowerState& state);

/// The columns that are stored with a live state; its elapsed seconds are not known here and 0.
[[nodiscard]] SampleColumns liveColumns(const SystemPowerState& state);

/// The point of a stored sample: time and watts from the columns, the source as it was recorded.
/// Where the snapshot names none it is inferred from battery and silicon, and where it does not
/// decode from the columns. Its texts are the observation's or static.
[[nodiscard]] PowerSamplePoint storedPowerPoint(const Observation& observation);

/// The segments of points in ascending order of time.
[[nodiscard]] std::vector<PowerSessionPowerSegment> powerSegments(
    std::span<const PowerSamplePoint> points, std::optional<double> maxSampleGap);

/// The summary of a session over its samples, in any order; `PowerSessionSummary::empty` without
/// samples. A stopped session lasts until its stop and not until its last sample.
[[nodiscard]] PowerSessionSummary summary(const SessionFacts& session,
                                          std::span<const Observation> observations);

}  // namespace quorvex::PowerSessionMetrics
