#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "ObservationBuilder.h"
#include "SamplingAnalysis.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::at;
using testing::ElementsAre;
using testing::IsEmpty;
using Points = std::vector<BatteryPoint>;

Points pointsAt(std::initializer_list<double> times) {
  Points points;
  for (const double seconds : times) {
    points.push_back({.timestamp = at(seconds)});
  }
  return points;
}

/// `count` points evenly over `seconds`, drawing `watts`, at one percentage throughout.
Points flatBattery(std::size_t count, double seconds, double watts,
                   std::optional<std::int64_t> percent = 80) {
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(count - 1);
    points.push_back(
        {.timestamp = at(seconds * share), .percent = percent, .dischargeWatts = watts});
  }
  return points;
}

std::string onlyLabel(const Points& points, double maxGap = 1000.0) {
  const auto windows = denseWindows(points, maxGap);
  EXPECT_EQ(windows.size(), 1U);
  return windows.at(0).confidence;
}

TEST(Intervals, AreEmptyWithFewerThanTwoPoints) {
  EXPECT_THAT(intervals({}), IsEmpty());
  EXPECT_THAT(intervals(pointsAt({5})), IsEmpty());
}

TEST(Intervals, AreTheTimesBetweenNeighbours) {
  EXPECT_THAT(intervals(pointsAt({0, 2, 2, 7.5})), ElementsAre(2.0, 0.0, 5.5));
}

TEST(SamplingConfidence, WithoutSamplesIsEmptyEvenForASessionOfAnHour) {
  EXPECT_EQ(samplingConfidence({}, 3600.0, 120.0), PowerSessionSamplingConfidence::empty());
  EXPECT_EQ(samplingConfidence({}, 3600.0, 120.0).wallClockDurationSeconds, 0.0);
}

TEST(SamplingConfidence, OfOneSampleIsALowSampleWindowWithoutIntervals) {
  const auto confidence = samplingConfidence(pointsAt({0}), 0.0, 120.0);
  EXPECT_EQ(confidence.sampleCount, 1);
  EXPECT_EQ(confidence.medianIntervalSeconds, std::nullopt);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 0.0);
  EXPECT_EQ(confidence.lowSampleWindowCount, 1);
  ASSERT_EQ(confidence.denseWindows.size(), 1U);
  EXPECT_EQ(confidence.denseWindows[0].sampleCount, 1);
  EXPECT_EQ(confidence.denseWindows[0].confidence, "low-sample");
  EXPECT_EQ(confidence.denseWindows[0].medianIntervalSeconds, std::nullopt);
  EXPECT_THAT(confidence.flags, ElementsAre("low-sample-window"));
}

TEST(SamplingConfidence, OfOneSampleOfASessionWithWallClockTimeHasLowCoverageToo) {
  EXPECT_THAT(samplingConfidence(pointsAt({0}), 60.0, 120.0).flags,
              ElementsAre("low-sample-window", "low-active-coverage"));
}

TEST(SamplingConfidence, OfTwoSamplesFarApartIsAGapAndTwoWindows) {
  const auto confidence = samplingConfidence(pointsAt({0, 1000}), 1000.0, 120.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 1);
  EXPECT_EQ(confidence.totalGapSeconds, 1000.0);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 0.0);
  EXPECT_EQ(confidence.medianIntervalSeconds, 1000.0);
  ASSERT_EQ(confidence.denseWindows.size(), 2U);
  EXPECT_EQ(confidence.denseWindows[0].sampleCount, 1);
  EXPECT_EQ(confidence.denseWindows[1].sampleCount, 1);
  EXPECT_EQ(confidence.denseWindows[1].index, 1);
  EXPECT_THAT(confidence.flags,
              ElementsAre("long-gaps", "low-sample-window", "low-active-coverage"));
}

TEST(SamplingConfidence, CountsAnIntervalWithinAWiderLimitAsActiveAndAsGap) {
  // A session sampled every 60 seconds has the limit 240.
  const auto confidence = samplingConfidence(pointsAt({0, 200, 260}), 260.0, 240.0);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 260.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 1);
  EXPECT_EQ(confidence.totalGapSeconds, 200.0);
  EXPECT_EQ(confidence.denseWindows.size(), 1U);
  EXPECT_THAT(confidence.flags, IsEmpty());
}

