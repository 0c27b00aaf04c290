#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BatteryGauge.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;

BatteryInfo batteryOf(std::int64_t percent) {
  BatteryInfo battery = samples::battery();
  battery.chargePercent = percent;
  return battery;
}

BatteryInfo drainingBattery() {
  BatteryInfo battery = samples::batteryAt(-5.0);
  battery.acConnected = true;
  return battery;
}

std::string statusOf(const BatteryInfo& battery) {
  return batteryGauge(battery).rows.at(0).value;
}

std::vector<std::string> labelsOf(const BatteryInfo& battery) {
  std::vector<std::string> labels;
  for (const BatteryGaugeRow& row : batteryGauge(battery).rows) {
    labels.push_back(row.label);
  }
  return labels;
}

const BatteryGaugeRow* rowOf(const BatteryGauge& gauge, const std::string& label) {
  for (const BatteryGaugeRow& row : gauge.rows) {
    if (row.label == label) {
      return &row;
    }
  }
  return nullptr;
}

TEST(BatteryGaugeTests, RowsStandInTheirOrder) {
  EXPECT_THAT(labelsOf(samples::battery()),
              ElementsAre("Status", "Health", "Cycles", "Power", "Temp"));
}

TEST(BatteryGaugeTests, WeakChargerAndTimeFollowTheStatus) {
  BatteryInfo battery = drainingBattery();
  battery.timeRemaining = 125;
  battery.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  EXPECT_THAT(labelsOf(battery), ElementsAre("Status", "Weak Charger", "Remaining", "Health",
                                             "Cycles", "Power", "Temp"));
}

TEST(BatteryGaugeTests, ValuesHaveTheirFormats) {
  BatteryInfo battery = samples::batteryAt(-12.34);
  battery.temperature = 30.56;
  const BatteryGauge gauge = batteryGauge(battery);
  EXPECT_EQ(rowOf(gauge, "Health")->value, "96% (Good)");
  EXPECT_EQ(rowOf(gauge, "Cycles")->value, "120");
  EXPECT_EQ(rowOf(gauge, "Power")->value, "-12.3W");
  EXPECT_EQ(rowOf(gauge, "Temp")->value, "30.6°C");
}

TEST(BatteryGaugeTests, HealthExplainsItself) {
  const BatteryGauge gauge = batteryGauge(samples::battery());
  EXPECT_EQ(rowOf(gauge, "Health")->help,
            "Smart Battery estimate — fluctuates with temperature, charge state, and recent load. "
            "Don't interpret short-term changes as permanent degradation.");
}

TEST(BatteryGaugeTests, StatusWordsInTheirOrder) {
  BatteryInfo battery = samples::battery();
  EXPECT_EQ(statusOf(battery), "Discharging");
  battery.acConnected = true;
  EXPECT_EQ(statusOf(battery), "On AC");
  battery.isCharging = true;
  EXPECT_EQ(statusOf(battery), "Charging");
  battery.wattage = -5.0;
  EXPECT_EQ(statusOf(battery), "Plugged In, Draining");
  battery.isFullyCharged = true;
  EXPECT_EQ(statusOf(battery), "Full");
}

TEST(BatteryGaugeTests, FullOnACIsFullEvenIfSlightlyNegative) {
  BatteryInfo battery = drainingBattery();
  battery.wattage = -1.5;
  battery.isFullyCharged = true;
  const BatteryGauge gauge = batteryGauge(battery);
  EXPECT_EQ(gauge.rows.at(0).value, "Full");
  EXPECT_EQ(rowOf(gauge, "Weak Charger"), nullptr);
}

TEST(BatteryGaugeTests, WattageOfExactlyMinus1IsNotDraining) {
  BatteryInfo battery = drainingBattery();
  battery.wattage = -1.0;
  EXPECT_EQ(statusOf(battery), "On AC");
  EXPECT_EQ(rowOf(batteryGauge(battery), "Weak Charger"), nullptr);
  EXPECT_EQ(batteryIcon(battery), "battery.100");
}

TEST(BatteryGaugeTests, WeakChargerIsAnOrangeBadge) {
  const BatteryGauge gauge = batteryGauge(drainingBattery());
  const BatteryGaugeRow* badge = rowOf(gauge, "Weak Charger");
  ASSERT_NE(badge, nullptr);
  EXPECT_TRUE(badge->isBadge);
  EXPECT_EQ(badge->symbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(badge->color, ColorName::orange);
}

TEST(BatteryGaugeTests, TimeIsLabelledByItsKind) {
  BatteryInfo battery = samples::battery();
  battery.timeRemaining = 65;
  EXPECT_EQ(rowOf(batteryGauge(battery), "Time")->value, "1h 5m");
  battery.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  EXPECT_EQ(rowOf(batteryGauge(battery), "To Full")->value, "1h 5m");
  battery.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  EXPECT_EQ(rowOf(batteryGauge(battery), "Remaining")->value, "1h 5m");
}

TEST(BatteryGaugeTests, IconByCharge) {
  EXPECT_EQ(batteryIcon(batteryOf(76)), "battery.100");
  EXPECT_EQ(batteryIcon(batteryOf(75)), "battery.75");
  EXPECT_EQ(batteryIcon(batteryOf(51)), "battery.75");
  EXPECT_EQ(batteryIcon(batteryOf(50)), "battery.50");
  EXPECT_EQ(batteryIcon(batteryOf(26)), "battery.50");
  EXPECT_EQ(batteryIcon(batteryOf(25)), "battery.25");
}

TEST(BatteryGaugeTests, IconOfAChargingBatteryGoesBeforeTheCharge) {
  BatteryInfo battery = batteryOf(10);
  battery.isCharging = true;
  EXPECT_EQ(batteryIcon(battery), "battery.100.bolt");
}

TEST(BatteryGaugeTests, IconOfADrainingBatteryGoesBeforeAll) {
  BatteryInfo battery = drainingBattery();
  battery.chargePercent = 90;
  battery.isCharging = true;
  EXPECT_EQ(batteryIcon(battery), "battery.25");
  battery.chargePercent = 20;
  battery.isCharging = false;
  EXPECT_EQ(batteryIcon(battery), "battery.25");
}

TEST(BatteryGaugeTests, BarStaysWithinItsBounds) {
  EXPECT_EQ(batteryGauge(batteryOf(80)).fraction, 0.8);
  EXPECT_EQ(batteryGauge(batteryOf(80)).percentText, "80%");
  EXPECT_EQ(batteryGauge(batteryOf(130)).fraction, 1.0);
  EXPECT_EQ(batteryGauge(batteryOf(-3)).fraction, 0.0);
}

TEST(BatteryGaugeTests, BarIsColouredAsThePercentageAndGreenWhereThatIsPlain) {
  EXPECT_EQ(batteryGauge(batteryOf(20)).color, ColorName::red);
  EXPECT_EQ(batteryGauge(batteryOf(50)).color, ColorName::yellow);
  EXPECT_EQ(batteryGauge(batteryOf(51)).color, ColorName::green);
  EXPECT_EQ(batteryGauge(drainingBattery()).color, ColorName::orange);
}

TEST(BatteryGaugeTests, IsReadOutAsOneText) {
  EXPECT_EQ(batteryGauge(samples::battery()).accessibilityText, "Battery: 80%, Discharging");
}

}  // namespace
}  // namespace quorvex
