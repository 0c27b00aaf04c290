#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "TemperatureInsights.h"

namespace quorvex {
namespace {

using TemperatureInsights::dashboardReadings;
using TemperatureInsights::menuHighlights;
using TemperatureInsights::representativeReading;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Reading = TemperatureDisplayReading;
using Sensors = std::vector<TemperatureSensor>;

const std::optional<BatteryInfo> noBattery;

std::optional<BatteryInfo> batteryAt(double temperature) {
  BatteryInfo battery;
  battery.temperature = temperature;
  return battery;
}

/// A sensor whose key says nothing.
TemperatureSensor sensor(const std::string& name, double temperature) {
  return {"key of " + name, name, temperature};
}

auto labels(const std::vector<Reading>& readings) {
  std::vector<std::string> result;
  result.reserve(readings.size());
  for (const Reading& reading : readings) {
    result.push_back(reading.label);
  }
  return result;
}

/// Sensors of every class that the curated lists know.
Sensors allClasses() {
  return {sensor("CPU Core 1", 50), sensor("CPU Core 2", 60), sensor("SSD A", 40),
          sensor("Memory 1", 38),   sensor("Ambient", 25),    sensor("Wireless Module", 41),
          sensor("Battery 1", 30)};
}

TEST(TemperatureInsights, NoSensorsAndNoBatteryGiveNothing) {
  EXPECT_EQ(representativeReading({}, noBattery), std::nullopt);
  EXPECT_THAT(menuHighlights({}, noBattery), IsEmpty());
  EXPECT_THAT(dashboardReadings({}, noBattery), IsEmpty());
}

TEST(TemperatureInsights, ABatteryRecordAloneIsTheRepresentativeAndTheOnlyReading) {
  const Reading battery{"battery", "Battery", 31.5};
  EXPECT_EQ(representativeReading({}, batteryAt(31.5)), battery);
  EXPECT_THAT(menuHighlights({}, batteryAt(31.5)), ElementsAre(battery));
  EXPECT_THAT(dashboardReadings({}, batteryAt(31.5)), ElementsAre(battery));
}

TEST(TemperatureInsights, ABatteryRecordAtZeroGivesWayToABatterySensor) {
  EXPECT_EQ(representativeReading(Sensors{sensor("Battery 1", 30)}, batteryAt(0.0)),
            (Reading{"battery_sensor", "Battery", 30}));
}

TEST(TemperatureInsights, ABatteryRecordAtZeroWithoutASensorGivesNothing) {
  EXPECT_EQ(representativeReading({}, batteryAt(0.0)), std::nullopt);
}

TEST(TemperatureInsights, TheBatteryRecordGoesBeforeHotterBatterySensors) {
  EXPECT_EQ(representativeReading(Sensors{sensor("Battery 1", 44)}, batteryAt(30.0)),
            (Reading{"battery", "Battery", 30}));
}

TEST(TemperatureInsights, WithoutABatteryRecordTheHottestBatterySensorCounts) {
  const Sensors sensors{sensor("Battery 1", 30), sensor("gas gauge battery", 33),
                        sensor("Gas Gauge", 32)};
  EXPECT_EQ(representativeReading(sensors, noBattery), (Reading{"battery_sensor", "Battery", 33}));
}

TEST(TemperatureInsights, CPUCoresGiveTheirMeanAndThePeakBesideIt) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("CPU Core 2", 60)};
  EXPECT_EQ(representativeReading(sensors, noBattery),
            (Reading{"cpu_avg", "CPU Avg", (50.0 + 60.0) / 2}));
  EXPECT_THAT(dashboardReadings(sensors, noBattery),
              ElementsAre(Reading{"cpu_avg", "CPU Avg", 55}, Reading{"cpu_peak", "CPU Peak", 60}));
}

TEST(TemperatureInsights, EachWayOfBeingACPUCoreCounts) {
  const Sensors cores{{"a", "CPU Performance Core 1", 40},
                      {"b", "cpu EFFICIENCY core 2", 50},
                      {"c", "CPU Core 3", 60},
                      {"Tp01", "left", 70},
                      {"TC1C", "right", 80}};
  for (const TemperatureSensor& core : cores) {
    EXPECT_EQ(representativeReading(Sensors{core}, noBattery),
              (Reading{"cpu_avg", "CPU Avg", core.temperature}))
        << core.name;
  }
  EXPECT_EQ(representativeReading(cores, noBattery),
            (Reading{"cpu_avg", "CPU Avg", (40.0 + 50 + 60 + 70 + 80) / 5}));
}

