#pragma once

#include <optional>
#include <string_view>

#include "JSONWriter.h"

namespace quorvex {

/// Decimals of each kind of number in the reports.
inline constexpr int rateDecimals = 1;  ///< bytes per second
inline constexpr int wattDecimals = 2;  ///< watts, percents, degrees, seconds
inline constexpr int fineDecimals = 3;  ///< volts, amperes, the watts of one process

/// A number field with at most `decimals` places; nothing when the value is absent.
inline void writeOptional(JSONWriter& json, std::string_view name,
                          const std::optional<double>& value, int decimals) {
  if (value) {
    json.decimalField(name, *value, decimals);
  }
}

/// A field of any other kind; nothing when the value is absent.
template <typename Value>
void writeOptional(JSONWriter& json, std::string_view name, const std::optional<Value>& value) {
  if (value) {
    json.field(name, *value);
  }
}

}  // namespace quorvex
