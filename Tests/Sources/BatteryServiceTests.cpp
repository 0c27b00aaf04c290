#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "BatteryService.h"
#include "FakeBatteryDictionaries.h"
#include "SampleBatteryDictionaries.h"

namespace quorvex {
namespace {

using samples::fullPowerSource;
using samples::fullRegistry;
using ::testing::ElementsAre;
using testing::FakeBatteryDictionaries;

constexpr auto untilEmpty = BatteryTimeRemainingKind::untilEmpty;

BatteryInfo fullInfo() {
  return {.chargePercent = 81,
          .currentCapacity = 3600,
          .maxCapacity = 4500,
          .designCapacity = 5000,
          .healthPercent = 4500 * 100 / 5000,
          .cycleCount = 112,
          .voltage = 12.0,
          .amperage = -1.5,
          .wattage = 12.0 * -1.5,
          .temperature = 31.2,
          .isCharging = false,
          .isFullyCharged = false,
          .acConnected = true,
          .adapterWatts = 67,
          .timeRemaining = 130,
          .timeRemainingKind = untilEmpty,
          .health = "Good",
          .serialNumber = "F8Y1234"};
}

BatteryInfo parsed(const Dictionary& registry, const Dictionary& powerSource = {}) {
  return BatteryService::parse(&registry, &powerSource).value();
}

// What is read, and from where

TEST(BatteryServiceTests, TakesEveryFieldFromItsFirstSourceInItsUnit) {
  EXPECT_EQ(parsed(fullRegistry(), fullPowerSource()), fullInfo());
}

enum class Source { registry, powerSource };

struct MissingKeys {
  std::string name;
  std::vector<std::pair<Source, std::string>> keys;
  std::function<void(BatteryInfo&)> change;
};

class BatteryServiceMissingKeyTests : public ::testing::TestWithParam<MissingKeys> {};

TEST_P(BatteryServiceMissingKeyTests, ChangesOnlyWhatRestsOnTheKey) {
  Dictionary registry = fullRegistry();
  Dictionary powerSource = fullPowerSource();
  for (const auto& [source, key] : GetParam().keys) {
    ASSERT_EQ((source == Source::registry ? registry : powerSource).erase(key), 1U);
  }
  BatteryInfo expected = fullInfo();
  GetParam().change(expected);
  EXPECT_EQ(parsed(registry, powerSource), expected);
}

TEST_P(BatteryServiceMissingKeyTests, AWrongTypeCountsAsMissing) {
  Dictionary registry = fullRegistry();
  Dictionary powerSource = fullPowerSource();
  for (const auto& [source, key] : GetParam().keys) {
    (source == Source::registry ? registry : powerSource)[key] = DictionaryValue{};
  }
  BatteryInfo expected = fullInfo();
  GetParam().change(expected);
  EXPECT_EQ(parsed(registry, powerSource), expected);
}

constexpr Source reg = Source::registry;
constexpr Source ps = Source::powerSource;
const auto nothing = [](BatteryInfo&) {};
const auto noEstimate = [](BatteryInfo& expected) {
  expected.timeRemaining.reset();
  expected.timeRemainingKind.reset();
};

INSTANTIATE_TEST_SUITE_P(
    OneKey, BatteryServiceMissingKeyTests,
    ::testing::Values(
        MissingKeys{"CurrentCapacity",
                    {{reg, "CurrentCapacity"}},
                    [](BatteryInfo& expected) { expected.chargePercent = 79; }},
        MissingKeys{"AppleRawCurrentCapacity",
                    {{reg, "AppleRawCurrentCapacity"}},
                    [](BatteryInfo& expected) { expected.currentCapacity = 0; }},
        MissingKeys{"AppleRawMaxCapacity",
                    {{reg, "AppleRawMaxCapacity"}},
                    [](BatteryInfo& expected) {
                      expected.maxCapacity = 4600;
                      expected.healthPercent = 4600 * 100 / 5000;
                    }},
        MissingKeys{"NominalChargeCapacity", {{reg, "NominalChargeCapacity"}}, nothing},
        MissingKeys{"DesignCapacity",
                    {{reg, "DesignCapacity"}},
                    [](BatteryInfo& expected) {
                      expected.designCapacity = 4500;
                      expected.healthPercent = 100;
                    }},
        MissingKeys{"CycleCount",
                    {{reg, "CycleCount"}},
                    [](BatteryInfo& expected) { expected.cycleCount = 0; }},
        MissingKeys{"Voltage",
                    {{reg, "Voltage"}},
                    [](BatteryInfo& expected) {
                      expected.voltage = 0.0;
                      expected.wattage = 0.0;
                      noEstimate(expected);  // no discharge is seen any more, and AC is connected
                    }},
        MissingKeys{"Amperage",
                    {{reg, "Amperage"}},
                    [](BatteryInfo& expected) {
                      expected.amperage = -1.6;
                      expected.wattage = 12.0 * -1.6;
                    }},
        MissingKeys{"InstantAmperage", {{reg, "InstantAmperage"}}, nothing},
        MissingKeys{"Temperature",
                    {{reg, "Temperature"}},
                    [](BatteryInfo& expected) { expected.temperature = 0.0; }},
        MissingKeys{"IsCharging",
                    {{reg, "IsCharging"}},
                    [](BatteryInfo& expected) { expected.isCharging = true; }},
        MissingKeys{"FullyCharged",
                    {{reg, "FullyCharged"}},
                    [](BatteryInfo& expected) {
                      expected.isFullyCharged = true;
                      noEstimate(expected);
                    }},
        MissingKeys{"ExternalConnected",
                    {{reg, "ExternalConnected"}},
                    [](BatteryInfo& expected) { expected.acConnected = false; }},
        MissingKeys{"AdapterDetails", {{reg, "AdapterDetails"}}, nothing},
        MissingKeys{"TimeRemaining", {{reg, "TimeRemaining"}}, nothing},
        MissingKeys{"AvgTimeToEmpty", {{reg, "AvgTimeToEmpty"}}, nothing},
        MissingKeys{"InstantTimeToEmpty", {{reg, "InstantTimeToEmpty"}}, nothing},
        MissingKeys{"AvgTimeToFull", {{reg, "AvgTimeToFull"}}, nothing},
        MissingKeys{"InstantTimeToFull", {{reg, "InstantTimeToFull"}}, nothing},
        MissingKeys{"BatterySerialNumber",
                    {{reg, "BatterySerialNumber"}},
                    [](BatteryInfo& expected) { expected.serialNumber = "HW99"; }},
        MissingKeys{"PowerSourceCurrentCapacity", {{ps, "Current Capacity"}}, nothing},
        MissingKeys{"PowerSourceIsCharging", {{ps, "Is Charging"}}, nothing},
        MissingKeys{"PowerSourceIsCharged", {{ps, "Is Charged"}}, nothing},
        MissingKeys{"PowerSourceWatts",
                    {{ps, "Watts"}},
                    [](BatteryInfo& expected) { expected.adapterWatts = 96; }},
        MissingKeys{"PowerSourceTimeToEmpty",
                    {{ps, "Time to Empty"}},
                    [](BatteryInfo& expected) { expected.timeRemaining = 131; }},
        MissingKeys{"PowerSourceTimeToFullCharge", {{ps, "Time to Full Charge"}}, nothing},
        MissingKeys{"PowerSourceBatteryHealth",
                    {{ps, "BatteryHealth"}},
                    [](BatteryInfo& expected) { expected.health = "Unknown"; }},
        MissingKeys{"PowerSourceHardwareSerialNumber", {{ps, "Hardware Serial Number"}}, nothing}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    EverySource, BatteryServiceMissingKeyTests,
    ::testing::Values(
        MissingKeys{"ChargeIsComputed",
                    {{reg, "CurrentCapacity"}, {ps, "Current Capacity"}},
                    [](BatteryInfo& expected) { expected.chargePercent = 3600 * 100 / 4500; }},
        MissingKeys{"MaxCapacityIsZero",
                    {{reg, "AppleRawMaxCapacity"}, {reg, "NominalChargeCapacity"}},
                    [](BatteryInfo& expected) {
                      expected.maxCapacity = 0;
                      expected.healthPercent = 0;
                    }},
        MissingKeys{"AmperageIsZero",
                    {{reg, "Amperage"}, {reg, "InstantAmperage"}},
                    [](BatteryInfo& expected) {
                      expected.amperage = 0.0;
                      expected.wattage = 0.0;
                      noEstimate(expected);
                    }},
        MissingKeys{"IsNotCharging", {{reg, "IsCharging"}, {ps, "Is Charging"}}, nothing},
        MissingKeys{"IsNotFull", {{reg, "FullyCharged"}, {ps, "Is Charged"}}, nothing},
        MissingKeys{"NoAdapterWatts",
                    {{reg, "AdapterDetails"}, {ps, "Watts"}},
                    [](BatteryInfo& expected) { expected.adapterWatts.reset(); }},
        MissingKeys{"NoSerialNumber",
                    {{reg, "BatterySerialNumber"}, {ps, "Hardware Serial Number"}},
                    [](BatteryInfo& expected) { expected.serialNumber.reset(); }},
        MissingKeys{"ThirdTimeToEmpty",
                    {{ps, "Time to Empty"}, {reg, "TimeRemaining"}},
                    [](BatteryInfo& expected) { expected.timeRemaining = 132; }},
        MissingKeys{"FourthTimeToEmpty",
                    {{ps, "Time to Empty"}, {reg, "TimeRemaining"}, {reg, "AvgTimeToEmpty"}},
                    [](BatteryInfo& expected) { expected.timeRemaining = 133; }},
        MissingKeys{"TimeToEmptyIsComputed",
                    {{ps, "Time to Empty"},
                     {reg, "TimeRemaining"},
                     {reg, "AvgTimeToEmpty"},
                     {reg, "InstantTimeToEmpty"}},
                    // 3600 mAh at 1500 mA last 2.4 h.
                    [](BatteryInfo& expected) { expected.timeRemaining = 144; }}),
    [](const auto& test) { return test.param.name; });

TEST(BatteryServiceTests, AMachineWithoutABatteryGivesNone) {
  FakeBatteryDictionaries dictionaries;
  EXPECT_EQ(BatteryService{dictionaries}.read(), std::nullopt);
}

TEST(BatteryServiceTests, AsksTheRegistryThenThePowerSourceOnceARead) {
  FakeBatteryDictionaries dictionaries;
  dictionaries.registryAnswer = fullRegistry();
  dictionaries.powerSourceAnswer = fullPowerSource();
  const BatteryService service{dictionaries};
  EXPECT_EQ(service.read(), fullInfo());
  EXPECT_THAT(dictionaries.log(), ElementsAre("registry", "firstPowerSource"));
}

TEST(BatteryServiceTests, NothingIsRememberedBetweenReads) {
  FakeBatteryDictionaries dictionaries;
  dictionaries.registryAnswer = fullRegistry();
  const BatteryService service{dictionaries};
  EXPECT_NE(service.read(), std::nullopt);
  dictionaries.registryAnswer.reset();
  EXPECT_EQ(service.read(), std::nullopt);
}

TEST(BatteryServiceTests, TheFetchesPassTheDictionariesOn) {
  FakeBatteryDictionaries dictionaries;
  const BatteryService service{dictionaries};
  EXPECT_EQ(service.readIORegistry(), std::nullopt);
  EXPECT_EQ(service.readIOPowerSources(), std::nullopt);
  dictionaries.registryAnswer = fullRegistry();
  dictionaries.powerSourceAnswer = Dictionary{};
  EXPECT_EQ(service.readIORegistry(), fullRegistry());
  EXPECT_EQ(service.readIOPowerSources(), Dictionary{});
}

TEST(BatteryServiceTests, WithoutARegistryThePowerSourceAloneFillsTheRecord) {
  FakeBatteryDictionaries dictionaries;
  dictionaries.powerSourceAnswer =
      Dictionary{{"Current Capacity", 55}, {"Time to Empty", 90}, {"External Connected", true}};
  EXPECT_EQ(BatteryService{dictionaries}.read(), (BatteryInfo{.chargePercent = 55,
                                                              .currentCapacity = 0,
                                                              .maxCapacity = 0,
                                                              .designCapacity = 1,
                                                              .healthPercent = 0,
                                                              .voltage = 0.0,
                                                              .amperage = 0.0,
                                                              .wattage = 0.0,
                                                              .temperature = 0.0,
                                                              .acConnected = false,
                                                              .timeRemaining = 90,
                                                              .timeRemainingKind = untilEmpty,
                                                              .health = "Unknown"}));
}

TEST(BatteryServiceTests, WithoutAPowerSourceHealthIsUnknownAndTheAdapterStillHasItsWatts) {
  FakeBatteryDictionaries dictionaries;
  dictionaries.registryAnswer = fullRegistry();
  const auto info = BatteryService{dictionaries}.read();
  ASSERT_TRUE(info.has_value());
  EXPECT_EQ(info->health, "Unknown");
  EXPECT_EQ(info->adapterWatts, 96);
  EXPECT_EQ(info->timeRemaining, 131);
}

TEST(BatteryServiceTests, AnEmptyDictionaryIsPresentAndYieldsDefaults) {
  const BatteryInfo defaults{.designCapacity = 1, .health = "Unknown"};
  const Dictionary empty;
  EXPECT_EQ(BatteryService::parse(&empty, nullptr), defaults);
  EXPECT_EQ(BatteryService::parse(nullptr, &empty), defaults);
  EXPECT_EQ(BatteryService::parse(nullptr, nullptr), std::nullopt);
}

TEST(BatteryServiceTests, AnAdapterWithoutWattsInItsDetailsHasNoRating) {
  EXPECT_EQ(parsed({{"AdapterDetails", Dictionary{{"Description", "pd charger"}}}}).adapterWatts,
            std::nullopt);
  EXPECT_EQ(parsed({{"AdapterDetails", Dictionary{}}}).adapterWatts, std::nullopt);
  EXPECT_EQ(parsed({{"AdapterDetails", Dictionary{{"Watts", "96"}}}}).adapterWatts, std::nullopt);
}

TEST(BatteryServiceTests, AFalseValueStopsTheSearch) {
  const BatteryInfo info = parsed({{"IsCharging", false}, {"FullyCharged", false}},
                                  {{"Is Charging", true}, {"Is Charged", true}});
  EXPECT_FALSE(info.isCharging);
  EXPECT_FALSE(info.isFullyCharged);
}

TEST(BatteryServiceTests, AnEmptyTextStopsTheSearch) {
  const BatteryInfo info = parsed({{"BatterySerialNumber", ""}},
                                  {{"Hardware Serial Number", "HW99"}, {"BatteryHealth", ""}});
  EXPECT_EQ(info.serialNumber, "");
  EXPECT_EQ(info.health, "");
}

TEST(BatteryServiceTests, AFloatThatIsAWholeNumberCountsAsAnInteger) {
  EXPECT_EQ(parsed({{"CycleCount", 112.0}}).cycleCount, 112);
  EXPECT_EQ(parsed({{"CycleCount", 112.5}}).cycleCount, 0);
}

TEST(BatteryServiceTests, ABooleanIsNoNumberAndANumberNoBoolean) {
  EXPECT_EQ(parsed({{"CycleCount", true}}).cycleCount, 0);
  EXPECT_FALSE(parsed({{"IsCharging", 1}}).isCharging);
  EXPECT_TRUE(parsed({{"IsCharging", 0}}, {{"Is Charging", true}}).isCharging);
}

// Charge and health

TEST(BatteryServiceTests, ChargeAboveAHundredIsCapped) {
  EXPECT_EQ(parsed({{"CurrentCapacity", 104}}).chargePercent, 100);
  EXPECT_EQ(parsed({}, {{"Current Capacity", 104}}).chargePercent, 100);
  EXPECT_EQ(
      parsed({{"AppleRawCurrentCapacity", 4600}, {"AppleRawMaxCapacity", 4500}}).chargePercent,
      100);
}

TEST(BatteryServiceTests, ChargeHasNoLowerClamp) {
  EXPECT_EQ(parsed({{"CurrentCapacity", -3}}).chargePercent, -3);
  EXPECT_EQ(parsed({}, {{"Current Capacity", -3}}).chargePercent, -3);
  EXPECT_EQ(parsed({{"AppleRawCurrentCapacity", -45}, {"AppleRawMaxCapacity", 4500}}).chargePercent,
            -1);
}

TEST(BatteryServiceTests, ComputedChargeTruncates) {
  // 2999 of 4500 mAh are 66.64 %.
  EXPECT_EQ(
      parsed({{"AppleRawCurrentCapacity", 2999}, {"AppleRawMaxCapacity", 4500}}).chargePercent, 66);
}

TEST(BatteryServiceTests, ChargeIsZeroWithoutAFullChargeCapacity) {
  EXPECT_EQ(parsed({{"AppleRawCurrentCapacity", 3000}}).chargePercent, 0);
  EXPECT_EQ(parsed({{"AppleRawCurrentCapacity", 3000}, {"AppleRawMaxCapacity", -5}}).chargePercent,
            0);
}

TEST(BatteryServiceTests, HealthIsCappedAtAHundred) {
  const BatteryInfo info = parsed({{"AppleRawMaxCapacity", 4500}, {"DesignCapacity", 4382}});
  EXPECT_EQ(info.healthPercent, 100);
  EXPECT_EQ(info.designCapacity, 4382);
}

TEST(BatteryServiceTests, HealthTruncatesTowardZero) {
  // 4499 of 5000 mAh are 89.98 %, -4499 are -89.98 %.
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 4499}, {"DesignCapacity", 5000}}).healthPercent, 89);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", -4499}, {"DesignCapacity", 5000}}).healthPercent, -89);
}

