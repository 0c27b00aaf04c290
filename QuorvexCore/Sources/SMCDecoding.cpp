#include "SMCDecoding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "CheckedArithmetic.h"
#include "Text.h"

namespace quorvex::smc {

namespace {

static_assert(std::endian::native == std::endian::little, "SMC floats are read as they lie");

/// Type codes are four characters, filled up with blanks or NUL.
constexpr std::string_view padding{" \0", 2};

std::optional<float> leadingFloat(const SMCValue& value) {
  float number = 0.0F;
  if (value.bytes.size() < sizeof number) {
    return std::nullopt;
  }
  std::memcpy(&number, value.bytes.data(), sizeof number);
  return number;
}

/// The first two bytes as a big-endian number.
std::optional<std::uint16_t> leadingWord(const SMCValue& value) {
  if (value.bytes.size() < 2) {
    return std::nullopt;
  }
  return static_cast<std::uint16_t>(value.bytes[0] << 8U | value.bytes[1]);
}

}  // namespace

std::uint32_t fourCharCode(std::string_view key) {
  std::uint32_t code = 0;
  for (std::size_t index = 0; index < sizeof code; ++index) {
    code <<= 8U;
    if (index < key.size()) {
      code |= static_cast<std::uint8_t>(key[index]);
    }
  }
  return code;
}

std::string dataTypeString(std::uint32_t code) {
  const std::array bytes{static_cast<char>(code >> 24U), static_cast<char>(code >> 16U),
                         static_cast<char>(code >> 8U), static_cast<char>(code)};
  return text::decodedMacOSRoman({bytes.data(), bytes.size()});
}

std::string trimmedDataType(std::uint32_t code) {
  std::string type = dataTypeString(code);
  const std::size_t last = type.find_last_not_of(padding);
  type.erase(last == std::string::npos ? 0 : last + 1);
  type.erase(0, std::min(type.find_first_not_of(padding), type.size()));
  return type;
}

std::optional<std::int64_t> decodeRPM(const SMCValue& value) {
  const std::string type = trimmedDataType(value.dataType);
  if (type == "flt") {
    const auto speed = leadingFloat(value);
    return speed ? std::optional{checkedRound(static_cast<double>(*speed))} : std::nullopt;
  }
  if (type == "fpe2") {
    const auto word = leadingWord(value);
    return word ? std::optional<std::int64_t>{*word >> 2U} : std::nullopt;
  }
  return std::nullopt;
}

std::optional<double> decodeTemperature(const SMCValue& value) {
  const std::string type = trimmedDataType(value.dataType);
  std::optional<double> temperature;
  if (type == "flt") {
    temperature = leadingFloat(value);
  } else if (type.starts_with("sp")) {
    // Every signed fixed-point type counts as 7.8, whatever digits follow.
    if (const auto word = leadingWord(value)) {
      temperature = static_cast<double>(static_cast<std::int16_t>(*word)) / 256.0;
    }
  }
  return temperature && *temperature > 0.0 && *temperature < 150.0 ? temperature : std::nullopt;
}

}  // namespace quorvex::smc
