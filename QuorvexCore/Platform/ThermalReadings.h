#pragma once

#include <cstdint>
#include <optional>

namespace quorvex {

/// The three raw thermal readings of the system. Any thread.
class ThermalReadings {
 public:
  ThermalReadings() = default;
  ThermalReadings(const ThermalReadings&) = delete;
  ThermalReadings& operator=(const ThermalReadings&) = delete;
  virtual ~ThermalReadings() = default;

  /// The process information service's thermal state as its integer value.
  [[nodiscard]] virtual std::int64_t thermalState() = 0;
  /// State of the notification "com.apple.system.thermalpressurelevel"; none when it fails.
  [[nodiscard]] virtual std::optional<std::uint64_t> thermalPressure() = 0;
  [[nodiscard]] virtual bool isLowPowerModeEnabled() = 0;
};

}  // namespace quorvex
