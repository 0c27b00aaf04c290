#include "CanonicalReader.h"

#include <bit>
#include <cstdint>

#include "CanonicalNumber.h"
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

bool isLowerHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
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
  const std::size_t length = canonicalNumberLength(at_);
  at_ += length;
  return length > 0;
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
  // Of the texts that are read as dates, those of this length in UTC have no fraction.
  constexpr std::string_view form = "YYYY-MM-DDThh:mm:ssZ";
  const char* const start = at_ + 1;
  if (!passText()) {
    return false;
  }
  const std::string_view date{start, static_cast<std::size_t>(at_ - 1 - start)};
  return date.size() == form.size() && date.back() == form.back() && parseISO8601(date).has_value();
}

}  // namespace quorvex