TEST(SamplingConfidence, CountsNinetySecondsAsActiveAndAsGap) {
  const auto confidence = samplingConfidence(pointsAt({0, 90}), 90.0, 120.0);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 90.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 1);
  EXPECT_EQ(confidence.totalGapSeconds, 90.0);
}

TEST(SamplingConfidence, CountsExactlySixtySecondsAsNoGap) {
  const auto confidence = samplingConfidence(pointsAt({0, 60}), 60.0, 120.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 0);
  EXPECT_EQ(confidence.totalGapSeconds, 0.0);
}

TEST(SamplingConfidence, TakesAnIntervalOfExactlyTheLimitAsActive) {
  const auto confidence = samplingConfidence(pointsAt({0, 120, 240}), 240.0, 120.0);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 240.0);
  EXPECT_EQ(confidence.denseWindows.size(), 1U);
  EXPECT_THAT(confidence.flags, IsEmpty());
}

TEST(SamplingConfidence, HasTheMedianOfAllIntervals) {
  // 2, 4, 1000 and 6 seconds: the gap counts too.
  const auto confidence = samplingConfidence(pointsAt({0, 2, 6, 1006, 1012}), 1012.0, 120.0);
  EXPECT_EQ(confidence.medianIntervalSeconds, (4.0 + 6.0) / 2.0);
}

TEST(SamplingConfidence, NeverHasLowCoverageWithoutWallClockTime) {
  EXPECT_THAT(samplingConfidence(pointsAt({0, 1, 2}), 0.0, 120.0).flags, IsEmpty());
}

TEST(SamplingConfidence, HasLowCoverageOnlyBelowHalfOfTheWallClock) {
  EXPECT_THAT(samplingConfidence(pointsAt({0, 50, 100}), 200.0, 120.0).flags, IsEmpty());
  EXPECT_THAT(samplingConfidence(pointsAt({0, 50, 100}), 200.5, 120.0).flags,
              ElementsAre("low-active-coverage"));
}

TEST(SamplingConfidence, RaisesAllFlagsInTheirOrder) {
  Points points = flatBattery(3, 600.0, 20.0);
  points.push_back({.timestamp = at(5000)});
  EXPECT_THAT(samplingConfidence(points, 5000.0, 400.0).flags,
              ElementsAre("long-gaps", "low-sample-window", "flat-battery-high-draw",
                          "low-active-coverage"));
}

TEST(SamplingConfidence, RaisesTheFlatBatteryFlagOnceForManyWindows) {
  Points points = flatBattery(7, 600.0, 20.0);
  for (const BatteryPoint& point : flatBattery(7, 600.0, 20.0)) {
    points.push_back(point);
    points.back().timestamp += std::chrono::seconds{1000};
  }
  const auto confidence = samplingConfidence(points, 1600.0, 120.0);
  EXPECT_EQ(confidence.denseWindows.size(), 2U);
  EXPECT_THAT(confidence.flags, ElementsAre("long-gaps", "flat-battery-high-draw"));
}

TEST(SamplingConfidence, FlagsAWindowWithoutPercentagesThatIsLabelledDense) {
  const auto confidence =
      samplingConfidence(flatBattery(3, 600.0, 15.0, std::nullopt), 600.0, 400.0);
  EXPECT_EQ(confidence.denseWindows.at(0).confidence, "dense");
  EXPECT_EQ(confidence.denseWindows.at(0).batteryPercentDelta, std::nullopt);
  EXPECT_THAT(confidence.flags, ElementsAre("flat-battery-high-draw"));
}

TEST(SamplingConfidence, FlagsAFlatBatteryInALowSampleWindowToo) {
  const auto confidence = samplingConfidence(flatBattery(2, 600.0, 15.0), 600.0, 1000.0);
  EXPECT_THAT(confidence.flags, ElementsAre("low-sample-window", "flat-battery-high-draw"));
}

TEST(SamplingConfidence, DoesNotFlagADrainingBattery) {
  Points points = flatBattery(3, 600.0, 20.0);
  points.back().percent = 79;
  EXPECT_THAT(samplingConfidence(points, 600.0, 400.0).flags, IsEmpty());
}

