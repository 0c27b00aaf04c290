#include <ctime>

#include "WallClock.h"

namespace quorvex::wall_clock {

std::chrono::nanoseconds now() {
  // The library's own clock counts in microseconds there.
  return std::chrono::nanoseconds{clock_gettime_nsec_np(CLOCK_REALTIME)};
}

}  // namespace quorvex::wall_clock
