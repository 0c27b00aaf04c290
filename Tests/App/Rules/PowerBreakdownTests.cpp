#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "PowerBreakdown.h"
#include "RulesSamples.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using samples::at;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A privileged sample of 3 W + 1 W + 0.5 W = 4.5 W, taken at the start of the day.
ProTelemetrySnapshot privilegedSample() {
  return {.isAvailable = true,
          .source = "powermetrics",
          .sampledAt = at(0),
          .cpuPowerWatts = 3.0,
          .gpuPowerWatts = 1.0,
          .anePowerWatts = 0.5};
}

SystemPowerState unplugged(double wattage) {
  SystemPowerState state;
  state.battery = samples::batteryAt(wattage);
  return state;
}

SystemPowerState fullOnAC() {
  SystemPowerState state;
  state.battery = samples::battery();
  state.battery->acConnected = true;
  state.battery->isFullyCharged = true;
  return state;
}

std::vector<std::string> labels(const std::vector<PowerBar>& bars) {
  std::vector<std::string> result;
  for (const PowerBar& bar : bars) {
    result.push_back(bar.label);
  }
  return result;
}

TEST(DisplayPowerReading, TellsKindAndBarOfEveryReading) {
  const auto display = [](PowerReadingKind kind) {
    return displayPowerReading(
        {.watts = 9.0, .kind = kind, .label = "label", .summary = "summary"});
  };
  EXPECT_EQ(display(PowerReadingKind::batteryDischarge),
            (DisplayPowerReading{9.0, "batteryDischarge", "label", "summary", "Battery", false}));
  EXPECT_EQ(display(PowerReadingKind::batteryChargeInput),
            (DisplayPowerReading{9.0, "batteryChargeInput", "label", "summary", "Battery", true}));
  EXPECT_EQ(display(PowerReadingKind::batterySupplement),
            (DisplayPowerReading{9.0, "batterySupplement", "label", "summary", "Battery", false}));
  EXPECT_EQ(
      display(PowerReadingKind::ioReportSiliconPower),
      (DisplayPowerReading{9.0, "ioReportSiliconPower", "label", "summary", "Silicon", false}));
}

TEST(CurrentPowerReading, ThePrimaryReadingGoesBeforeThePrivilegedOne) {
  const auto reading = currentPowerReading(unplugged(-12.0), privilegedSample(), at(1));
  ASSERT_TRUE(reading);
  EXPECT_EQ(reading->kind, "batteryDischarge");
  EXPECT_DOUBLE_EQ(reading->watts, 12.0);
}

TEST(CurrentPowerReading, APrivilegedSampleOf14SecondsServesWithoutAPrimaryReading) {
  const auto reading = currentPowerReading(fullOnAC(), privilegedSample(), at(14));
  ASSERT_TRUE(reading);
  EXPECT_EQ(*reading,
            (DisplayPowerReading{3.0 + 1.0 + 0.5, "proTelemetrySiliconPower",
                                 "Pro Telemetry silicon power",
                                 "Privileged powermetrics CPU/GPU/ANE sample", "Silicon", false}));
  EXPECT_EQ(powerSourceTitle(fullOnAC(), privilegedSample(), at(14)),
            "Pro Telemetry silicon power");
  EXPECT_EQ(powerSourceSummary(fullOnAC(), privilegedSample(), at(14)),
            "Privileged powermetrics CPU/GPU/ANE sample");
}

TEST(CurrentPowerReading, APrivilegedSampleIsFreshUpToAndIncluding15Seconds) {
  EXPECT_TRUE(currentPowerReading({}, privilegedSample(), at(15)));
  EXPECT_FALSE(currentPowerReading({}, privilegedSample(), at(15.1)));
}

TEST(CurrentPowerReading, APrivilegedSampleOf16SecondsIsStaleAndACReadsIdle) {
  EXPECT_FALSE(currentPowerReading(fullOnAC(), privilegedSample(), at(16)));
  EXPECT_EQ(powerSourceTitle(fullOnAC(), privilegedSample(), at(16)), "On AC, battery idle");
  EXPECT_EQ(powerSourceSummary(fullOnAC(), privilegedSample(), at(16)),
            "Battery is full on AC; controller reports 0W");
}

