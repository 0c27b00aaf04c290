#pragma once

#include <span>

#include "BatteryTrack.h"
#include "PowerSessionChargeBehavior.h"

namespace quorvex::PowerSessionAnalysis {

/// The stretches of charging and the first charging sample at or past each milestone. Unlike a
/// discharge run, a charge run survives other samples in between. The empty record without charging
/// points. Pure; any thread; points in ascending order of time, `maxGap` in seconds.
[[nodiscard]] PowerSessionChargeBehavior chargeBehavior(std::span<const BatteryPoint> points,
                                                        double maxGap);

}  // namespace quorvex::PowerSessionAnalysis
