#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <thread>
#include <vector>

#include "FakeHIDTemperatures.h"
#include "HIDSensorService.h"

namespace quorvex {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using testing::FakeHIDTemperatures;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Services = std::vector<HIDTemperatureService>;

// Keys, validity and order

TEST(HIDSensorServiceTests, SensorsOfOneNameGetCountedKeys) {
  EXPECT_THAT(
      HIDSensorService::sensors(Services{{"A B", 40.0}, {"A B", 41.0}, {"A B", 42.0}}),
      ElementsAre(TemperatureSensor{"A_B", "A B", 40.0}, TemperatureSensor{"A_B_1", "A B", 41.0},
                  TemperatureSensor{"A_B_2", "A B", 42.0}));
}

TEST(HIDSensorServiceTests, AnInvalidSensorDoesNotUseUpItsName) {
  EXPECT_THAT(HIDSensorService::sensors(Services{{"A B", 0.0}, {"A B", 41.0}}),
              ElementsAre(TemperatureSensor{"A_B", "A B", 41.0}));
}

TEST(HIDSensorServiceTests, AServiceWithoutAnEventIsSkippedAndDoesNotUseUpItsName) {
  EXPECT_THAT(HIDSensorService::sensors(Services{{"A B", std::nullopt}, {"A B", 41.0}}),
              ElementsAre(TemperatureSensor{"A_B", "A B", 41.0}));
}

TEST(HIDSensorServiceTests, ServicesWithoutAProductShareTheNameUnknown) {
  EXPECT_THAT(HIDSensorService::sensors(
                  Services{{std::nullopt, 40.0}, {std::nullopt, 41.0}, {std::nullopt, 42.0}}),
              ElementsAre(TemperatureSensor{"Unknown", "Unknown", 40.0},
                          TemperatureSensor{"Unknown_1", "Unknown", 41.0},
                          TemperatureSensor{"Unknown_2", "Unknown", 42.0}));
}

TEST(HIDSensorServiceTests, AnEmptyProductIsAName) {
  EXPECT_THAT(HIDSensorService::sensors(Services{{"", 40.0}}),
              ElementsAre(TemperatureSensor{"", "", 40.0}));
}

TEST(HIDSensorServiceTests, EveryBlankOfANameBecomesAnUnderscoreInItsKey) {
  EXPECT_THAT(HIDSensorService::sensors(Services{{" PMU  tdev1\t", 40.0}}),
              ElementsAre(TemperatureSensor{"_PMU__tdev1\t", " PMU  tdev1\t", 40.0}));
}

TEST(HIDSensorServiceTests, NamesThatFormOneKeyAreCountedTogether) {
  EXPECT_THAT(
      HIDSensorService::sensors(Services{{"A_B", 40.0}, {"A B", 41.0}}),
      ElementsAre(TemperatureSensor{"A_B_1", "A B", 41.0}, TemperatureSensor{"A_B", "A_B", 40.0}));
}

TEST(HIDSensorServiceTests, OnlyTemperaturesStrictlyBetweenZeroAndAHundredAndFiftyCount) {
  EXPECT_THAT(HIDSensorService::sensors(Services{{"a", 150.0},
                                                 {"b", 0.0},
                                                 {"c", -20.0},
                                                 {"d", std::numeric_limits<double>::quiet_NaN()},
                                                 {"e", 149.5},
                                                 {"f", 0.5}}),
              ElementsAre(TemperatureSensor{"e", "e", 149.5}, TemperatureSensor{"f", "f", 0.5}));
}

TEST(HIDSensorServiceTests, SensorsAreSortedByNameAndEqualNamesKeepTheServiceOrder) {
  EXPECT_THAT(
      HIDSensorService::sensors(Services{
          {"gas gauge battery", 30.0}, {"PMU tdie", 50.0}, {"NAND", 35.0}, {"PMU tdie", 49.0}}),
      ElementsAre(TemperatureSensor{"NAND", "NAND", 35.0},
                  TemperatureSensor{"PMU_tdie", "PMU tdie", 50.0},
                  TemperatureSensor{"PMU_tdie_1", "PMU tdie", 49.0},
                  TemperatureSensor{"gas_gauge_battery", "gas gauge battery", 30.0}));
}

TEST(HIDSensorServiceTests, KeysOfManySensorsOfOneNameAscendWithTheServiceOrder) {
  const auto sensors = HIDSensorService::sensors(Services(12, {"tdev", 40.0}));
  ASSERT_THAT(sensors, SizeIs(12));
  EXPECT_EQ(sensors[10].key, "tdev_10");
  EXPECT_EQ(sensors[11].key, "tdev_11");
}

// The client

TEST(HIDSensorServiceTests, ReadsTheServicesOfTheClient) {
  FakeHIDTemperatures hid;
  hid.setServices(Services{{"NAND", 35.0}});
  HIDSensorService service{hid};
  EXPECT_THAT(service.readTemperatures(), ElementsAre(TemperatureSensor{"NAND", "NAND", 35.0}));
}

TEST(HIDSensorServiceTests, TheClientIsBuiltOnceAndItsServicesCopiedAtEachRead) {
  FakeHIDTemperatures hid;
  HIDSensorService service{hid};
  EXPECT_EQ(hid.opens(), 0);
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  hid.setServices(Services{{"NAND", 35.0}});
  EXPECT_THAT(service.readTemperatures(), SizeIs(1));
  EXPECT_EQ(hid.opens(), 1);
  EXPECT_EQ(hid.copies(), 2);
}

TEST(HIDSensorServiceTests, WithoutTheEntryPointsAReadIsEmptyAndTheNextTriesAgain) {
  FakeHIDTemperatures hid;
  hid.setServices(Services{{"NAND", 35.0}});
  hid.setAvailable(false);
  HIDSensorService service{hid};
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_EQ(service.acquireContext(), nullptr);
  EXPECT_EQ(hid.opens(), 2);
  hid.setAvailable(true);
  EXPECT_THAT(service.readTemperatures(), SizeIs(1));
}

TEST(HIDSensorServiceTests, ZeroServicesGiveAnEmptyListAndTheClientStays) {
  FakeHIDTemperatures hid;
  hid.setServices(Services{});
  HIDSensorService service{hid};
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_EQ(hid.liveClients(), 1);
  EXPECT_EQ(service.acquireContext(), service.acquireContext());
  EXPECT_EQ(hid.opens(), 1);
}

TEST(HIDSensorServiceTests, AListThatCannotBeCopiedIsEmptyAndTheClientStays) {
  FakeHIDTemperatures hid;
  hid.setServices(std::nullopt);
  HIDSensorService service{hid};
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_THAT(service.readTemperatures(), IsEmpty());
  EXPECT_EQ(hid.opens(), 1);
  EXPECT_EQ(hid.liveClients(), 1);
}

TEST(HIDSensorServiceTests, DestroyingTheServiceReleasesTheClient) {
  FakeHIDTemperatures hid;
  {
    HIDSensorService service{hid};
    static_cast<void>(service.readTemperatures());
    EXPECT_EQ(hid.liveClients(), 1);
  }
  EXPECT_EQ(hid.liveClients(), 0);
}

TEST(HIDSensorServiceTests, OverlappingReadsShareOneClient) {
  FakeHIDTemperatures hid;
  hid.setServices(Services{{"NAND", 35.0}, {"PMU", 45.0}});
  HIDSensorService service{hid};
  std::vector<std::size_t> counts(8);
  {
    std::vector<std::jthread> threads;
    threads.reserve(counts.size());
    for (auto& count : counts) {
      threads.emplace_back([&service, &count] { count = service.readTemperatures().size(); });
    }
  }
  EXPECT_THAT(counts, Each(2U));
  EXPECT_EQ(hid.opens(), 1);
}

}  // namespace
}  // namespace quorvex
