#pragma once

#include <span>
#include <string_view>

namespace quorvex {

/// A temperature key of the SMC with its display label. Keys are case-sensitive.
struct KnownSensor {
  std::string_view key;
  std::string_view label;
};

/// The 37 temperature keys that the program knows, in ascending order of label. Labels are unique.
[[nodiscard]] std::span<const KnownSensor> knownSensors();

}  // namespace quorvex
