#pragma once

#include <optional>
#include <vector>

#include "BatteryService.h"
#include "Clock.h"
#include "HIDSensorService.h"
#include "Machine.h"
#include "NetworkService.h"
#include "PowerService.h"
#include "PrivilegedSMCHelperService.h"
#include "SMCService.h"
#include "SystemPowerState.h"
#include "ThermalService.h"

namespace quorvex {

/// What one round of reads gave.
struct EngineReading {
  SystemPowerState state;                         ///< without network: rates need the round before
  std::vector<NetworkInterfaceStats> interfaces;  ///< rates 0
  std::vector<NetworkProcessInfo> processes;      ///< empty while attribution is disabled
  double duration = 0.0;                          ///< seconds that the round took
};

/// The engine's sources, kept over its life, since some of them hold connections between reads.
/// Any thread; rounds may overlap.
class EngineSources {
 public:
  explicit EngineSources(Machine& machine);

  /// Reads everything, one source after the other, blocking for as long as they take. `lowImpact`
  /// takes `carriedPower` in place of a silicon reading and has no fallback for temperatures.
  [[nodiscard]] EngineReading read(bool lowImpact, const std::optional<PowerMetrics>& carriedPower);

 private:
  [[nodiscard]] std::vector<TemperatureSensor> readTemperatures(bool lowImpact);

  Clock* clock_;
  BatteryService batteryService_;
  ThermalService thermalService_;
  PowerService powerService_;
  SMCService smcService_;
  PrivilegedSMCHelperService privilegedSMCHelperService_;
  HIDSensorService hidSensorService_;
  NetworkService networkService_;
};

}  // namespace quorvex