TEST(SamplingConfidence, FlagsAFlatBatteryAtTheLimitsAndNotBelow) {
  EXPECT_THAT(samplingConfidence(flatBattery(3, 600.0, 15.0), 600.0, 400.0).flags,
              ElementsAre("flat-battery-high-draw"));
  EXPECT_THAT(samplingConfidence(flatBattery(3, 600.0, 14.99), 600.0, 400.0).flags, IsEmpty());
  EXPECT_THAT(samplingConfidence(flatBattery(3, 599.9, 15.0), 599.9, 400.0).flags, IsEmpty());
}

TEST(DenseWindows, AreNoneWithoutPoints) {
  EXPECT_THAT(denseWindows({}, 120.0), IsEmpty());
}

TEST(DenseWindows, AreCutOnlyAboveTheLimit) {
  const auto windows = denseWindows(pointsAt({0, 120, 240.001, 250}), 120.0);
  ASSERT_EQ(windows.size(), 2U);
  EXPECT_EQ(windows[0].index, 0);
  EXPECT_EQ(windows[0].startedAt, at(0));
  EXPECT_EQ(windows[0].endedAt, at(120));
  EXPECT_EQ(windows[0].durationSeconds, 120.0);
  EXPECT_EQ(windows[1].index, 1);
  EXPECT_EQ(windows[1].startedAt, at(240.001));
  EXPECT_EQ(windows[1].endedAt, at(250));
  EXPECT_EQ(windows[1].sampleCount, 2);
}

TEST(DenseWindows, HaveTheMedianOfTheirOwnIntervals) {
  const auto windows = denseWindows(pointsAt({0, 2, 6, 1000, 1010, 1040, 1060}), 120.0);
  ASSERT_EQ(windows.size(), 2U);
  EXPECT_EQ(windows[0].medianIntervalSeconds, (2.0 + 4.0) / 2.0);
  EXPECT_EQ(windows[1].medianIntervalSeconds, 20.0);
}

TEST(DenseWindows, TakePercentagesFromTheFirstAndLastPresentOnes) {
  Points points = pointsAt({0, 10, 20, 30});
  points[1].percent = 90;
  points[2].percent = 88;
  const auto windows = denseWindows(points, 120.0);
  EXPECT_EQ(windows.at(0).batteryPercentStart, 90);
  EXPECT_EQ(windows.at(0).batteryPercentEnd, 88);
  EXPECT_EQ(windows.at(0).batteryPercentDelta, 88 - 90);
}

TEST(DenseWindows, AverageDischargeWattsPlainlyAndIntegrateThemOverTime) {
  Points points = pointsAt({0, 10, 100});
  points[0].dischargeWatts = 10.0;
  points[1].dischargeWatts = 20.0;
  points[2].dischargeWatts = 30.0;
  const auto windows = denseWindows(points, 120.0);
  EXPECT_DOUBLE_EQ(windows.at(0).averageBatteryDrawWatts.value(), (10.0 + 20.0 + 30.0) / 3.0);
  EXPECT_DOUBLE_EQ(windows.at(0).totalWattHours.value(), (15.0 * 10.0 + 25.0 * 90.0) / 3600.0);
}

TEST(DenseWindows, IntegrateAcrossSamplesWithoutDischargeWatts) {
  Points points = pointsAt({0, 100, 200});
  points[0].dischargeWatts = 18.0;
  points[2].dischargeWatts = 18.0;
  EXPECT_DOUBLE_EQ(denseWindows(points, 120.0).at(0).totalWattHours.value(), 18.0 * 200.0 / 3600.0);
}

TEST(DenseWindows, HaveNoWattsWithoutDischarge) {
  Points points = pointsAt({0, 100});
  points[0].chargeInputWatts = 40.0;
  points[1].chargeInputWatts = 40.0;
  const auto windows = denseWindows(points, 120.0);
  EXPECT_EQ(windows.at(0).averageBatteryDrawWatts, std::nullopt);
  EXPECT_EQ(windows.at(0).totalWattHours, std::nullopt);
}

TEST(DenseWindows, AreSuspectWhenABatteryStaysFlatUnderHighDraw) {
  EXPECT_EQ(onlyLabel(flatBattery(3, 600.0, 15.0)), "suspect-flat-battery");
}

