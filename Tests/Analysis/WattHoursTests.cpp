#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "ObservationBuilder.h"
#include "WattHours.h"

namespace quorvex {
namespace {

using observations::at;
using Points = std::vector<WattPoint>;

/// 4 to 12 points on a whole-second grid without equal times, in ascending order.
Points generatedPoints() {
  const auto steps = *rc::gen::container<std::vector<int>>(*rc::gen::inRange<std::size_t>(4, 13),
                                                           rc::gen::inRange(1, 200));
  Points points;
  int seconds = 0;
  for (const int step : steps) {
    seconds += step;
    points.push_back(
        {.timestamp = at(seconds), .watts = static_cast<double>(*rc::gen::inRange(0, 100))});
  }
  return points;
}

TEST(MaxSampleGap, IsFourIntervalsFrom120SecondsUp) {
  EXPECT_EQ(maxSampleGap(60.0), 4 * 60.0);
  EXPECT_EQ(maxSampleGap(31.0), 4 * 31.0);
  EXPECT_EQ(maxSampleGap(30.0), 120.0);
}

TEST(MaxSampleGap, IsNeverBelow120Seconds) {
  EXPECT_EQ(maxSampleGap(29.0), 120.0);
  EXPECT_EQ(maxSampleGap(2.0), 120.0);
  EXPECT_EQ(maxSampleGap(0.5), 120.0);
  EXPECT_EQ(maxSampleGap(0.0), 120.0);
  EXPECT_EQ(maxSampleGap(-60.0), 120.0);
  EXPECT_EQ(maxSampleGap(std::numeric_limits<double>::quiet_NaN()), 120.0);
}

TEST(WattHours, AreAbsentWithFewerThanTwoPoints) {
  EXPECT_EQ(wattHours(Points{}), std::nullopt);
  EXPECT_EQ(wattHours(Points{{at(0), 10.0}}), std::nullopt);
  EXPECT_EQ(wattHours(Points{}, 120.0), CoveredWattHours{});
  EXPECT_EQ(wattHours(Points{{at(0), 10.0}}, 120.0), CoveredWattHours{});
}

TEST(WattHours, AreTheMeanOfNeighboursTimesTheirTime) {
  const Points points{{at(0), 10.0}, {at(60), 20.0}, {at(180), 20.0}};
  const double expected = (15.0 * 60.0 + 20.0 * 120.0) / 3600.0;  // W * s / (s / h)
  EXPECT_DOUBLE_EQ(wattHours(points).value(), expected);
  EXPECT_DOUBLE_EQ(wattHours(points, 120.0).wattHours.value(), expected);
  EXPECT_FALSE(wattHours(points, 120.0).hasGap);
}

TEST(WattHours, SortThePointsFirst) {
  const Points points{{at(180), 20.0}, {at(0), 10.0}, {at(60), 20.0}};
  const double expected = (15.0 * 60.0 + 20.0 * 120.0) / 3600.0;
  EXPECT_DOUBLE_EQ(wattHours(points).value(), expected);
  EXPECT_DOUBLE_EQ(wattHours(points, 120.0).wattHours.value(), expected);
}

TEST(WattHours, KeepTheOrderOfPointsOfOneInstant) {
  // 10 W up to 60 s, where it jumps to 30 W.
  const Points points{{at(120), 30.0}, {at(0), 10.0}, {at(60), 10.0}, {at(60), 30.0}};
  const double expected = (10.0 * 60.0 + 30.0 * 60.0) / 3600.0;
  EXPECT_DOUBLE_EQ(wattHours(points).value(), expected);
  EXPECT_DOUBLE_EQ(wattHours(points, 120.0).wattHours.value(), expected);
}

TEST(WattHours, WithoutLimitJoinPointsHoweverFarApart) {
  EXPECT_DOUBLE_EQ(wattHours(Points{{at(0), 10.0}, {at(7200), 10.0}}).value(), 10.0 * 2.0);
}

TEST(WattHours, WithoutLimitAreZeroForTwoPointsOfOneInstant) {
  EXPECT_EQ(wattHours(Points{{at(5), 10.0}, {at(5), 20.0}}), 0.0);
}

TEST(WattHours, WithLimitAreAbsentForTwoPointsOfOneInstantWithoutAGap) {
  EXPECT_EQ(wattHours(Points{{at(5), 10.0}, {at(5), 20.0}}, 120.0), CoveredWattHours{});
}

TEST(WattHours, WithLimitAreAbsentWithAGapWhenTheOnlyIntervalIsTooLong) {
  const CoveredWattHours covered =
      wattHours(Points{{at(0), 10.0}, {at(130), 10.0}}, maxSampleGap(2.0));
  EXPECT_EQ(covered.wattHours, std::nullopt);
  EXPECT_TRUE(covered.hasGap);
}

TEST(WattHours, WithLimitTakeAnIntervalOfExactlyTheLimit) {
  const CoveredWattHours covered = wattHours(Points{{at(0), 30.0}, {at(120), 30.0}}, 120.0);
  EXPECT_DOUBLE_EQ(covered.wattHours.value(), 30.0 * 120.0 / 3600.0);
  EXPECT_FALSE(covered.hasGap);
}

TEST(WattHours, WithLimitLeaveOutOnlyTheGap) {
  const Points points{{at(0), 10.0}, {at(60), 10.0}, {at(1060), 40.0}, {at(1120), 40.0}};
  const CoveredWattHours covered = wattHours(points, 120.0);
  EXPECT_DOUBLE_EQ(covered.wattHours.value(), (10.0 * 60.0 + 40.0 * 60.0) / 3600.0);
  EXPECT_TRUE(covered.hasGap);
}

RC_GTEST_PROP(WattHours, OfAWholeAreThoseOfItsHalvesThatShareAPoint, ()) {
  const Points points = generatedPoints();
  const auto cut = *rc::gen::inRange<std::size_t>(1, points.size() - 1);
  const std::span<const WattPoint> all{points};
  const double halves = *wattHours(all.first(cut + 1)) + *wattHours(all.subspan(cut));
  RC_ASSERT(std::abs(*wattHours(all) - halves) < 1e-9);

  const double limit = 200.0;  // above every generated interval
  const double coveredHalves = *wattHours(all.first(cut + 1), limit).wattHours +
                               *wattHours(all.subspan(cut), limit).wattHours;
  RC_ASSERT(std::abs(*wattHours(all, limit).wattHours - coveredHalves) < 1e-9);
}

RC_GTEST_PROP(WattHours, AreTheSameInAnyOrderOfPointsOfDifferentTimes, ()) {
  const Points points = generatedPoints();
  Points mixed = points;
  const auto shift = *rc::gen::inRange<std::size_t>(0, points.size());
  std::rotate(mixed.begin(), mixed.begin() + static_cast<std::ptrdiff_t>(shift), mixed.end());
  std::swap(mixed.front(), mixed.back());
  RC_ASSERT(wattHours(mixed) == wattHours(points));
  RC_ASSERT(wattHours(mixed, 100.0) == wattHours(points, 100.0));
}

}  // namespace
}  // namespace quorvex
