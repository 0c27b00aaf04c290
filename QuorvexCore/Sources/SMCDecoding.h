#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

/// A key's value as the SMC gave it.
struct SMCValue {
  std::vector<std::uint8_t> bytes;  ///< 1 to 32 bytes
  std::uint32_t dataType = 0;       ///< four-character code of the type
};

namespace smc {

/// The first four UTF-8 bytes of a key as a number, the first byte on top; missing bytes are zero.
[[nodiscard]] std::uint32_t fourCharCode(std::string_view key);

/// The four bytes of a code, most significant first, read as Mac OS Roman.
[[nodiscard]] std::string dataTypeString(std::uint32_t code);

/// `dataTypeString` without NUL and blank characters at both ends.
[[nodiscard]] std::string trimmedDataType(std::uint32_t code);

/// A fan speed in revolutions per minute from a value of type "flt" (rounded) or "fpe2" (fraction
/// dropped); none for any other type or too few bytes. A float that is not finite, or outside the
/// signed 64-bit range, is a fatal error.
[[nodiscard]] std::optional<std::int64_t> decodeRPM(const SMCValue& value);

/// A temperature in degrees Celsius from a value of type "flt" or "sp…" (fixed point 7.8); none for
/// any other type, too few bytes, or a temperature not strictly between 0 and 150.
[[nodiscard]] std::optional<double> decodeTemperature(const SMCValue& value);

}  // namespace smc
}  // namespace quorvex