TEST(DenseWindows, AreDenseJustBelowTheDrawThatIsSuspect) {
  EXPECT_EQ(onlyLabel(flatBattery(3, 600.0, 14.99)), "dense");
}

TEST(DenseWindows, AreDenseJustBelowTheTimeThatIsSuspect) {
  EXPECT_EQ(onlyLabel(flatBattery(3, 599.9, 15.0)), "dense");
}

TEST(DenseWindows, AreLowSampleWithTwoSamplesHoweverSuspect) {
  EXPECT_EQ(onlyLabel(flatBattery(2, 600.0, 15.0)), "low-sample");
}

TEST(DenseWindows, AreDenseWhenTheBatteryDrains) {
  Points points = flatBattery(3, 600.0, 15.0);
  points.back().percent = 79;
  EXPECT_EQ(onlyLabel(points), "dense");
}

TEST(DenseWindows, AreDenseWithoutPercentages) {
  EXPECT_EQ(onlyLabel(flatBattery(3, 600.0, 15.0, std::nullopt)), "dense");
}

TEST(DenseWindows, AreDenseWithoutDischargeWatts) {
  Points points = flatBattery(3, 600.0, 15.0);
  for (BatteryPoint& point : points) {
    point.dischargeWatts.reset();
  }
  EXPECT_EQ(onlyLabel(points), "dense");
}

TEST(DenseWindows, FormFromColumnsWhenNoSnapshotDecodes) {
  std::vector<Observation> samples;
  for (const double seconds : {0.0, 300.0, 600.0}) {
    samples.push_back(observations::undecodable(observations::discharging(seconds, 80, 30.0)));
  }
  const auto confidence = samplingConfidence(batteryTrack(samples), 600.0, 400.0);
  ASSERT_EQ(confidence.denseWindows.size(), 1U);
  EXPECT_EQ(confidence.denseWindows[0].batteryPercentStart, 80);
  EXPECT_EQ(confidence.denseWindows[0].batteryPercentEnd, 80);
  EXPECT_EQ(confidence.denseWindows[0].averageBatteryDrawWatts, std::nullopt);
  EXPECT_EQ(confidence.denseWindows[0].confidence, "dense");
  EXPECT_THAT(confidence.flags, IsEmpty());
}

RC_GTEST_PROP(DenseWindows, PartitionThePoints, ()) {
  const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 200));
  RC_PRE(!steps.empty());
  constexpr double maxGap = 120.0;
  Points points;
  int seconds = 0;
  for (const int step : steps) {
    seconds += step;
    points.push_back({.timestamp = at(seconds)});
  }
  const auto windows = denseWindows(points, maxGap);
  std::size_t next = 0;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    RC_ASSERT(windows[i].index == static_cast<std::int64_t>(i));
    RC_ASSERT(windows[i].sampleCount > 0);
    RC_ASSERT(windows[i].startedAt == points.at(next).timestamp);
    if (i > 0) {
      RC_ASSERT(secondsBetween(windows[i - 1].endedAt, windows[i].startedAt) > maxGap);
    }
    const std::size_t last = next + static_cast<std::size_t>(windows[i].sampleCount) - 1;
    RC_ASSERT(windows[i].endedAt == points.at(last).timestamp);
    for (; next < last; ++next) {
      RC_ASSERT(secondsBetween(points[next].timestamp, points[next + 1].timestamp) <= maxGap);
    }
    ++next;
  }
  RC_ASSERT(next == points.size());
}

RC_GTEST_PROP(SamplingConfidence, SplitsTheSampledTimeIntoActiveAndTooLong, ()) {
  const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 300));
  Points points = pointsAt({0});
  double tooLong = 0.0;
  double seconds = 0.0;
  for (const int step : steps) {
    seconds += step;
    tooLong += step > 120 ? step : 0;
    points.push_back({.timestamp = at(seconds)});
  }
  const auto confidence = samplingConfidence(points, seconds, 120.0);
  RC_ASSERT(confidence.activeSampledDurationSeconds + tooLong == seconds);
  RC_ASSERT(confidence.totalGapSeconds >= tooLong);
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
