#include "BatteryService.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "CheckedArithmetic.h"

namespace quorvex {

namespace {

/// Seven days. The platform marks a figure that it still computes with -1 or 65535.
constexpr std::int64_t longestEstimate = 10080;

/// A battery that gives off more than this many watts discharges, whatever its flags say.
constexpr double dischargingBelowWatts = -1.0;

/// Currents up to this many amperes are too small to tell a time from.
constexpr double smallestUsableCurrent = 0.05;

constexpr double milli = 1000.0;

const DictionaryValue* lookUp(const Dictionary* dictionary, std::string_view key) {
  return dictionary != nullptr ? find(*dictionary, key) : nullptr;
}

std::optional<std::int64_t> integerAt(const Dictionary* dictionary, std::string_view key) {
  const DictionaryValue* value = lookUp(dictionary, key);
  return value != nullptr ? value->integer() : std::nullopt;
}

std::optional<bool> booleanAt(const Dictionary* dictionary, std::string_view key) {
  const DictionaryValue* value = lookUp(dictionary, key);
  return value != nullptr ? value->boolean() : std::nullopt;
}

std::optional<std::string> stringAt(const Dictionary* dictionary, std::string_view key) {
  const DictionaryValue* value = lookUp(dictionary, key);
  return value != nullptr ? value->string() : std::nullopt;
}

const Dictionary* dictionaryAt(const Dictionary* dictionary, std::string_view key) {
  const DictionaryValue* value = lookUp(dictionary, key);
  return value != nullptr ? value->dictionary() : nullptr;
}

/// `whole` is above 0. Not clamped below.
std::int64_t percentOf(std::int64_t part, std::int64_t whole) {
  return std::min<std::int64_t>(checkedMultiply<std::int64_t>(part, 100) / whole, 100);
}

std::optional<std::int64_t> minutesInRange(std::int64_t minutes) {
  return minutes >= 0 && minutes <= longestEstimate ? std::optional{minutes} : std::nullopt;
}

/// Minutes that a charge in mAh lasts at a current in amperes.
std::optional<std::int64_t> computedMinutes(std::int64_t charge, double current) {
  return minutesInRange(checkedRound(static_cast<double>(charge) / (current * milli) * 60.0));
}

std::int64_t chargePercent(const Dictionary* registry, const Dictionary* powerSource,
                           std::int64_t currentCapacity, std::int64_t maxCapacity) {
  // Unlike its raw sibling in mAh, this registry figure is already a percentage.
  auto percent = integerAt(registry, "CurrentCapacity");
  if (!percent) {
    percent = integerAt(powerSource, "Current Capacity");
  }
  if (percent) {
    return std::min<std::int64_t>(*percent, 100);
  }
  return maxCapacity < 1 ? 0 : percentOf(currentCapacity, maxCapacity);
}

std::optional<BatteryService::TimeEstimate> estimateToEmpty(const Dictionary* registry,
                                                            const Dictionary* powerSource,
                                                            const BatteryService::LoadState& load) {
  const std::array sources{lookUp(powerSource, "Time to Empty"), lookUp(registry, "TimeRemaining"),
                           lookUp(registry, "AvgTimeToEmpty"),
                           lookUp(registry, "InstantTimeToEmpty")};
  auto minutes = BatteryService::firstValidMinutes(sources);
  if (!minutes && load.currentCapacity >= 1 && load.amperage < -smallestUsableCurrent) {
    minutes = computedMinutes(load.currentCapacity, std::abs(load.amperage));
  }
  if (!minutes) {
    return std::nullopt;
  }
  return BatteryService::TimeEstimate{*minutes, BatteryTimeRemainingKind::untilEmpty};
}

std::optional<BatteryService::TimeEstimate> estimateToFull(const Dictionary* registry,
                                                           const Dictionary* powerSource,
                                                           const BatteryService::LoadState& load) {
  const std::array sources{lookUp(powerSource, "Time to Full Charge"),
                           lookUp(registry, "AvgTimeToFull"),
                           lookUp(registry, "InstantTimeToFull")};
  auto minutes = BatteryService::firstValidMinutes(sources);
  if (!minutes) {
    minutes = BatteryService::estimatedMinutesToFull(load.currentCapacity, load.maxCapacity,
                                                     load.amperage);
  }
  if (!minutes) {
    return std::nullopt;
  }
  return BatteryService::TimeEstimate{*minutes, BatteryTimeRemainingKind::untilFull};
}

}  // namespace

std::optional<Dictionary> BatteryService::readIORegistry() const {
  return dictionaries_->registry();
}

std::optional<Dictionary> BatteryService::readIOPowerSources() const {
  return dictionaries_->firstPowerSource();
}

std::optional<BatteryInfo> BatteryService::read() const {
  const auto registry = readIORegistry();
  const auto powerSource = readIOPowerSources();
  return parse(registry ? &*registry : nullptr, powerSource ? &*powerSource : nullptr);
}

std::optional<BatteryInfo> BatteryService::parse(const Dictionary* registry,
                                                 const Dictionary* powerSource) {
  if (registry == nullptr && powerSource == nullptr) {
    return std::nullopt;
  }
  BatteryInfo info;

  info.currentCapacity = integerAt(registry, "AppleRawCurrentCapacity").value_or(0);
  auto maxCapacity = integerAt(registry, "AppleRawMaxCapacity");
  if (!maxCapacity) {
    maxCapacity = integerAt(registry, "NominalChargeCapacity");
  }
  info.maxCapacity = maxCapacity.value_or(0);
  info.designCapacity =
      integerAt(registry, "DesignCapacity").value_or(std::max<std::int64_t>(info.maxCapacity, 1));
  info.healthPercent =
      info.designCapacity > 0 ? percentOf(info.maxCapacity, info.designCapacity) : 100;
  info.chargePercent = chargePercent(registry, powerSource, info.currentCapacity, info.maxCapacity);

  info.cycleCount = integerAt(registry, "CycleCount").value_or(0);
  info.voltage = static_cast<double>(integerAt(registry, "Voltage").value_or(0)) / milli;
  auto milliamperes = integerAt(registry, "Amperage");
  if (!milliamperes) {
    milliamperes = integerAt(registry, "InstantAmperage");
  }
  info.amperage = static_cast<double>(milliamperes.value_or(0)) / milli;
  info.wattage = info.voltage * info.amperage;
  info.temperature = static_cast<double>(integerAt(registry, "Temperature").value_or(0)) / 100.0;

  auto isCharging = booleanAt(registry, "IsCharging");
  if (!isCharging) {
    isCharging = booleanAt(powerSource, "Is Charging");
  }
  info.isCharging = isCharging.value_or(false);
  auto isFullyCharged = booleanAt(registry, "FullyCharged");
  if (!isFullyCharged) {
    isFullyCharged = booleanAt(powerSource, "Is Charged");
  }
  info.isFullyCharged = isFullyCharged.value_or(false);
  info.acConnected = booleanAt(registry, "ExternalConnected").value_or(false);
  info.adapterWatts = integerAt(powerSource, "Watts");
  if (!info.adapterWatts) {
    info.adapterWatts = integerAt(dictionaryAt(registry, "AdapterDetails"), "Watts");
  }

  const auto estimate = timeEstimate(registry, powerSource,
                                     {.isCharging = info.isCharging,
                                      .isFullyCharged = info.isFullyCharged,
                                      .acConnected = info.acConnected,
                                      .wattage = info.wattage,
                                      .currentCapacity = info.currentCapacity,
                                      .maxCapacity = info.maxCapacity,
                                      .amperage = info.amperage});
  if (estimate) {
    info.timeRemaining = estimate->minutes;
    info.timeRemainingKind = estimate->kind;
  }

  info.health = stringAt(powerSource, "BatteryHealth").value_or("Unknown");
  info.serialNumber = stringAt(registry, "BatterySerialNumber");
  if (!info.serialNumber) {
    info.serialNumber = stringAt(powerSource, "Hardware Serial Number");
  }
  return info;
}

std::optional<std::int64_t> BatteryService::validMinutes(const DictionaryValue* value) {
  if (value == nullptr) {
    return std::nullopt;
  }
  if (const auto* minutes = value->ifInteger()) {
    return minutesInRange(*minutes);
  }
  if (const auto* minutes = value->ifFloat()) {
    return minutesInRange(checkedTruncate(*minutes));
  }
  return std::nullopt;
}

std::optional<std::int64_t> BatteryService::firstValidMinutes(
    std::span<const DictionaryValue* const> values) {
  for (const DictionaryValue* value : values) {
    if (const auto minutes = validMinutes(value)) {
      return minutes;
    }
  }
  return std::nullopt;
}

std::optional<std::int64_t> BatteryService::estimatedMinutesToFull(std::int64_t currentCapacity,
                                                                   std::int64_t maxCapacity,
                                                                   double amperage) {
  const std::int64_t missingCharge = checkedSubtract(maxCapacity, currentCapacity);
  if (missingCharge < 1 || !(amperage > smallestUsableCurrent)) {
    return std::nullopt;
  }
  return computedMinutes(missingCharge, amperage);
}

std::optional<BatteryService::TimeEstimate> BatteryService::timeEstimate(
    const Dictionary* registry, const Dictionary* powerSource, const LoadState& load) {
  if (load.isFullyCharged) {
    return std::nullopt;
  }
  // Before the charging flag: a battery that delivers power discharges, whatever the flag says.
  if (load.wattage < dischargingBelowWatts) {
    return estimateToEmpty(registry, powerSource, load);
  }
  if (load.isCharging) {
    return estimateToFull(registry, powerSource, load);
  }
  if (load.acConnected) {
    return std::nullopt;
  }
  return estimateToEmpty(registry, powerSource, load);
}

}  // namespace quorvex
