#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "HeroMetric.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::SizeIs;

SystemPowerState stateOf(const BatteryInfo& battery) {
  return {.battery = battery};
}

/// A machine whose one sensor stands for the CPU.
SystemPowerState stateAt(double celsius) {
  return {.sensors = {{"TC0P", "CPU Proximity", celsius}}};
}

HeroLine powerLine(const SystemPowerState& state) {
  return heroMetric(GraphMode::power, state, false).lines.at(0);
}

HeroLine temperatureLine(const SystemPowerState& state, bool useFahrenheit = false) {
  return heroMetric(GraphMode::temperature, state, useFahrenheit).lines.at(0);
}

TEST(HeroMetricTests, PowerShowsTheDischargeWithItsUnitApart) {
  const HeroMetric metric =
      heroMetric(GraphMode::power, stateOf(samples::batteryAt(-12.34)), false);
  ASSERT_THAT(metric.lines, SizeIs(1));
  const HeroLine& line = metric.lines.front();
  EXPECT_EQ(line.symbol, "bolt.fill");
  EXPECT_EQ(line.symbolColor, ColorName::yellow);
  EXPECT_EQ(line.number, "12.3");
  EXPECT_EQ(line.unit, "W");
  EXPECT_EQ(line.color, ColorName::orange);
  EXPECT_FALSE(line.isStatus);
  EXPECT_EQ(line.accessibilityText, "Battery draw: 12.3 watts");
  EXPECT_EQ(metric.stateLabel, std::nullopt);
}

TEST(HeroMetricTests, ChargeInputIsColouredAsCharging) {
  BatteryInfo battery = samples::batteryAt(15.1);
  battery.acConnected = true;
  battery.isCharging = true;
  EXPECT_EQ(powerLine(stateOf(battery)).color, ColorName::green);
  battery.wattage = 15.0;
  EXPECT_EQ(powerLine(stateOf(battery)).color, ColorName::orange);
}

TEST(HeroMetricTests, SupplementIsColouredAsLoad) {
  BatteryInfo battery = samples::batteryAt(-16.0);
  battery.acConnected = true;
  battery.isCharging = true;
  EXPECT_EQ(powerLine(stateOf(battery)).color, ColorName::red);
}

TEST(HeroMetricTests, WithoutBatteryAndReadingPowerIsBeingCollected) {
  const HeroLine line = powerLine({});
  EXPECT_EQ(line.number, "Collecting…");
  EXPECT_EQ(line.unit, "");
  EXPECT_TRUE(line.isStatus);
  EXPECT_EQ(line.accessibilityText, "Power: Collecting…");
}

TEST(HeroMetricTests, WithoutReadingAChargingBatterySaysSo) {
  BatteryInfo battery = samples::battery();
  battery.isCharging = true;
  battery.acConnected = true;
  EXPECT_EQ(powerLine(stateOf(battery)).number, "Charging…");
}

TEST(HeroMetricTests, WithoutReadingAConnectedBatterySaysOnAC) {
  BatteryInfo battery = samples::battery();
  battery.acConnected = true;
  EXPECT_EQ(powerLine(stateOf(battery)).number, "On AC");
}

TEST(HeroMetricTests, WithoutReadingAnUnpluggedBatteryIsBeingCollected) {
  EXPECT_EQ(powerLine(stateOf(samples::battery())).number, "Collecting…");
}

TEST(HeroMetricTests, TemperatureShowsTheRepresentativeReading) {
  SystemPowerState state = stateAt(54.6);
  state.thermal.state = ThermalState::fair;
  const HeroMetric metric = heroMetric(GraphMode::temperature, state, false);
  ASSERT_THAT(metric.lines, SizeIs(1));
  EXPECT_EQ(metric.lines.front().symbol, "thermometer.medium");
  EXPECT_EQ(metric.lines.front().number, "55");
  EXPECT_EQ(metric.lines.front().unit, "°C");
  EXPECT_EQ(metric.lines.front().accessibilityText, "CPU Avg: 55°C");
  EXPECT_EQ(metric.sourceLabel, "CPU Avg");
  EXPECT_EQ(metric.stateLabel, (ColoredText{"Fair", ColorName::yellow}));
}

TEST(HeroMetricTests, TemperatureInFahrenheit) {
  const HeroLine line = temperatureLine(stateAt(100.0), true);
  EXPECT_EQ(line.number, "212");
  EXPECT_EQ(line.unit, "°F");
}

TEST(HeroMetricTests, TemperatureIsOrangeAbove85AndRedAbove100) {
  EXPECT_EQ(temperatureLine(stateAt(85.0)).color, ColorName::primary);
  EXPECT_EQ(temperatureLine(stateAt(85.1)).color, ColorName::orange);
  EXPECT_EQ(temperatureLine(stateAt(100.0)).color, ColorName::orange);
  EXPECT_EQ(temperatureLine(stateAt(100.1)).color, ColorName::red);
  EXPECT_EQ(temperatureLine(stateAt(85.1), true).color, ColorName::orange);
}

TEST(HeroMetricTests, WithoutReadingTheTemperatureIsSecondaryAndThermal) {
  const HeroMetric metric = heroMetric(GraphMode::temperature, {}, false);
  EXPECT_EQ(metric.lines.at(0).number, "--");
  EXPECT_EQ(metric.lines.at(0).color, ColorName::secondary);
  EXPECT_EQ(metric.sourceLabel, "Thermal");
  EXPECT_EQ(metric.stateLabel, (ColoredText{"Nominal", ColorName::green}));
}

TEST(HeroMetricTests, NetworkShowsBothRates) {
  // Two interfaces: 1.0 + 0.5 MB/s in, 2 KB/s out; loopback does not count.
  const SystemPowerState state{
      .network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1, 1e6, 2e3),
                                                samples::interface(9, "utun0", 1, 1, 0.5e6, 0.0),
                                                samples::interface(1, "lo0", 1, 1, 9e6, 9e6)}}};
  const HeroMetric metric = heroMetric(GraphMode::network, state, false);
  ASSERT_THAT(metric.lines, SizeIs(2));
  EXPECT_EQ(metric.lines[0].symbol, "arrow.down");
  EXPECT_EQ(metric.lines[0].number, "1.5 MB/s");
  EXPECT_EQ(metric.lines[0].accessibilityText, "Download: 1.5 MB/s");
  EXPECT_EQ(metric.lines[1].symbol, "arrow.up");
  EXPECT_EQ(metric.lines[1].number, "2.0 KB/s");
  EXPECT_EQ(metric.lines[1].accessibilityText, "Upload: 2.0 KB/s");
}

TEST(HeroMetricTests, AbsentNetworkShowsZero) {
  const HeroMetric metric = heroMetric(GraphMode::network, {}, false);
  ASSERT_THAT(metric.lines, SizeIs(2));
  EXPECT_EQ(metric.lines[0].number, "0 B/s");
  EXPECT_EQ(metric.lines[1].number, "0 B/s");
}

TEST(HeroMetricTests, NumbersThatAreNotFiniteDoNotEndTheProgram) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(temperatureLine(stateAt(nan)).number, "nan");
  SystemPowerState silicon{.power = samples::silicon(1.0)};
  silicon.power->systemPower = std::numeric_limits<double>::infinity();
  EXPECT_EQ(powerLine(silicon).number, "inf");
}

}  // namespace
}  // namespace quorvex
