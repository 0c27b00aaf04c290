#include "SessionTiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "ByteFormat.h"
#include "CheckedArithmetic.h"
#include "DropdownFormat.h"
#include "SessionFormat.h"

namespace quorvex {

namespace {

using Timeline = std::vector<PowerSessionTimelinePoint>;

MetricTile tile(std::string label, std::string value, std::string detail) {
  std::string words = fmt::format("{}: {}, {}", label, value, detail);
  return {std::move(label), std::move(value), std::move(detail), std::move(words)};
}

/// In place of a figure of the whole session.
std::string withheldValue(const PowerSessionReport& report) {
  return report.hasMixedPowerSources() ? "Per phase" : std::string{absentValue};
}

std::string averageText(const PowerSessionReport& report) {
  return report.summary.averageWatts ? SessionFormat::wattsText(report.summary.averageWatts)
                                     : withheldValue(report);
}

std::string energyText(const PowerSessionReport& report) {
  return report.summary.totalWattHours ? fmt::format("{:.2f}Wh", *report.summary.totalWattHours)
                                       : withheldValue(report);
}

/// What a figure of the whole session is, or why there is none.
std::string coverageDetail(const PowerSessionReport& report, std::string_view otherwise) {
  if (SessionFormat::hasSparsePowerCoverage(report.summary)) {
    return "Sparse samples";
  }
  return report.hasMixedPowerSources() ? "Mixed sources" : std::string{otherwise};
}

std::string rateText(const PowerSessionReport& report) {
  const std::optional<double> rate = report.batteryPercentPerHour();
  return rate ? fmt::format("{:+.1f}%/h", *rate) : std::string{absentValue};
}

std::string fansText(const PowerSessionSummary& summary) {
  return summary.maxFanRPM ? fmt::format("{} RPM", *summary.maxFanRPM) : std::string{absentValue};
}

std::string peakTemperatureText(const PowerSessionReport& report, bool useFahrenheit) {
  return SessionFormat::temperatureText(report.thermalDigest.peakTemperatureCelsius, useFahrenheit);
}

std::string rateOrAbsent(std::optional<double> bytesPerSecond) {
  return bytesPerSecond ? formatBytesPerSec(*bytesPerSecond, appByteStyle)
                        : std::string{absentValue};
}

/// The values of the points that have one.
template <typename Value>
std::vector<double> presentValues(const Timeline& timeline,
                                  std::optional<Value> PowerSessionTimelinePoint::*field) {
  std::vector<double> values;
  for (const PowerSessionTimelinePoint& point : timeline) {
    if (const std::optional<Value>& value = point.*field) {
      values.push_back(static_cast<double>(*value));
    }
  }
  return values;
}

/// Lowest and highest of the finite values.
std::optional<std::pair<double, double>> rangeOf(const std::vector<double>& values) {
  std::optional<std::pair<double, double>> range;
  for (const double value : values) {
    if (std::isfinite(value)) {
      range = range ? std::pair{std::min(range->first, value), std::max(range->second, value)}
                    : std::pair{value, value};
    }
  }
  return range;
}

/// A course in words: "from 3.2W to 31.6W in 120 values".
template <typename Format>
std::string courseText(const std::vector<double>& values, Format format) {
  const auto range = rangeOf(values);
  if (!range) {
    return "no data";
  }
  return fmt::format("from {} to {} in {} values", format(range->first), format(range->second),
                     values.size());
}

template <typename Format>
TraceCard traceCard(std::string title, std::string value, std::vector<double> values,
                    bool includesZero, Format format) {
  std::string words = fmt::format("{}: {}", title, courseText(values, format));
  SparklineContent sparkline =
      sparklineContent({.values = std::move(values), .label = title, .includesZero = includesZero});
  return {std::move(title), std::move(value), std::move(sparkline), std::move(words)};
}

TraceCard networkCard(const PowerSessionReport& report) {
  constexpr std::string_view title = "Network";
  TraceCard card{.title = std::string{title},
                 .value = networkPeakText(report.summary),
                 .accessibilityText = std::string{title} + ": no data"};
  const std::vector<SparklineSeries> series = networkSeries(report.timeline);
  std::string words;
  for (const SparklineSeries& line : series) {
    words += fmt::format(
        "{}{} {}", words.empty() ? ": " : "; ", line.label,
        courseText(line.values, [](double rate) { return formatBytesPerSec(rate, appByteStyle); }));
  }
  if (!words.empty()) {
    card.accessibilityText = std::string{title} + words;
  }
  card.sparkline = sparklineContent({.label = std::string{title}, .series = series});
  return card;
}

}  // namespace

std::string sampleIntervalDetail(const PowerSessionSummary& summary) {
  std::string text = SessionFormat::samplesText(summary.sampleCount);
  if (summary.sampleCount >= 2 && summary.durationSeconds > 0.0) {
    text += fmt::format(" · {:.1f}s/sample",
                        summary.durationSeconds / static_cast<double>(summary.sampleCount - 1));
  }
  return text;
}

std::string batteryRangeText(const PowerSessionSummary& summary) {
  if (!summary.batteryPercentStart || !summary.batteryPercentEnd) {
    return std::string{absentValue};
  }
  return fmt::format("{}% to {}%", *summary.batteryPercentStart, *summary.batteryPercentEnd);
}

std::string networkPeakText(const PowerSessionSummary& summary) {
  return fmt::format("Peak {} / {}", rateOrAbsent(summary.peakBytesInPerSec),
                     rateOrAbsent(summary.peakBytesOutPerSec));
}

std::vector<MetricTile> metricTiles(const PowerSessionReport& report, bool useFahrenheit) {
  const PowerSessionSummary& summary = report.summary;
  return {
      tile("Duration", formatSessionDuration(summary.durationSeconds),
           sampleIntervalDetail(summary)),
      tile("Battery", SessionFormat::percentDeltaText(summary.batteryPercentDelta),
           batteryRangeText(summary)),
      tile("Rate", rateText(report), "Percent per hour"),
      tile("Average", averageText(report), coverageDetail(report, "Session average")),
      tile("Peak", SessionFormat::wattsText(summary.maxWatts),
           "Min " + SessionFormat::wattsText(summary.minWatts)),
      tile("Energy", energyText(report), coverageDetail(report, "Integrated Wh")),
      tile("Thermal", peakTemperatureText(report, useFahrenheit),
           fmt::format("Pressure {}", summary.maxThermalPressure)),
      tile("Fans", fansText(summary), "Max RPM"),
      tile("Network",
           formatBytes(saturatingAdd(summary.totalBytesIn, summary.totalBytesOut), appByteStyle),
           networkPeakText(summary))};
}

std::vector<SparklineSeries> networkSeries(const Timeline& timeline) {
  std::vector<double> in = presentValues(timeline, &PowerSessionTimelinePoint::bytesInPerSec);
  std::vector<double> out = presentValues(timeline, &PowerSessionTimelinePoint::bytesOutPerSec);
  if (in.size() < 2 && out.size() < 2) {
    return {};
  }
  return {sparklineSeries(0, "Download", std::move(in), ColorName::green),
          sparklineSeries(1, "Upload", std::move(out), ColorName::blue)};
}

std::vector<TraceCard> traceGrid(const PowerSessionReport& report, bool useFahrenheit) {
  using Point = PowerSessionTimelinePoint;
  std::vector<TraceCard> cards;
  cards.push_back(traceCard("Power", averageText(report),
                            presentValues(report.timeline, &Point::watts), true,
                            DropdownFormat::formatWatts));
  cards.push_back(traceCard("Battery", batteryRangeText(report.summary),
                            presentValues(report.timeline, &Point::batteryPercent), false,
                            [](double percent) { return fmt::format("{:.0f}%", percent); }));
  cards.push_back(traceCard("Temperature", peakTemperatureText(report, useFahrenheit),
                            presentValues(report.timeline, &Point::maxTemperature), false,
                            [useFahrenheit](double celsius) {
                              return SessionFormat::temperatureText(celsius, useFahrenheit);
                            }));
  cards.push_back(networkCard(report));
  return cards;
}

}  // namespace quorvex
