#pragma once

#include "BatteryInfo.h"
#include "NetworkSnapshot.h"
#include "PowerMetrics.h"
#include "SystemPowerState.h"

/// Records with consistent physics, to be changed by a test in the one field that it is about.
namespace quorvex::samples {

/// A 14-inch laptop's battery at rest: 80 % of 6000 mAh, 12 V, no current, unplugged.
inline BatteryInfo battery() {
  return BatteryInfo{.chargePercent = 80,
                     .currentCapacity = 4800,
                     .maxCapacity = 6000,
                     .designCapacity = 6250,
                     .healthPercent = 96,
                     .cycleCount = 120,
                     .voltage = 12.0,
                     .amperage = 0.0,
                     .wattage = 0.0,
                     .temperature = 30.5,
                     .health = "Good"};
}

/// The same battery with a power in watts; negative leaves the battery.
inline BatteryInfo batteryAt(double watts) {
  BatteryInfo info = battery();
  info.amperage = watts / info.voltage;
  info.wattage = watts;
  return info;
}

/// A silicon reading whose channels sum to `watts`.
inline PowerMetrics silicon(double watts) {
  return PowerMetrics{.cpuPower = watts * 0.5,
                      .gpuPower = watts * 0.25,
                      .anePower = 0.0,
                      .ramPower = watts * 0.25,
                      .systemPower = watts,
                      .siliconChannelsComplete = true};
}

inline NetworkInterfaceStats interface(std::int64_t id, std::string name, std::uint64_t bytesIn = 0,
                                       std::uint64_t bytesOut = 0, double inPerSec = 0.0,
                                       double outPerSec = 0.0) {
  return NetworkInterfaceStats{.id = id,
                               .name = std::move(name),
                               .bytesIn = bytesIn,
                               .bytesOut = bytesOut,
                               .bytesInPerSec = inPerSec,
                               .bytesOutPerSec = outPerSec};
}

}  // namespace quorvex::samples
