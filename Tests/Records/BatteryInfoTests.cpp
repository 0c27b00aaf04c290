#include <gtest/gtest.h>

#include "BatteryInfo.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

BatteryInfo onAC(double watts) {
  BatteryInfo info = samples::batteryAt(watts);
  info.acConnected = true;
  return info;
}

TEST(BatteryInfo, OneWattExactlyIsNotDraining) {
  EXPECT_FALSE(onAC(-1.0).isInsufficientCharger());
  EXPECT_FALSE(onAC(-1.0).isPluggedInAndDraining());
}

TEST(BatteryInfo, MoreThanOneWattIsDraining) {
  EXPECT_TRUE(onAC(-1.01).isInsufficientCharger());
  EXPECT_TRUE(onAC(-1.01).isPluggedInAndDraining());
}

TEST(BatteryInfo, FullBatteryIsNeverDraining) {
  BatteryInfo info = onAC(-5.0);
  info.isFullyCharged = true;
  EXPECT_FALSE(info.isInsufficientCharger());
  EXPECT_TRUE(info.chargerOvercomingCurrentLoad());
}

TEST(BatteryInfo, UnpluggedIsNeitherDrainingOnACNorOvercome) {
  const BatteryInfo info = samples::batteryAt(-20.0);
  EXPECT_FALSE(info.isPluggedInAndDraining());
  EXPECT_FALSE(info.chargerOvercomingCurrentLoad());
}

TEST(BatteryInfo, SmallDrainOnACCountsAsOvercome) {
  EXPECT_FALSE(onAC(-0.5).isPluggedInAndDraining());
  EXPECT_TRUE(onAC(-0.5).chargerOvercomingCurrentLoad());
}

TEST(BatteryInfo, MinimumLoadIsDrainPlusRating) {
  BatteryInfo info = onAC(-3.0);
  info.adapterWatts = 30;
  EXPECT_DOUBLE_EQ(info.minimumObservedSystemLoadWatts().value(), 3.0 + 30.0);
}

TEST(BatteryInfo, MinimumLoadNeedsDrainAndRating) {
  EXPECT_EQ(onAC(-3.0).minimumObservedSystemLoadWatts(), std::nullopt);
  BatteryInfo holding = onAC(-1.0);
  holding.adapterWatts = 30;
  EXPECT_EQ(holding.minimumObservedSystemLoadWatts(), std::nullopt);
}

TEST(BatteryInfo, TimeUntilFullIsNoTimeToEmpty) {
  BatteryInfo info = samples::battery();
  info.timeRemaining = 45;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  EXPECT_EQ(info.timeToEmpty(), std::nullopt);
  EXPECT_EQ(info.timeToFullCharge(), 45);
}

TEST(BatteryInfo, TimeUntilEmptyIsNoTimeToFull) {
  BatteryInfo info = samples::battery();
  info.timeRemaining = 300;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  EXPECT_EQ(info.timeToEmpty(), 300);
  EXPECT_EQ(info.timeToFullCharge(), std::nullopt);
}

TEST(BatteryInfo, NoEstimateGivesNeitherTime) {
  EXPECT_EQ(samples::battery().timeToEmpty(), std::nullopt);
  EXPECT_EQ(samples::battery().timeToFullCharge(), std::nullopt);
}

}  // namespace
}  // namespace quorvex
