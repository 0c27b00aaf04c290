#include "SamplingAnalysis.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "PercentChange.h"
#include "SampleStatistics.h"

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr double gapSeconds = 60.0;
constexpr std::int64_t fewestTrustedSamples = 3;
/// A battery that gives this many watts for this long cannot honestly stay at one percentage.
constexpr double highDrawWatts = 15.0;
constexpr double flatBatterySeconds = 600.0;
constexpr double leastActiveShare = 0.5;

bool hasLongHighDraw(const PowerSessionDenseWindow& window) {
  return window.averageBatteryDrawWatts && *window.averageBatteryDrawWatts >= highDrawWatts &&
         window.durationSeconds >= flatBatterySeconds;
}

std::string windowConfidence(const PowerSessionDenseWindow& window) {
  if (window.sampleCount < fewestTrustedSamples) {
    return "low-sample";
  }
  // Only percentages that are both known can be suspect: unknown ones raise the flag of the whole
  // session and not the label of the window.
  const bool isFlat = window.batteryPercentDelta == 0;
  return isFlat && hasLongHighDraw(window) ? "suspect-flat-battery" : "dense";
}

PowerSessionDenseWindow denseWindow(std::size_t index, std::span<const BatteryPoint> points) {
  const PercentSpan percents = percentSpan(points);
  const DischargeEnergy energy = dischargeEnergy(points);
  PowerSessionDenseWindow window{.index = static_cast<std::int64_t>(index),
                                 .startedAt = points.front().timestamp,
                                 .endedAt = points.back().timestamp,
                                 .durationSeconds = durationSeconds(points),
                                 .sampleCount = static_cast<std::int64_t>(points.size()),
                                 .medianIntervalSeconds = median(intervals(points)),
                                 .batteryPercentStart = percents.start,
                                 .batteryPercentEnd = percents.end,
                                 .averageBatteryDrawWatts = energy.averageWatts,
                                 .totalWattHours = energy.totalWattHours};
  if (percents.start && percents.end) {
    window.batteryPercentDelta = percentChange(*percents.start, *percents.end);
  }
  window.confidence = windowConfidence(window);
  return window;
}

bool hasFlatBatteryHighDraw(const PowerSessionDenseWindow& window) {
  return hasLongHighDraw(window) && window.batteryPercentDelta.value_or(0) == 0;
}

std::vector<std::string> flags(const PowerSessionSamplingConfidence& confidence,
                               double longestInterval, double maxGap) {
  std::vector<std::string> result;
  if (longestInterval > maxGap) {
    result.emplace_back("long-gaps");
  }
  if (confidence.lowSampleWindowCount > 0) {
    result.emplace_back("low-sample-window");
  }
  if (std::any_of(confidence.denseWindows.begin(), confidence.denseWindows.end(),
                  hasFlatBatteryHighDraw)) {
    result.emplace_back("flat-battery-high-draw");
  }
  const double wallClock = confidence.wallClockDurationSeconds;
  if (wallClock > 0.0 && confidence.activeSampledDurationSeconds < wallClock * leastActiveShare) {
    result.emplace_back("low-active-coverage");
  }
  return result;
}

}  // namespace

std::vector<double> intervals(std::span<const BatteryPoint> points) {
  std::vector<double> result;
  if (points.size() < 2) {
    return result;
  }
  result.reserve(points.size() - 1);
  for (std::size_t i = 1; i < points.size(); ++i) {
    result.push_back(std::max(0.0, secondsBetween(points[i - 1].timestamp, points[i].timestamp)));
  }
  return result;
}

std::vector<PowerSessionDenseWindow> denseWindows(std::span<const BatteryPoint> points,
                                                  double maxGap) {
  std::vector<PowerSessionDenseWindow> windows;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool isLast = i + 1 == points.size();
    if (isLast || secondsBetween(points[i].timestamp, points[i + 1].timestamp) > maxGap) {
      windows.push_back(denseWindow(windows.size(), points.subspan(begin, i + 1 - begin)));
      begin = i + 1;
    }
  }
  return windows;
}

PowerSessionSamplingConfidence samplingConfidence(std::span<const BatteryPoint> points,
                                                  double wallClockDuration, double maxGap) {
  if (points.empty()) {
    return PowerSessionSamplingConfidence::empty();
  }
  PowerSessionSamplingConfidence confidence{
      .wallClockDurationSeconds = wallClockDuration,
      .sampleCount = static_cast<std::int64_t>(points.size())};
  std::vector<double> times = intervals(points);
  double longest = 0.0;
  for (const double seconds : times) {
    longest = std::max(longest, seconds);
    // Two independent questions: an interval of 90 seconds is active time and a gap at once.
    if (seconds <= maxGap) {
      confidence.activeSampledDurationSeconds += seconds;
    }
    if (seconds > gapSeconds) {
      ++confidence.gapsOver60Seconds;
      confidence.totalGapSeconds += seconds;
    }
  }
  confidence.medianIntervalSeconds = median(std::move(times));
  confidence.denseWindows = denseWindows(points, maxGap);
  confidence.lowSampleWindowCount =
      std::count_if(confidence.denseWindows.begin(), confidence.denseWindows.end(),
                    [](const auto& window) { return window.sampleCount < fewestTrustedSamples; });
  confidence.flags = flags(confidence, longest, maxGap);
  return confidence;
}

}  // namespace quorvex::PowerSessionAnalysis
