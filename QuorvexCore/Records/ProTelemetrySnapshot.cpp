#include "ProTelemetrySnapshot.h"

namespace quorvex {

std::optional<double> ProTelemetrySnapshot::freshPowerTotal(Date now, double maxAge) const {
  if (!isAvailable || !(secondsBetween(sampledAt, now) <= maxAge)) {
    return std::nullopt;
  }
  std::optional<double> total;
  for (const auto& watts : {cpuPowerWatts, gpuPowerWatts, anePowerWatts}) {
    if (watts) {
      total = total.value_or(0.0) + *watts;
    }
  }
  return total;
}

}  // namespace quorvex
