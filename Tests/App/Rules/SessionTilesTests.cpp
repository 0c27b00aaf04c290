#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "RulesSamples.h"
#include "SessionTiles.h"

namespace quorvex {
namespace {

using samples::mixedReport;
using samples::report;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Label, value and detail of a tile.
using Tile = std::array<std::string, 3>;

Tile tile(const PowerSessionReport& report, std::string_view label, bool useFahrenheit = false) {
  for (const MetricTile& tile : metricTiles(report, useFahrenheit)) {
    if (tile.label == label) {
      return {tile.label, tile.value, tile.detail};
    }
  }
  return {};
}

PowerSessionTimelinePoint point(std::int64_t id) {
  return {.id = id, .elapsedSeconds = 2.0 * static_cast<double>(id)};
}

TraceCard trace(const PowerSessionReport& report, std::string_view title,
                bool useFahrenheit = false) {
  for (TraceCard& card : traceGrid(report, useFahrenheit)) {
    if (card.title == title) {
      return card;
    }
  }
  return {};
}

TEST(MetricTiles, StandInTheirOrder) {
  std::vector<std::string> labels;
  for (const MetricTile& tile : metricTiles(report(samples::steadySummary()), false)) {
    labels.push_back(tile.label);
  }
  EXPECT_THAT(labels, ElementsAre("Duration", "Battery", "Rate", "Average", "Peak", "Energy",
                                  "Thermal", "Fans", "Network"));
}

TEST(MetricTiles, TellTheFiguresOfASteadySession) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.batteryPercentStart = 80;
  summary.batteryPercentEnd = 77;
  summary.batteryPercentDelta = -3;
  summary.maxThermalPressure = 1;
  summary.maxFanRPM = 2400;
  summary.totalBytesIn = 1'000'000;
  summary.totalBytesOut = 500'000;
  summary.peakBytesInPerSec = 2000.0;
  PowerSessionReport steady = report(summary);
  steady.thermalDigest.peakTemperatureCelsius = 75.0;
  EXPECT_EQ(tile(steady, "Duration"), (Tile{"Duration", "1m 0s", "31 samples · 2.0s/sample"}))
      << "60 s / (31 - 1)";
  EXPECT_EQ(tile(steady, "Battery"), (Tile{"Battery", "-3%", "80% to 77%"}));
  EXPECT_EQ(tile(steady, "Rate"), (Tile{"Rate", "-180.0%/h", "Percent per hour"}))
      << "-3 % in a sixtieth of an hour";
  EXPECT_EQ(tile(steady, "Average"), (Tile{"Average", "12.0W", "Session average"}));
  EXPECT_EQ(tile(steady, "Peak"), (Tile{"Peak", "13.0W", "Min 11.0W"}));
  EXPECT_EQ(tile(steady, "Energy"), (Tile{"Energy", "0.20Wh", "Integrated Wh"}));
  EXPECT_EQ(tile(steady, "Thermal"), (Tile{"Thermal", "75 C", "Pressure 1"}));
  EXPECT_EQ(tile(steady, "Thermal", true), (Tile{"Thermal", "167 F", "Pressure 1"}));
  EXPECT_EQ(tile(steady, "Fans"), (Tile{"Fans", "2400 RPM", "Max RPM"}));
  EXPECT_EQ(tile(steady, "Network"), (Tile{"Network", "1.5 MB", "Peak 2.0 KB/s / --"}));
  EXPECT_EQ(metricTiles(steady, false)[0].accessibilityText,
            "Duration: 1m 0s, 31 samples · 2.0s/sample");
}

TEST(MetricTiles, ASessionWithoutFiguresPrintsTwoHyphens) {
  PowerSessionReport empty = report(PowerSessionSummary::empty());
  empty.phases.clear();
  EXPECT_EQ(tile(empty, "Duration"), (Tile{"Duration", "0s", "0 samples"}));
  EXPECT_EQ(tile(empty, "Battery"), (Tile{"Battery", "--", "--"}));
  EXPECT_EQ(tile(empty, "Rate"), (Tile{"Rate", "--", "Percent per hour"}));
  EXPECT_EQ(tile(empty, "Average"), (Tile{"Average", "--", "Session average"}));
  EXPECT_EQ(tile(empty, "Peak"), (Tile{"Peak", "--", "Min --"}));
  EXPECT_EQ(tile(empty, "Energy"), (Tile{"Energy", "--", "Integrated Wh"}));
  EXPECT_EQ(tile(empty, "Thermal"), (Tile{"Thermal", "--", "Pressure 0"}));
  EXPECT_EQ(tile(empty, "Fans"), (Tile{"Fans", "--", "Max RPM"}));
  EXPECT_EQ(tile(empty, "Network"), (Tile{"Network", "0 B", "Peak -- / --"}));
}

TEST(MetricTiles, ASparseSessionHasNoAverageAndSaysWhy) {
  const PowerSessionReport sparse = report(samples::sparseSummary());
  EXPECT_EQ(tile(sparse, "Average"), (Tile{"Average", "--", "Sparse samples"}));
  EXPECT_EQ(tile(sparse, "Energy"), (Tile{"Energy", "--", "Sparse samples"}));
}

TEST(MetricTiles, AMixedSessionRefersToItsPhases) {
  EXPECT_EQ(tile(mixedReport(), "Average"), (Tile{"Average", "Per phase", "Mixed sources"}));
  EXPECT_EQ(tile(mixedReport(), "Energy"), (Tile{"Energy", "Per phase", "Mixed sources"}));
}

TEST(MetricTiles, SparseGoesBeforeMixed) {
  PowerSessionReport both = mixedReport();
  both.summary.totalWattHoursNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_EQ(tile(both, "Average"), (Tile{"Average", "Per phase", "Sparse samples"}));
}

TEST(MetricTiles, BytesBeyondAllRangeStayAtItsEnd) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.totalBytesIn = std::numeric_limits<std::uint64_t>::max();
  summary.totalBytesOut = 1;
  EXPECT_EQ(tile(report(summary), "Network")[1], "18446744073.7 GB");
}

