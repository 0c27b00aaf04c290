#include "WattHours.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "WattHoursAccumulator.h"

namespace quorvex {

namespace {

constexpr double shortestGapLimit = 120.0;
constexpr double shortestScaledInterval = 1.0;
constexpr double intervalsInGapLimit = 4.0;

bool isEarlier(const WattPoint& left, const WattPoint& right) {
  return left.timestamp < right.timestamp;
}

/// The points in ascending order of time; copied into `storage` only when they are not so yet.
std::span<const WattPoint> sortedByTime(std::span<const WattPoint> points,
                                        std::vector<WattPoint>& storage) {
  if (std::is_sorted(points.begin(), points.end(), isEarlier)) {
    return points;
  }
  storage.assign(points.begin(), points.end());
  std::stable_sort(storage.begin(), storage.end(), isEarlier);
  return storage;
}

}  // namespace

double maxSampleGap(double sampleInterval) {
  const double scaled = intervalsInGapLimit * sampleInterval;
  return scaled >= shortestGapLimit && sampleInterval >= shortestScaledInterval ? scaled
                                                                                : shortestGapLimit;
}

std::optional<double> wattHours(std::span<const WattPoint> points) {
  if (points.size() < 2) {
    return std::nullopt;
  }
  std::vector<WattPoint> storage;
  const auto sorted = sortedByTime(points, storage);
  double total = 0.0;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    total += trapezoidWattHours(sorted[i - 1].watts, sorted[i].watts,
                                secondsBetween(sorted[i - 1].timestamp, sorted[i].timestamp));
  }
  return total;
}

CoveredWattHours wattHours(std::span<const WattPoint> points, double maxGap) {
  WattHoursAccumulator energy{maxGap};
  std::vector<WattPoint> storage;
  for (const WattPoint& point : sortedByTime(points, storage)) {
    energy.ingest(point);
  }
  return {.wattHours = energy.coveredWattHours(), .hasGap = energy.hasGap()};
}

}  // namespace quorvex
