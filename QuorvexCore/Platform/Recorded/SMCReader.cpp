#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "ReaderParts.h"
#include "RecordReaders.h"
#include "Text.h"

namespace quorvex::record_readers {

namespace {

constexpr std::size_t codeLength = 4;

std::uint32_t codeOfBytes(std::string_view bytes) {
  std::uint32_t code = 0;
  for (const char byte : bytes) {
    code = code << 8U | static_cast<unsigned char>(byte);
  }
  return code;
}

/// The legacy byte of the character at the front of `text`, which is taken off; none for a
/// character that the legacy encoding lacks.
std::optional<char> takeMacOSRoman(std::string_view& text) {
  if (static_cast<unsigned char>(text.front()) < 0x80) {
    const char character = text.front();
    text.remove_prefix(1);
    return character;
  }
  for (int code = 0x80; code <= 0xFF; ++code) {
    const char byte = static_cast<char>(code);
    const std::string character = text::decodedMacOSRoman({&byte, 1});
    if (text.starts_with(character)) {
      text.remove_prefix(character.size());
      return byte;
    }
  }
  return std::nullopt;
}

/// A type is given as people read it; the controller holds it as one legacy byte a character.
std::uint32_t readDataType(StrictJSON& json) {
  constexpr std::string_view problem = "must have 4 Mac OS Roman characters";
  const std::string type = json.string();
  std::string bytes;
  for (std::string_view rest = type; !rest.empty();) {
    const auto byte = takeMacOSRoman(rest);
    if (!byte) {
      json.fail(problem);
    }
    bytes += *byte;
  }
  if (bytes.size() != codeLength) {
    json.fail(problem);
  }
  return codeOfBytes(bytes);
}

RecordedSMCValue readValue(StrictJSON& json) {
  RecordedSMCValue value;
  std::optional<std::uint32_t> dataType;
  std::optional<std::vector<std::byte>> bytes;
  std::optional<std::uint32_t> dataSize;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key == "type") {
      dataType = readDataType(child);
    } else if (key == "bytes") {
      bytes = readHex(child);
    } else if (key == "size") {
      dataSize = readInteger<std::uint32_t>(child);
    } else {
      child.fail("unknown key");
    }
  });
  value.dataType = required(json, "type", dataType);
  const auto allBytes = required(json, "bytes", std::move(bytes));
  value.dataSize = dataSize.value_or(static_cast<std::uint32_t>(allBytes.size()));
  // The wire record has room for no more; a longer value shows by its size alone.
  const std::size_t carried = std::min(allBytes.size(), value.bytes.size());
  std::transform(allBytes.begin(), allBytes.begin() + static_cast<std::ptrdiff_t>(carried),
                 value.bytes.begin(),
                 [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
  return value;
}

}  // namespace

RecordedSMCKeys readSMCKeys(StrictJSON& json) {
  RecordedSMCKeys keys;
  json.forEachField([&](std::string_view key, StrictJSON& child) {
    if (key.size() != codeLength) {
      child.fail("an SMC key must have 4 bytes");
    }
    keys.push_back(readValue(child));
    keys.back().key = codeOfBytes(key);
  });
  std::sort(keys.begin(), keys.end(),
            [](const auto& left, const auto& right) { return left.key < right.key; });
  return keys;
}

}  // namespace quorvex::record_readers
