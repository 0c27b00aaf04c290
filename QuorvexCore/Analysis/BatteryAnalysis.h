#pragma once

#include <optional>
#include <span>
#include <vector>

#include "BatteryTrack.h"
#include "Observation.h"
#include "PowerSessionBatteryCycleInsights.h"

/// What the battery did over a session. Pure functions; any thread; points and observations in
/// ascending order of time, `maxGap` in seconds.
namespace quorvex::PowerSessionAnalysis {

/// The stretches of unbroken discharge: a point without discharge watts ends one, and so does an
/// interval above `maxGap`. A stretch whose first or last point has no percentage gives no run and
/// leaves a hole in the numbering.
[[nodiscard]] std::vector<PowerSessionBatteryRun> dischargeRuns(
    std::span<const BatteryPoint> points, double maxGap);

/// How the percentage moved and, from strong runs only, what a full battery delivers. `points` is
/// the track of `observations`. Absent without any percentage.
[[nodiscard]] std::optional<PowerSessionBatteryCycleInsights> batteryInsights(
    std::span<const Observation> observations, std::span<const BatteryPoint> points, double maxGap);

}  // namespace quorvex::PowerSessionAnalysis
