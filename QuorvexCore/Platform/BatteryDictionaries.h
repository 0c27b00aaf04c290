#pragma once

#include <optional>

#include "Dictionary.h"

namespace quorvex {

/// The two dictionaries that the system publishes about the internal battery. Any thread.
class BatteryDictionaries {
 public:
  BatteryDictionaries() = default;
  BatteryDictionaries(const BatteryDictionaries&) = delete;
  BatteryDictionaries& operator=(const BatteryDictionaries&) = delete;
  virtual ~BatteryDictionaries() = default;

  /// All properties of the battery controller's registry entry (IOKit service
  /// "AppleSmartBattery"); none when there is no such service or its properties are unreadable.
  [[nodiscard]] virtual std::optional<Dictionary> registry() = 0;

  /// The description of the first power source that the power-source service lists; none when the
  /// list is empty or that source has no description.
  [[nodiscard]] virtual std::optional<Dictionary> firstPowerSource() = 0;
};

}  // namespace quorvex
