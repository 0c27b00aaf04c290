#pragma once

#include <cstdint>

#include "ThermalInfo.h"
#include "ThermalReadings.h"

namespace quorvex {

/// Gives the thermal state, the pressure level and the low power flag. It always answers.
/// Stateless; any thread.
class ThermalService {
 public:
  explicit ThermalService(ThermalReadings& port) : port_(&port) {}

  [[nodiscard]] ThermalInfo read() const;

  /// 0 to 4; 0 when the notification fails. A state beyond the signed 64-bit range is a fatal
  /// error.
  [[nodiscard]] std::int64_t readThermalPressure() const;

 private:
  ThermalReadings* port_;
};

}  // namespace quorvex
