#include <fmt/format.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "FakeTree.h"
#include "LinuxBatteryDictionaries.h"

namespace quorvex {
namespace {

const std::string supplies = "class/power_supply/";

class LinuxBatteryDictionariesTests : public ::testing::Test {
 protected:
  static std::string path(const std::string& name, const std::string& file) {
    return fmt::format("{}{}/{}", supplies, name, file);
  }
  void set(const std::string& name, const std::string& file, const std::string& text) {
    tree.file(path(name, file), text + "\n");
  }
  /// A supply's folder with one file an entry.
  void supply(const std::string& name, const std::map<std::string, std::string>& files) {
    for (const auto& [file, text] : files) {
      set(name, file, text);
    }
  }
  /// A laptop's battery that tells everything, discharging 1.5 A at 12 V.
  void fullBattery(const std::string& name = "BAT0") {
    supply(name, {{"type", "Battery"},
                  {"scope", "System"},
                  {"present", "1"},
                  {"status", "Discharging"},
                  {"capacity", "80"},
                  {"charge_now", "3600000"},
                  {"charge_full", "4500000"},
                  {"charge_full_design", "4700000"},
                  {"cycle_count", "112"},
                  {"voltage_now", "12000000"},
                  {"voltage_min_design", "11400000"},
                  {"current_now", "1500000"},
                  {"temp", "312"},
                  {"time_to_empty_now", "8640"},
                  {"time_to_empty_avg", "9000"},
                  {"time_to_full_now", "3600"},
                  {"time_to_full_avg", "3719"},
                  {"serial_number", "12345"},
                  {"health", "Good"}});
  }
  void set(const std::string& file, const std::string& text) { set("BAT0", file, text); }
  void remove(const std::string& file) { tree.remove(path("BAT0", file)); }
  /// The battery tells energies and power in place of charges and current.
  void replaceChargesByEnergies() {
    for (const char* file : {"charge_now", "charge_full", "charge_full_design", "current_now"}) {
      remove(file);
    }
    set("energy_now", "41040000");
    set("energy_full", "51300000");
    set("energy_full_design", "57000000");
    set("power_now", "18000000");
  }

  LinuxBatteryDictionaries battery() const { return LinuxBatteryDictionaries{tree.root()}; }
  Dictionary registry() const { return battery().registry().value_or(Dictionary{{"none", true}}); }
  Dictionary source() const {
    return battery().firstPowerSource().value_or(Dictionary{{"none", true}});
  }
  /// An integer of the registry; none when the key is missing.
  std::optional<std::int64_t> integer(std::string_view key) const {
    const Dictionary dictionary = registry();
    const DictionaryValue* value = find(dictionary, key);
    return value != nullptr ? value->integer() : std::nullopt;
  }