TEST(CurrentPowerReading, APrivilegedSampleOf16SecondsIsStaleAndADesktopHasNoSource) {
  EXPECT_FALSE(currentPowerReading({}, privilegedSample(), at(16)));
  EXPECT_EQ(powerSourceTitle({}, privilegedSample(), at(16)), "Unavailable");
  EXPECT_EQ(powerSourceSummary({}, privilegedSample(), at(16)), "No usable power source");
}

TEST(CurrentPowerReading, AnIdleBatteryOffACIsUnavailable) {
  EXPECT_EQ(powerSourceTitle(unplugged(0.0), std::nullopt, at(0)), "Unavailable");
  EXPECT_EQ(powerSourceSummary(unplugged(0.0), std::nullopt, at(0)), "No usable power source");
}

TEST(PowerBreakdown, ThePrimaryReadingHeadsThePanel) {
  SystemPowerState state = unplugged(-12.0);
  const PowerBreakdown breakdown = powerBreakdown(state, {}, std::nullopt, at(0));
  EXPECT_EQ(breakdown.total.text, "12.0W");
  EXPECT_EQ(breakdown.title, "Battery draw");
  EXPECT_EQ(breakdown.summary, "SmartBattery whole-system draw while unplugged");
  ASSERT_TRUE(breakdown.bar);
  EXPECT_EQ(breakdown.bar->label, "Battery");
  EXPECT_EQ(breakdown.bar->tint, ColorName::green);
  EXPECT_DOUBLE_EQ(breakdown.bar->fraction, 12.0 / 12.0);
  EXPECT_EQ(breakdown.accessibilityText,
            "Total power 12.0W, Battery draw. SmartBattery whole-system draw while unplugged");
}

TEST(PowerBreakdown, AStrongChargeIsGreenAndAStrongDrawIsRed) {
  SystemPowerState charging = unplugged(15.1);
  charging.battery->isCharging = true;
  charging.battery->acConnected = true;
  EXPECT_EQ(powerBreakdown(charging, {}, std::nullopt, at(0)).total.color, ColorName::green);
  charging.battery->wattage = 15.0;
  EXPECT_EQ(powerBreakdown(charging, {}, std::nullopt, at(0)).total.color, ColorName::orange);
  charging.battery->wattage = 5.0;
  EXPECT_EQ(powerBreakdown(charging, {}, std::nullopt, at(0)).total.color, ColorName::red);
  EXPECT_EQ(powerBreakdown(unplugged(-15.1), {}, std::nullopt, at(0)).total.color, ColorName::red);
  EXPECT_EQ(powerBreakdown(unplugged(-15.0), {}, std::nullopt, at(0)).total.color,
            ColorName::orange);
  EXPECT_EQ(powerBreakdown(unplugged(-5.0), {}, std::nullopt, at(0)).total.color, ColorName::green);
}

TEST(PowerBreakdown, WithoutAReadingThereIsNoFigureAndNoBar) {
  const PowerBreakdown breakdown = powerBreakdown({}, {}, std::nullopt, at(0));
  EXPECT_EQ(breakdown.total.text, "--");
  EXPECT_FALSE(breakdown.bar);
  EXPECT_EQ(breakdown.accessibilityText,
            "Total power not available, Unavailable. No usable power source");
}

TEST(PowerBreakdown, TheHistoryIsDrawnWhenItHasReadings) {
  const std::vector<SystemPowerState> history{unplugged(-10.0), SystemPowerState{},
                                              unplugged(-12.0)};
  const auto drawn = powerBreakdown({}, history, std::nullopt, at(0)).history;
  ASSERT_TRUE(drawn);
  EXPECT_EQ(drawn->label, "Total Power");
  ASSERT_THAT(drawn->lines, SizeIs(1));
  EXPECT_THAT(drawn->lines[0].points, SizeIs(2));
  const std::vector<SystemPowerState> silent{SystemPowerState{}};
  EXPECT_FALSE(powerBreakdown({}, silent, std::nullopt, at(0)).history);
}

