#include <gtest/gtest.h>

#include <limits>

#include "SampleRecords.h"
#include "SystemPowerState.h"

namespace quorvex {
namespace {

SystemPowerState unplugged(double watts) {
  SystemPowerState state;
  state.battery = samples::batteryAt(watts);
  return state;
}

SystemPowerState onAC(double watts, bool charging = false) {
  SystemPowerState state = unplugged(watts);
  state.battery->acConnected = true;
  state.battery->isCharging = charging;
  return state;
}

const PowerReading siliconReading{.watts = 4.0,
                                  .kind = PowerReadingKind::ioReportSiliconPower,
                                  .label = "IOReport silicon power",
                                  .summary = "CPU/GPU/ANE/DRAM energy model",
                                  .confidence = PowerReadingConfidence::ioReport};

TEST(SystemPowerState, UnpluggedDrawIsTheReading) {
  SystemPowerState state = unplugged(-12.34);
  state.power = samples::silicon(4.0);
  const PowerReading expected{.watts = 12.34,
                              .kind = PowerReadingKind::batteryDischarge,
                              .label = "Battery draw",
                              .summary = "SmartBattery whole-system draw while unplugged",
                              .confidence = PowerReadingConfidence::batteryTerminal};
  EXPECT_EQ(state.primaryPowerReading(), expected);
  EXPECT_DOUBLE_EQ(state.unattributedPower().value(), 12.34 - 4.0);
  EXPECT_EQ(state.batteryTerminalWatts(), -12.34);
  EXPECT_EQ(state.batteryDischargeWatts(), 12.34);
  EXPECT_EQ(state.batterySupplementWatts(), std::nullopt);
  EXPECT_EQ(state.batteryChargeInputWatts(), std::nullopt);
  EXPECT_EQ(state.siliconWatts(), 4.0);
}

TEST(SystemPowerState, SiliconAboveTheDrawLeavesZeroUnattributed) {
  SystemPowerState state = unplugged(-12.34);
  state.power = samples::silicon(15.0);
  EXPECT_EQ(state.primaryPowerReading().value().watts, 12.34);
  EXPECT_EQ(state.unattributedPower(), 0.0);
}

TEST(SystemPowerState, SmallDrainOnACIsASupplement) {
  const SystemPowerState state = onAC(-0.5);
  const PowerReading expected{
      .watts = 0.5,
      .kind = PowerReadingKind::batterySupplement,
      .label = "Battery supplement",
      .summary = "Battery is supplementing adapter input; not total system load",
      .confidence = PowerReadingConfidence::batteryTerminal};
  EXPECT_EQ(state.primaryPowerReading(), expected);
  EXPECT_FALSE(state.battery->isPluggedInAndDraining());
  EXPECT_TRUE(state.battery->chargerOvercomingCurrentLoad());
}

TEST(SystemPowerState, DrainOnACIsSupplementAndMinimumLoad) {
  SystemPowerState state = onAC(-3.0);
  state.battery->adapterWatts = 30;
  EXPECT_EQ(state.batterySupplementWatts(), 3.0);
  EXPECT_EQ(state.battery->minimumObservedSystemLoadWatts(), 33.0);
}

TEST(SystemPowerState, FullBatteryOnACStillSupplements) {
  SystemPowerState state = onAC(-3.0);
  state.battery->isFullyCharged = true;
  EXPECT_EQ(state.batterySupplementWatts(), 3.0);
}

TEST(SystemPowerState, ChargeInputGoesBeforeSilicon) {
  SystemPowerState state = onAC(20.0, true);
  state.power = samples::silicon(4.0);
  const PowerReading expected{.watts = 20.0,
                              .kind = PowerReadingKind::batteryChargeInput,
                              .label = "Battery charge input",
                              .summary = "SmartBattery charge rate; not total system load",
                              .confidence = PowerReadingConfidence::batteryTerminal};
  EXPECT_EQ(state.primaryPowerReading(), expected);
  EXPECT_EQ(state.unattributedPower(), std::nullopt);
}

TEST(SystemPowerState, ChargeInputDoesNotAskForAC) {
  SystemPowerState state = unplugged(20.0);
  state.battery->isCharging = true;
  EXPECT_EQ(state.batteryChargeInputWatts(), 20.0);
  EXPECT_EQ(state.primaryPowerReading().value().kind, PowerReadingKind::batteryChargeInput);
}

TEST(SystemPowerState, DischargeDoesNotAskForTheChargingFlag) {
  SystemPowerState state = unplugged(-8.0);
  state.battery->isCharging = true;
  EXPECT_EQ(state.primaryPowerReading().value().kind, PowerReadingKind::batteryDischarge);
}

TEST(SystemPowerState, PositiveWattageWithoutChargingFallsToSilicon) {
  SystemPowerState state = onAC(20.0);
  state.power = samples::silicon(4.0);
  EXPECT_EQ(state.primaryPowerReading(), siliconReading);
}

TEST(SystemPowerState, PositiveWattageWithoutChargingAndSiliconHasNoReading) {
  const SystemPowerState state = onAC(20.0);
  EXPECT_EQ(state.primaryPowerReading(), std::nullopt);
}

TEST(SystemPowerState, FullBatteryAtZeroOnACReportsSilicon) {
  SystemPowerState state = onAC(0.0);
  state.battery->isFullyCharged = true;
  EXPECT_EQ(state.primaryPowerReading(), std::nullopt);
  state.power = samples::silicon(4.0);
  EXPECT_EQ(state.primaryPowerReading(), siliconReading);
}

TEST(SystemPowerState, DesktopReportsSilicon) {
  SystemPowerState state;
  state.power = samples::silicon(4.0);
  EXPECT_EQ(state.primaryPowerReading(), siliconReading);
  EXPECT_EQ(state.batteryTerminalWatts(), std::nullopt);
  EXPECT_EQ(state.unattributedPower(), std::nullopt);
}

TEST(SystemPowerState, EmptyMachineHasNoReading) {
  EXPECT_EQ(SystemPowerState{}.primaryPowerReading(), std::nullopt);
  EXPECT_EQ(SystemPowerState{}.siliconWatts(), std::nullopt);
}

TEST(SystemPowerState, MissingSiliconIsNotIncomplete) {
  EXPECT_TRUE(SystemPowerState{}.siliconChannelsComplete());
  SystemPowerState state;
  state.power = samples::silicon(4.0);
  EXPECT_TRUE(state.siliconChannelsComplete());
  state.power->siliconChannelsComplete = false;
  EXPECT_FALSE(state.siliconChannelsComplete());
}

TEST(SystemPowerState, UnattributedPowerNeedsBatterySiliconAndDischarge) {
  EXPECT_EQ(unplugged(-5.0).unattributedPower(), std::nullopt);
  SystemPowerState idle = unplugged(0.0);
  idle.power = samples::silicon(1.0);
  EXPECT_EQ(idle.unattributedPower(), std::nullopt);
  SystemPowerState supplied = onAC(-5.0);
  supplied.power = samples::silicon(1.0);
  EXPECT_EQ(supplied.unattributedPower(), std::nullopt);
}

TEST(SystemPowerState, ACWithoutBatteryMovementKeepsTheTerminalValue) {
  SystemPowerState state = onAC(0.0);
  state.power = samples::silicon(4.0);
  EXPECT_EQ(state.batteryTerminalWatts(), 0.0);
  EXPECT_EQ(state.batterySupplementWatts(), std::nullopt);
  EXPECT_EQ(state.batteryDischargeWatts(), std::nullopt);
  EXPECT_EQ(state.batteryChargeInputWatts(), std::nullopt);
}

TEST(SystemPowerState, EqualityComparesEveryField) {
  const SystemPowerState state = unplugged(-5.0);
  SystemPowerState other = state;
  EXPECT_EQ(state, other);
  other.battery->serialNumber = "X";
  EXPECT_NE(state, other);
}

}  // namespace
}  // namespace quorvex
