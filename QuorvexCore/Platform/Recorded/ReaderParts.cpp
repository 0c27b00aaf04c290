#include "ReaderParts.h"

namespace quorvex::record_readers {

namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

std::vector<std::byte> readHex(StrictJSON& json) {
  const std::string text = json.string();
  std::vector<std::byte> bytes;
  bytes.reserve(text.size() / 2);
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const int high = hexDigit(text[i]);
    const int low = i + 1 < text.size() ? hexDigit(text[i + 1]) : -1;
    if (high < 0 || low < 0) {
      json.fail("must be pairs of hexadecimal digits");
    }
    bytes.push_back(static_cast<std::byte>(high * 16 + low));
  }
  return bytes;
}

}  // namespace quorvex::record_readers
