#include "UUID.h"

#include <sys/random.h>
#include <unistd.h>

#include <bit>
#include <cstring>

#include "FatalError.h"

namespace quorvex {

namespace {

constexpr std::size_t textLength = 36;

bool isHyphenPosition(std::size_t index) {
  return index == 8 || index == 13 || index == 18 || index == 23;
}

std::optional<unsigned> hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') {
    return static_cast<unsigned>(c - '0');
  }
  if (c >= 'A' && c <= 'F') {
    return static_cast<unsigned>(c - 'A') + 10U;
  }
  if (c >= 'a' && c <= 'f') {
    return static_cast<unsigned>(c - 'a') + 10U;
  }
  return std::nullopt;
}

}  // namespace

UUID UUID::random() {
  Bytes bytes{};
  if (getentropy(bytes.data(), bytes.size()) != 0) {
    fatalError("the system gives no random bytes");
  }
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
  return UUID{bytes};
}

std::optional<UUID> UUID::fromText(std::string_view text) {
  if (text.size() != textLength) {
    return std::nullopt;
  }
  Bytes bytes{};
  std::size_t digitCount = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isHyphenPosition(i)) {
      if (text[i] != '-') {
        return std::nullopt;
      }
      continue;
    }
    const auto digit = hexadecimalDigit(text[i]);
    if (!digit) {
      return std::nullopt;
    }
    std::uint8_t& byte = bytes[digitCount / 2];
    byte = static_cast<std::uint8_t>(unsigned{byte} << 4U | *digit);
    ++digitCount;
  }
  return UUID{bytes};
}

std::string UUID::text() const {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  result.reserve(textLength);
  for (const std::uint8_t byte : bytes_) {
    if (isHyphenPosition(result.size())) {
      result.push_back('-');
    }
    result.push_back(digits[byte >> 4U]);
    result.push_back(digits[byte & 0xFU]);
  }
  return result;
}

}  // namespace quorvex

std::size_t std::hash<quorvex::UUID>::operator()(const quorvex::UUID& id) const noexcept {
  // The bytes are random already, so any eight of them spread well.
  std::uint64_t word = 0;
  std::memcpy(&word, id.bytes().data() + 8, sizeof word);
  return static_cast<std::size_t>(word);
}
