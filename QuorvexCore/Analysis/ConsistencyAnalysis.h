#pragma once

#include <span>
#include <vector>

#include "Observation.h"
#include "PowerSessionTelemetryConsistencyCheck.h"

namespace quorvex::PowerSessionAnalysis {

/// The ways in which instruments contradicted each other, each only if it was seen: first
/// "battery-draw-residual-dominates", then "incomplete-silicon-channels". Pure; any thread.
[[nodiscard]] std::vector<PowerSessionTelemetryConsistencyCheck> telemetryConsistencyChecks(
    std::span<const Observation> observations);

}  // namespace quorvex::PowerSessionAnalysis
