#include "BatteryTrack.h"

#include <algorithm>

#include "WattHours.h"

namespace quorvex {

std::vector<BatteryPoint> batteryTrack(std::span<const Observation> observations) {
  std::vector<BatteryPoint> track;
  track.reserve(observations.size());
  for (const Observation& observation : observations) {
    BatteryPoint& point = track.emplace_back(BatteryPoint{
        .timestamp = observation.columns.timestamp, .percent = observation.batteryPercent()});
    if (!observation.snapshot) {
      continue;
    }
    const ObservedSnapshot& snapshot = *observation.snapshot;
    if (snapshot.batteryDischargeWatts && observation.sourceKind() == "batteryDischarge") {
      point.dischargeWatts = snapshot.batteryDischargeWatts;
    } else if (snapshot.batteryChargeInputWatts &&
               observation.sourceKind() == "batteryChargeInput") {
      point.chargeInputWatts = snapshot.batteryChargeInputWatts;
    }
  }
  return track;
}

PercentSpan percentSpan(std::span<const BatteryPoint> points) {
  const auto isPresent = [](const BatteryPoint& point) { return point.percent.has_value(); };
  const auto first = std::find_if(points.begin(), points.end(), isPresent);
  if (first == points.end()) {
    return {};
  }
  const auto last = std::find_if(points.rbegin(), points.rend(), isPresent);
  return {.start = first->percent, .end = last->percent};
}

double durationSeconds(std::span<const BatteryPoint> points) {
  return points.empty()
             ? 0.0
             : std::max(0.0, secondsBetween(points.front().timestamp, points.back().timestamp));
}

DischargeEnergy dischargeEnergy(std::span<const BatteryPoint> points) {
  std::vector<WattPoint> watts;
  watts.reserve(points.size());
  double sum = 0.0;
  for (const BatteryPoint& point : points) {
    if (point.dischargeWatts) {
      watts.push_back({.timestamp = point.timestamp, .watts = *point.dischargeWatts});
      sum += *point.dischargeWatts;
    }
  }
  if (watts.empty()) {
    return {};
  }
  return {.averageWatts = sum / static_cast<double>(watts.size()),
          .totalWattHours = wattHours(watts)};
}

}  // namespace quorvex
