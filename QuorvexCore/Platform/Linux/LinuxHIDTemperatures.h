#pragma once

#include <string>

#include "HIDTemperatures.h"

namespace quorvex {

/// The temperature inputs of /sys/class/hwmon as HID services, device after device and input after
/// input in their numbers' order. A service's product is the device's name and the input's label
/// ("coretemp Core 0"), as far as they are told. An input that cannot be read, makes no sense or
/// reports a fault is a service without an event. Any thread.
class LinuxHIDTemperatures final : public HIDTemperatures {
 public:
  explicit LinuxHIDTemperatures(const std::string& sysRoot);

  /// Null when the system has no hwmon class.
  [[nodiscard]] std::unique_ptr<HIDTemperatureClient> open() override;

 private:
  std::string folder_;
};

}  // namespace quorvex