TEST(TemperatureInsights, TheKeyTC0CWithANameOfNoRuleIsNoCPUSensor) {
  EXPECT_EQ(representativeReading(Sensors{{"TC0C", "Something", 50}}, noBattery),
            (Reading{"TC0C", "Something", 50}));
}

TEST(TemperatureInsights, KeysOfOtherShapesAreNoCPUSensors) {
  for (const std::string key : {"Tp0", "Tp012", "tp01", "TCC", "TC12C", "TC1c", "tC1C", "TC1P"}) {
    EXPECT_EQ(representativeReading(Sensors{{key, "Something", 50}}, noBattery),
              (Reading{key, "Something", 50}))
        << key;
  }
}

TEST(TemperatureInsights, ACPUCoreNameWithoutANumberIsADieButNoCore) {
  EXPECT_EQ(representativeReading(Sensors{sensor("CPU Core", 50)}, noBattery),
            (Reading{"silicon_avg", "Silicon Avg", 50}));
}

TEST(TemperatureInsights, AnHIDSensorOfTheDieGivesTheSiliconMean) {
  const Sensors sensors{{"PMU_tdie1", "PMU tdie1", 40}, {"PMU_tdie2", "PMU tdie2", 44}};
  EXPECT_EQ(representativeReading(sensors, batteryAt(30)),
            (Reading{"silicon_avg", "Silicon Avg", (40.0 + 44.0) / 2}));
}

TEST(TemperatureInsights, EachWayOfBeingADieCounts) {
  for (const char* name :
       {"SoC tdie3", "CPU Core", "CPU cluster, performance", "efficiency side of the CPU"}) {
    EXPECT_EQ(representativeReading(Sensors{sensor(name, 50)}, noBattery),
              (Reading{"silicon_avg", "Silicon Avg", 50}))
        << name;
  }
}

TEST(TemperatureInsights, TheDieMeanCountsCoresByKeyOnlyWhenThereIsNoCore) {
  const Sensors sensors{{"Tp01", "left", 70}, {"x", "SoC tdie1", 40}};
  EXPECT_EQ(representativeReading(sensors, noBattery), (Reading{"cpu_avg", "CPU Avg", 70}));
}

TEST(TemperatureInsights, CPUProximityAloneStandsInForTheMeanUnderItsOwnKey) {
  EXPECT_EQ(representativeReading(Sensors{{"TC0P", "CPU Proximity", 45}}, noBattery),
            (Reading{"TC0P", "CPU Avg", 45}));
}

TEST(TemperatureInsights, EachWayOfBeingAPreferredCPUSensorCounts) {
  for (const TemperatureSensor& single : Sensors{{"TC0P", "a", 45},
                                                 {"TC0D", "b", 45},
                                                 {"x", "CPU Die", 45},
                                                 {"y", "cpu proximity", 45}}) {
    EXPECT_EQ(representativeReading(Sensors{single}, noBattery),
              (Reading{single.key, "CPU Avg", 45}));
  }
}

TEST(TemperatureInsights, AnEarlierPreferredSensorWinsWhateverItsRule) {
  const Sensors sensors{{"TC0D", "b", 40}, {"TC0P", "a", 50}};
  EXPECT_EQ(representativeReading(sensors, noBattery), (Reading{"TC0D", "CPU Avg", 40}));
}

TEST(TemperatureInsights, APreferredSensorGoesBeforeTheBattery) {
  EXPECT_EQ(representativeReading(Sensors{{"TC0P", "a", 20}}, batteryAt(30)),
            (Reading{"TC0P", "CPU Avg", 20}));
}

TEST(TemperatureInsights, WithNothingBetterTheHottestReadableSensorIsRepresentative) {
  const Sensors sensors{{"a", "Airport", 40}, {"b", "GPU Cluster", 48}, {"c", "Palm Rest 1", 30}};
  EXPECT_EQ(representativeReading(sensors, noBattery), (Reading{"b", "GPU Cluster", 48}));
}

TEST(TemperatureInsights, ARepresentativeSensorOfAClassCarriesTheLabelOfTheClassAndItsKey) {
  EXPECT_EQ(representativeReading(Sensors{{"TH0A", "NAND CH0 temp", 48}}, noBattery),
            (Reading{"TH0A", "Storage", 48}));
}

