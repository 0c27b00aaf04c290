#include <cerrno>
#include <ctime>

#include "ContinuousClock.h"

namespace quorvex::continuous_clock {

std::chrono::nanoseconds now() {
  timespec time{};
  clock_gettime(CLOCK_BOOTTIME, &time);
  return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

void sleepUntil(std::chrono::nanoseconds deadline) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(deadline);
  const timespec time{.tv_sec = seconds.count(), .tv_nsec = (deadline - seconds).count()};
  while (clock_nanosleep(CLOCK_BOOTTIME, TIMER_ABSTIME, &time, nullptr) == EINTR) {
  }
}

}  // namespace quorvex::continuous_clock
