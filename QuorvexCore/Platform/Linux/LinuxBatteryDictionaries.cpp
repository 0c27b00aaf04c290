#include "LinuxBatteryDictionaries.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "SystemTree.h"

namespace quorvex {

namespace {

/// One supply's folder. The kernel's units are millionths: µV, µA, µW, µAh, µWh.
class Supply {
 public:
  explicit Supply(std::string folder) : folder_(std::move(folder)) {}

  [[nodiscard]] std::optional<std::string> word(std::string_view file) const {
    return system_tree::readWord(path(file));
  }
  [[nodiscard]] std::optional<std::int64_t> integer(std::string_view file) const {
    return system_tree::readInteger(path(file));
  }

 private:
  [[nodiscard]] std::string path(std::string_view file) const {
    return folder_ + "/" + std::string{file};
  }

  std::string folder_;
};

/// Rounded to nearest, ties away from zero; `divisor` is above 0.
std::int64_t divided(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  const std::int64_t remainder = value % divisor;
  if (remainder >= divisor - remainder) {
    return quotient + 1;
  }
  if (-remainder >= divisor + remainder) {
    return quotient - 1;
  }
  return quotient;
}

std::optional<std::int64_t> thousandths(std::optional<std::int64_t> millionths) {
  return millionths ? std::optional{divided(*millionths, 1000)} : std::nullopt;
}

/// A voltage in mV. A battery below one volt is a broken figure.
std::optional<std::int64_t> millivolts(const Supply& supply, std::string_view file) {
  const std::optional<std::int64_t> voltage = thousandths(supply.integer(file));
  return voltage && *voltage >= 1000 ? voltage : std::nullopt;
}

/// The voltage at which energies are converted into charges. The three capacities take the same
/// one, so that their ratios stay what the battery says.
std::optional<std::int64_t> nominalMillivolts(const Supply& battery) {
  const std::optional<std::int64_t> nominal = millivolts(battery, "voltage_min_design");
  return nominal ? nominal : millivolts(battery, "voltage_now");
}

/// A capacity in mAh; `quantity` is "now", "full" or "full_design".
std::optional<std::int64_t> milliampereHours(const Supply& battery, const std::string& quantity) {
  if (const auto charge = battery.integer("charge_" + quantity)) {
    return thousandths(charge);
  }
  const std::optional<std::int64_t> energy = battery.integer("energy_" + quantity);
  const std::optional<std::int64_t> voltage = nominalMillivolts(battery);
  // µWh / mV = mAh.
  return energy && voltage ? std::optional{divided(*energy, *voltage)} : std::nullopt;
}

/// The current in mA as the driver gives it: some drivers sign it, others tell its amount only.
std::optional<std::int64_t> rawMilliamperes(const Supply& battery) {
  if (const auto current = battery.integer("current_now")) {
    return thousandths(current);
  }
  const std::optional<std::int64_t> power = battery.integer("power_now");
  const std::optional<std::int64_t> voltage = millivolts(battery, "voltage_now");
  // µW / mV = mA.
  return power && voltage ? std::optional{divided(*power, *voltage)} : std::nullopt;
}

/// The current in mA, negative while energy leaves the battery. A negative figure comes from a
/// driver that signs it; the direction of a positive one is told by the status, and without it
/// nobody knows.
std::optional<std::int64_t> milliamperes(const Supply& battery,
                                         const std::optional<std::string>& status) {
  const std::optional<std::int64_t> current = rawMilliamperes(battery);
  if (!current || *current <= 0 || status == "Charging") {
    return current;
  }
  return status == "Discharging" ? std::optional{-*current} : std::nullopt;
}

/// Tenths of a degree as hundredths.
std::optional<std::int64_t> hundredthsOfDegrees(const Supply& battery) {
  std::int64_t hundredths = 0;
  const std::optional<std::int64_t> tenths = battery.integer("temp");
  if (!tenths || __builtin_mul_overflow(*tenths, std::int64_t{10}, &hundredths)) {
    return std::nullopt;
  }
  return hundredths;
}

/// Whole minutes begun are not counted.
std::optional<std::int64_t> minutes(const Supply& battery, std::string_view file) {
  const std::optional<std::int64_t> seconds = battery.integer(file);
  return seconds ? std::optional{*seconds / 60} : std::nullopt;
}

/// The driver's status; none when it is missing or "Unknown".
std::optional<std::string> knownStatus(const Supply& battery) {
  std::optional<std::string> status = battery.word("status");
  return status != "Unknown" ? status : std::nullopt;
}

/// A negative count marks an unknown one.
std::optional<std::int64_t> cycleCount(const Supply& battery) {
  const std::optional<std::int64_t> count = battery.integer("cycle_count");
  return count && *count >= 0 ? count : std::nullopt;
}

template <typename Value>
void put(Dictionary& dictionary, const char* key, const std::optional<Value>& value) {
  if (value) {
    dictionary.insert_or_assign(key, DictionaryValue{*value});
  }
}

void putStatus(Dictionary& dictionary, const std::optional<std::string>& status,
               const char* chargingKey, const char* fullKey) {
  if (status) {
    dictionary.insert_or_assign(chargingKey, DictionaryValue{*status == "Charging"});
    dictionary.insert_or_assign(fullKey, DictionaryValue{*status == "Full"});
  }
}

bool isPeripheral(const Supply& supply) {
  return supply.word("scope") == "Device";
}

}  // namespace

LinuxBatteryDictionaries::LinuxBatteryDictionaries(const std::string& sysRoot)
    : folder_(sysRoot + "/class/power_supply") {}

std::optional<Dictionary> LinuxBatteryDictionaries::registry() {
  const std::optional<std::string> folder = internalBattery();
  if (!folder) {
    return std::nullopt;
  }
  const Supply battery{*folder};
  const std::optional<std::string> status = knownStatus(battery);
  Dictionary registry;
  put(registry, "CurrentCapacity", battery.integer("capacity"));
  put(registry, "AppleRawCurrentCapacity", milliampereHours(battery, "now"));
  put(registry, "AppleRawMaxCapacity", milliampereHours(battery, "full"));
  put(registry, "DesignCapacity", milliampereHours(battery, "full_design"));
  put(registry, "CycleCount", cycleCount(battery));
  put(registry, "Voltage", millivolts(battery, "voltage_now"));
  put(registry, "Amperage", milliamperes(battery, status));
  put(registry, "Temperature", hundredthsOfDegrees(battery));
  putStatus(registry, status, "IsCharging", "FullyCharged");
  put(registry, "ExternalConnected", isExternalPowerOnline());
  put(registry, "AvgTimeToEmpty", minutes(battery, "time_to_empty_avg"));
  put(registry, "InstantTimeToEmpty", minutes(battery, "time_to_empty_now"));
  put(registry, "AvgTimeToFull", minutes(battery, "time_to_full_avg"));
  put(registry, "InstantTimeToFull", minutes(battery, "time_to_full_now"));
  put(registry, "BatterySerialNumber", battery.word("serial_number"));
  return registry;
}

std::optional<Dictionary> LinuxBatteryDictionaries::firstPowerSource() {
  const std::optional<std::string> folder = internalBattery();
  if (!folder) {
    return std::nullopt;
  }
  const Supply battery{*folder};
  Dictionary source;
  put(source, "Current Capacity", battery.integer("capacity"));
  putStatus(source, knownStatus(battery), "Is Charging", "Is Charged");
  if (const auto health = battery.word("health"); health != "Unknown") {
    put(source, "BatteryHealth", health);
  }
  put(source, "Hardware Serial Number", battery.word("serial_number"));
  return source;
}

std::optional<std::string> LinuxBatteryDictionaries::internalBattery() const {
  for (const std::string& name : system_tree::folderNames(folder_)) {
    std::string folder = folder_ + "/" + name;
    const Supply supply{folder};
    if (supply.word("type") == "Battery" && !isPeripheral(supply) &&
        supply.integer("present") != 0) {
      return folder;
    }
  }
  return std::nullopt;
}

/// Whether any supply that is no battery gives power; none when no such supply tells.
std::optional<bool> LinuxBatteryDictionaries::isExternalPowerOnline() const {
  std::optional<bool> answer;
  for (const std::string& name : system_tree::folderNames(folder_)) {
    const Supply supply{folder_ + "/" + name};
    const std::optional<std::string> type = supply.word("type");
    const bool isExternal = type == "Mains" || type == "USB" || type == "Wireless";
    if (!isExternal || isPeripheral(supply)) {
      continue;
    }
    if (const auto online = supply.integer("online")) {
      answer = answer.value_or(false) || *online != 0;
    }
  }
  return answer;
}

}  // namespace quorvex