TEST(TemperatureInsights, NamesWithoutMeaningAreNeverShown) {
  const Sensors sensors{{"a", "PMU TP3w", 60}, {"b", "Unknown", 70}, {"c", "UNKNOWN", 71}};
  EXPECT_EQ(representativeReading(sensors, noBattery), std::nullopt);
  EXPECT_THAT(dashboardReadings(sensors, batteryAt(30)),
              ElementsAre(Reading{"battery", "Battery", 30}));
}

TEST(TemperatureInsights, OnlyTheWholeNameUnknownAndThePrefixPMUAreWithoutMeaning) {
  const Sensors sensors{{"a", "Unknown 1", 60}, {"b", "PMU", 50}, {"c", "PMU2 temp", 40}};
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("Unknown 1", "PMU", "PMU2 temp"));
}

TEST(TemperatureInsights, ADieSensorOfThePMUCountsInTheMeanAndNeverShowsByItsName) {
  const Sensors sensors{{"PMU_tdie1", "PMU tdie1", 40}, {"PMU_tdie2", "PMU tdie2", 50}};
  EXPECT_THAT(dashboardReadings(sensors, noBattery),
              ElementsAre(Reading{"silicon_avg", "Silicon Avg", 45},
                          Reading{"silicon_peak", "Silicon Peak", 50}));
}

TEST(TemperatureInsights, TwoStorageSensorsGiveOneReadingOfTheHottest) {
  const Sensors sensors{sensor("SSD A", 40), sensor("SSD B", 45), sensor("CPU Core 1", 50)};
  const auto readings = dashboardReadings(sensors, noBattery);
  EXPECT_THAT(readings, Contains(Reading{"storage", "Storage", 45}));
  EXPECT_THAT(labels(readings), ElementsAre("CPU Avg", "CPU Peak", "Storage"));
}

TEST(TemperatureInsights, AnSSDAmongTheLeftoversIsDroppedByItsLabel) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("SSD", 45), sensor("Airport", 30)};
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("CPU Avg", "CPU Peak", "Storage", "Airport"));
}

TEST(TemperatureInsights, TheHotterOfTwoAmbientSensorsGivesItsOwnLabel) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("Ambient", 25), sensor("Palm Rest 1", 30)};
  EXPECT_THAT(dashboardReadings(sensors, noBattery),
              Contains(Reading{"ambient", "Palm Rest 1", 30}));
}

TEST(TemperatureInsights, AnAmbientSensorIsLabelledAmbient) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("Ambient Air 2", 25)};
  EXPECT_THAT(dashboardReadings(sensors, noBattery), Contains(Reading{"ambient", "Ambient", 25}));
}

TEST(TemperatureInsights, MemoryAndWirelessAreTheHottestOfTheirClass) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("Memory 1", 38), sensor("MEMORY bank", 39),
                        sensor("WiFi", 41), sensor("Wireless one", 40)};
  const auto readings = dashboardReadings(sensors, noBattery);
  EXPECT_THAT(readings, Contains(Reading{"memory", "Memory", 39}));
  EXPECT_THAT(readings, Contains(Reading{"wireless", "Wireless", 41}));
}

TEST(TemperatureInsights, TheStorageNamesAreNandSSDAndStorage) {
  for (const char* name : {"NAND CH0 temp", "Ssd", "Mass storage"}) {
    EXPECT_THAT(dashboardReadings(Sensors{sensor("CPU Core 1", 50), sensor(name, 44)}, noBattery),
                Contains(Reading{"storage", "Storage", 44}))
        << name;
  }
}

TEST(TemperatureInsights, MenuHighlightsWithAllClassesAreRepresentativeStorageAndBattery) {
  EXPECT_THAT(menuHighlights(allClasses(), noBattery),
              ElementsAre(Reading{"cpu_avg", "CPU Avg", 55}, Reading{"storage", "Storage", 40},
                          Reading{"battery_sensor", "Battery", 30}));
}

TEST(TemperatureInsights, MenuHighlightsNeverHoldMoreThanThree) {
  Sensors sensors;
  for (int i = 0; i < 40; ++i) {
    sensors.push_back(sensor("Zone " + std::to_string(i), 20 + i));
    EXPECT_THAT(menuHighlights(sensors, noBattery),
                SizeIs(std::min<std::size_t>(sensors.size(), 3)));
  }
}

TEST(TemperatureInsights, MenuHighlightsPassOverMissingClassesInTheirOrder) {
  EXPECT_THAT(labels(menuHighlights(
                  Sensors{sensor("CPU Core 1", 50), sensor("Ambient", 25), sensor("Memory 1", 38)},
                  noBattery)),
              ElementsAre("CPU Avg", "Memory", "Ambient"));
  EXPECT_THAT(
      labels(menuHighlights(Sensors{sensor("CPU Core 1", 50), sensor("WiFi", 41)}, noBattery)),
      ElementsAre("CPU Avg", "Wireless", "CPU Peak"));
}

