#include "TracePlot.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

#include "DropdownFormat.h"
#include "SessionFormat.h"

namespace quorvex {

namespace {

using Point = PowerSessionTimelinePoint;

/// What one trace draws, and on which scale.
struct Channel {
  std::vector<std::function<std::optional<double>(const Point&)>> values;  ///< one a line
  std::function<std::string(double)> format;
  bool includesZero = true;
  bool namesLines = false;
  double step = 0.0;  ///< the scale's ends are multiples of it; 0: of a round number
};

/// The smallest round number that is not below `value`, at most half as large again.
double roundNumberAbove(double value) {
  const double magnitude = std::pow(10.0, std::floor(std::log10(value)));
  for (const double factor : {1.0, 1.2, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 8.0}) {
    if (factor * magnitude >= value) {
      return factor * magnitude;
    }
  }
  return 10.0 * magnitude;
}

struct Scale {
  double low = 0.0;
  double high = 1.0;

  [[nodiscard]] double heightOf(double value) const {
    return std::clamp((value - low) / (high - low), 0.0, 1.0);
  }
};

Scale scaleOf(const Channel& channel, std::span<const Point> timeline) {
  std::optional<Scale> range;
  for (const Point& point : timeline) {
    for (const auto& valueOf : channel.values) {
      const std::optional<double> value = valueOf(point);
      if (value && std::isfinite(*value)) {
        range = range ? Scale{std::min(range->low, *value), std::max(range->high, *value)}
                      : Scale{*value, *value};
      }
    }
  }
  if (!range) {
    return {};
  }
  if (channel.includesZero) {
    return {0.0, range->high > 0.0 ? roundNumberAbove(range->high) : 1.0};
  }
  const double low = std::floor(range->low / channel.step) * channel.step;
  const double high = std::ceil(range->high / channel.step) * channel.step;
  return {low, std::max(high, low + channel.step)};
}

/// Places of the timeline's moments between its first and its last.
class TimeAxis {
 public:
  explicit TimeAxis(const PowerSessionReport& report)
      : start_(report.timeline.front().elapsedSeconds),
        length_(report.timeline.back().elapsedSeconds - start_) {
    constexpr double shortestGap = 120.0;
    constexpr double intervalsOfGap = 4.0;
    constexpr double spacingsOfGap = 3.0;
    // A timeline that was thinned has wide spacings of its own.
    const double spacing = length_ / static_cast<double>(report.timeline.size());
    longestStep_ =
        std::max({shortestGap, intervalsOfGap * report.sampleInterval, spacingsOfGap * spacing});
  }

  [[nodiscard]] double positionOf(const Point& point) const {
    return length_ > 0.0 ? (point.elapsedSeconds - start_) / length_ : 0.5;
  }
  [[nodiscard]] bool isGap(const Point& from, const Point& to) const {
    return to.elapsedSeconds - from.elapsedSeconds > longestStep_;
  }

