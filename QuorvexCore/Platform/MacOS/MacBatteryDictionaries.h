#pragma once

#include "BatteryDictionaries.h"

namespace quorvex {

/// The registry entry of the service "AppleSmartBattery" and the power-source service's first
/// source. Nothing is kept between reads. Any thread.
class MacBatteryDictionaries final : public BatteryDictionaries {
 public:
  [[nodiscard]] std::optional<Dictionary> registry() override;
  /// A snapshot or a list that the service refuses ends the process: the service is always there.
  [[nodiscard]] std::optional<Dictionary> firstPowerSource() override;
};

}  // namespace quorvex
