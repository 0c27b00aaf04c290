#pragma once

#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "HIDTemperatures.h"
#include "TemperatureSensor.h"

namespace quorvex {

/// Reads the temperature sensors that the system publishes as HID services, without privileges.
/// The client is built on the first success and kept; a failed attempt is repeated at the next
/// read. Reads may overlap.
class HIDSensorService {
 public:
  explicit HIDSensorService(HIDTemperatures& port) : port_(&port) {}

  /// All sensors with a valid temperature, ascending by name; empty when nothing is available.
  [[nodiscard]] std::vector<TemperatureSensor> readTemperatures();

  /// The cached client, built if needed; null on failure.
  [[nodiscard]] std::shared_ptr<HIDTemperatureClient> acquireContext();

  /// The sensors of a client; empty when it lists none.
  [[nodiscard]] static std::vector<TemperatureSensor> collectSensors(HIDTemperatureClient& client);

  /// The sensors that a list of services amounts to: those strictly between 0 and 150 degrees, with
  /// keys made unique by a counted suffix, sorted by name, equal names in service order.
  [[nodiscard]] static std::vector<TemperatureSensor> sensors(
      std::span<const HIDTemperatureService> services);

 private:
  HIDTemperatures* port_;
  std::mutex mutex_;
  std::shared_ptr<HIDTemperatureClient> cachedContext_;
};

}  // namespace quorvex
