#include <unicode/utf8.h>

#include <cstdint>

#include "Text.h"

// Apart from the other functions, since these two need the Unicode library's macros but none of its
// code: the root-owned helper tool writes its texts with them and does not link the library.

namespace quorvex::text {

namespace {

/// The end of the code point at `offset`, and whether its sequence is well-formed.
struct Step {
  std::size_t end;
  bool isWellFormed;
};

Step stepFrom(std::string_view bytes, std::size_t offset) {
  const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
  auto next = static_cast<std::int64_t>(offset);
  const auto length = static_cast<std::int64_t>(bytes.size());
  UChar32 value = 0;
  U8_NEXT(units, next, length, value);
  return {static_cast<std::size_t>(next), value >= 0};
}

}  // namespace

bool isValidUTF8(std::string_view bytes) {
  std::size_t offset = 0;
  while (offset < bytes.size()) {
    const Step step = stepFrom(bytes, offset);
    if (!step.isWellFormed) {
      return false;
    }
    offset = step.end;
  }
  return true;
}

std::string repairedUTF8(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  std::size_t offset = 0;
  while (offset < bytes.size()) {
    const Step step = stepFrom(bytes, offset);
    if (step.isWellFormed) {
      result.append(bytes, offset, step.end - offset);
    } else {
      result.append("\xEF\xBF\xBD");
    }
    offset = step.end;
  }
  return result;
}

}  // namespace quorvex::text