TEST(SampleIntervalDetail, AOneSampleSessionHasNoEffectiveInterval) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.sampleCount = 1;
  EXPECT_EQ(sampleIntervalDetail(summary), "1 samples");
}

TEST(SampleIntervalDetail, NeedsADuration) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.durationSeconds = 0.0;
  EXPECT_EQ(sampleIntervalDetail(summary), "31 samples");
  summary.sampleCount = 2;
  summary.durationSeconds = 10.04;
  EXPECT_EQ(sampleIntervalDetail(summary), "2 samples · 10.0s/sample");
}

TEST(BatteryRangeText, NeedsBothEnds) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.batteryPercentStart = 80;
  EXPECT_EQ(batteryRangeText(summary), "--");
  summary.batteryPercentEnd = 77;
  EXPECT_EQ(batteryRangeText(summary), "80% to 77%");
  summary.batteryPercentStart.reset();
  EXPECT_EQ(batteryRangeText(summary), "--");
}

TEST(NetworkPeakText, EachSideMayBeAbsent) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.peakBytesOutPerSec = 1'500'000.0;
  EXPECT_EQ(networkPeakText(summary), "Peak -- / 1.5 MB/s");
  summary.peakBytesInPerSec = 999.0;
  EXPECT_EQ(networkPeakText(summary), "Peak 999 B/s / 1.5 MB/s");
}

TEST(TraceGrid, StandsInItsOrderWithItsValues) {
  PowerSessionReport steady = report(samples::steadySummary());
  steady.summary.batteryPercentStart = 80;
  steady.summary.batteryPercentEnd = 77;
  steady.thermalDigest.peakTemperatureCelsius = 75.0;
  const std::vector<TraceCard> cards = traceGrid(steady, false);
  ASSERT_THAT(cards, SizeIs(4));
  EXPECT_EQ(cards[0].title, "Power");
  EXPECT_EQ(cards[0].value, "12.0W");
  EXPECT_EQ(cards[1].title, "Battery");
  EXPECT_EQ(cards[1].value, "80% to 77%");
  EXPECT_EQ(cards[2].title, "Temperature");
  EXPECT_EQ(cards[2].value, "75 C");
  EXPECT_EQ(cards[3].title, "Network");
  EXPECT_EQ(cards[3].value, "Peak -- / --");
}

