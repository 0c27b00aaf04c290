#include "LinuxThermalReadings.h"

#include "SystemTree.h"

namespace quorvex {

LinuxThermalReadings::LinuxThermalReadings(const std::string& sysRoot)
    : profilePath_(sysRoot + "/firmware/acpi/platform_profile") {}

std::int64_t LinuxThermalReadings::thermalState() {
  return 0;
}

std::optional<std::uint64_t> LinuxThermalReadings::thermalPressure() {
  return std::nullopt;
}

bool LinuxThermalReadings::isLowPowerModeEnabled() {
  return system_tree::readWord(profilePath_) == "low-power";
}

}  // namespace quorvex
