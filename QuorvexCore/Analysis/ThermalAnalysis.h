#pragma once

#include <span>

#include "Observation.h"
#include "PowerSessionThermalSummary.h"

namespace quorvex::PowerSessionAnalysis {

/// The hottest sensor of each sample (its column, else its snapshot), the fastest fan likewise, the
/// thermal pressure, and a verdict that calls nothing throttling without the system saying so.
/// Never the empty record: without observations it is cool, and says what warm readings mean. Pure;
/// any thread.
[[nodiscard]] PowerSessionThermalSummary thermalSummary(std::span<const Observation> observations);

}  // namespace quorvex::PowerSessionAnalysis