TEST(PowerBreakdown, AResidualOf3WattsIsOther) {
  SystemPowerState state = unplugged(-12.0);
  state.power = samples::silicon(9.0);
  const PowerBreakdown breakdown = powerBreakdown(state, {}, std::nullopt, at(0));
  EXPECT_THAT(labels(breakdown.components), ElementsAre("CPU", "GPU", "ANE", "DRAM", "Other"));
  EXPECT_EQ(breakdown.components.back().value, "3.0W") << "12 W - 9 W";
  EXPECT_DOUBLE_EQ(breakdown.components.back().fraction, 3.0 / 12.0);
  EXPECT_EQ(breakdown.unavailableText, "");
}

TEST(PowerBreakdown, AResidualOverMissingChannelsIsIncomplete) {
  SystemPowerState state = unplugged(-12.0);
  state.power = samples::silicon(9.0);
  state.power->siliconChannelsComplete = false;
  EXPECT_EQ(powerBreakdown(state, {}, std::nullopt, at(0)).components.back().label,
            "Other (incomplete)");
}

TEST(PowerBreakdown, SiliconAboveTheDrawLeavesAResidualOfZero) {
  SystemPowerState state = unplugged(-12.0);
  state.power = samples::silicon(20.0);
  const PowerBar residual = powerBreakdown(state, {}, std::nullopt, at(0)).components.back();
  EXPECT_EQ(residual.label, "Other");
  EXPECT_EQ(residual.value, "0.0W");
  EXPECT_DOUBLE_EQ(residual.fraction, 0.0);
}

TEST(PowerBreakdown, OnACOrWithoutABatteryThereIsNoResidual) {
  SystemPowerState supplement = unplugged(-12.0);
  supplement.power = samples::silicon(9.0);
  supplement.battery->acConnected = true;
  EXPECT_THAT(powerBreakdown(supplement, {}, std::nullopt, at(0)).components, SizeIs(4));
  SystemPowerState desktop;
  desktop.power = samples::silicon(9.0);
  EXPECT_THAT(powerBreakdown(desktop, {}, std::nullopt, at(0)).components, SizeIs(4));
  SystemPowerState resting = unplugged(0.0);
  resting.power = samples::silicon(9.0);
  EXPECT_THAT(powerBreakdown(resting, {}, std::nullopt, at(0)).components, SizeIs(4));
}

TEST(PowerBreakdown, ABarsTintDependsOnItsOwnWattsOnly) {
  EXPECT_EQ(componentTint(15.1), ColorName::red);
  EXPECT_EQ(componentTint(15.0), ColorName::orange);
  EXPECT_EQ(componentTint(5.1), ColorName::orange);
  EXPECT_EQ(componentTint(5.0), ColorName::green);
  SystemPowerState charging = unplugged(40.0);
  charging.battery->isCharging = true;
  charging.power = samples::silicon(40.0);
  const std::vector<PowerBar> bars = powerBreakdown(charging, {}, std::nullopt, at(0)).components;
  EXPECT_EQ(bars[0].tint, ColorName::red) << "20 W of CPU";
  EXPECT_EQ(bars[1].tint, ColorName::orange) << "10 W of GPU";
  EXPECT_EQ(bars[2].tint, ColorName::green);
}

TEST(PowerBreakdown, WithoutChannelsThePrivilegedOnesAreShown) {
  const PowerBreakdown breakdown = powerBreakdown(unplugged(-12.0), {}, privilegedSample(), at(10));
  EXPECT_THAT(labels(breakdown.components), ElementsAre("CPU", "GPU", "ANE"));
  EXPECT_EQ(breakdown.components[0].value, "3.0W");
  EXPECT_DOUBLE_EQ(breakdown.components[0].fraction, 3.0 / 12.0);
  ProTelemetrySnapshot withoutGPU = privilegedSample();
  withoutGPU.gpuPowerWatts.reset();
  EXPECT_THAT(labels(powerBreakdown({}, {}, withoutGPU, at(10)).components),
              ElementsAre("CPU", "ANE"));
}