TEST(TemperatureInsights, TheDashboardStandsInItsFixedOrder) {
  EXPECT_THAT(
      labels(dashboardReadings(allClasses(), batteryAt(31))),
      ElementsAre("CPU Avg", "CPU Peak", "Battery", "Storage", "Memory", "Ambient", "Wireless"));
}

TEST(TemperatureInsights, TheDashboardFillsUpWithLeftoversHottestFirstToTwelve) {
  Sensors sensors = allClasses();
  for (int i = 0; i < 9; ++i) {
    sensors.push_back(sensor("Zone " + std::to_string(i), 20 + i));
  }
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("CPU Avg", "CPU Peak", "Battery", "Storage", "Memory", "Ambient",
                          "Wireless", "Zone 8", "Zone 7", "Zone 6", "Zone 5", "Zone 4"));
}

TEST(TemperatureInsights, AReadingOfTheFirstLabelWinsOverAHotterLaterOne) {
  const Sensors sensors{sensor("CPU Core 1", 50), {"a", "zone", 20}, {"b", "ZONE", 30}};
  EXPECT_THAT(dashboardReadings(sensors, batteryAt(28)),
              ElementsAre(Reading{"cpu_avg", "CPU Avg", 50}, Reading{"cpu_peak", "CPU Peak", 50},
                          Reading{"battery", "Battery", 28}, Reading{"b", "ZONE", 30}));
  // The record's 28 degrees came first; the hotter sensor of the same label is left out.
  EXPECT_THAT(dashboardReadings(Sensors{sensor("Battery 1", 40)}, batteryAt(28)),
              ElementsAre(Reading{"battery", "Battery", 28}));
}

TEST(TemperatureInsights, CoresAreNotRepeatedOnceAMeanOrPeakShowsThem) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("GPU", 44)};
  EXPECT_THAT(labels(menuHighlights(sensors, noBattery)),
              ElementsAre("CPU Avg", "CPU Peak", "GPU"));
}

TEST(TemperatureInsights, DiesThatAreNoCoresStayListedBesideTheMeanOfTheCores) {
  const Sensors sensors{sensor("CPU Core 1", 50), sensor("SoC tdie1", 44)};
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("CPU Avg", "CPU Peak", "SoC tdie1"));
}

TEST(TemperatureInsights, DiesAreNotRepeatedOnceAMeanShowsThem) {
  const Sensors sensors{sensor("SoC tdie1", 44), sensor("GPU", 40)};
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("Silicon Avg", "Silicon Peak", "GPU"));
}

TEST(TemperatureInsights, APreferredSensorIsListedByItsNameTooSinceItIsNoCore) {
  EXPECT_THAT(dashboardReadings(Sensors{{"TC0P", "CPU Proximity", 45}}, noBattery),
              ElementsAre(Reading{"TC0P", "CPU Avg", 45}, Reading{"TC0P", "CPU Proximity", 45}));
}

TEST(TemperatureInsights, TheFirstOfEquallyHotSensorsIsTheHottest) {
  const Sensors readable{{"a", "East", 40}, {"b", "West", 40}, {"c", "North", 39}};
  EXPECT_EQ(representativeReading(readable, noBattery), (Reading{"a", "East", 40}));
  const Sensors ambient{sensor("CPU Core 1", 50), sensor("Palm Rest 1", 30), sensor("Ambient", 30)};
  EXPECT_THAT(dashboardReadings(ambient, noBattery),
              Contains(Reading{"ambient", "Palm Rest 1", 30}));
}

TEST(TemperatureInsights, EquallyHotLeftoversKeepTheOrderOfTheList) {
  const Sensors sensors{
      {"a", "East", 40}, {"b", "West", 41}, {"c", "North", 40}, {"d", "South", 40}};
  EXPECT_THAT(labels(dashboardReadings(sensors, noBattery)),
              ElementsAre("West", "East", "North", "South"));
}

TEST(TemperatureInsights, AnUncommonLabelIsShownAsItStandsAndNotInLowerCase) {
  EXPECT_EQ(representativeReading(Sensors{{"a", "GPU Ünit", 40}}, noBattery),
            (Reading{"a", "GPU Ünit", 40}));
}

}  // namespace
}  // namespace quorvex
