#include <gtest/gtest.h>

#include <limits>

#include "DropdownFormat.h"

namespace quorvex {
namespace {

using DropdownFormat::colorForWatts;
using DropdownFormat::formatDuration;
using DropdownFormat::formatRefreshInterval;
using DropdownFormat::formatTemp;
using DropdownFormat::temperatureText;
using DropdownFormat::thermalStateInfo;
using DropdownFormat::timeRemaining;
using std::chrono::minutes;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(DropdownFormatTests, TemperaturesAreRoundedToWholeDegrees) {
  EXPECT_EQ(formatTemp(54.6, false), "55°C");
  EXPECT_EQ(formatTemp(0.0, false), "0°C");
}

TEST(DropdownFormatTests, FahrenheitIsConvertedBeforeRounding) {
  // 54.6 * 9 / 5 + 32 = 130.28; the rounded 55 would give 131.
  EXPECT_EQ(formatTemp(54.6, true), "130°F");
  EXPECT_EQ(formatTemp(100.0, true), "212°F");
  EXPECT_EQ(formatTemp(-40.0, true), "-40°F");
}

TEST(DropdownFormatTests, HeroTemperatureIsApartFromItsUnit) {
  EXPECT_EQ(DropdownFormat::temperatureHeroDisplay(54.6, false), (NumberWithUnit{"55", "°C"}));
  EXPECT_EQ(DropdownFormat::temperatureHeroDisplay(100.0, true), (NumberWithUnit{"212", "°F"}));
}

TEST(DropdownFormatTests, ReadingsHaveOneDecimal) {
  EXPECT_EQ(temperatureText(54.64, false).text, "54.6°C");
  EXPECT_EQ(temperatureText(37.0, true).text, "98.6°F");
}

TEST(DropdownFormatTests, ReadingsAreColouredByTheirCelsiusValueInEitherUnit) {
  for (const bool useFahrenheit : {false, true}) {
    EXPECT_EQ(temperatureText(70.0, useFahrenheit).color, ColorName::primary);
    EXPECT_EQ(temperatureText(70.1, useFahrenheit).color, ColorName::orange);
    EXPECT_EQ(temperatureText(90.0, useFahrenheit).color, ColorName::orange);
    EXPECT_EQ(temperatureText(90.1, useFahrenheit).color, ColorName::red);
  }
}

TEST(DropdownFormatTests, DurationOf59Point4IsSeconds) {
  EXPECT_EQ(formatDuration(59.4), "59s");
}

TEST(DropdownFormatTests, DurationOf3600IsAnHour) {
  EXPECT_EQ(formatDuration(3600.0), "1h 0m");
}

TEST(DropdownFormatTests, DurationsAreCutToWholeUnits) {
  EXPECT_EQ(formatDuration(0.0), "0s");
  EXPECT_EQ(formatDuration(59.9), "59s");
  EXPECT_EQ(formatDuration(60.0), "1m 0s");
  EXPECT_EQ(formatDuration(3599.9), "59m 59s");
  EXPECT_EQ(formatDuration(2.0 * 3600 + 5.0 * 60 + 59.0), "2h 5m");
}

TEST(DropdownFormatTests, NegativeDurationCountsAsZero) {
  EXPECT_EQ(formatDuration(-5.0), "0s");
}

TEST(DropdownFormatTests, DurationThatIsNotFiniteIsWordedAllTheSame) {
  EXPECT_EQ(formatDuration(nan), "0s");
  EXPECT_EQ(formatDuration(-infinity), "0s");
  EXPECT_EQ(formatDuration(infinity), formatDuration(1e15));
}

TEST(DropdownFormatTests, MinutesBecomeHoursFromSixty) {
  EXPECT_EQ(formatDuration(minutes{0}), "0m");
  EXPECT_EQ(formatDuration(minutes{59}), "59m");
  EXPECT_EQ(formatDuration(minutes{60}), "1h 0m");
  EXPECT_EQ(formatDuration(minutes{125}), "2h 5m");
}

TEST(DropdownFormatTests, ExtremeMinutesAreWorded) {
  EXPECT_EQ(formatDuration(minutes{-3}), "-3m");
  EXPECT_EQ(formatDuration(minutes{std::numeric_limits<std::int64_t>::max()}),
            "153722867280912930h 7m");
}

TEST(DropdownFormatTests, RefreshIntervalOfHalfASecond) {
  EXPECT_EQ(formatRefreshInterval(0.5), "0.5s");
}

TEST(DropdownFormatTests, RefreshIntervalOfTwoSeconds) {
  EXPECT_EQ(formatRefreshInterval(2.0), "2s");
}

TEST(DropdownFormatTests, RefreshIntervalOfOneSecond) {
  EXPECT_EQ(formatRefreshInterval(1.0), "1s");
  EXPECT_EQ(formatRefreshInterval(60.0), "60s");
}

TEST(DropdownFormatTests, NumbersThatAreNotFiniteArePrintedAsSuch) {
  EXPECT_EQ(formatTemp(nan, false), "nan°C");
  EXPECT_EQ(formatTemp(infinity, true), "inf°F");
  EXPECT_EQ(temperatureText(nan, false), (ColoredText{"nan°C", ColorName::primary}));
  EXPECT_EQ(DropdownFormat::formatWatts(nan), "nanW");
  EXPECT_EQ(formatRefreshInterval(nan), "nans");
  EXPECT_EQ(formatRefreshInterval(infinity), "infs");
}

TEST(DropdownFormatTests, TimeRemainingSaysWhichWayItCounts) {
  EXPECT_EQ(timeRemaining(
                {.timeRemaining = 65, .timeRemainingKind = BatteryTimeRemainingKind::untilFull}),
            "1h 5m to full");
  EXPECT_EQ(timeRemaining(
                {.timeRemaining = 45, .timeRemainingKind = BatteryTimeRemainingKind::untilEmpty}),
            "45m left");
  EXPECT_EQ(timeRemaining({.timeRemaining = 45}), "45m left");
}

TEST(DropdownFormatTests, NoTimeRemainingIsTheWordBattery) {
  EXPECT_EQ(timeRemaining({}), "Battery");
}

TEST(DropdownFormatTests, ChargingAt15WattsIsOrangeAndAbove15Green) {
  EXPECT_EQ(colorForWatts(15.0, true), ColorName::orange);
  EXPECT_EQ(colorForWatts(15.1, true), ColorName::green);
}

TEST(DropdownFormatTests, ChargingAt5WattsIsRedAndAbove5Orange) {
  EXPECT_EQ(colorForWatts(5.0, true), ColorName::red);
  EXPECT_EQ(colorForWatts(5.1, true), ColorName::orange);
}

TEST(DropdownFormatTests, DischargingAt5WattsIsGreenAndAbove5Orange) {
  EXPECT_EQ(colorForWatts(5.0, false), ColorName::green);
  EXPECT_EQ(colorForWatts(5.1, false), ColorName::orange);
}

TEST(DropdownFormatTests, DischargingAt15WattsIsOrangeAndAbove15Red) {
  EXPECT_EQ(colorForWatts(15.0, false), ColorName::orange);
  EXPECT_EQ(colorForWatts(15.1, false), ColorName::red);
}

TEST(DropdownFormatTests, OnlyTheChargeInputIsColouredAsCharging) {
  const auto colorOf = [](PowerReadingKind kind) {
    return DropdownFormat::colorForReading({.watts = 20.0, .kind = kind});
  };
  EXPECT_EQ(colorOf(PowerReadingKind::batteryChargeInput), ColorName::green);
  EXPECT_EQ(colorOf(PowerReadingKind::batteryDischarge), ColorName::red);
  EXPECT_EQ(colorOf(PowerReadingKind::batterySupplement), ColorName::red);
  EXPECT_EQ(colorOf(PowerReadingKind::ioReportSiliconPower), ColorName::red);
}

TEST(DropdownFormatTests, ThermalStatesHaveWordsAndColours) {
  EXPECT_EQ(thermalStateInfo(ThermalState::nominal), (ColoredText{"Nominal", ColorName::green}));
  EXPECT_EQ(thermalStateInfo(ThermalState::fair), (ColoredText{"Fair", ColorName::yellow}));
  EXPECT_EQ(thermalStateInfo(ThermalState::serious), (ColoredText{"Serious", ColorName::orange}));
  EXPECT_EQ(thermalStateInfo(ThermalState::critical), (ColoredText{"Critical", ColorName::red}));
}

}  // namespace
}  // namespace quorvex