 private:
  double start_;
  double length_;
  double longestStep_ = 0.0;
};

std::vector<std::vector<TracePlot::Point>> runsOf(
    std::span<const Point> timeline, const TimeAxis& axis, const Scale& scale,
    const std::function<std::optional<double>(const Point&)>& valueOf) {
  std::vector<std::vector<TracePlot::Point>> runs;
  const Point* last = nullptr;
  for (const Point& point : timeline) {
    const std::optional<double> value = valueOf(point);
    if (!value || !std::isfinite(*value)) {
      continue;
    }
    if (last == nullptr || axis.isGap(*last, point)) {
      runs.emplace_back();
    }
    runs.back().push_back({axis.positionOf(point), scale.heightOf(*value)});
    last = &point;
  }
  return runs;
}

std::optional<TraceReadout> readoutOf(const Point& point, const Channel& channel,
                                      const TracePlot& plot, const TimeAxis& axis,
                                      const Scale& scale, const ShortTimeFormat& times) {
  TraceReadout readout{.position = axis.positionOf(point), .heights = {}, .text = {}};
  for (std::size_t i = 0; i < channel.values.size(); ++i) {
    const std::optional<double> value = channel.values[i](point);
    if (!value || !std::isfinite(*value)) {
      continue;
    }
    readout.heights.push_back(scale.heightOf(*value));
    readout.text += channel.namesLines
                        ? fmt::format(" · {} {}", plot.lines[i].label, channel.format(*value))
                        : fmt::format(" · {}", channel.format(*value));
  }
  if (readout.heights.empty()) {
    return std::nullopt;
  }
  readout.text = times.text(point.timestamp) + readout.text;
  return readout;
}

TracePlot plotOf(const TraceCard& card, const Channel& channel, const PowerSessionReport& report,
                 const ShortTimeFormat& times) {
  TracePlot plot{.title = card.title,
                 .value = card.value,
                 .accessibilityText = card.accessibilityText,
                 .emptyText = card.sparkline.emptyText,
                 .lines = {},
                 .topText = {},
                 .bottomText = {},
                 .startText = {},
                 .endText = {},
                 .readouts = {}};
  if (card.sparkline.lines.empty() || report.timeline.empty()) {
    return plot;
  }
  const TimeAxis axis(report);
  const Scale scale = scaleOf(channel, report.timeline);
  for (std::size_t i = 0; i < channel.values.size(); ++i) {
    const auto& line = card.sparkline.lines[std::min(i, card.sparkline.lines.size() - 1)];
    plot.lines.push_back(
        {line.label, line.color, runsOf(report.timeline, axis, scale, channel.values[i])});
  }
  for (const Point& point : report.timeline) {
    if (auto readout = readoutOf(point, channel, plot, axis, scale, times)) {
      plot.readouts.push_back(std::move(*readout));
    }
  }
  plot.topText = channel.format(scale.high);
  plot.bottomText = channel.format(scale.low);
  plot.startText = times.text(report.timeline.front().timestamp);
  plot.endText = times.text(report.timeline.back().timestamp);
  return plot;
}

std::vector<Channel> channels(bool useFahrenheit) {
  constexpr double step = 5.0;  // percent, and degrees Celsius
  const auto percentOf = [](const Point& point) {
    return point.batteryPercent ? std::optional{static_cast<double>(*point.batteryPercent)}
                                : std::nullopt;
  };
  return {
      {.values = {&Point::watts}, .format = DropdownFormat::formatWatts},
      {.values = {percentOf},
       .format = [](double percent) { return fmt::format("{:.0f}%", percent); },
       .includesZero = false,
       .step = step},
      {.values = {&Point::maxTemperature},
       .format =
           [useFahrenheit](double celsius) {
             return SessionFormat::temperatureText(celsius, useFahrenheit);
           },
       .includesZero = false,
       .step = step},
      {.values = {&Point::bytesInPerSec, &Point::bytesOutPerSec},
       .format = [](double rate) { return formatBytesPerSec(rate, appByteStyle); },
       .namesLines = true},
  };
}

}  // namespace

std::vector<TracePlot> tracePlots(std::span<const TraceCard> cards,
                                  const PowerSessionReport& report, bool useFahrenheit,
                                  const ShortTimeFormat& times) {
  const std::vector<Channel> all = channels(useFahrenheit);
  std::vector<TracePlot> plots;
  for (std::size_t i = 0; i < std::min(cards.size(), all.size()); ++i) {
    plots.push_back(plotOf(cards[i], all[i], report, times));
  }
  return plots;
}

std::optional<TraceReadout> nearestReadout(const TracePlot& plot, double position, int steps) {
  const auto& readouts = plot.readouts;
  if (readouts.empty()) {
    return std::nullopt;
  }
  auto nearest = std::ranges::lower_bound(readouts, position, std::less{}, &TraceReadout::position);
  if (nearest == readouts.end() ||
      (nearest != readouts.begin() &&
       position - (nearest - 1)->position <= nearest->position - position)) {
    --nearest;
  }
  const auto last = static_cast<std::ptrdiff_t>(readouts.size()) - 1;
  const auto place = std::clamp<std::ptrdiff_t>(nearest - readouts.begin() + steps, 0, last);
  return readouts.at(static_cast<std::size_t>(place));
}

}  // namespace quorvex