TEST(PowerBreakdown, ChannelsOfTheirOwnGoBeforeThePrivilegedOnes) {
  SystemPowerState state;
  state.power = samples::silicon(8.0);
  EXPECT_THAT(labels(powerBreakdown(state, {}, privilegedSample(), at(10)).components),
              ElementsAre("CPU", "GPU", "ANE", "DRAM"));
}

TEST(PowerBreakdown, WithNeitherAttributionIsUnavailable) {
  for (const auto& proTelemetry :
       {std::optional<ProTelemetrySnapshot>{}, std::optional{privilegedSample()}}) {
    const PowerBreakdown breakdown = powerBreakdown(unplugged(-12.0), {}, proTelemetry, at(16));
    EXPECT_THAT(breakdown.components, IsEmpty());
    EXPECT_EQ(breakdown.unavailableSymbol, "info.circle");
    EXPECT_EQ(breakdown.unavailableText, "Component attribution unavailable for this source");
  }
}

TEST(MaxComponentWatts, IsOneWhenAllValuesAreZero) {
  SystemPowerState state;
  state.power = samples::silicon(0.0);
  EXPECT_DOUBLE_EQ(maxComponentWatts(state, std::nullopt, at(0)), 1.0);
  EXPECT_DOUBLE_EQ(maxComponentWatts({}, std::nullopt, at(0)), 1.0);
}

TEST(MaxComponentWatts, TakesTheLargestOfEverySource) {
  SystemPowerState state = unplugged(-30.0);
  EXPECT_DOUBLE_EQ(maxComponentWatts(state, std::nullopt, at(0)), 30.0) << "the reading";
  SystemPowerState charging = unplugged(2.0);
  charging.battery->isCharging = true;
  ProTelemetrySnapshot stale = privilegedSample();
  stale.anePowerWatts = 7.0;
  EXPECT_DOUBLE_EQ(maxComponentWatts(charging, stale, at(60)), 7.0)
      << "a privileged figure, however old";
  charging.power = samples::silicon(0.0);
  charging.power->ramPower = 9.0;
  EXPECT_DOUBLE_EQ(maxComponentWatts(charging, stale, at(60)), 9.0) << "a channel";
}

TEST(MaxComponentWatts, LeavesNaNOut) {
  SystemPowerState state;
  state.power = PowerMetrics{.cpuPower = nan, .gpuPower = 4.0};
  EXPECT_DOUBLE_EQ(maxComponentWatts(state, std::nullopt, at(0)), 4.0);
}

TEST(PowerBar, IsFilledByItsShareOfTheWidth) {
  EXPECT_DOUBLE_EQ(powerBar("CPU", 3.0, 12.0, ColorName::green).fraction, 0.25);
  EXPECT_DOUBLE_EQ(powerBar("CPU", 24.0, 12.0, ColorName::green).fraction, 1.0);
  EXPECT_DOUBLE_EQ(powerBar("CPU", -3.0, 12.0, ColorName::green).fraction, 0.0);
  EXPECT_EQ(powerBar("CPU", 3.04, 12.0, ColorName::green).accessibilityText, "CPU: 3.0W");
}

TEST(PowerBar, IsEmptyWhenTheWidthStandsForNothing) {
  EXPECT_DOUBLE_EQ(powerBar("CPU", 3.0, 0.0, ColorName::green).fraction, 0.0);
  EXPECT_DOUBLE_EQ(powerBar("CPU", 3.0, -1.0, ColorName::green).fraction, 0.0);
}

TEST(PowerBar, NumbersThatAreNotFiniteStayWithinTheBar) {
  EXPECT_DOUBLE_EQ(powerBar("CPU", nan, 12.0, ColorName::green).fraction, 0.0);
  EXPECT_DOUBLE_EQ(powerBar("CPU", 3.0, nan, ColorName::green).fraction, 0.0);
  EXPECT_DOUBLE_EQ(powerBar("CPU", infinity, infinity, ColorName::green).fraction, 0.0);
  EXPECT_DOUBLE_EQ(powerBar("CPU", infinity, 12.0, ColorName::green).fraction, 1.0);
}

}  // namespace
}  // namespace quorvex
