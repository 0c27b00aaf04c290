#pragma once

#include <optional>
#include <string>

#include "BatteryDictionaries.h"

namespace quorvex {

/// The internal battery under /sys/class/power_supply, told in the battery controller's keys and
/// units: mAh, mV, mA (negative while discharging), hundredths of a degree Celsius, minutes,
/// percent.
///
/// The battery is the first supply of type "Battery" that is not a peripheral's (scope "Device")
/// and not an empty bay; a second internal battery is not told. A file that is missing or makes no
/// sense leaves its key out; nothing is guessed. Capacities come from the charge files, else from
/// the energy files at the battery's nominal voltage (its present voltage when no nominal one is
/// told). Any thread.
class LinuxBatteryDictionaries final : public BatteryDictionaries {
 public:
  explicit LinuxBatteryDictionaries(const std::string& sysRoot);

  /// None when there is no internal battery.
  [[nodiscard]] std::optional<Dictionary> registry() override;
  /// None when there is no internal battery.
  [[nodiscard]] std::optional<Dictionary> firstPowerSource() override;

 private:
  [[nodiscard]] std::optional<std::string> internalBattery() const;
  [[nodiscard]] std::optional<bool> isExternalPowerOnline() const;

  std::string folder_;
};

}  // namespace quorvex