TEST(BatteryServiceTests, ADesignCapacityOfZeroGivesFullHealthAndStaysZero) {
  const BatteryInfo info = parsed({{"AppleRawMaxCapacity", 4500}, {"DesignCapacity", 0}});
  EXPECT_EQ(info.healthPercent, 100);
  EXPECT_EQ(info.designCapacity, 0);
}

TEST(BatteryServiceTests, ANegativeDesignCapacityGivesFullHealthAndIsKept) {
  const BatteryInfo info = parsed({{"AppleRawMaxCapacity", 0}, {"DesignCapacity", -10}});
  EXPECT_EQ(info.healthPercent, 100);
  EXPECT_EQ(info.designCapacity, -10);
}

TEST(BatteryServiceTests, AMissingDesignCapacityFallsBackToTheFullChargeCapacity) {
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 4500}}).designCapacity, 4500);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 4500}}).healthPercent, 100);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 1}}).designCapacity, 1);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 1}}).healthPercent, 100);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 0}}).designCapacity, 1);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", 0}}).healthPercent, 0);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", -2}}).designCapacity, 1);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", -2}}).healthPercent, -200);
}

TEST(BatteryServiceDeathTests, ACapacityTooLargeForAPercentageIsFatal) {
  const std::int64_t huge = std::numeric_limits<std::int64_t>::max() / 100 + 1;
  const std::string message = "Fatal error: integer overflow in a multiplication";
  EXPECT_DEATH(static_cast<void>(parsed({{"AppleRawMaxCapacity", huge}})), message);
  EXPECT_DEATH(
      static_cast<void>(parsed({{"AppleRawCurrentCapacity", huge}, {"AppleRawMaxCapacity", 1}})),
      message);
}

TEST(BatteryServiceTests, AReadChargeSparesAHugeCapacityItsPercentage) {
  const std::int64_t huge = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(parsed({{"AppleRawCurrentCapacity", huge}, {"CurrentCapacity", 50}}).chargePercent, 50);
  EXPECT_EQ(parsed({{"AppleRawMaxCapacity", huge}, {"DesignCapacity", 0}, {"CurrentCapacity", 50}})
                .healthPercent,
            100);
}

}  // namespace
}  // namespace quorvex
