#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "TracePlot.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::size_t power = 0;
constexpr std::size_t battery = 1;
constexpr std::size_t temperature = 2;
constexpr std::size_t network = 3;

class TracePlotTest : public ::testing::Test {
 protected:
  /// Adds a moment with watts.
  PowerSessionTimelinePoint& add(double elapsed, std::optional<double> watts = std::nullopt) {
    report.timeline.push_back({.id = static_cast<std::int64_t>(report.timeline.size()),
                               .elapsedSeconds = elapsed,
                               .timestamp = dateByAdding(start, elapsed),
                               .watts = watts});
    return report.timeline.back();
  }
  [[nodiscard]] std::vector<TracePlot> plots(bool useFahrenheit = false) const {
    return tracePlots(traceGrid(report, useFahrenheit), report, useFahrenheit,
                      ShortTimeFormat{"en_US"});
  }

  Date start{std::chrono::seconds{1'700'000'000}};
  PowerSessionReport report{.sampleInterval = 2.0};
};

TEST_F(TracePlotTest, PointsStandAtTheirTimeAndNotAtTheirPlaceInTheList) {
  add(0.0, 5.0);
  add(25.0, 5.0);
  add(100.0, 10.0);
  const auto runs = plots()[power].lines.at(0).runs;
  ASSERT_THAT(runs, SizeIs(1));
  ASSERT_THAT(runs[0], SizeIs(3));
  EXPECT_EQ(runs[0][1].position, 0.25);
  EXPECT_EQ(runs[0][1].height, 0.5);
  EXPECT_EQ(runs[0][2], (TracePlot::Point{1.0, 1.0}));
}

TEST_F(TracePlotTest, ALineDoesNotCrossAGap) {
  for (const double elapsed : {0.0, 100.0, 200.0, 321.0, 421.0}) {
    add(elapsed, 5.0);
  }
  add(1000.0, 5.0);
  const auto runs = plots()[power].lines.at(0).runs;
  // 121 s exceed the limit of 120 s, but not three spacings of 1000 s by 6 points.
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_THAT(runs[0], SizeIs(5));
  EXPECT_THAT(runs[1], SizeIs(1));
}

TEST_F(TracePlotTest, PowerBeginsAtZeroAndEndsAtARoundNumber) {
  add(0.0, 12.0);
  add(2.0, 18.0);
  const auto plot = plots()[power];
  EXPECT_EQ(plot.bottomText, "0.0W");
  EXPECT_EQ(plot.topText, "20.0W");
}

TEST_F(TracePlotTest, ThePowersScaleLeavesLittleRoomAboveTheHighestValue) {
  add(0.0, 12.0);
  auto& highest = add(2.0, 56.0);
  EXPECT_EQ(plots()[power].topText, "60.0W");
  highest.watts = 60.0;
  EXPECT_EQ(plots()[power].topText, "60.0W");
  highest.watts = 60.1;
  EXPECT_EQ(plots()[power].topText, "80.0W");
  highest.watts = 99.0;
  EXPECT_EQ(plots()[power].topText, "100.0W");
}

TEST_F(TracePlotTest, ASessionOfNoPowerStillHasAScale) {
  add(0.0, 0.0);
  add(2.0, 0.0);
  EXPECT_EQ(plots()[power].topText, "1.0W");
}

TEST_F(TracePlotTest, TheBatterysScaleIsInStepsOfFivePercent) {
  add(0.0).batteryPercent = 62;
  add(2.0).batteryPercent = 81;
  const auto plot = plots()[battery];
  EXPECT_EQ(plot.bottomText, "60%");
  EXPECT_EQ(plot.topText, "85%");
}

TEST_F(TracePlotTest, AFlatLineHasAScaleToo) {
  add(0.0).maxTemperature = 50.0;
  add(2.0).maxTemperature = 50.0;
  EXPECT_EQ(plots()[temperature].bottomText, "50 C");
  EXPECT_EQ(plots()[temperature].topText, "55 C");
  // 50 degrees Celsius times 9 divided by 5 plus 32.
  EXPECT_EQ(plots(true)[temperature].bottomText, "122 F");
}

TEST_F(TracePlotTest, NoValuesLeaveTheCardsOwnText) {
  add(0.0, 5.0);
  const auto plot = plots()[battery];
  EXPECT_THAT(plot.lines, IsEmpty());
  EXPECT_THAT(plot.readouts, IsEmpty());
  EXPECT_EQ(plot.emptyText, traceGrid(report, false)[battery].sparkline.emptyText);
}

TEST_F(TracePlotTest, AReportWithoutTimelineDrawsNothing) {
  for (const auto& plot : plots()) {
    EXPECT_THAT(plot.lines, IsEmpty());
  }
}

TEST_F(TracePlotTest, AReadoutSaysTheTimeAndTheValue) {
  add(0.0, 5.0);
  add(10.0, 18.0);
  const auto readout = nearestReadout(plots()[power], 0.9);
  ASSERT_TRUE(readout);
  EXPECT_EQ(readout->position, 1.0);
  EXPECT_EQ(readout->text, ShortTimeFormat{"en_US"}.text(dateByAdding(start, 10.0)) + " · 18.0W");
  EXPECT_THAT(readout->heights, SizeIs(1));
}

TEST_F(TracePlotTest, TheNearestMomentAnswersAndTheEarlierOneOfTwoEquallyNear) {
  add(0.0, 1.0);
  add(50.0, 2.0);
  add(100.0, 3.0);
  const auto plot = plots()[power];
  EXPECT_EQ(nearestReadout(plot, -1.0)->position, 0.0);
  EXPECT_EQ(nearestReadout(plot, 0.25)->position, 0.0);
  EXPECT_EQ(nearestReadout(plot, 0.26)->position, 0.5);
  EXPECT_EQ(nearestReadout(plot, 2.0)->position, 1.0);
  EXPECT_EQ(nearestReadout(TracePlot{}, 0.5), std::nullopt);
}

TEST_F(TracePlotTest, StepsGoFromValueToValueAndStopAtTheEnds) {
  add(0.0, 1.0);
  add(25.0);
  add(50.0, 2.0);
  add(100.0, 3.0);
  const auto plot = plots()[power];
  EXPECT_EQ(nearestReadout(plot, 0.0, 1)->position, 0.5);
  EXPECT_EQ(nearestReadout(plot, 0.5, 1)->position, 1.0);
  EXPECT_EQ(nearestReadout(plot, 1.0, 1)->position, 1.0);
  EXPECT_EQ(nearestReadout(plot, 1.0, -2)->position, 0.0);
  EXPECT_EQ(nearestReadout(plot, 0.0, -1)->position, 0.0);
  EXPECT_EQ(nearestReadout(TracePlot{}, 0.5, 1), std::nullopt);
}

TEST_F(TracePlotTest, TheNetworksReadoutNamesBothDirections) {
  auto& first = add(0.0);
  first.bytesInPerSec = 1000.0;
  first.bytesOutPerSec = 500.0;
  auto& second = add(2.0);
  second.bytesInPerSec = 2000.0;
  second.bytesOutPerSec = 500.0;
  const auto plot = plots()[network];
  ASSERT_THAT(plot.lines, SizeIs(2));
  EXPECT_THAT(nearestReadout(plot, 0.0)->text, HasSubstr(" · Download 1.0 KB/s · Upload 500 B/s"));
}

}  // namespace
}  // namespace quorvex
