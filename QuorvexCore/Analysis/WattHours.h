#pragma once

#include <optional>
#include <span>

#include "Date.h"

/// Energy from irregular power samples: between two neighbours in time the mean of their watts
/// holds (trapezoids). Pure functions; any thread; points may come in any order.
namespace quorvex {

/// Power at a moment.
struct WattPoint {
  Date timestamp{};
  double watts = 0.0;

  bool operator==(const WattPoint&) const = default;
};

/// Energy of those intervals that are short enough to be believed.
struct CoveredWattHours {
  std::optional<double> wattHours;  ///< absent when no interval was used
  bool hasGap = false;              ///< an interval exceeded the limit and was left out

  bool operator==(const CoveredWattHours&) const = default;
};

/// The longest time in seconds over which two neighbouring samples of a session are joined:
/// 4 sample intervals, but 120 seconds when that is less, or when the interval is below 1 second.
[[nodiscard]] double maxSampleGap(double sampleInterval);

/// Energy in watt-hours over all intervals, however long; absent with fewer than two points. Points
/// of one instant give 0.
[[nodiscard]] std::optional<double> wattHours(std::span<const WattPoint> points);

/// Energy in watt-hours over the intervals of at most `maxGap` seconds. Points of one instant make
/// no interval.
[[nodiscard]] CoveredWattHours wattHours(std::span<const WattPoint> points, double maxGap);

/// The energy in watt-hours of one interval that begins with `from` watts and ends with `to`.
[[nodiscard]] constexpr double trapezoidWattHours(double from, double to, double seconds) {
  return (from + to) / 2.0 * seconds / 3600.0;
}

}  // namespace quorvex
