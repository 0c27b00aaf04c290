#include "ChargeAnalysis.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr std::size_t fewestObservedSamples = 3;
constexpr std::array<std::int64_t, 5> milestonePercents{70, 80, 90, 95, 100};

std::vector<BatteryPoint> chargingPoints(std::span<const BatteryPoint> points) {
  std::vector<BatteryPoint> charging;
  std::copy_if(points.begin(), points.end(), std::back_inserter(charging),
               [](const BatteryPoint& point) { return point.chargeInputWatts.has_value(); });
  return charging;
}

PowerSessionChargeRun chargeRun(std::size_t index, std::span<const BatteryPoint> points) {
  const PercentSpan percents = percentSpan(points);
  double sum = 0.0;
  for (const BatteryPoint& point : points) {
    sum += point.chargeInputWatts.value_or(0.0);
  }
  return {.index = static_cast<std::int64_t>(index),
          .startedAt = points.front().timestamp,
          .endedAt = points.back().timestamp,
          .elapsedSeconds = durationSeconds(points),
          .sampleCount = static_cast<std::int64_t>(points.size()),
          .batteryPercentStart = percents.start,
          .batteryPercentEnd = percents.end,
          .averageChargeInputWatts = sum / static_cast<double>(points.size()),
          .confidence = points.size() >= fewestObservedSamples ? "observed" : "low-sample"};
}

std::vector<PowerSessionChargeRun> chargeRuns(std::span<const BatteryPoint> charging,
                                              double maxGap) {
  std::vector<PowerSessionChargeRun> runs;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < charging.size(); ++i) {
    const bool isLast = i + 1 == charging.size();
    if (isLast || secondsBetween(charging[i].timestamp, charging[i + 1].timestamp) > maxGap) {
      runs.push_back(chargeRun(runs.size(), charging.subspan(begin, i + 1 - begin)));
      begin = i + 1;
    }
  }
  return runs;
}

/// One milestone a target that was reached. A session that begins past several targets shows the
/// same point for each: the battery was at or past them when it was first seen charging.
std::vector<PowerSessionChargeMilestone> milestones(std::span<const BatteryPoint> charging) {
  std::vector<PowerSessionChargeMilestone> reached;
  for (const std::int64_t target : milestonePercents) {
    const auto found = std::find_if(
        charging.begin(), charging.end(),
        [target](const BatteryPoint& point) { return point.percent && *point.percent >= target; });
    if (found != charging.end()) {
      reached.push_back({.percent = target,
                         .timestamp = found->timestamp,
                         .inputWatts = found->chargeInputWatts});
    }
  }
  return reached;
}

}  // namespace

PowerSessionChargeBehavior chargeBehavior(std::span<const BatteryPoint> points, double maxGap) {
  // Filtered before it is cut, so that a short pause in the charging does not end a run.
  const std::vector<BatteryPoint> charging = chargingPoints(points);
  if (charging.empty()) {
    return PowerSessionChargeBehavior::empty();
  }
  return {.chargeRuns = chargeRuns(charging, maxGap),
          .taperMilestones = milestones(charging),
          .note =
              "Charge-input watts are battery charge flow, not discharge watts or total system "
              "load."};
}

}  // namespace quorvex::PowerSessionAnalysis
