#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SampleRecords.h"
#include "StatsRow.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using Kind = StatCell::Kind;

StatCell cellOf(Kind kind, const SystemPowerState& state, const AppSettings& settings = {}) {
  for (const StatCell& cell : statsRow(state, settings)) {
    if (cell.kind == kind) {
      return cell;
    }
  }
  return {.text = "no such cell"};
}

std::vector<Kind> kindsOf(const SystemPowerState& state, const AppSettings& settings) {
  std::vector<Kind> kinds;
  for (const StatCell& cell : statsRow(state, settings)) {
    kinds.push_back(cell.kind);
  }
  return kinds;
}

BatteryInfo batteryOf(std::int64_t percent) {
  BatteryInfo battery = samples::battery();
  battery.chargePercent = percent;
  return battery;
}

/// Plugged in at 20 % and losing 5 W all the same.
BatteryInfo drainingBattery() {
  BatteryInfo battery = samples::batteryAt(-5.0);
  battery.chargePercent = 20;
  battery.acConnected = true;
  battery.adapterWatts = 30;
  return battery;
}

TEST(StatsRowTests, PluggedInAndDrainingIsOrangeWithTheLowSymbol) {
  const StatCell cell = cellOf(Kind::battery, {.battery = drainingBattery()});
  EXPECT_EQ(cell.text, "20%");
  EXPECT_EQ(cell.symbol, "battery.25");
  EXPECT_EQ(cell.caption, "Plugged in, draining");
  EXPECT_EQ(cell.color, ColorName::orange);
  EXPECT_EQ(cell.accessibilityText, "Battery: 20%, Plugged in, draining");
}

TEST(StatsRowTests, DrainingWithATimeRemainingTellsTheTime) {
  BatteryInfo battery = drainingBattery();
  battery.timeRemaining = 125;
  battery.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  EXPECT_EQ(batteryCaption(battery), "2h 5m left");
}

TEST(StatsRowTests, FullOnACIsFullEvenIfSlightlyNegative) {
  BatteryInfo battery = batteryOf(100);
  battery.acConnected = true;
  battery.isFullyCharged = true;
  battery.wattage = -1.5;
  battery.timeRemaining = 10;
  EXPECT_EQ(batteryCaption(battery), "Full");
  EXPECT_EQ(statsBatterySymbol(battery), "battery.100");
  EXPECT_EQ(batteryPercentColor(battery), ColorName::primary);
}

TEST(StatsRowTests, WattageOfExactlyMinus1IsNotDraining) {
  BatteryInfo battery = drainingBattery();
  battery.wattage = -1.0;
  EXPECT_EQ(batteryCaption(battery), "On AC");
  EXPECT_EQ(batteryPercentColor(battery), ColorName::red);
  battery.wattage = -1.01;
  EXPECT_EQ(batteryCaption(battery), "Plugged in, draining");
  EXPECT_EQ(batteryPercentColor(battery), ColorName::orange);
}

TEST(StatsRowTests, CaptionsInTheirOrder) {
  BatteryInfo battery = samples::battery();
  EXPECT_EQ(batteryCaption(battery), "Battery");
  battery.acConnected = true;
  EXPECT_EQ(batteryCaption(battery), "On AC");
  battery.isCharging = true;
  EXPECT_EQ(batteryCaption(battery), "Charging");
  battery.wattage = -5.0;
  EXPECT_EQ(batteryCaption(battery), "Plugged in, draining");
  battery.timeRemaining = 65;
  battery.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  EXPECT_EQ(batteryCaption(battery), "1h 5m to full");
  battery.isFullyCharged = true;
  EXPECT_EQ(batteryCaption(battery), "Full");
}

TEST(StatsRowTests, PercentageColoursByCharge) {
  EXPECT_EQ(batteryPercentColor(batteryOf(20)), ColorName::red);
  EXPECT_EQ(batteryPercentColor(batteryOf(21)), ColorName::yellow);
  EXPECT_EQ(batteryPercentColor(batteryOf(50)), ColorName::yellow);
  EXPECT_EQ(batteryPercentColor(batteryOf(51)), ColorName::primary);
}

TEST(StatsRowTests, PercentageIsGreenWhileCharging) {
  BatteryInfo battery = batteryOf(5);
  battery.isCharging = true;
  EXPECT_EQ(batteryPercentColor(battery), ColorName::green);
}

