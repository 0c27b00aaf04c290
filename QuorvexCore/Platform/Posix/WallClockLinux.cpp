#include "WallClock.h"

namespace quorvex::wall_clock {

std::chrono::nanoseconds now() {
  return std::chrono::system_clock::now().time_since_epoch();
}

}  // namespace quorvex::wall_clock
