#include "WattHoursAccumulator.h"

namespace quorvex {

void WattHoursAccumulator::ingest(WattPoint point) {
  if (last_) {
    const double seconds = secondsBetween(last_->timestamp, point.timestamp);
    if (maxGap_ && seconds > *maxGap_) {
      hasGap_ = true;
    } else if (seconds > 0.0) {
      wattHours_ += trapezoidWattHours(last_->watts, point.watts, seconds);
      hasInterval_ = true;
    }
  }
  last_ = point;
}

}  // namespace quorvex
