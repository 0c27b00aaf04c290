#include "CanonicalReader.h"

#include <simdjson.h>

#include <bit>
#include <cstdint>

#include "Text.h"

namespace quorvex {

namespace {

constexpr std::uint64_t inEachByte(std::uint64_t byte) {
  return byte * 0x0101010101010101U;
}

constexpr std::uint64_t highBits = inEachByte(0x80);

/// Marks, in their highest bits, the bytes that equal `byte`; above the first one also others.
constexpr std::uint64_t bytesEqualTo(std::uint64_t bytes, std::uint64_t byte) {
  const std::uint64_t difference = bytes ^ inEachByte(byte);
  return (difference - inEachByte(1)) & ~difference;
}

/// The first byte at or behind `at` that does not stand for itself within written text, or is not
/// ASCII.
const char* plainTextEnd(const char* at) {
  while (true) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    if constexpr (std::endian::native == std::endian::big) {
      bytes = __builtin_bswap64(bytes);
    }
    const std::uint64_t marks = (bytesEqualTo(bytes, '"') | bytesEqualTo(bytes, '\\') |
                                 bytesEqualTo(bytes, '/') | (bytes - inEachByte(0x20)) | bytes) &
                                highBits;
    if (marks != 0) {
      return at + std::countr_zero(marks) / 8;
    }
    at += sizeof bytes;
  }
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLowerHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f');
}

const char* digitsEnd(const char* at) {
  while (isDigit(*at)) {
    ++at;
  }
  return at;
}

/// The length of the escape at a backslash if it is one that is written; otherwise 0.
std::size_t escapeLength(const char* at) {
  switch (at[1]) {
    case '"':
    case '\\':
    case '/':
    case 'b':
    case 'f':
    case 'n':
    case 'r':
    case 't':
      return 2;
    case 'u': {
      // Control characters that have no letter.
      constexpr std::string_view zeros = "00";
      if (at[2] != zeros[0] || at[3] != zeros[1] || (at[4] != '0' && at[4] != '1') ||
          !isLowerHexDigit(at[5])) {
        return 0;
      }
      constexpr std::string_view withLetter = "89acd";
      const bool hasLetter = at[4] == '0' && withLetter.find(at[5]) != std::string_view::npos;
      return hasLetter ? 0 : 6;
    }
    default:
      return 0;
  }
}

}  // namespace

bool CanonicalReader::isAtEnd() const {
  return at_ == text_.data() + text_.size() && (!hasNonASCII_ || text::isValidUTF8(text_));
}

bool CanonicalReader::passFlag() {
  for (const std::string_view word : {std::string_view{"true"}, std::string_view{"false"}}) {
    if (std::memcmp(at_, word.data(), word.size()) == 0) {
      at_ += word.size();
      return true;
    }
  }
  return false;
}

bool CanonicalReader::passNumber() {
  // Two different decimals of so many digits are never the same float: none is shorter than the one
  // that stands there.
  constexpr std::ptrdiff_t mostCertainDigits = 15;
  // What "e+05" adds. The form with an exponent is written where it is shorter.
  constexpr std::ptrdiff_t exponentLength = 4;

  const char* const whole = at_ + (*at_ == '-' ? 1 : 0);
  const char* const wholeEnd = digitsEnd(whole);
  const bool isFraction = *wholeEnd == '.';
  const char* const end = isFraction ? digitsEnd(wholeEnd + 1) : wholeEnd;
  const bool isBelowOne = *whole == '0';
  if (wholeEnd == whole || (isBelowOne && (wholeEnd != whole + 1 || !isFraction)) || *end == 'e' ||
      (isFraction && (end == wholeEnd + 1 || end[-1] == '0'))) {
    return passAnyNumber();
  }
  const char* first = isBelowOne ? wholeEnd + 1 : whole;
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
  if (digits < 1 || places > mostCertainDigits || end - whole > lengthWithExponent) {
    return passAnyNumber();
  }
  at_ = end;
  return true;
}

bool CanonicalReader::passAnyNumber() {
  constexpr std::string_view characters = "+-.0123456789e";
  const char* end = at_;
  while (*end != '\0' && characters.find(*end) != std::string_view::npos) {
    ++end;
  }
  // The decoder's own way with numbers.
  double number = 0.0;
  if (simdjson::builtin::numberparsing::parse_double(reinterpret_cast<const std::uint8_t*>(at_))
          .get(number) != simdjson::SUCCESS) {
    return false;
  }
  std::array<char, 32> buffer{};
  const char* const written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  const std::string_view canonical{buffer.data(),
                                   static_cast<std::size_t>(written - buffer.data())};
  const std::string_view token{at_, static_cast<std::size_t>(end - at_)};
  at_ = end;
  return token == canonical;
}

bool CanonicalReader::passText() {
  if (!take('"')) {
    return false;
  }
  const char* stop = plainTextEnd(at_);
  while (*stop != '"') {
    if (static_cast<unsigned char>(*stop) >= 0x80) {
      hasNonASCII_ = true;
      stop = plainTextEnd(stop + 1);
      continue;
    }
    const std::size_t length = *stop == '\\' ? escapeLength(stop) : 0;
    if (length == 0) {
      return false;
    }
    stop = plainTextEnd(stop + length);
  }
  at_ = stop + 1;
  return true;
}

bool CanonicalReader::passDate() {
  const char* const start = at_ + 1;
  if (!passText()) {
    return false;
  }
  const std::string_view token{start, static_cast<std::size_t>(at_ - 1 - start)};
  const auto date = parseISO8601(token);
  return date && iso8601(*date) == token;
}

}  // namespace quorvex
