#include <gtest/gtest.h>

#include <limits>

#include "RefreshInterval.h"

namespace quorvex {
namespace {

TEST(RefreshIntervalTests, RoundsToTheNearestHalfSecond) {
  EXPECT_EQ(normalisedRefreshInterval(0.74), 0.5);
  EXPECT_EQ(normalisedRefreshInterval(0.75), 1.0);
  EXPECT_EQ(normalisedRefreshInterval(2.24), 2.0);
  EXPECT_EQ(normalisedRefreshInterval(2.25), 2.5);
}

TEST(RefreshIntervalTests, StaysWithinHalfASecondAndAMinute) {
  EXPECT_EQ(normalisedRefreshInterval(0.0), 0.5);
  EXPECT_EQ(normalisedRefreshInterval(-3.0), 0.5);
  EXPECT_EQ(normalisedRefreshInterval(60.2), 60.0);
  EXPECT_EQ(normalisedRefreshInterval(std::numeric_limits<double>::max()), 60.0);
  EXPECT_EQ(normalisedRefreshInterval(std::numeric_limits<double>::infinity()), 60.0);
  EXPECT_EQ(normalisedRefreshInterval(-std::numeric_limits<double>::infinity()), 0.5);
}

TEST(RefreshIntervalTests, NaNCountsAsTheDefault) {
  EXPECT_EQ(normalisedRefreshInterval(std::numeric_limits<double>::quiet_NaN()), 2.0);
}

TEST(RefreshIntervalTests, ApplyingWritesOnlyWhatDiffers) {
  EXPECT_EQ(applyRefreshInterval(2.0, 2.0, 2.0), RefreshIntervalChange{});
  EXPECT_EQ(applyRefreshInterval(5.0, 5.0, 2.0), (RefreshIntervalChange{.engine = 5.0}));
  EXPECT_EQ(applyRefreshInterval(1.74, 1.74, 1.5), (RefreshIntervalChange{.stored = 1.5}));
  EXPECT_EQ(applyRefreshInterval(500.0, 500.0, 2.0),
            (RefreshIntervalChange{.stored = 60.0, .engine = 60.0}));
}

TEST(RefreshIntervalTests, StepperMovesByHalfASecond) {
  const RefreshIntervalStepper stepper = refreshIntervalStepper(2.0);
  EXPECT_EQ(stepper.label, "Interval");
  EXPECT_EQ(stepper.value, 2.0);
  EXPECT_EQ(stepper.lowest, 0.5);
  EXPECT_EQ(stepper.highest, 60.0);
  EXPECT_EQ(stepper.step, 0.5);
  EXPECT_EQ(stepper.decreased, 1.5);
  EXPECT_EQ(stepper.increased, 2.5);
  EXPECT_TRUE(stepper.canDecrease);
  EXPECT_TRUE(stepper.canIncrease);
  EXPECT_FALSE(stepper.accessibilityLabel.empty());
  EXPECT_FALSE(stepper.decreaseLabel.empty());
  EXPECT_FALSE(stepper.increaseLabel.empty());
}

TEST(RefreshIntervalTests, StepperStopsAtItsLimits) {
  const RefreshIntervalStepper lowest = refreshIntervalStepper(0.5);
  EXPECT_FALSE(lowest.canDecrease);
  EXPECT_EQ(lowest.decreased, 0.5);
  EXPECT_TRUE(lowest.canIncrease);
  const RefreshIntervalStepper highest = refreshIntervalStepper(60.0);
  EXPECT_FALSE(highest.canIncrease);
  EXPECT_EQ(highest.increased, 60.0);
  EXPECT_TRUE(highest.canDecrease);
}

TEST(RefreshIntervalTests, StepperShowsTheNormalisedValue) {
  EXPECT_EQ(refreshIntervalStepper(1.74).value, 1.5);
}

}  // namespace
}  // namespace quorvex
