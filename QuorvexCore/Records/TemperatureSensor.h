#pragma once

#include <string>

#include "RecordFields.h"

namespace quorvex {

/// One named temperature. Also the element of the helper tool's temperature reply.
struct TemperatureSensor {
  std::string key;           ///< the source's key: an SMC key or one formed from an HID name
  std::string name;          ///< display name
  double temperature = 0.0;  ///< degrees Celsius

  bool operator==(const TemperatureSensor&) const = default;
};

template <>
struct RecordFields<TemperatureSensor> {
  static constexpr std::tuple values{
      RecordField{"key", &TemperatureSensor::key},
      RecordField{"name", &TemperatureSensor::name},
      RecordField{"temperature", &TemperatureSensor::temperature},
  };
};

/// A temperature prepared for display.
struct TemperatureDisplayReading {
  std::string id;            ///< stable identity in lists
  std::string label;         ///< display label
  double temperature = 0.0;  ///< degrees Celsius

  bool operator==(const TemperatureDisplayReading&) const = default;
};

}  // namespace quorvex
