#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SampleRecords.h"
#include "ThermalSection.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// As many sensors of names that say nothing, hottest first.
SystemPowerState stateOfSensors(int count) {
  SystemPowerState state;
  for (int i = 0; i < count; ++i) {
    const std::string name = "Part " + std::to_string(i);
    state.sensors.push_back({name, name, 60.0 - i});
  }
  return state;
}

SystemPowerState stateOfCores(int count) {
  SystemPowerState state;
  for (int i = 0; i < count; ++i) {
    const std::string name = "CPU Core " + std::to_string(i + 1);
    state.sensors.push_back({name, name, 50.0});
  }
  return state;
}

TEST(ThermalSectionTests, ShowsStateAndPressure) {
  const ThermalSection section =
      thermalSection({.thermal = {.state = ThermalState::serious, .pressure = 2}}, {});
  EXPECT_EQ(section.title, "Thermal");
  EXPECT_EQ(section.thermalBadge.text, "Serious");
  EXPECT_EQ(section.thermalBadge.color, ColorName::orange);
  EXPECT_THAT(section.rows, ElementsAre(LabelledValue{"State", "Serious", ColorName::orange},
                                        LabelledValue{"Pressure", "Heavy (2/4)"}));
}

TEST(ThermalSectionTests, PressureWords) {
  EXPECT_EQ(pressureText(0), "Nominal (0/4)");
  EXPECT_EQ(pressureText(1), "Moderate (1/4)");
  EXPECT_EQ(pressureText(2), "Heavy (2/4)");
  EXPECT_EQ(pressureText(3), "Trapping (3/4)");
  EXPECT_EQ(pressureText(4), "Sleeping (4/4)");
  EXPECT_EQ(pressureText(5), "Unknown (5/4)");
}

TEST(ThermalSectionTests, PressureOf7IsUnknown) {
  EXPECT_EQ(pressureText(7), "Unknown (7/4)");
  EXPECT_EQ(pressureText(-1), "Unknown (-1/4)");
}

TEST(ThermalSectionTests, LowPowerModeHasARowWhileItIsOn) {
  const ThermalSection section = thermalSection({.thermal = {.isLowPowerMode = true}}, {});
  ASSERT_THAT(section.rows, SizeIs(3));
  EXPECT_EQ(section.rows[2], (LabelledValue{"Low Power Mode", "On"}));
}

TEST(ThermalSectionTests, RepresentativeReadingHasARow) {
  const ThermalSection section = thermalSection(stateOfCores(2), {});
  ASSERT_THAT(section.rows, SizeIs(3));
  EXPECT_EQ(section.rows[2], (LabelledValue{"Representative", "CPU Avg 50.0°C"}));
  EXPECT_EQ(section.note, std::nullopt);
}

TEST(ThermalSectionTests, RepresentativeReadingIsColoured) {
  const SystemPowerState state{.sensors = {{"TC0P", "CPU Proximity", 90.5}}};
  EXPECT_EQ(thermalSection(state, {.useFahrenheit = true}).rows.at(2),
            (LabelledValue{"Representative", "CPU Avg 194.9°F", ColorName::red}));
}

TEST(ThermalSectionTests, AnotherKeyReadingThanTheCPUAverageIsExplained) {
  const ThermalSection section = thermalSection({.battery = samples::battery()}, {});
  EXPECT_EQ(section.note,
            "CPU Avg is not available from the active sensor source on this Mac. Using Battery "
            "instead.");
}

TEST(ThermalSectionTests, WithoutAnyReadingNothingIsExplained) {
  const ThermalSection section = thermalSection({}, {});
  EXPECT_EQ(section.note, std::nullopt);
  EXPECT_THAT(section.highlights, IsEmpty());
  EXPECT_THAT(section.sensors, IsEmpty());
  EXPECT_EQ(section.sensorsTitle, "");
}

TEST(ThermalSectionTests, HighlightsAreThreeAtMost) {
  EXPECT_THAT(thermalSection(stateOfSensors(2), {}).highlights, SizeIs(2));
  const ThermalSection section = thermalSection(stateOfSensors(5), {});
  EXPECT_THAT(section.highlights,
              ElementsAre(LabelledValue{"Part 0", "60.0°C"}, LabelledValue{"Part 1", "59.0°C"},
                          LabelledValue{"Part 2", "58.0°C"}));
}

TEST(ThermalSectionTests, HighlightsAreThoseOfTheDropdown) {
  const SystemPowerState state = stateOfSensors(5);
  const AppSettings settings{.useFahrenheit = true};
  EXPECT_THAT(temperatureHighlights(state, settings), SizeIs(3));
  EXPECT_EQ(thermalSection(state, settings).highlights, temperatureHighlights(state, settings));
  EXPECT_THAT(temperatureHighlights(state, {.showTemperatureHighlights = false}), IsEmpty());
}

TEST(ThermalSectionTests, HighlightsCanBeSwitchedOff) {
  const ThermalSection section =
      thermalSection(stateOfSensors(5), {.showTemperatureHighlights = false});
  EXPECT_THAT(section.highlights, IsEmpty());
  EXPECT_THAT(section.sensors, SizeIs(5));
}

TEST(ThermalSectionTests, TwelveSensorsAreShownWhole) {
  const ThermalSection section = thermalSection(stateOfSensors(12), {});
  EXPECT_EQ(section.sensorsTitle, "Sensors");
  EXPECT_THAT(section.sensors, SizeIs(12));
  EXPECT_EQ(section.moreText, std::nullopt);
  EXPECT_EQ(section.curationText, std::nullopt);
}

TEST(ThermalSectionTests, ThirteenSensorsAreTwelveRowsAndOneMore) {
  const ThermalSection section = thermalSection(stateOfSensors(13), {});
  EXPECT_THAT(section.sensors, SizeIs(12));
  EXPECT_EQ(section.moreText, "... and 1 more");
  EXPECT_EQ(section.curationText, "Curated from 13 hardware sensors");
}

TEST(ThermalSectionTests, FewRowsFromManySensorsAreCuratedAndNotCut) {
  // The cores show as their average and their peak.
  const ThermalSection section = thermalSection(stateOfCores(20), {});
  EXPECT_THAT(section.sensors, SizeIs(2));
  EXPECT_EQ(section.moreText, std::nullopt);
  EXPECT_EQ(section.curationText, "Curated from 20 hardware sensors");
}

TEST(ThermalSectionTests, SensorListCanBeSwitchedOff) {
  const ThermalSection section = thermalSection(stateOfSensors(13), {.showSensors = false});
  EXPECT_THAT(section.sensors, IsEmpty());
  EXPECT_EQ(section.sensorsTitle, "");
  EXPECT_EQ(section.moreText, std::nullopt);
  EXPECT_EQ(section.curationText, std::nullopt);
  EXPECT_THAT(section.highlights, SizeIs(3));
}

}  // namespace
}  // namespace quorvex
