#include "Sparkline.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace quorvex {

namespace {

/// The lowest and the highest value of a graph, at the bottom and at the top of it.
struct Scale {
  double low = 0.0;
  double high = 0.0;

  /// Halves keep the difference of any two finite values finite.
  [[nodiscard]] double height(double value) const {
    const double range = high / 2 - low / 2;
    if (range > 0.0) {
      return (value / 2 - low / 2) / range;
    }
    // Equal values: zeros lie on the ground, others in the middle.
    return high == 0.0 ? 0.0 : 0.5;
  }
};

Scale scaleOf(std::span<const SparklineSeries> series, bool includesZero) {
  std::optional<Scale> scale;
  if (includesZero) {
    scale = Scale{};
  }
  for (const SparklineSeries& line : series) {
    for (const double value : line.values) {
      if (!std::isfinite(value)) {
        continue;
      }
      scale = scale ? Scale{std::min(scale->low, value), std::max(scale->high, value)}
                    : Scale{value, value};
    }
  }
  return scale.value_or(Scale{});
}

std::vector<SparklineContent::Point> pointsOf(const std::vector<double>& values,
                                              const Scale& scale) {
  std::vector<SparklineContent::Point> points;
  points.reserve(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (std::isfinite(values[i])) {
      // A single value is the newest one.
      const double position = values.size() == 1
                                  ? 1.0
                                  : static_cast<double>(i) / static_cast<double>(values.size() - 1);
      points.push_back({position, scale.height(values[i])});
    }
  }
  return points;
}

}  // namespace

SparklineSeries sparklineSeries(std::size_t place, std::string label, std::vector<double> values,
                                ColorName color) {
  UUID::Bytes bytes{};
  bytes.back() = static_cast<std::uint8_t>(place + 1);
  return {UUID{bytes}, std::move(label), std::move(values), color};
}

SparklineContent sparklineContent(const Sparkline& sparkline) {
  SparklineContent content;
  content.label = sparkline.label;
  content.accessibilityLabel = sparkline.label.empty() ? "Graph" : sparkline.label + " graph";

  std::vector<SparklineSeries> series = sparkline.series;
  if (series.empty() && !sparkline.values.empty()) {
    series.push_back(sparklineSeries(0, sparkline.label, sparkline.values, ColorName::blue));
  }
  if (series.empty()) {
    content.emptyText = "Collecting data...";
    return content;
  }
  const Scale scale = scaleOf(series, sparkline.includesZero);
  content.lines.reserve(series.size());
  for (const SparklineSeries& line : series) {
    content.lines.push_back({line.id, line.label, line.color, pointsOf(line.values, scale)});
  }
  return content;
}

std::vector<double> throughputHistory(std::span<const SystemPowerState> history) {
  std::vector<double> values;
  for (const SystemPowerState& state : history) {
    if (state.network) {
      values.push_back(state.network->totalBytesInPerSec() + state.network->totalBytesOutPerSec());
    }
  }
  return values;
}

std::vector<double> totalPowerHistory(std::span<const SystemPowerState> history) {
  std::vector<double> values;
  for (const SystemPowerState& state : history) {
    if (const std::optional<PowerReading> reading = state.primaryPowerReading()) {
      values.push_back(reading->watts);
    }
  }
  return values;
}

}  // namespace quorvex