TEST(TraceGrid, ThePowerOfAMixedSessionIsPerPhase) {
  EXPECT_EQ(trace(mixedReport(), "Power").value, "Per phase");
  EXPECT_EQ(trace(report(samples::sparseSummary()), "Power").value, "--");
}

TEST(TraceGrid, PlotsOnlyThePointsWithAValue) {
  PowerSessionReport gappy = report(samples::steadySummary());
  gappy.timeline = {point(0), point(1), point(2)};
  gappy.timeline[0].watts = 11.0;
  gappy.timeline[2].watts = 13.0;
  gappy.timeline[1].batteryPercent = 80;
  gappy.timeline[2].maxTemperature = 55.0;
  const TraceCard power = trace(gappy, "Power");
  ASSERT_THAT(power.sparkline.lines, SizeIs(1));
  EXPECT_THAT(power.sparkline.lines[0].points, SizeIs(2));
  EXPECT_EQ(power.accessibilityText, "Power: from 11.0W to 13.0W in 2 values");
  EXPECT_EQ(trace(gappy, "Battery").accessibilityText, "Battery: from 80% to 80% in 1 values");
  EXPECT_EQ(trace(gappy, "Temperature", true).accessibilityText,
            "Temperature: from 131 F to 131 F in 1 values");
}

TEST(TraceGrid, WithoutValuesThereIsNoCourse) {
  for (const TraceCard& card : traceGrid(report(samples::steadySummary()), false)) {
    EXPECT_THAT(card.sparkline.lines, IsEmpty()) << card.title;
    EXPECT_EQ(card.accessibilityText, card.title + ": no data");
  }
}

TEST(TraceGrid, ValuesThatAreNotFiniteAreLeftOutOfTheWords) {
  PowerSessionReport odd = report(samples::steadySummary());
  odd.timeline = {point(0), point(1)};
  odd.timeline[0].watts = nan;
  odd.timeline[1].watts = 12.0;
  EXPECT_EQ(trace(odd, "Power").accessibilityText, "Power: from 12.0W to 12.0W in 2 values");
}

TEST(NetworkSeries, BothDirectionsHaveTheirColours) {
  std::vector<PowerSessionTimelinePoint> timeline{point(0), point(1)};
  timeline[0].bytesInPerSec = 1000.0;
  timeline[1].bytesInPerSec = 2000.0;
  timeline[1].bytesOutPerSec = 500.0;
  const std::vector<SparklineSeries> series = networkSeries(timeline);
  ASSERT_THAT(series, SizeIs(2));
  EXPECT_THAT(series[0].values, ElementsAre(1000.0, 2000.0));
  EXPECT_EQ(series[0].color, ColorName::green);
  EXPECT_THAT(series[1].values, ElementsAre(500.0));
  EXPECT_EQ(series[1].color, ColorName::blue);
  EXPECT_NE(series[0].id, series[1].id);

  PowerSessionReport busy = report(samples::steadySummary());
  busy.timeline = timeline;
  EXPECT_EQ(trace(busy, "Network").accessibilityText,
            "Network: Download from 1.0 KB/s to 2.0 KB/s in 2 values; Upload from 500 B/s to 500 "
            "B/s in 1 values");
}

TEST(NetworkSeries, IsEmptyWhenBothHaveFewerThanTwoValues) {
  std::vector<PowerSessionTimelinePoint> timeline{point(0), point(1)};
  timeline[0].bytesInPerSec = 1000.0;
  timeline[1].bytesOutPerSec = 500.0;
  EXPECT_THAT(networkSeries(timeline), IsEmpty());
}

}  // namespace
}  // namespace quorvex
