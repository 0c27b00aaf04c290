#include "DropdownFormat.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "CheckedArithmetic.h"

namespace quorvex::DropdownFormat {

namespace {

/// The longest duration that is worded, some hundred million years: well within 64 bits.
constexpr double longestDuration = 1e15;

/// Whole seconds of a duration; never negative, and 0 for NaN.
std::int64_t wholeSeconds(double seconds) {
  return seconds > 0.0 ? checkedTruncate(std::min(seconds, longestDuration)) : 0;
}

}  // namespace

std::string temperatureUnit(bool useFahrenheit) {
  return useFahrenheit ? "°F" : "°C";
}

double displayedTemperature(double celsius, bool useFahrenheit) {
  return useFahrenheit ? celsius * 9.0 / 5.0 + 32.0 : celsius;
}

std::string formatTemp(double celsius, bool useFahrenheit) {
  const NumberWithUnit display = temperatureHeroDisplay(celsius, useFahrenheit);
  return display.number + display.unit;
}

NumberWithUnit temperatureHeroDisplay(double celsius, bool useFahrenheit) {
  return {fmt::format("{:.0f}", displayedTemperature(celsius, useFahrenheit)),
          temperatureUnit(useFahrenheit)};
}

ColoredText temperatureText(double celsius, bool useFahrenheit) {
  constexpr double hot = 90.0;
  constexpr double warm = 70.0;
  ColorName color = ColorName::primary;
  if (celsius > hot) {
    color = ColorName::red;
  } else if (celsius > warm) {
    color = ColorName::orange;
  }
  return {fmt::format("{:.1f}{}", displayedTemperature(celsius, useFahrenheit),
                      temperatureUnit(useFahrenheit)),
          color};
}

std::string formatDuration(double seconds) {
  const std::int64_t whole = wholeSeconds(seconds);
  if (whole >= 3600) {
    return fmt::format("{}h {}m", whole / 3600, whole % 3600 / 60);
  }
  if (whole >= 60) {
    return fmt::format("{}m {}s", whole / 60, whole % 60);
  }
  return fmt::format("{}s", whole);
}

std::string formatDuration(std::chrono::minutes minutes) {
  const std::int64_t count = minutes.count();
  if (count >= 60) {
    return fmt::format("{}h {}m", count / 60, count % 60);
  }
  return fmt::format("{}m", count);
}

std::string formatRefreshInterval(double seconds) {
  return seconds == std::trunc(seconds) ? fmt::format("{:.0f}s", seconds)
                                        : fmt::format("{:.1f}s", seconds);
}

std::string formatWatts(double watts) {
  return fmt::format("{:.1f}W", watts);
}

std::string timeRemaining(const BatteryInfo& battery) {
  if (!battery.timeRemaining) {
    return "Battery";
  }
  const bool untilFull = battery.timeRemainingKind == BatteryTimeRemainingKind::untilFull;
  return formatDuration(std::chrono::minutes{*battery.timeRemaining}) +
         (untilFull ? " to full" : " left");
}

ColorName colorForWatts(double watts, bool charging) {
  constexpr double many = 15.0;
  constexpr double some = 5.0;
  if (watts > many) {
    return charging ? ColorName::green : ColorName::red;
  }
  if (watts > some) {
    return ColorName::orange;
  }
  return charging ? ColorName::red : ColorName::green;
}

ColorName colorForReading(const PowerReading& reading) {
  return colorForWatts(reading.watts, reading.kind == PowerReadingKind::batteryChargeInput);
}

ColoredText thermalStateInfo(ThermalState state) {
  switch (state) {
    case ThermalState::nominal:
      break;
    case ThermalState::fair:
      return {"Fair", ColorName::yellow};
    case ThermalState::serious:
      return {"Serious", ColorName::orange};
    case ThermalState::critical:
      return {"Critical", ColorName::red};
  }
  return {"Nominal", ColorName::green};
}

}  // namespace quorvex::DropdownFormat
