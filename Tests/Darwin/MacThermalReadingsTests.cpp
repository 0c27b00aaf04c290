#include <limits>

#include "DarwinTest.h"
#include "MacThermalReadings.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

constexpr const char* foundation = "/System/Library/Frameworks/Foundation.framework/Foundation";

class MacThermalReadingsTests : public DarwinTest {
 protected:
  MacThermalReadingsTests() {
    fake().libraries = {foundation};
    librariesThatStay = 0;
  }

  MacThermalReadings port{loader};
};

TEST_F(MacThermalReadingsTests, StateIsTheProcessInformationServicesOwnNumber) {
  librariesThatStay = 1;
  for (const std::int64_t state : {0, 1, 2, 3, 9, -1}) {
    fake().thermalState = state;
    EXPECT_EQ(port.thermalState(), state);
  }
}

TEST_F(MacThermalReadingsTests, FrameworkIsLoadedOnceAtTheFirstUse) {
  librariesThatStay = 1;
  static_cast<void>(port.thermalState());
  EXPECT_THAT(calls(), ElementsAre(std::string{"open "} + foundation + " lazy",
                                   "objc_getClass NSProcessInfo", "objc_msgSend processInfo",
                                   "objc_msgSend thermalState"));
  EXPECT_FALSE(port.isLowPowerModeEnabled());
  EXPECT_THAT(calls(), ElementsAre("objc_getClass NSProcessInfo", "objc_msgSend processInfo",
                                   "objc_msgSend isLowPowerModeEnabled"));
}

TEST_F(MacThermalReadingsTests, LowPowerModeIsTheServicesFlag) {
  librariesThatStay = 1;
  EXPECT_FALSE(port.isLowPowerModeEnabled());
  fake().isLowPowerModeEnabled = true;
  EXPECT_TRUE(port.isLowPowerModeEnabled());
}

TEST_F(MacThermalReadingsTests, WithoutTheServiceStateIsNominalAndLowPowerModeOff) {
  fake().libraries = {};
  fake().hasProcessInfo = false;
  fake().thermalState = 3;
  fake().isLowPowerModeEnabled = true;
  EXPECT_EQ(port.thermalState(), 0);
  EXPECT_FALSE(port.isLowPowerModeEnabled());
}

TEST_F(MacThermalReadingsTests, PressureIsReadWithATokenOfItsOwnEachTime) {
  fake().pressure = 2;
  for (int read = 0; read < 2; ++read) {
    EXPECT_EQ(port.thermalPressure(), 2U);
    EXPECT_THAT(calls(), ElementsAre("notify_register_check com.apple.system.thermalpressurelevel",
                                     "notify_get_state", "notify_cancel"));
  }
}

TEST_F(MacThermalReadingsTests, PressureIsNotCapped) {
  fake().pressure = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(port.thermalPressure(), std::numeric_limits<std::uint64_t>::max());
}

TEST_F(MacThermalReadingsTests, RefusedRegistrationIsNoneAndThereIsNothingToCancel) {
  fake().registerStatus = 1;
  EXPECT_EQ(port.thermalPressure(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre("notify_register_check com.apple.system.thermalpressurelevel"));
}

TEST_F(MacThermalReadingsTests, RefusedStateIsNoneAndTheTokenIsCancelled) {
  fake().stateStatus = 2;
  EXPECT_EQ(port.thermalPressure(), std::nullopt);
  EXPECT_EQ(calls().back(), "notify_cancel");
}

}  // namespace
}  // namespace quorvex::darwin
