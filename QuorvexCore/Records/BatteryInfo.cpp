#include "BatteryInfo.h"

#include <cmath>

namespace quorvex {

bool BatteryInfo::isPluggedInAndDraining() const {
  return acConnected && wattage < -1.0 && !isFullyCharged;
}

bool BatteryInfo::chargerOvercomingCurrentLoad() const {
  return acConnected && !isPluggedInAndDraining();
}

std::optional<double> BatteryInfo::minimumObservedSystemLoadWatts() const {
  if (!isPluggedInAndDraining() || !adapterWatts) {
    return std::nullopt;
  }
  return std::abs(wattage) + static_cast<double>(*adapterWatts);
}

std::optional<std::int64_t> BatteryInfo::timeToEmpty() const {
  return timeRemainingKind == BatteryTimeRemainingKind::untilEmpty ? timeRemaining : std::nullopt;
}

std::optional<std::int64_t> BatteryInfo::timeToFullCharge() const {
  return timeRemainingKind == BatteryTimeRemainingKind::untilFull ? timeRemaining : std::nullopt;
}

}  // namespace quorvex
