#include "SystemClock.h"

#include <algorithm>

#include "ContinuousClock.h"
#include "WallClock.h"

namespace quorvex {

Date SystemClock::now() {
  return Date{wall_clock::now()};
}

std::chrono::nanoseconds SystemClock::monotonic() {
  return continuous_clock::now();
}

void SystemClock::sleep(double seconds) {
  // Written so that NaN, too, returns at once.
  if (!(seconds > 0.0)) {
    return;
  }
  const std::chrono::nanoseconds start = continuous_clock::now();
  const std::chrono::nanoseconds longest = std::chrono::nanoseconds::max() - start;
  continuous_clock::sleepUntil(start + std::min(nanosecondsFromSeconds(seconds), longest));
}

}  // namespace quorvex
