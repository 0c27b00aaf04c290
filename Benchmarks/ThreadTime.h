#pragma once

#include <ctime>

namespace quorvex::benchmarks {

/// Seconds of CPU that the calling thread has used; what the machine does besides does not count.
[[nodiscard]] inline double threadSeconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace quorvex::benchmarks
