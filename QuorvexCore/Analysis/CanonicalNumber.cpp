#include "CanonicalNumber.h"

#include <simdjson.h>

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace quorvex {

namespace {

__extension__ using Wide = unsigned __int128;

/// Two different decimals of so many digits are never the same float: none is shorter than the one
/// that stands there.
constexpr std::ptrdiff_t mostCertainDigits = 15;
/// More digits than this never take to tell floats apart.
constexpr std::ptrdiff_t mostNeededDigits = 17;
/// What "e+05" adds. The form with an exponent is written where it is shorter.
constexpr std::ptrdiff_t exponentLength = 4;

constexpr std::array<std::uint64_t, 20> powersOfTen = [] {
  std::array<std::uint64_t, 20> powers{};
  std::uint64_t power = 1;
  for (std::uint64_t& value : powers) {
    value = power;
    power *= 10;
  }
  return powers;
}();

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

const char* digitsEnd(const char* at) {
  while (isDigit(*at)) {
    ++at;
  }
  return at;
}

Wide distance(Wide left, Wide right) {
  return left > right ? left - right : right - left;
}

/// Whether the decimal `digits` / 10^`places`, of 16 or 17 digits without a zero at its end, is
/// what is written for its float: no decimal with a digit less reads back to that float, and none
/// of its own length is nearer to it. What is too close to tell is left to the general way.
bool isShortestAndNearest(std::uint64_t digits, std::size_t places) {
  double number = 0.0;
  if (places >= powersOfTen.size() ||
      !simdjson::builtin::numberparsing::compute_float_64(-static_cast<std::int64_t>(places),
                                                          digits, false, number)) {
    return false;
  }
  constexpr unsigned fractionBits = 52;
  constexpr std::uint64_t hiddenBit = std::uint64_t{1} << fractionBits;
  constexpr int bias = 1075;
  const auto bits = std::bit_cast<std::uint64_t>(number);
  const int shift = bias - static_cast<int>(bits >> fractionBits);
  if (shift < 1 || shift > 64) {
    return false;
  }
  // The float is mantissa / 2^shift. Times 2^shift * 10^places, it and all decimals of that many
  // places are whole: below 2^53 * 10^19 and 10^17 * 2^64.
  const std::uint64_t mantissa = (bits & (hiddenBit - 1)) | hiddenBit;
  const Wide scaledFloat = Wide{mantissa} * powersOfTen[places];
  const auto scaled = [shift](std::uint64_t decimal) { return Wide{decimal} << shift; };
  const Wide placeWidth = scaled(1);
  const Wide floatWidth = powersOfTen[places];
  const std::uint64_t shorter = digits - digits % 10;
  return 2 * distance(scaled(digits), scaledFloat) < placeWidth &&
         2 * distance(scaled(shorter), scaledFloat) > floatWidth &&
         2 * distance(scaled(shorter + 10), scaledFloat) > floatWidth;
}

/// The general way: the number is read as decoders do and written anew.
std::size_t lengthIfWrittenAlike(const char* at) {
  double number = 0.0;
  if (simdjson::builtin::numberparsing::parse_double(reinterpret_cast<const std::uint8_t*>(at))
          .get(number) != simdjson::SUCCESS) {
    return 0;
  }
  std::array<char, 32> buffer{};
  const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  const auto length = static_cast<std::size_t>(end - buffer.data());
  const char next = at[length];
  const bool goesOn = isDigit(next) || next == '.' || next == 'e' || next == 'E';
  return !goesOn && std::memcmp(at, buffer.data(), length) == 0 ? length : 0;
}

}  // namespace

std::size_t canonicalNumberLength(const char* at) {
  const char* const whole = at + (*at == '-' ? 1 : 0);
  const char* const wholeEnd = digitsEnd(whole);
  const bool isFraction = *wholeEnd == '.';
  const char* const fraction = isFraction ? wholeEnd + 1 : wholeEnd;
  const char* const end = digitsEnd(fraction);
  const bool isBelowOne = *whole == '0';
  if (isBelowOne && end == at + 1 && *end != 'e') {
    return 1;
  }
  if (wholeEnd == whole || (isBelowOne && (wholeEnd != whole + 1 || !isFraction)) ||
      (isFraction && (end == fraction || end[-1] == '0')) || *end == 'e') {
    return lengthIfWrittenAlike(at);
  }
  const char* first = isBelowOne ? fraction : whole;
  while (*first == '0') {
    ++first;
  }
  const char* last = end;
  while (last[-1] == '0') {
    --last;
  }
  const std::ptrdiff_t places = end - first - (isFraction && !isBelowOne ? 1 : 0);
  const std::ptrdiff_t digits = places - (end - last);
  const std::ptrdiff_t lengthWithExponent = digits + (digits > 1 ? 1 : 0) + exponentLength;
  const auto length = static_cast<std::size_t>(end - at);
  if (places > mostNeededDigits || end - whole > lengthWithExponent) {
    return lengthIfWrittenAlike(at);
  }
  if (places <= mostCertainDigits) {
    return length;
  }
  std::uint64_t decimal = 0;
  for (const char* digit = first; digit < end; ++digit) {
    if (*digit != '.') {
      decimal = decimal * 10 + static_cast<std::uint64_t>(*digit - '0');
    }
  }
  return isFraction && isShortestAndNearest(decimal, static_cast<std::size_t>(end - fraction))
             ? length
             : lengthIfWrittenAlike(at);
}

}  // namespace quorvex
