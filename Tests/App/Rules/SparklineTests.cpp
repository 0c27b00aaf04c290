#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "SampleRecords.h"
#include "Sparkline.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Point = SparklineContent::Point;

TEST(SparklineTests, WithoutValuesItCollectsDataInThreePlainDots) {
  const SparklineContent content = sparklineContent({.label = "Power"});
  EXPECT_THAT(content.lines, IsEmpty());
  EXPECT_EQ(content.emptyText, "Collecting data...");
}

TEST(SparklineTests, ChartsItsValues) {
  const SparklineContent content = sparklineContent({.values = {0.0, 5.0, 10.0}, .label = "Power"});
  EXPECT_EQ(content.emptyText, "");
  EXPECT_EQ(content.label, "Power");
  EXPECT_EQ(content.accessibilityLabel, "Power graph");
  ASSERT_THAT(content.lines, SizeIs(1));
  EXPECT_THAT(content.lines[0].points,
              ElementsAre(Point{0.0, 0.0}, Point{0.5, 0.5}, Point{1.0, 1.0}));
}

TEST(SparklineTests, SeriesGoBeforeValues) {
  const SparklineContent content =
      sparklineContent({.values = {1000.0},
                        .series = {sparklineSeries(0, "In", {1.0, 2.0}, ColorName::green),
                                   sparklineSeries(1, "Out", {4.0, 0.0}, ColorName::blue)}});
  ASSERT_THAT(content.lines, SizeIs(2));
  EXPECT_EQ(content.lines[0].label, "In");
  EXPECT_EQ(content.lines[0].color, ColorName::green);
  // One scale for all lines: 1, 2, 4 and 0 of 4.
  EXPECT_THAT(content.lines[0].points, ElementsAre(Point{0.0, 0.25}, Point{1.0, 0.5}));
  EXPECT_EQ(content.lines[1].label, "Out");
  EXPECT_EQ(content.lines[1].color, ColorName::blue);
  EXPECT_THAT(content.lines[1].points, ElementsAre(Point{0.0, 1.0}, Point{1.0, 0.0}));
}

TEST(SparklineTests, SeriesOfNoValuesStillGoBeforeValues) {
  const SparklineContent content = sparklineContent(
      {.values = {1.0}, .series = {sparklineSeries(0, "In", {}, ColorName::green)}});
  ASSERT_THAT(content.lines, SizeIs(1));
  EXPECT_THAT(content.lines[0].points, IsEmpty());
  EXPECT_EQ(content.emptyText, "");
}

TEST(SparklineTests, MagnitudesAreDrawnFromZero) {
  EXPECT_THAT(sparklineContent({.values = {5.0, 10.0}}).lines.at(0).points,
              ElementsAre(Point{0.0, 0.5}, Point{1.0, 1.0}));
}

TEST(SparklineTests, TemperaturesAreDrawnFromTheLowest) {
  EXPECT_THAT(
      sparklineContent({.values = {40.0, 50.0, 60.0}, .includesZero = false}).lines.at(0).points,
      ElementsAre(Point{0.0, 0.0}, Point{0.5, 0.5}, Point{1.0, 1.0}));
}

TEST(SparklineTests, EqualValuesAreALevelLine) {
  EXPECT_THAT(sparklineContent({.values = {0.0, 0.0}}).lines.at(0).points,
              ElementsAre(Point{0.0, 0.0}, Point{1.0, 0.0}));
  EXPECT_THAT(sparklineContent({.values = {50.0, 50.0}, .includesZero = false}).lines.at(0).points,
              ElementsAre(Point{0.0, 0.5}, Point{1.0, 0.5}));
}

TEST(SparklineTests, SingleValueIsTheNewest) {
  EXPECT_THAT(sparklineContent({.values = {8.0}}).lines.at(0).points, ElementsAre(Point{1.0, 1.0}));
}

TEST(SparklineTests, ValuesThatAreNotFiniteAreLeftOut) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(
      sparklineContent({.values = {nan, 5.0, infinity, 10.0, -infinity}}).lines.at(0).points,
      ElementsAre(Point{0.25, 0.5}, Point{0.75, 1.0}));
}

TEST(SparklineTests, ExtremeValuesKeepToTheScale) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_THAT(sparklineContent({.values = {-largest, 0.0, largest}}).lines.at(0).points,
              ElementsAre(Point{0.0, 0.0}, Point{0.5, 0.5}, Point{1.0, 1.0}));
}

TEST(SparklineTests, LineKeepsItsIdentityFromReadingToReading) {
  const auto first = sparklineSeries(0, "Total", {1.0}, ColorName::green);
  const auto later = sparklineSeries(0, "Total", {1.0, 2.0}, ColorName::green);
  const auto other = sparklineSeries(1, "Total", {1.0}, ColorName::green);
  EXPECT_EQ(first.id, later.id);
  EXPECT_NE(first.id, other.id);
  EXPECT_NE(first.id, UUID{});
}

TEST(SparklineTests, PowerHistoryIsOfTheReadingsWithATotal) {
  const std::vector<SystemPowerState> history{
      {.battery = samples::batteryAt(-5.0)}, {}, {.power = samples::silicon(7.0)}};
  EXPECT_THAT(totalPowerHistory(history), ElementsAre(5.0, 7.0));
}

TEST(SparklineTests, ThroughputHistoryIsOfTheReadingsWithASnapshot) {
  const std::vector<SystemPowerState> history{
      {.network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1, 100.0, 50.0)}}},
      {},
      {.network = NetworkSnapshot{}}};
  EXPECT_THAT(throughputHistory(history), ElementsAre(150.0, 0.0));
}

}  // namespace
}  // namespace quorvex
