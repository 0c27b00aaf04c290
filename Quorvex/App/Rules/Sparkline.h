#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Appearance.h"
#include "SystemPowerState.h"
#include "UUID.h"

namespace quorvex {

/// One line of a small graph, oldest value first.
struct SparklineSeries {
  UUID id;  ///< the same for the same line in every reading, see `sparklineSeries`
  std::string label;
  std::vector<double> values;
  ColorName color = ColorName::primary;

  bool operator==(const SparklineSeries&) const = default;
};

/// A series whose identity is its place among the lines of its graph, so that a new reading moves
/// the line and does not replace it.
[[nodiscard]] SparklineSeries sparklineSeries(std::size_t place, std::string label,
                                              std::vector<double> values, ColorName color);

/// What a small graph is made of. With a `series`, `values` are ignored.
struct Sparkline {
  std::vector<double> values;
  std::string label;
  std::vector<SparklineSeries> series;
  /// Whether the scale begins at 0, as the magnitude of powers and rates demands. Temperatures have
  /// no such origin.
  bool includesZero = true;

  bool operator==(const Sparkline&) const = default;
};

/// A small graph as it is drawn, without axes.
struct SparklineContent {
  /// A point: `position` runs from 0 (oldest) to 1 (newest), `height` from 0 (bottom) to 1 (top).
  struct Point {
    double position = 0.0;
    double height = 0.0;

    bool operator==(const Point&) const = default;
  };
  struct Line {
    UUID id;
    std::string label;
    ColorName color = ColorName::primary;
    std::vector<Point> points;  ///< one scale for all lines; values that are not finite left out

    bool operator==(const Line&) const = default;
  };

  std::string label;
  std::vector<Line> lines;  ///< empty when there is nothing to draw
  std::string emptyText;    ///< in place of the lines; empty when there are some
  std::string accessibilityLabel;

  bool operator==(const SparklineContent&) const = default;
};

[[nodiscard]] SparklineContent sparklineContent(const Sparkline& sparkline);

/// Bytes a second in both directions, of the readings that have a network snapshot.
[[nodiscard]] std::vector<double> throughputHistory(std::span<const SystemPowerState> history);

/// Watts of the readings that have a primary power reading.
[[nodiscard]] std::vector<double> totalPowerHistory(std::span<const SystemPowerState> history);

}  // namespace quorvex