TEST(StatsRowTests, BatterySymbolByCharge) {
  EXPECT_EQ(statsBatterySymbol(batteryOf(100)), "battery.75");
  EXPECT_EQ(statsBatterySymbol(batteryOf(51)), "battery.75");
  EXPECT_EQ(statsBatterySymbol(batteryOf(50)), "battery.50");
  EXPECT_EQ(statsBatterySymbol(batteryOf(26)), "battery.50");
  EXPECT_EQ(statsBatterySymbol(batteryOf(25)), "battery.25");
}

TEST(StatsRowTests, FullSymbolIsForAFullBatteryOnly) {
  BatteryInfo battery = batteryOf(97);
  battery.isFullyCharged = true;
  EXPECT_EQ(statsBatterySymbol(battery), "battery.100");
}

TEST(StatsRowTests, ChargingSymbolGoesBeforeTheCharge) {
  BatteryInfo battery = batteryOf(10);
  battery.isCharging = true;
  EXPECT_EQ(statsBatterySymbol(battery), "battery.100.bolt");
  battery.acConnected = true;
  battery.wattage = -5.0;
  EXPECT_EQ(statsBatterySymbol(battery), "battery.25");
}

TEST(StatsRowTests, PowerCellShowsTheTotal) {
  const StatCell cell = cellOf(Kind::power, {.battery = samples::batteryAt(-12.34)});
  EXPECT_EQ(cell.text, "12.3W");
  EXPECT_EQ(cell.caption, "Power");
  EXPECT_EQ(cell.help, "Current total power");
  EXPECT_EQ(cell.symbol, "bolt.fill");
}

TEST(StatsRowTests, PowerCellWithoutReadingHasNoData) {
  const StatCell cell = cellOf(Kind::power, {});
  EXPECT_EQ(cell.text, "No Data");
  EXPECT_EQ(cell.symbol, "bolt.slash");
}

TEST(StatsRowTests, ThermalCellShowsTheRepresentativeReadingInTheStatesColour) {
  SystemPowerState state{.thermal = {.state = ThermalState::serious},
                         .sensors = {{"TC0P", "CPU Proximity", 54.6}}};
  const StatCell cell = cellOf(Kind::thermal, state);
  EXPECT_EQ(cell.text, "55°C");
  EXPECT_EQ(cell.caption, "CPU Avg");
  EXPECT_EQ(cell.color, ColorName::orange);
  EXPECT_EQ(cell.help, "Thermal state: Serious");
  EXPECT_EQ(cellOf(Kind::thermal, state, {.useFahrenheit = true}).text, "130°F");
}

TEST(StatsRowTests, ThermalCellWithoutReadingHasNoData) {
  const StatCell cell = cellOf(Kind::thermal, {});
  EXPECT_EQ(cell.text, "No Data");
  EXPECT_EQ(cell.help, "Thermal state: Nominal");
}

TEST(StatsRowTests, FanCellSortsByID) {
  const SystemPowerState state{.fans = {{.id = 1, .name = "Right", .currentRPM = 1300},
                                        {.id = 0, .name = "Left", .currentRPM = 1200}}};
  const StatCell cell = cellOf(Kind::fan, state);
  EXPECT_EQ(cell.text, "1200 / 1300");
  EXPECT_EQ(cell.help, "Fan RPM");
  EXPECT_EQ(cell.symbol, "fan");
}

TEST(StatsRowTests, FanCellWithoutFansHasNoData) {
  const StatCell cell = cellOf(Kind::fan, {});
  EXPECT_EQ(cell.text, "No Data");
  EXPECT_EQ(cell.help, "Fan Telemetry");
}

TEST(StatsRowTests, CellsStandInTheirOrder) {
  EXPECT_THAT(kindsOf({.battery = samples::battery()}, {}),
              ElementsAre(Kind::battery, Kind::power, Kind::thermal, Kind::fan));
}

TEST(StatsRowTests, MachineWithoutBatteryHasNoBatteryCell) {
  EXPECT_THAT(kindsOf({}, {}), ElementsAre(Kind::power, Kind::thermal, Kind::fan));
}

TEST(StatsRowTests, EachCellCanBeSwitchedOff) {
  const SystemPowerState state{.battery = samples::battery()};
  EXPECT_THAT(kindsOf(state, {.showBattery = false}),
              ElementsAre(Kind::power, Kind::thermal, Kind::fan));
  EXPECT_THAT(kindsOf(state, {.showPower = false}),
              ElementsAre(Kind::battery, Kind::thermal, Kind::fan));
  EXPECT_THAT(kindsOf(state, {.showThermal = false}),
              ElementsAre(Kind::battery, Kind::power, Kind::fan));
  EXPECT_THAT(kindsOf(state, {.showFans = false}),
              ElementsAre(Kind::battery, Kind::power, Kind::thermal));
}

}  // namespace
}  // namespace quorvex
