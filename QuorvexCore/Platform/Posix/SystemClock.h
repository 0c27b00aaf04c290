#pragma once

#include "Clock.h"

namespace quorvex {

/// The clock of the computer that the process runs on. Sleeps really sleep; a signal does not
/// shorten them. Any thread.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] Date now() override;
  [[nodiscard]] std::chrono::nanoseconds monotonic() override;
  void sleep(double seconds) override;
};

}  // namespace quorvex
