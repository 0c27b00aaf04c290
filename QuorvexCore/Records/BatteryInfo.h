#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "RawEnum.h"

namespace quorvex {

/// Which way `BatteryInfo::timeRemaining` counts.
enum class BatteryTimeRemainingKind { untilEmpty, untilFull };

template <>
struct RawTexts<BatteryTimeRemainingKind> {
  static constexpr std::array values{
      std::pair{BatteryTimeRemainingKind::untilEmpty, std::string_view{"untilEmpty"}},
      std::pair{BatteryTimeRemainingKind::untilFull, std::string_view{"untilFull"}}};
};

/// One reading of the internal battery: the battery controller's registry entry, completed from
/// the power-source service. Copied freely between threads.
struct BatteryInfo {
  std::int64_t chargePercent = 0;    ///< state of charge in percent, 0 to 100
  std::int64_t currentCapacity = 0;  ///< remaining charge in mAh, from the raw counters
  std::int64_t maxCapacity = 0;      ///< full-charge capacity in mAh
  std::int64_t designCapacity = 0;   ///< design capacity in mAh
  std::int64_t healthPercent = 0;    ///< `maxCapacity` against `designCapacity`, at most 100
  std::int64_t cycleCount = 0;       ///< charge cycles
  double voltage = 0.0;              ///< terminal voltage in volts
  double amperage = 0.0;             ///< terminal current in amperes, negative while discharging
  double wattage = 0.0;      ///< `voltage` times `amperage` in watts; negative leaves the battery
  double temperature = 0.0;  ///< degrees Celsius
  bool isCharging = false;   ///< the controller says that it is charging
  bool isFullyCharged = false;               ///< the controller says that it is full
  bool acConnected = false;                  ///< external power is connected
  std::optional<std::int64_t> adapterWatts;  ///< the adapter's rating in watts, not delivered power
  std::optional<std::int64_t> timeRemaining;  ///< minutes; absent when nothing can be estimated
  std::optional<BatteryTimeRemainingKind> timeRemainingKind;  ///< absent with `timeRemaining`
  std::string health;                       ///< the service's health word, "Unknown" without one
  std::optional<std::string> serialNumber;  ///< absent when the machine gives none

  /// Whether the battery loses more than 1 W (strictly) although AC is connected and it is not
  /// full.
  [[nodiscard]] bool isPluggedInAndDraining() const;

  /// The same rule as `isPluggedInAndDraining`, named for what it says of the charger.
  [[nodiscard]] bool isInsufficientCharger() const { return isPluggedInAndDraining(); }

  /// Whether AC is connected and the battery is not draining by the rule above.
  [[nodiscard]] bool chargerOvercomingCurrentLoad() const;

  /// Watts that the machine draws at the least, taking the adapter's rating as delivered: the
  /// battery's magnitude plus the rating. Absent unless draining with a known rating.
  [[nodiscard]] std::optional<double> minimumObservedSystemLoadWatts() const;

  /// Minutes until empty; absent when the estimate counts the other way or there is none.
  [[nodiscard]] std::optional<std::int64_t> timeToEmpty() const;

  /// Minutes until full; absent when the estimate counts the other way or there is none.
  [[nodiscard]] std::optional<std::int64_t> timeToFullCharge() const;

  bool operator==(const BatteryInfo&) const = default;
};

}  // namespace quorvex
