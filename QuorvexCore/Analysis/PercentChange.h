#pragma once

#include <cstdint>
#include <limits>

namespace quorvex {

/// `end` minus `start` of two charge percentages. Stored percentages can be any whole numbers: the
/// result stays at the ends of its type instead of overflowing.
[[nodiscard]] constexpr std::int64_t percentChange(std::int64_t start, std::int64_t end) {
  std::int64_t change = 0;
  if (__builtin_sub_overflow(end, start, &change)) {
    return end < start ? std::numeric_limits<std::int64_t>::min()
                       : std::numeric_limits<std::int64_t>::max();
  }
  return change;
}

}  // namespace quorvex
