#pragma once

#include <string>

#include "ThermalReadings.h"

namespace quorvex {

/// Linux grades neither a thermal state nor a pressure level: the state is 0 (nominal) and the
/// pressure is none. Low power mode is on while the platform profile that the user chose is
/// "low-power". Any thread.
class LinuxThermalReadings final : public ThermalReadings {
 public:
  explicit LinuxThermalReadings(const std::string& sysRoot);

  [[nodiscard]] std::int64_t thermalState() override;
  [[nodiscard]] std::optional<std::uint64_t> thermalPressure() override;
  [[nodiscard]] bool isLowPowerModeEnabled() override;

 private:
  std::string profilePath_;
};

}  // namespace quorvex
