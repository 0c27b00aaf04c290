#pragma once

#include <chrono>

#include "Date.h"

namespace quorvex {

/// The machine's time. Every clock read and every sleep of the program goes through it. Any thread.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  /// The wall clock.
  [[nodiscard]] virtual Date now() = 0;
  /// A clock that never steps back and goes on while the machine sleeps; its zero is arbitrary.
  [[nodiscard]] virtual std::chrono::nanoseconds monotonic() = 0;
  /// Blocks the calling thread for `seconds` on the monotonic clock; returns at once for 0,
  /// negative values and NaN.
  virtual void sleep(double seconds) = 0;
};

}  // namespace quorvex
