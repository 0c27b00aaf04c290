#include "DarwinTest.h"
#include "MacBatteryDictionaries.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

class MacBatteryDictionariesTests : public DarwinTest {
 protected:
  MacBatteryDictionaries port;
};

TEST_F(MacBatteryDictionariesTests, RegistryIsTheServicesProperties) {
  fake().properties = dictionary(Entries{{"Voltage", number(std::int64_t{11900})},
                                         {"Amperage", number(std::int64_t{-950})},
                                         {"IsCharging", boolean(false)},
                                         {"BatterySerialNumber", text(u"D86")}});
  EXPECT_EQ(port.registry(), (Dictionary{{"Voltage", 11900},
                                         {"Amperage", -950},
                                         {"IsCharging", false},
                                         {"BatterySerialNumber", "D86"}}));
  EXPECT_THAT(calls(),
              ElementsAre("IOServiceNameMatching AppleSmartBattery", "IOServiceGetMatchingService",
                          "IORegistryEntryCreateCFProperties", "IOObjectRelease"));
}

TEST_F(MacBatteryDictionariesTests, WithoutTheServiceThereIsNoRegistryAndNothingToRelease) {
  fake().hasBatteryService = false;
  EXPECT_EQ(port.registry(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre("IOServiceNameMatching AppleSmartBattery",
                                   "IOServiceGetMatchingService"));
}

TEST_F(MacBatteryDictionariesTests, RefusedPropertiesAreNoneAndTheServiceIsReleased) {
  fake().propertiesResult = -536870212;
  EXPECT_EQ(port.registry(), std::nullopt);
  EXPECT_EQ(calls().back(), "IOObjectRelease");
}

TEST_F(MacBatteryDictionariesTests, PropertiesThatAreNoDictionaryAreNone) {
  fake().properties = nothing();
  EXPECT_EQ(port.registry(), std::nullopt);
  EXPECT_EQ(calls().back(), "IOObjectRelease");
}

TEST_F(MacBatteryDictionariesTests, PropertiesWithAnotherKeyAreNone) {
  const std::vector<std::pair<Make, Make>> entries{{number(std::int64_t{1}), text(u"one")}};
  fake().properties = dictionary(entries);
  EXPECT_EQ(port.registry(), std::nullopt);
}

TEST_F(MacBatteryDictionariesTests, EmptyPropertiesArePresent) {
  fake().properties = dictionary(Entries{});
  EXPECT_EQ(port.registry(), Dictionary{});
}

TEST_F(MacBatteryDictionariesTests, OnlyTheFirstPowerSourceIsLookedAt) {
  fake().powerSources = {dictionary(Entries{{"Current Capacity", number(std::int64_t{80})}}),
                         dictionary(Entries{{"Current Capacity", number(std::int64_t{50})}})};
  EXPECT_EQ(port.firstPowerSource(), (Dictionary{{"Current Capacity", 80}}));
  EXPECT_THAT(calls(), ElementsAre("IOPSCopyPowerSourcesInfo", "IOPSCopyPowerSourcesList",
                                   "IOPSGetPowerSourceDescription 0"));
}

TEST_F(MacBatteryDictionariesTests, EmptyListIsNone) {
  EXPECT_EQ(port.firstPowerSource(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre("IOPSCopyPowerSourcesInfo", "IOPSCopyPowerSourcesList"));
}

TEST_F(MacBatteryDictionariesTests, FirstSourceWithoutADescriptionIsNone) {
  fake().powerSources = {nothing(), dictionary(Entries{})};
  EXPECT_EQ(port.firstPowerSource(), std::nullopt);
}

TEST_F(MacBatteryDictionariesTests, DescriptionWithAnotherKeyIsNone) {
  const std::vector<std::pair<Make, Make>> entries{{boolean(true), text(u"one")}};
  fake().powerSources = {dictionary(entries)};
  EXPECT_EQ(port.firstPowerSource(), std::nullopt);
}

using MacBatteryDictionariesDeathTests = MacBatteryDictionariesTests;

TEST_F(MacBatteryDictionariesDeathTests, MissingSnapshotEndsTheProcess) {
  fake().hasPowerSnapshot = false;
  EXPECT_DEATH(static_cast<void>(port.firstPowerSource()),
               "the power-source service gave no snapshot");
}

TEST_F(MacBatteryDictionariesDeathTests, MissingListEndsTheProcess) {
  fake().hasPowerList = false;
  EXPECT_DEATH(static_cast<void>(port.firstPowerSource()),
               "the power-source service gave no list of power sources");
}

}  // namespace
}  // namespace quorvex::darwin
