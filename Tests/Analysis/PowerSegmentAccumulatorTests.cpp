#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <numeric>

#include "ObservationBuilder.h"
#include "PowerSegmentAccumulator.h"
#include "PowerSessionMetrics.h"

namespace quorvex {
namespace {

using observations::at;
using ::testing::IsEmpty;
using ::testing::SizeIs;

PowerSamplePoint onBattery(double seconds, std::optional<double> watts) {
  return {.timestamp = at(seconds),
          .watts = watts,
          .sourceKind = "batteryDischarge",
          .sourceLabel = "Battery draw",
          .acConnected = false};
}

PowerSamplePoint onAC(double seconds, std::optional<double> watts) {
  return {.timestamp = at(seconds),
          .watts = watts,
          .sourceKind = "ioReportSiliconPower",
          .sourceLabel = "IOReport silicon power",
          .acConnected = true};
}

std::vector<PowerSessionPowerSegment> segments(const std::vector<PowerSamplePoint>& points,
                                               std::optional<double> maxGap = 120.0) {
  return PowerSessionMetrics::powerSegments(points, maxGap);
}

TEST(PowerSegmentAccumulator, NoPointsGiveNoSegments) {
  EXPECT_THAT(segments({}), IsEmpty());
}

TEST(PowerSegmentAccumulator, OneSourceIsOneSegment) {
  // 10 W to 20 W over 60 s, and on at 20 W for 60 s: (900 + 1200) Ws.
  const auto result = segments({onBattery(0, 10.0), onBattery(60, 20.0), onBattery(120, 20.0)});
  ASSERT_THAT(result, SizeIs(1));
  const PowerSessionPowerSegment expected{.index = 0,
                                          .sourceKind = "batteryDischarge",
                                          .sourceLabel = "Battery draw",
                                          .acConnected = false,
                                          .startedAt = at(0),
                                          .endedAt = at(120),
                                          .durationSeconds = 120.0,
                                          .sampleCount = 3,
                                          .wattSampleCount = 3,
                                          .averageWatts = result[0].averageWatts,
                                          .minWatts = 10.0,
                                          .maxWatts = 20.0,
                                          .totalWattHours = result[0].totalWattHours};
  EXPECT_EQ(result[0], expected);
  EXPECT_DOUBLE_EQ(*result[0].totalWattHours, (900.0 + 1200.0) / 3600.0);
  EXPECT_DOUBLE_EQ(*result[0].averageWatts, (900.0 + 1200.0) / 120.0);
}

TEST(PowerSegmentAccumulator, AChangeOfKindCuts) {
  const auto result = segments({onBattery(0, 10.0), onAC(10, 5.0), onBattery(20, 10.0)});
  ASSERT_THAT(result, SizeIs(3));
  EXPECT_EQ(result[0].index, 0);
  EXPECT_EQ(result[1].index, 1);
  EXPECT_EQ(result[2].index, 2);
  EXPECT_EQ(result[1].sourceKind, "ioReportSiliconPower");
}

TEST(PowerSegmentAccumulator, AChangeOfACStateCutsAndAbsenceIsAStateOfItsOwn) {
  auto unknown = onBattery(10, 10.0);
  unknown.acConnected.reset();
  auto plugged = onBattery(20, 10.0);
  plugged.acConnected = true;
  const auto result = segments({onBattery(0, 10.0), unknown, plugged});
  ASSERT_THAT(result, SizeIs(3));
  EXPECT_EQ(result[1].acConnected, std::nullopt);
  EXPECT_EQ(result[2].acConnected, true);
}

TEST(PowerSegmentAccumulator, AChangeOfSourceLabelAloneDoesNotCut) {
  auto renamed = onBattery(10, 12.0);
  renamed.sourceLabel = "Another label";
  const auto result = segments({onBattery(0, 10.0), renamed});
  ASSERT_THAT(result, SizeIs(1));
  EXPECT_EQ(result[0].sourceLabel, "Battery draw");
}

TEST(PowerSegmentAccumulator, WithoutWattsThereIsNoAverageAndNoEnergy) {
  const auto result = segments({onBattery(0, std::nullopt), onBattery(10, std::nullopt)});
  ASSERT_THAT(result, SizeIs(1));
  EXPECT_EQ(result[0].sampleCount, 2);
  EXPECT_EQ(result[0].wattSampleCount, 0);
  EXPECT_EQ(result[0].averageWatts, std::nullopt);
  EXPECT_EQ(result[0].minWatts, std::nullopt);
  EXPECT_EQ(result[0].maxWatts, std::nullopt);
  EXPECT_EQ(result[0].totalWattHours, std::nullopt);
}

TEST(PowerSegmentAccumulator, OneWattSampleIsItsOwnAverageAndHasNoEnergy) {
  const auto result = segments({onBattery(0, std::nullopt), onBattery(10, 7.5)});
  EXPECT_EQ(result[0].averageWatts, 7.5);
  EXPECT_EQ(result[0].totalWattHours, std::nullopt);
}

TEST(PowerSegmentAccumulator, AGapLeavesThePlainMeanAndNoEnergy) {
  // The long stay at 10 W would dominate a mean weighted by time.
  const auto result = segments({onBattery(0, 10.0), onBattery(100, 10.0), onBattery(221, 40.0)});
  EXPECT_DOUBLE_EQ(*result[0].averageWatts, (10.0 + 10.0 + 40.0) / 3.0);
  EXPECT_EQ(result[0].totalWattHours, std::nullopt);
}

TEST(PowerSegmentAccumulator, AnIntervalOfExactlyTheLimitIsNoGap) {
  const auto result = segments({onBattery(0, 10.0), onBattery(120, 10.0)});
  EXPECT_DOUBLE_EQ(*result[0].totalWattHours, 10.0 * 120.0 / 3600.0);
}

TEST(PowerSegmentAccumulator, WithoutALimitThereIsNoGap) {
  const auto result = segments({onBattery(0, 10.0), onBattery(7200, 10.0)}, std::nullopt);
  EXPECT_DOUBLE_EQ(*result[0].totalWattHours, 20.0);
}

TEST(PowerSegmentAccumulator, ASampleWithoutWattsMakesItsNeighboursNeighbours) {
  const auto result =
      segments({onBattery(0, 10.0), onBattery(60, std::nullopt), onBattery(120, 20.0)});
  EXPECT_DOUBLE_EQ(*result[0].totalWattHours, 15.0 * 120.0 / 3600.0);
  EXPECT_EQ(result[0].sampleCount, 3);
  EXPECT_EQ(result[0].wattSampleCount, 2);
}

TEST(PowerSegmentAccumulator, TwoWattSamplesOfOneInstantHaveNoEnergyAndThePlainMean) {
  const auto result = segments({onBattery(0, 10.0), onBattery(0, 20.0)});
  EXPECT_EQ(result[0].totalWattHours, 0.0);
  EXPECT_EQ(result[0].averageWatts, 15.0);
}

TEST(PowerSegmentAccumulator, AClockThatGoesBackAddsNothing) {
  const auto result = segments({onBattery(100, 10.0), onBattery(40, 10.0)});
  EXPECT_EQ(result[0].totalWattHours, 0.0);
  EXPECT_EQ(result[0].durationSeconds, 0.0);
  EXPECT_EQ(result[0].averageWatts, 10.0);
}

TEST(PowerSegmentAccumulator, PercentagesAreTheFirstAndTheLastPresentOnes) {
  std::vector<PowerSamplePoint> points;
  for (const std::optional<std::int64_t> percent :
       {std::optional<std::int64_t>{}, {80}, {79}, {}}) {
    points.push_back(onBattery(static_cast<double>(points.size()), 1.0));
    points.back().batteryPercent = percent;
  }
  const auto result = segments(points);
  EXPECT_EQ(result[0].batteryPercentStart, 80);
  EXPECT_EQ(result[0].batteryPercentEnd, 79);
  EXPECT_EQ(result[0].batteryPercentDelta, -1);
}

TEST(PowerSegmentAccumulator, CanBeAskedInBetween) {
  PowerSegmentAccumulator accumulator{120.0};
  accumulator.ingest(onBattery(0, 10.0));
  EXPECT_THAT(accumulator.materialize(), SizeIs(1));
  accumulator.ingest(onBattery(10, 10.0));
  const auto now = accumulator.materialize();
  ASSERT_THAT(now, SizeIs(1));
  EXPECT_EQ(now[0].sampleCount, 2);
}

/// Samples of changing sources, in ascending order of time. Only within a property.
std::vector<PowerSamplePoint> anyPoints() {
  std::vector<PowerSamplePoint> points;
  double seconds = 0.0;
  const auto count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    seconds += *rc::gen::inRange(0, 150);
    const auto watts = *rc::gen::arbitrary<bool>()
                           ? std::optional<double>{*rc::gen::inRange(0, 400) / 8.0}
                           : std::nullopt;
    points.push_back(*rc::gen::weightedElement<bool>({{3, true}, {1, false}})
                         ? onBattery(seconds, watts)
                         : onAC(seconds, watts));
  }
  return points;
}

TEST(PowerSegmentAccumulator, SegmentsPartitionTheSamples) {
  EXPECT_TRUE(rc::check([] {
    const auto points = anyPoints();
    std::size_t next = 0;
    std::int64_t index = 0;
    for (const PowerSessionPowerSegment& segment : segments(points)) {
      RC_ASSERT(segment.index == index++);
      RC_ASSERT(segment.sampleCount > 0);
      RC_ASSERT(segment.startedAt == points[next].timestamp);
      std::int64_t wattSamples = 0;
      for (std::int64_t i = 0; i < segment.sampleCount; ++i, ++next) {
        RC_ASSERT(points[next].sourceKind == segment.sourceKind);
        RC_ASSERT(points[next].acConnected == segment.acConnected);
        wattSamples += points[next].watts ? 1 : 0;
      }
      RC_ASSERT(segment.wattSampleCount == wattSamples);
      RC_ASSERT(segment.endedAt == points[next - 1].timestamp);
      // In brackets of its own: the macro evaluates both sides of its operators.
      RC_ASSERT((next == points.size() || points[next].sourceKind != segment.sourceKind));
    }
    RC_ASSERT(next == points.size());
  }));
}

TEST(PowerSegmentAccumulator, EnergyAddsUpOverASplitWithoutAGap) {
  EXPECT_TRUE(rc::check([] {
    std::vector<PowerSamplePoint> points;
    double seconds = 0.0;
    const auto count = *rc::gen::inRange<std::size_t>(3, 40);
    for (std::size_t i = 0; i < count; ++i) {
      seconds += *rc::gen::inRange(1, 120);
      points.push_back(onBattery(seconds, *rc::gen::inRange(0, 400) / 8.0));
    }
    // The sample at the split ends one half and begins the other.
    const auto split = *rc::gen::inRange<std::size_t>(1, count - 1);
    const auto middle = points.begin() + static_cast<std::ptrdiff_t>(split);
    const auto whole = segments(points);
    const auto first = segments({points.begin(), middle + 1});
    const auto second = segments({middle, points.end()});
    RC_ASSERT(std::abs(*whole[0].totalWattHours -
                       (*first[0].totalWattHours + *second[0].totalWattHours)) < 1e-9);
  }));
}

}  // namespace
}  // namespace quorvex
