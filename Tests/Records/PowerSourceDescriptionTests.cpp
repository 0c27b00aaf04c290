#include <gtest/gtest.h>

#include "PowerSourceDescription.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

SystemPowerState unplugged(double watts) {
  return SystemPowerState{.battery = samples::batteryAt(watts)};
}

SystemPowerState onAC(double watts) {
  SystemPowerState state = unplugged(watts);
  state.battery->acConnected = true;
  return state;
}

SystemPowerState desktop(double watts) {
  return SystemPowerState{.power = samples::silicon(watts)};
}

struct StoredForm {
  std::optional<double> watts;
  std::string_view confidence;
  std::string_view kind;
  std::string_view label;

  bool operator==(const StoredForm&) const = default;
};

StoredForm storedForm(const SystemPowerState& state) {
  return {totalWatts(state), totalWattsConfidence(state), powerSourceKind(state),
          powerSourceLabel(state)};
}

TEST(PowerSourceInfo, OfADrawIsTheReading) {
  EXPECT_EQ(powerSourceInfo(unplugged(-12.0)),
            (PowerSourceInfo{"batteryDischarge", "Battery draw",
                             "SmartBattery whole-system draw while unplugged"}));
}

TEST(PowerSourceInfo, OfASupplementIsTheReading) {
  EXPECT_EQ(powerSourceInfo(onAC(-0.5)),
            (PowerSourceInfo{"batterySupplement", "Battery supplement",
                             "Battery is supplementing adapter input; not total system load"}));
}

TEST(PowerSourceInfo, OfAChargeIsTheReading) {
  SystemPowerState state = onAC(20.0);
  state.battery->isCharging = true;
  EXPECT_EQ(powerSourceInfo(state),
            (PowerSourceInfo{"batteryChargeInput", "Battery charge input",
                             "SmartBattery charge rate; not total system load"}));
}

TEST(PowerSourceInfo, OfSiliconIsTheReading) {
  EXPECT_EQ(powerSourceInfo(desktop(4.0)),
            (PowerSourceInfo{"ioReportSiliconPower", "IOReport silicon power",
                             "CPU/GPU/ANE/DRAM energy model"}));
}

TEST(PowerSourceInfo, OnACWithAPositiveWattageThatIsNoChargeIsAnIdleBattery) {
  EXPECT_EQ(powerSourceInfo(onAC(20.0)), (PowerSourceInfo{"onACBatteryIdle", "On AC, battery idle",
                                                          "No live discharge or charge rate"}));
}

TEST(PowerSourceInfo, UnpluggedAtZeroIsTheBatteryController) {
  EXPECT_EQ(powerSourceInfo(unplugged(0.0)),
            (PowerSourceInfo{"batteryController", "Battery controller",
                             "No live discharge or charge rate"}));
}

TEST(PowerSourceInfo, WithoutBatteryAndSiliconIsUnavailable) {
  EXPECT_EQ(powerSourceInfo({}),
            (PowerSourceInfo{"unavailable", "Unavailable", "No usable power source"}));
}

TEST(PowerSourceInfo, AgreesWithTheReadingWheneverThereIsOne) {
  SystemPowerState charging = onAC(20.0);
  charging.battery->isCharging = true;
  for (const SystemPowerState& state : {unplugged(-12.0), onAC(-3.0), charging, desktop(4.0)}) {
    const auto reading = state.primaryPowerReading();
    ASSERT_TRUE(reading);
    const PowerSourceInfo info = powerSourceInfo(state);
    EXPECT_EQ(info.kind, rawValue(reading->kind));
    EXPECT_EQ(info.label, reading->label);
    EXPECT_EQ(info.summary, reading->summary);
  }
}

TEST(StoredPowerSource, OfAReadingIsItsWattsConfidenceKindAndLabel) {
  EXPECT_EQ(storedForm(unplugged(-12.34)),
            (StoredForm{12.34, "batteryTerminal", "batteryDischarge", "Battery draw"}));
  EXPECT_EQ(storedForm(desktop(4.0)),
            (StoredForm{4.0, "ioReport", "ioReportSiliconPower", "IOReport silicon power"}));
}

TEST(StoredPowerSource, OfAnIdleBatteryOnACIsUnavailableWithALabelOfItsOwn) {
  EXPECT_EQ(storedForm(onAC(20.0)),
            (StoredForm{std::nullopt, "unavailable", "unavailable", "On AC, battery idle"}));
}

TEST(StoredPowerSource, OfAnUnpluggedBatteryAtZeroIsUnavailable) {
  EXPECT_EQ(storedForm(unplugged(0.0)),
            (StoredForm{std::nullopt, "unavailable", "unavailable", "Unavailable"}));
}

TEST(StoredPowerSource, OfNothingIsUnavailable) {
  EXPECT_EQ(storedForm({}),
            (StoredForm{std::nullopt, "unavailable", "unavailable", "Unavailable"}));
}

TEST(StoredPowerSource, OfZeroWattsOfSiliconIsAReading) {
  EXPECT_EQ(storedForm(desktop(0.0)),
            (StoredForm{0.0, "ioReport", "ioReportSiliconPower", "IOReport silicon power"}));
}

}  // namespace
}  // namespace quorvex
