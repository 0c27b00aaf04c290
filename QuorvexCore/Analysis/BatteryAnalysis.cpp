#include "BatteryAnalysis.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "CheckedArithmetic.h"
#include "PercentChange.h"

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr double shortestStrongRunSeconds = 300.0;
constexpr std::size_t fewestStrongRunSamples = 3;
constexpr double milliPerUnit = 1000.0;

std::optional<PowerSessionBatteryRun> batteryRun(std::size_t index,
                                                 std::span<const BatteryPoint> points) {
  // The run stands on its own ends: percentages further in say nothing about the whole of it.
  if (!points.front().percent || !points.back().percent) {
    return std::nullopt;
  }
  const DischargeEnergy energy = dischargeEnergy(points);
  PowerSessionBatteryRun run{
      .index = static_cast<std::int64_t>(index),
      .startedAt = points.front().timestamp,
      .endedAt = points.back().timestamp,
      .durationSeconds = durationSeconds(points),
      .sampleCount = static_cast<std::int64_t>(points.size()),
      .batteryPercentStart = *points.front().percent,
      .batteryPercentEnd = *points.back().percent,
      .batteryPercentDelta = percentChange(*points.front().percent, *points.back().percent),
      .averageDrawWatts = energy.averageWatts.value_or(0.0),
      .totalWattHours = energy.totalWattHours,
      .confidence = "low"};
  if (run.durationSeconds >= shortestStrongRunSeconds && points.size() >= fewestStrongRunSamples &&
      run.batteryPercentDelta < 0) {
    run.confidence = "strong";
    if (run.totalWattHours) {
      const double drainedShare = -static_cast<double>(run.batteryPercentDelta) / 100.0;
      run.estimatedUsableFullBatteryWattHours = *run.totalWattHours / drainedShare;
    }
  }
  return run;
}

/// Movement of the percentage between successive points that have one.
class PercentMovement {
 public:
  void ingest(std::int64_t percent) {
    if (!first_) {
      first_ = lowest_ = highest_ = percent;
    } else if (percent > last_) {
      gained_ = saturatingAdd(gained_, distance(last_, percent));
    } else {
      discharged_ = saturatingAdd(discharged_, distance(percent, last_));
    }
    lowest_ = std::min(lowest_, percent);
    highest_ = std::max(highest_, percent);
    last_ = percent;
  }

  [[nodiscard]] bool isEmpty() const { return !first_; }

  void write(PowerSessionBatteryCycleInsights& insights) const {
    insights.totalPercentGained = signedValue(gained_);
    insights.totalPercentDischarged = signedValue(discharged_);
    insights.netPercent = percentChange(*first_, last_);
    insights.lowestPercent = lowest_;
    insights.highestPercent = highest_;
  }

 private:
  /// Exact also where the signed difference would overflow.
  static std::uint64_t distance(std::int64_t lower, std::int64_t upper) {
    return static_cast<std::uint64_t>(upper) - static_cast<std::uint64_t>(lower);
  }

  static std::int64_t signedValue(std::uint64_t value) {
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(std::min(value, static_cast<std::uint64_t>(largest)));
  }

  std::optional<std::int64_t> first_;
  std::int64_t last_ = 0;
  std::int64_t lowest_ = 0;
  std::int64_t highest_ = 0;
  std::uint64_t gained_ = 0;
  std::uint64_t discharged_ = 0;
};

/// The capacities (mAh) of the first battery reading, as energy at the mean voltage of all.
void addReportedCapacities(std::span<const Observation> observations,
                           PowerSessionBatteryCycleInsights& insights) {
  const ObservedBattery* first = nullptr;
  double voltageSum = 0.0;
  std::size_t readings = 0;
  for (const Observation& observation : observations) {
    if (observation.snapshot && observation.snapshot->battery) {
      const ObservedBattery& battery = *observation.snapshot->battery;
      first = first == nullptr ? &battery : first;
      voltageSum += battery.voltage;
      ++readings;
    }
  }
  if (first == nullptr) {
    return;
  }
  const double meanVoltage = voltageSum / static_cast<double>(readings);
  insights.reportedFullChargeCapacityWattHours =
      meanVoltage * static_cast<double>(first->maxCapacity) / milliPerUnit;
  insights.reportedDesignCapacityWattHours =
      meanVoltage * static_cast<double>(first->designCapacity) / milliPerUnit;
  insights.reportedHealthPercent = first->healthPercent;
}

/// Judges the runs: only strong ones say anything about a full battery, each once, however long.
void addEstimate(PowerSessionBatteryCycleInsights& insights) {
  std::size_t strongRuns = 0;
  std::size_t estimates = 0;
  double sum = 0.0;
  for (const PowerSessionBatteryRun& run : insights.dischargeRuns) {
    if (run.confidence == "strong") {
      ++strongRuns;
      if (run.estimatedUsableFullBatteryWattHours) {
        ++estimates;
        sum += *run.estimatedUsableFullBatteryWattHours;
      }
    }
  }
  if (estimates > 0) {
    insights.estimatedUsableFullBatteryWattHours = sum / static_cast<double>(estimates);
  }
  if (strongRuns > 0) {
    insights.confidence = "derived-from-continuous-discharge";
  } else {
    insights.confidence = "insufficient-continuous-discharge";
    insights.note =
        "Continuous unplugged data was too sparse or too short for usable full-battery Wh.";
  }
}

}  // namespace

std::vector<PowerSessionBatteryRun> dischargeRuns(std::span<const BatteryPoint> points,
                                                  double maxGap) {
  std::vector<PowerSessionBatteryRun> runs;
  std::size_t groups = 0;
  std::size_t begin = 0;
  const auto closeGroup = [&](std::size_t end) {
    if (begin < end) {
      if (auto run = batteryRun(groups, points.subspan(begin, end - begin))) {
        runs.push_back(*std::move(run));
      }
      ++groups;
    }
  };
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!points[i].dischargeWatts) {
      closeGroup(i);
      begin = i + 1;
    } else if (begin < i && secondsBetween(points[i - 1].timestamp, points[i].timestamp) > maxGap) {
      closeGroup(i);
      begin = i;
    }
  }
  closeGroup(points.size());
  return runs;
}

std::optional<PowerSessionBatteryCycleInsights> batteryInsights(
    std::span<const Observation> observations, std::span<const BatteryPoint> points,
    double maxGap) {
  PercentMovement movement;
  for (const BatteryPoint& point : points) {
    if (point.percent) {
      movement.ingest(*point.percent);
    }
  }
  if (movement.isEmpty()) {
    return std::nullopt;
  }
  PowerSessionBatteryCycleInsights insights;
  movement.write(insights);
  insights.dischargeRuns = dischargeRuns(points, maxGap);
  addEstimate(insights);
  addReportedCapacities(observations, insights);
  return insights;
}

}  // namespace quorvex::PowerSessionAnalysis
