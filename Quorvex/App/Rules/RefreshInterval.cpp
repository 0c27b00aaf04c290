#include "RefreshInterval.h"

#include <algorithm>
#include <cmath>

#include "AppSettings.h"

namespace quorvex {

double normalisedRefreshInterval(double seconds) {
  if (std::isnan(seconds)) {
    return AppSettings{}.refreshInterval;
  }
  const double stepsPerSecond = 1.0 / refreshIntervalStep;
  const double rounded = std::round(seconds * stepsPerSecond) / stepsPerSecond;
  return std::clamp(rounded, lowestRefreshInterval, highestRefreshInterval);
}

RefreshIntervalChange applyRefreshInterval(double value, double storedInterval,
                                           double engineInterval) {
  const double normalised = normalisedRefreshInterval(value);
  RefreshIntervalChange change;
  if (normalised != storedInterval) {
    change.stored = normalised;
  }
  if (normalised != engineInterval) {
    change.engine = normalised;
  }
  return change;
}

RefreshIntervalStepper refreshIntervalStepper(double interval) {
  const double value = normalisedRefreshInterval(interval);
  return {.label = "Interval",
          .value = value,
          .decreased = std::max(value - refreshIntervalStep, lowestRefreshInterval),
          .increased = std::min(value + refreshIntervalStep, highestRefreshInterval),
          .canDecrease = value > lowestRefreshInterval,
          .canIncrease = value < highestRefreshInterval,
          .accessibilityLabel = "Refresh interval",
          .decreaseSymbol = "minus",
          .decreaseLabel = "Shorter refresh interval",
          .increaseSymbol = "plus",
          .increaseLabel = "Longer refresh interval"};
}

}  // namespace quorvex