  testing::FakeTree tree;
};

TEST_F(LinuxBatteryDictionariesTests, ATreeWithoutTheClassHasNoBattery) {
  EXPECT_EQ(battery().registry(), std::nullopt);
  EXPECT_EQ(battery().firstPowerSource(), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, ADesktopOnMainsHasNoBattery) {
  supply("AC", {{"type", "Mains"}, {"online", "1"}});
  EXPECT_EQ(battery().registry(), std::nullopt);
  EXPECT_EQ(battery().firstPowerSource(), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, AFullBatteryIsToldInTheControllersKeysAndUnits) {
  fullBattery();
  supply("AC", {{"type", "Mains"}, {"online", "0"}});
  const Dictionary expected{{"CurrentCapacity", 80},       {"AppleRawCurrentCapacity", 3600},
                            {"AppleRawMaxCapacity", 4500}, {"DesignCapacity", 4700},
                            {"CycleCount", 112},           {"Voltage", 12000},
                            {"Amperage", -1500},           {"Temperature", 3120},
                            {"IsCharging", false},         {"FullyCharged", false},
                            {"ExternalConnected", false},  {"InstantTimeToEmpty", 8640 / 60},
                            {"AvgTimeToEmpty", 9000 / 60}, {"InstantTimeToFull", 3600 / 60},
                            {"AvgTimeToFull", 61},         {"BatterySerialNumber", "12345"}};
  EXPECT_EQ(registry(), expected);
}

TEST_F(LinuxBatteryDictionariesTests, ThePowerSourceTellsChargeStateHealthAndSerialNumber) {
  fullBattery();
  const Dictionary expected{{"Current Capacity", 80},
                            {"Is Charging", false},
                            {"Is Charged", false},
                            {"BatteryHealth", "Good"},
                            {"Hardware Serial Number", "12345"}};
  EXPECT_EQ(source(), expected);
}

TEST_F(LinuxBatteryDictionariesTests, EachFileThatIsMissingUnreadableOrGarbledLeavesOnlyItsKeyOut) {
  const std::map<std::string, std::string> keyOfFile{{"capacity", "CurrentCapacity"},
                                                     {"charge_now", "AppleRawCurrentCapacity"},
                                                     {"charge_full", "AppleRawMaxCapacity"},
                                                     {"charge_full_design", "DesignCapacity"},
                                                     {"cycle_count", "CycleCount"},
                                                     {"voltage_now", "Voltage"},
                                                     {"current_now", "Amperage"},
                                                     {"temp", "Temperature"},
                                                     {"time_to_empty_now", "InstantTimeToEmpty"},
                                                     {"time_to_empty_avg", "AvgTimeToEmpty"},
                                                     {"time_to_full_now", "InstantTimeToFull"},
                                                     {"time_to_full_avg", "AvgTimeToFull"},
                                                     {"serial_number", "BatterySerialNumber"}};
  for (const auto& [file, key] : keyOfFile) {
    fullBattery();
    Dictionary expected = registry();
    ASSERT_EQ(expected.erase(key), 1U) << key;
    remove(file);
    EXPECT_EQ(registry(), expected) << file << " missing";
    tree.unreadable(path("BAT0", file));
    EXPECT_EQ(registry(), expected) << file << " unreadable";
    remove(file);
    set(file, "");
    EXPECT_EQ(registry(), expected) << file << " empty";
    if (file != "serial_number") {
      set(file, "12 of many");
      EXPECT_EQ(registry(), expected) << file << " garbled";
      set(file, "99999999999999999999");
      EXPECT_EQ(registry(), expected) << file << " beyond 64 bits";
    }
  }
}

TEST_F(LinuxBatteryDictionariesTests, ABatteryThatTellsNothingIsStillThere) {
  supply("BAT0", {{"type", "Battery"}});
  EXPECT_EQ(registry(), Dictionary{});
  EXPECT_EQ(source(), Dictionary{});
}

TEST_F(LinuxBatteryDictionariesTests, APeripheralsBatteryIsNotTheMachines) {
  supply("hidpp_battery_0",
         {{"type", "Battery"}, {"scope", "Device"}, {"capacity", "40"}, {"status", "Discharging"}});
  EXPECT_EQ(battery().registry(), std::nullopt);
  EXPECT_EQ(battery().firstPowerSource(), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, ThePeripheralIsPassedOverForTheMachinesBattery) {
  supply("AA", {{"type", "Battery"}, {"scope", "Device"}, {"capacity", "40"}});
  fullBattery();
  EXPECT_EQ(integer("CurrentCapacity"), 80);
}

TEST_F(LinuxBatteryDictionariesTests, AnEmptyBayIsPassedOver) {
  supply("BAT0", {{"type", "Battery"}, {"present", "0"}});
  EXPECT_EQ(battery().registry(), std::nullopt);
  fullBattery("BAT1");
  EXPECT_EQ(integer("CurrentCapacity"), 80);
}

TEST_F(LinuxBatteryDictionariesTests, WithoutThePresentFileTheBatteryIsPresent) {
  fullBattery();
  remove("present");
  EXPECT_EQ(integer("CurrentCapacity"), 80);
}

TEST_F(LinuxBatteryDictionariesTests, OfTwoBatteriesTheFirstIsTold) {
  supply("BAT1", {{"type", "Battery"}, {"capacity", "11"}});
  fullBattery("BAT0");
  EXPECT_EQ(integer("CurrentCapacity"), 80);
  supply("BAT0", {{"capacity", "22"}});
  EXPECT_EQ(integer("CurrentCapacity"), 22);
}

TEST_F(LinuxBatteryDictionariesTests, ASupplyWithoutAReadableTypeIsPassedOver) {
  fullBattery();
  remove("type");
  EXPECT_EQ(battery().registry(), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, EnergiesBecomeChargesAtTheNominalVoltage) {
  fullBattery();
  replaceChargesByEnergies();
  // 41.04 Wh / 11.4 V = 3.6 Ah, 51.3 Wh / 11.4 V = 4.5 Ah, 57 Wh / 11.4 V = 5 Ah.
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), 3600);
  EXPECT_EQ(integer("AppleRawMaxCapacity"), 4500);
  EXPECT_EQ(integer("DesignCapacity"), 5000);
}

TEST_F(LinuxBatteryDictionariesTests, WithoutANominalVoltageEnergiesTakeThePresentOne) {
  fullBattery();
  replaceChargesByEnergies();
  remove("voltage_min_design");
  // 41.04 Wh / 12 V = 3.42 Ah.
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), 3420);
  remove("voltage_now");
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), std::nullopt);
  EXPECT_EQ(integer("AppleRawMaxCapacity"), std::nullopt);
  EXPECT_EQ(integer("DesignCapacity"), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, AVoltageBelowOneVoltIsNone) {
  fullBattery();
  replaceChargesByEnergies();
  set("voltage_min_design", "0");
  set("voltage_now", "999000");
  EXPECT_EQ(integer("Voltage"), std::nullopt);
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), std::nullopt);
  EXPECT_EQ(integer("Amperage"), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, AChargeIsPreferredToAnEnergyForEachQuantityAlone) {
  fullBattery();
  set("energy_now", "1000000");
  set("energy_full", "57000000");
  remove("charge_full");
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), 3600);
  // 57 Wh / 11.4 V = 5 Ah.
  EXPECT_EQ(integer("AppleRawMaxCapacity"), 5000);
}

