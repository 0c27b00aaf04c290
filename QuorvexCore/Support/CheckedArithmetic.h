#pragma once

#include <concepts>
#include <cstdint>
#include <limits>

#include "FatalError.h"

namespace quorvex {

/// Sum of two integers of one type; a fatal error when it does not fit that type.
template <std::integral Integer>
[[nodiscard]] constexpr Integer checkedAdd(Integer left, Integer right) {
  Integer result{};
  if (__builtin_add_overflow(left, right, &result)) {
    fatalError("integer overflow in an addition");
  }
  return result;
}

/// Difference of two integers of one type; a fatal error when it does not fit that type.
template <std::integral Integer>
[[nodiscard]] constexpr Integer checkedSubtract(Integer left, Integer right) {
  Integer result{};
  if (__builtin_sub_overflow(left, right, &result)) {
    fatalError("integer overflow in a subtraction");
  }
  return result;
}

/// Product of two integers of one type; a fatal error when it does not fit that type.
template <std::integral Integer>
[[nodiscard]] constexpr Integer checkedMultiply(Integer left, Integer right) {
  Integer result{};
  if (__builtin_mul_overflow(left, right, &result)) {
    fatalError("integer overflow in a multiplication");
  }
  return result;
}

/// Sum of two unsigned integers that stays at the largest value instead of overflowing.
template <std::unsigned_integral Integer>
[[nodiscard]] constexpr Integer saturatingAdd(Integer left, Integer right) {
  Integer result{};
  return __builtin_add_overflow(left, right, &result) ? std::numeric_limits<Integer>::max()
                                                      : result;
}

/// The value rounded to nearest, ties away from zero. NaN, infinities and results outside the
/// signed 64-bit range are a fatal error.
[[nodiscard]] std::int64_t checkedRound(double value);

/// The value truncated toward zero. NaN, infinities and results outside the signed 64-bit range are
/// a fatal error.
[[nodiscard]] std::int64_t checkedTruncate(double value);

}  // namespace quorvex
