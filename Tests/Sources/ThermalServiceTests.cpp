#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "FakeThermalReadings.h"
#include "ThermalService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeThermalReadings;

TEST(ThermalServiceTests, ReadsTheThreeReadingsInOrder) {
  FakeThermalReadings readings;
  readings.state = 2;
  readings.pressure = 1;
  readings.lowPowerMode = true;
  EXPECT_EQ(ThermalService{readings}.read(),
            (ThermalInfo{.state = ThermalState::serious, .pressure = 1, .isLowPowerMode = true}));
  EXPECT_THAT(readings.log(),
              ElementsAre("thermalState", "thermalPressure", "isLowPowerModeEnabled"));
}

TEST(ThermalServiceTests, TheFourStatesMapInOrder) {
  FakeThermalReadings readings;
  for (const auto& [value, state] :
       {std::pair{0, ThermalState::nominal}, std::pair{1, ThermalState::fair},
        std::pair{2, ThermalState::serious}, std::pair{3, ThermalState::critical}}) {
    readings.state = value;
    EXPECT_EQ(ThermalService{readings}.read().state, state);
  }
}

TEST(ThermalServiceTests, AnUnknownStateIsNominal) {
  FakeThermalReadings readings;
  for (const int value : {9, 4, -1}) {
    readings.state = value;
    EXPECT_EQ(ThermalService{readings}.read().state, ThermalState::nominal);
  }
}

TEST(ThermalServiceTests, PressureIsCappedAtFour) {
  FakeThermalReadings readings;
  const ThermalService service{readings};
  readings.pressure = 2;
  EXPECT_EQ(service.readThermalPressure(), 2);
  readings.pressure = 4;
  EXPECT_EQ(service.readThermalPressure(), 4);
  readings.pressure = 7;
  EXPECT_EQ(service.readThermalPressure(), 4);
  readings.pressure = std::uint64_t{std::numeric_limits<std::int64_t>::max()};
  EXPECT_EQ(service.readThermalPressure(), 4);
}

TEST(ThermalServiceTests, AFailedNotificationGivesPressureZeroAndLeavesTheRest) {
  FakeThermalReadings readings;
  readings.state = 3;
  readings.pressure.reset();
  readings.lowPowerMode = true;
  EXPECT_EQ(ThermalService{readings}.read(),
            (ThermalInfo{.state = ThermalState::critical, .pressure = 0, .isLowPowerMode = true}));
}

TEST(ThermalServiceTests, StateAndPressureMayDisagree) {
  FakeThermalReadings readings;
  readings.state = 0;
  readings.pressure = 4;
  EXPECT_EQ(ThermalService{readings}.read(),
            (ThermalInfo{.state = ThermalState::nominal, .pressure = 4}));
}

TEST(ThermalServiceDeathTests, APressureBeyondTheSignedRangeIsFatal) {
  FakeThermalReadings readings;
  readings.pressure = std::uint64_t{std::numeric_limits<std::int64_t>::max()} + 1;
  EXPECT_DEATH(static_cast<void>(ThermalService{readings}.readThermalPressure()),
               "Fatal error: the thermal pressure state does not fit a signed 64-bit integer");
}

}  // namespace
}  // namespace quorvex
