#include "CheckedArithmetic.h"

#include <cmath>

namespace quorvex {

namespace {

std::int64_t checkedWhole(double whole) {
  // Both limits are exact in binary64; the upper one is the first value that no longer fits. NaN
  // fails the comparison too.
  constexpr double lowest = -9223372036854775808.0;
  constexpr double limit = 9223372036854775808.0;
  if (!(whole >= lowest && whole < limit)) {
    fatalError("a floating-point value does not fit a signed 64-bit integer");
  }
  return static_cast<std::int64_t>(whole);
}

}  // namespace

std::int64_t checkedRound(double value) {
  return checkedWhole(std::round(value));
}

std::int64_t checkedTruncate(double value) {
  return checkedWhole(std::trunc(value));
}

}  // namespace quorvex
