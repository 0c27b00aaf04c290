#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Appearance.h"
#include "LocalizedDate.h"
#include "PowerSessionReport.h"
#include "SessionTiles.h"

namespace quorvex {

/// What a trace says at one moment.
struct TraceReadout {
  double position = 0.0;        ///< of the time, 0 to 1 from left to right
  std::vector<double> heights;  ///< of the values that are there, 0 to 1 from bottom to top
  std::string text;             ///< the time and the values

  bool operator==(const TraceReadout&) const = default;
};

/// A trace of the report, drawn over the session's time, with its scale and its values in words.
struct TracePlot {
  struct Point {
    double position = 0.0;
    double height = 0.0;
    bool operator==(const Point&) const = default;
  };
  struct Line {
    std::string label;
    ColorName color = ColorName::primary;
    /// Stretches without a gap: nothing is known of the time between two of them.
    std::vector<std::vector<Point>> runs;
    bool operator==(const Line&) const = default;
  };

  std::string title;
  std::string value;
  std::string accessibilityText;
  std::string emptyText;    ///< in place of the lines; empty when there are some
  std::vector<Line> lines;  ///< on one scale
  std::string topText;      ///< the value at the top of the scale
  std::string bottomText;
  std::string startText;  ///< the time at the left
  std::string endText;
  std::vector<TraceReadout> readouts;  ///< ascending positions

  bool operator==(const TracePlot&) const = default;
};

/// The plots of the report's traces, in their order: power, battery, temperature, network. `cards`
/// are those of the same report.
[[nodiscard]] std::vector<TracePlot> tracePlots(std::span<const TraceCard> cards,
                                                const PowerSessionReport& report,
                                                bool useFahrenheit, const ShortTimeFormat& times);

/// The readout next to a position, or the one `steps` after it; the last or the first where there
/// are not as many. None without values.
[[nodiscard]] std::optional<TraceReadout> nearestReadout(const TracePlot& plot, double position,
                                                         int steps = 0);

}  // namespace quorvex