TEST_F(LinuxBatteryDictionariesTests, ConversionsRoundToNearest) {
  fullBattery();
  set("charge_now", "3600499");
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), 3600);
  set("charge_now", "3600500");
  EXPECT_EQ(integer("AppleRawCurrentCapacity"), 3601);
  set("current_now", "-1500499");
  EXPECT_EQ(integer("Amperage"), -1500);
  set("current_now", "-1500500");
  EXPECT_EQ(integer("Amperage"), -1501);
}

TEST_F(LinuxBatteryDictionariesTests, WithoutACurrentThePowerAndTheVoltageTellIt) {
  fullBattery();
  replaceChargesByEnergies();
  // 18 W / 12 V = 1.5 A, leaving the battery.
  EXPECT_EQ(integer("Amperage"), -1500);
  remove("power_now");
  EXPECT_EQ(integer("Amperage"), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, TheStatusTellsTheDirectionOfAnUnsignedCurrent) {
  fullBattery();
  EXPECT_EQ(integer("Amperage"), -1500);
  set("status", "Charging");
  EXPECT_EQ(integer("Amperage"), 1500);
}

TEST_F(LinuxBatteryDictionariesTests, ACurrentWhoseDirectionNobodyTellsIsAbsent) {
  fullBattery();
  for (const char* status : {"Full", "Not charging", "Unknown", ""}) {
    set("status", status);
    EXPECT_EQ(integer("Amperage"), std::nullopt) << status;
  }
  remove("status");
  EXPECT_EQ(integer("Amperage"), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, NoCurrentIsZeroWhateverTheStatus) {
  fullBattery();
  set("current_now", "0");
  for (const char* status : {"Charging", "Discharging", "Full", "Not charging", "Unknown"}) {
    set("status", status);
    EXPECT_EQ(integer("Amperage"), 0) << status;
  }
}

TEST_F(LinuxBatteryDictionariesTests, ANegativeCurrentLeavesTheBatteryWhateverTheStatus) {
  fullBattery();
  set("current_now", "-1500000");
  for (const char* status : {"Charging", "Discharging", "Full", "Not charging", "Unknown"}) {
    set("status", status);
    EXPECT_EQ(integer("Amperage"), -1500) << status;
  }
}

TEST_F(LinuxBatteryDictionariesTests, ChargingAndFullComeFromTheStatus) {
  fullBattery();
  set("status", "Charging");
  EXPECT_EQ(registry().at("IsCharging"), DictionaryValue{true});
  EXPECT_EQ(registry().at("FullyCharged"), DictionaryValue{false});
  EXPECT_EQ(source().at("Is Charging"), DictionaryValue{true});
  EXPECT_EQ(source().at("Is Charged"), DictionaryValue{false});
  set("status", "Full");
  EXPECT_EQ(registry().at("IsCharging"), DictionaryValue{false});
  EXPECT_EQ(registry().at("FullyCharged"), DictionaryValue{true});
  EXPECT_EQ(source().at("Is Charging"), DictionaryValue{false});
  EXPECT_EQ(source().at("Is Charged"), DictionaryValue{true});
  set("status", "Not charging");
  EXPECT_EQ(registry().at("IsCharging"), DictionaryValue{false});
  EXPECT_EQ(registry().at("FullyCharged"), DictionaryValue{false});
}

TEST_F(LinuxBatteryDictionariesTests, AnUnknownStatusIsNoStatus) {
  fullBattery();
  set("status", "Unknown");
  EXPECT_FALSE(registry().contains("IsCharging"));
  EXPECT_FALSE(registry().contains("FullyCharged"));
  EXPECT_FALSE(source().contains("Is Charging"));
  EXPECT_FALSE(source().contains("Is Charged"));
}

TEST_F(LinuxBatteryDictionariesTests, AnyOnlineSupplyConnectsExternalPower) {
  fullBattery();
  supply("AC", {{"type", "Mains"}, {"online", "0"}});
  supply("ucsi-source-psy-1", {{"type", "USB"}, {"online", "0"}});
  EXPECT_EQ(registry().at("ExternalConnected"), DictionaryValue{false});
  supply("ucsi-source-psy-1", {{"online", "2"}});
  EXPECT_EQ(registry().at("ExternalConnected"), DictionaryValue{true});
  supply("ucsi-source-psy-1", {{"online", "0"}});
  supply("wireless", {{"type", "Wireless"}, {"online", "1"}});
  EXPECT_EQ(registry().at("ExternalConnected"), DictionaryValue{true});
}

TEST_F(LinuxBatteryDictionariesTests, WithoutASupplyThatTellsExternalPowerIsAbsent) {
  fullBattery();
  EXPECT_FALSE(registry().contains("ExternalConnected"));
  supply("AC", {{"type", "Mains"}, {"online", "maybe"}});
  EXPECT_FALSE(registry().contains("ExternalConnected"));
}

TEST_F(LinuxBatteryDictionariesTests, APeripheralsChargerIsNotTheMachines) {
  fullBattery();
  supply("AC", {{"type", "Mains"}, {"online", "0"}});
  supply("pad", {{"type", "USB"}, {"scope", "Device"}, {"online", "1"}});
  EXPECT_EQ(registry().at("ExternalConnected"), DictionaryValue{false});
}

TEST_F(LinuxBatteryDictionariesTests, ANegativeCycleCountIsUnknownAndZeroIsACount) {
  fullBattery();
  set("cycle_count", "-1");
  EXPECT_EQ(integer("CycleCount"), std::nullopt);
  set("cycle_count", "0");
  EXPECT_EQ(integer("CycleCount"), 0);
}

TEST_F(LinuxBatteryDictionariesTests, TemperaturesBelowZeroKeepTheirSign) {
  fullBattery();
  set("temp", "-53");
  EXPECT_EQ(integer("Temperature"), -530);
  set("temp", "9223372036854775807");
  EXPECT_EQ(integer("Temperature"), std::nullopt);
}

TEST_F(LinuxBatteryDictionariesTests, AnUnknownOrMissingHealthIsAbsent) {
  fullBattery();
  set("health", "Unknown");
  EXPECT_FALSE(source().contains("BatteryHealth"));
  remove("health");
  EXPECT_FALSE(source().contains("BatteryHealth"));
  set("health", "Overheat");
  EXPECT_EQ(source().at("BatteryHealth"), DictionaryValue{"Overheat"});
}

TEST_F(LinuxBatteryDictionariesTests, EveryReadSeesTheTreeAsItIsNow) {
  fullBattery();
  LinuxBatteryDictionaries dictionaries = battery();
  EXPECT_TRUE(dictionaries.registry());
  tree.remove(supplies + "BAT0");
  EXPECT_EQ(dictionaries.registry(), std::nullopt);
}

}  // namespace
}  // namespace quorvex
