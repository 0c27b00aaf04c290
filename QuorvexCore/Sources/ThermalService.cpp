#include "ThermalService.h"

#include <algorithm>
#include <limits>

#include "FatalError.h"

namespace quorvex {

namespace {

constexpr std::int64_t highestPressure = 4;

ThermalState stateFromSystem(std::int64_t value) {
  switch (value) {
    case 1:
      return ThermalState::fair;
    case 2:
      return ThermalState::serious;
    case 3:
      return ThermalState::critical;
    default:
      return ThermalState::nominal;
  }
}

}  // namespace

ThermalInfo ThermalService::read() const {
  ThermalInfo info;
  info.state = stateFromSystem(port_->thermalState());
  info.pressure = readThermalPressure();
  info.isLowPowerMode = port_->isLowPowerModeEnabled();
  return info;
}

std::int64_t ThermalService::readThermalPressure() const {
  const auto state = port_->thermalPressure();
  if (!state) {
    return 0;
  }
  if (*state > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
    fatalError("the thermal pressure state does not fit a signed 64-bit integer");
  }
  return std::min(static_cast<std::int64_t>(*state), highestPressure);
}

}  // namespace quorvex
