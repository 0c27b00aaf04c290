#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "BatteryInfo.h"
#include "RecordFields.h"

namespace quorvex {

/// The stored form of a battery reading: the fields of `BatteryInfo`, in its units, and the
/// draining rule as it was decided at recording time. The serial number is left out on purpose:
/// exports are made to be shared.
struct BatteryInfoDTO {
  BatteryInfoDTO() = default;
  explicit BatteryInfoDTO(const BatteryInfo& info);

  std::int64_t chargePercent = 0;
  std::int64_t currentCapacity = 0;
  std::int64_t maxCapacity = 0;
  std::int64_t designCapacity = 0;
  std::int64_t healthPercent = 0;
  std::int64_t cycleCount = 0;
  double voltage = 0.0;
  double amperage = 0.0;
  double wattage = 0.0;
  double temperature = 0.0;
  bool isCharging = false;
  bool isFullyCharged = false;
  bool acConnected = false;
  std::optional<std::int64_t> adapterWatts;
  std::optional<std::int64_t> timeRemaining;
  std::optional<std::string> timeRemainingKind;  ///< "untilFull" or "untilEmpty"
  std::string health;
  bool isPluggedInAndDraining = false;  ///< on AC, not full and below -1.0 W

  bool operator==(const BatteryInfoDTO&) const = default;
};

template <>
struct RecordFields<BatteryInfoDTO> {
  static constexpr std::tuple values{
      RecordField{"acConnected", &BatteryInfoDTO::acConnected},
      RecordField{"adapterWatts", &BatteryInfoDTO::adapterWatts},
      RecordField{"amperage", &BatteryInfoDTO::amperage},
      RecordField{"chargePercent", &BatteryInfoDTO::chargePercent},
      RecordField{"currentCapacity", &BatteryInfoDTO::currentCapacity},
      RecordField{"cycleCount", &BatteryInfoDTO::cycleCount},
      RecordField{"designCapacity", &BatteryInfoDTO::designCapacity},
      RecordField{"health", &BatteryInfoDTO::health},
      RecordField{"healthPercent", &BatteryInfoDTO::healthPercent},
      RecordField{"isCharging", &BatteryInfoDTO::isCharging},
      RecordField{"isFullyCharged", &BatteryInfoDTO::isFullyCharged},
      RecordField{"isPluggedInAndDraining", &BatteryInfoDTO::isPluggedInAndDraining},
      RecordField{"maxCapacity", &BatteryInfoDTO::maxCapacity},
      RecordField{"temperature", &BatteryInfoDTO::temperature},
      RecordField{"timeRemaining", &BatteryInfoDTO::timeRemaining},
      RecordField{"timeRemainingKind", &BatteryInfoDTO::timeRemainingKind},
      RecordField{"voltage", &BatteryInfoDTO::voltage},
      RecordField{"wattage", &BatteryInfoDTO::wattage},
  };
};

}  // namespace quorvex
