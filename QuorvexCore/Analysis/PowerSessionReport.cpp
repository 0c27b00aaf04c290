#include "PowerSessionReport.h"

#include <algorithm>

#include "PowerSessionStoryGenerator.h"

namespace quorvex {

PowerSessionStory PowerSessionReport::story() const {
  return PowerSessionStoryGenerator::story(*this);
}

bool PowerSessionReport::hasMixedPowerSources() const {
  return std::any_of(phases.begin(), phases.end(), [this](const PowerSessionPhaseDigest& phase) {
    return phase.sourceKind != phases.front().sourceKind;
  });
}

std::optional<double> PowerSessionReport::batteryPercentPerHour() const {
  constexpr double secondsPerHour = 3600.0;
  if (!summary.batteryPercentDelta || !(summary.durationSeconds > 0.0)) {
    return std::nullopt;
  }
  return static_cast<double>(*summary.batteryPercentDelta) /
         (summary.durationSeconds / secondsPerHour);
}

}  // namespace quorvex
