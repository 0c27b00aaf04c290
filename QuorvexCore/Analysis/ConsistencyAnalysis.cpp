#include "ConsistencyAnalysis.h"

#include <cstdint>
#include <optional>

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr double highDrawWatts = 20.0;
constexpr double nearZeroSiliconWatts = 1.0;
constexpr double dominatingShare = 0.75;

/// A high draw that no instrument explains: silicon near zero, and nearly all of it unattributed.
bool residualDominates(const Observation& observation) {
  if (!observation.snapshot) {
    return false;
  }
  const ObservedSnapshot& snapshot = *observation.snapshot;
  if (!snapshot.batteryDischargeWatts || *snapshot.batteryDischargeWatts < highDrawWatts ||
      observation.sourceKind() != "batteryDischarge") {
    return false;
  }
  const std::optional<double> silicon =
      snapshot.siliconWatts ? snapshot.siliconWatts : snapshot.systemPower;
  if (silicon && *silicon >= nearZeroSiliconWatts) {
    return false;
  }
  const double residual =
      snapshot.unattributedPower.value_or(snapshot.displayAndOtherPower.value_or(0.0));
  return residual >= dominatingShare * *snapshot.batteryDischargeWatts;
}

bool lacksSiliconChannels(const Observation& observation) {
  return observation.snapshot && observation.snapshot->systemPower &&
         !observation.snapshot->siliconChannelsComplete;
}

}  // namespace

std::vector<PowerSessionTelemetryConsistencyCheck> telemetryConsistencyChecks(
    std::span<const Observation> observations) {
  std::int64_t dominated = 0;
  std::int64_t incomplete = 0;
  for (const Observation& observation : observations) {
    dominated += residualDominates(observation) ? 1 : 0;
    incomplete += lacksSiliconChannels(observation) ? 1 : 0;
  }
  std::vector<PowerSessionTelemetryConsistencyCheck> checks;
  if (dominated > 0) {
    checks.push_back({.code = "battery-draw-residual-dominates",
                      .severity = "warning",
                      .message = "Battery draw was high while IOReport silicon watts were near "
                                 "zero; unattributed power dominated and should not be read as "
                                 "measured display power.",
                      .sampleCount = dominated});
  }
  if (incomplete > 0) {
    checks.push_back({.code = "incomplete-silicon-channels",
                      .severity = "info",
                      .message = "Some IOReport samples were missing silicon aggregate channels; "
                                 "residual/unattributed power absorbs the missing rails.",
                      .sampleCount = incomplete});
  }
  return checks;
}

}  // namespace quorvex::PowerSessionAnalysis
