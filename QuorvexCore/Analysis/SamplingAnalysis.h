#pragma once

#include <span>
#include <vector>

#include "BatteryTrack.h"
#include "PowerSessionSamplingConfidence.h"

/// How far a session's samples cover its time. Pure functions; any thread; points in ascending
/// order of time, times in seconds.
namespace quorvex::PowerSessionAnalysis {

/// The times between neighbours, never negative; one fewer than there are points.
[[nodiscard]] std::vector<double> intervals(std::span<const BatteryPoint> points);

/// The points cut wherever two neighbours lie further apart than `maxGap`; every point is in
/// exactly one window.
[[nodiscard]] std::vector<PowerSessionDenseWindow> denseWindows(
    std::span<const BatteryPoint> points, double maxGap);

/// The windows, the gaps between samples, and the flags that name what makes a session
/// untrustworthy. Without points the empty record, whatever the duration.
[[nodiscard]] PowerSessionSamplingConfidence samplingConfidence(
    std::span<const BatteryPoint> points, double wallClockDuration, double maxGap);

}  // namespace quorvex::PowerSessionAnalysis
