#pragma once

#include <array>
#include <cstdint>

#include "RawEnum.h"

namespace quorvex {

/// The system's coarse thermal state. A later case is a worse state, and `<` says so; the numeric
/// values are the operating system's own.
enum class ThermalState { nominal = 0, fair = 1, serious = 2, critical = 3 };

template <>
struct RawTexts<ThermalState> {
  static constexpr std::array values{
      std::pair{ThermalState::nominal, std::string_view{"nominal"}},
      std::pair{ThermalState::fair, std::string_view{"fair"}},
      std::pair{ThermalState::serious, std::string_view{"serious"}},
      std::pair{ThermalState::critical, std::string_view{"critical"}}};
};

/// Thermal state, pressure level and low power mode. State and pressure come from independent
/// mechanisms and may disagree. Copied freely between threads.
struct ThermalInfo {
  ThermalState state = ThermalState::nominal;  ///< from the process information service
  std::int64_t pressure = 0;    ///< level of the pressure notification, 0 to 4; 0 when unreadable
  bool isLowPowerMode = false;  ///< the operating system's low power mode is on

  bool operator==(const ThermalInfo&) const = default;
};

}  // namespace quorvex
