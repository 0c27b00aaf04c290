#include "SessionEnergy.h"

#include <algorithm>

#include "PowerSessionMetrics.h"

namespace quorvex {

namespace {

bool hasMixedSources(std::span<const PowerSessionPowerSegment> segments) {
  return std::any_of(segments.begin(), segments.end(), [&](const auto& segment) {
    return segment.sourceKind != segments.front().sourceKind;
  });
}

bool hasSegmentGap(std::span<const PowerSessionPowerSegment> segments) {
  return std::any_of(segments.begin(), segments.end(), [](const auto& segment) {
    return segment.wattSampleCount >= 2 && !segment.totalWattHours;
  });
}

}  // namespace

SessionEnergy sessionEnergy(const SessionWatts& watts,
                            std::span<const PowerSessionPowerSegment> segments) {
  if (hasMixedSources(segments)) {
    return {.note = std::string{PowerSessionMetrics::mixedPowerSourcesNote}};
  }
  if (watts.hasGap || hasSegmentGap(segments)) {
    return {.note = std::string{PowerSessionMetrics::sparsePowerCoverageNote}};
  }
  SessionEnergy energy{.totalWattHours = watts.totalWattHours};
  if (watts.totalWattHours && watts.durationSeconds > 0.0) {
    energy.averageWatts = *watts.totalWattHours * 3600.0 / watts.durationSeconds;
  } else if (watts.sampleCount > 0) {
    energy.averageWatts = watts.sum / static_cast<double>(watts.sampleCount);
  }
  return energy;
}

}  // namespace quorvex
