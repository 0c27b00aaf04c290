#pragma once

#include <string>
#include <vector>

#include "PowerSessionReport.h"
#include "Sparkline.h"

namespace quorvex {

/// One figure of a session, with a line on what it is.
struct MetricTile {
  std::string label;
  std::string value;
  std::string detail;
  std::string accessibilityText;

  bool operator==(const MetricTile&) const = default;
};

/// Duration, battery, rate, average, peak, energy, thermal, fans, network.
[[nodiscard]] std::vector<MetricTile> metricTiles(const PowerSessionReport& report,
                                                  bool useFahrenheit);

/// "120 samples · 2.0s/sample": the interval that came about, unlike the one configured.
[[nodiscard]] std::string sampleIntervalDetail(const PowerSessionSummary& summary);
/// "80% to 62%" or "--".
[[nodiscard]] std::string batteryRangeText(const PowerSessionSummary& summary);
/// "Peak 1.5 MB/s / --".
[[nodiscard]] std::string networkPeakText(const PowerSessionSummary& summary);

/// The course of one figure over a session.
struct TraceCard {
  std::string title;
  std::string value;
  SparklineContent sparkline;
  std::string accessibilityText;  ///< the course in words: how many values, and their range

  bool operator==(const TraceCard&) const = default;
};

/// Power, battery, temperature, network.
[[nodiscard]] std::vector<TraceCard> traceGrid(const PowerSessionReport& report,
                                               bool useFahrenheit);

/// Received and sent bytes a second; empty when both have fewer than 2 values.
[[nodiscard]] std::vector<SparklineSeries> networkSeries(
    const std::vector<PowerSessionTimelinePoint>& timeline);

}  // namespace quorvex
