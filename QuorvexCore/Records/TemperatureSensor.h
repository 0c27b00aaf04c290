#pragma once

#include <string>

namespace quorvex {

/// One named temperature. Also the element of the helper tool's temperature reply.
struct TemperatureSensor {
  std::string key;           ///< the source's key: an SMC key or one formed from an HID name
  std::string name;          ///< display name
  double temperature = 0.0;  ///< degrees Celsius

  bool operator==(const TemperatureSensor&) const = default;
};

/// A temperature prepared for display.
struct TemperatureDisplayReading {
  std::string id;            ///< stable identity in lists
  std::string label;         ///< display label
  double temperature = 0.0;  ///< degrees Celsius

  bool operator==(const TemperatureDisplayReading&) const = default;
};

}  // namespace quorvex
