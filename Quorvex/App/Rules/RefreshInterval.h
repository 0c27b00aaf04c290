#pragma once

#include <optional>
#include <string>

namespace quorvex {

/// The limits of the refresh interval in seconds, and the step between two values.
inline constexpr double lowestRefreshInterval = 0.5;
inline constexpr double highestRefreshInterval = 60.0;
inline constexpr double refreshIntervalStep = 0.5;

/// Seconds rounded to the nearest half second, ties upward, within 0.5 to 60. NaN counts as the
/// default of 2 seconds.
[[nodiscard]] double normalisedRefreshInterval(double seconds);

/// What is to be written when a refresh interval is applied; absent means: leave it alone. An
/// engine that is given the interval it has would poll at once, so that must not happen.
struct RefreshIntervalChange {
  std::optional<double> stored;  ///< the new value of the setting
  std::optional<double> engine;  ///< the new interval of the engine

  bool operator==(const RefreshIntervalChange&) const = default;
};

/// Normalises `value` and compares it with the setting and with the engine's interval.
[[nodiscard]] RefreshIntervalChange applyRefreshInterval(double value, double storedInterval,
                                                         double engineInterval);

/// The stepper of the refresh interval, in the settings and in the dropdown.
struct RefreshIntervalStepper {
  std::string label;
  double value = 0.0;     ///< seconds, normalised
  std::string valueText;  ///< shown in tabular digits
  double lowest = lowestRefreshInterval;
  double highest = highestRefreshInterval;
  double step = refreshIntervalStep;
  double decreased = 0.0;  ///< the value one step down; `value` itself at the lower limit
  double increased = 0.0;  ///< the value one step up; `value` itself at the upper limit
  bool canDecrease = false;
  bool canIncrease = false;
  std::string accessibilityLabel;
  std::string decreaseSymbol;
  std::string decreaseLabel;  ///< accessible name of the button that steps down
  std::string increaseSymbol;
  std::string increaseLabel;  ///< accessible name of the button that steps up

  bool operator==(const RefreshIntervalStepper&) const = default;
};

/// A stepper at the normalised interval. `valueText` stays empty: the caller's screen words it.
[[nodiscard]] RefreshIntervalStepper refreshIntervalStepper(double interval);

}  // namespace quorvex
