#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "Appearance.h"
#include "BatteryInfo.h"
#include "ByteFormat.h"
#include "PowerReading.h"
#include "ThermalInfo.h"

namespace quorvex {

/// The scale of every byte count and rate of the app, as on the command line.
inline constexpr ByteFormatStyle appByteStyle = ByteFormatStyle::si;

/// A number apart from its unit, so that the unit can be drawn smaller.
struct NumberWithUnit {
  std::string number;
  std::string unit;

  bool operator==(const NumberWithUnit&) const = default;
};

/// The words and colours that the dropdown and the sections share. A number that is not finite is
/// printed as such ("nan"), and a duration that is not counts as 0 or as the longest one.
namespace DropdownFormat {

/// "°C" or "°F".
[[nodiscard]] std::string temperatureUnit(bool useFahrenheit);

/// Degrees Celsius in the unit of display.
[[nodiscard]] double displayedTemperature(double celsius, bool useFahrenheit);

/// "55°C" or "131°F".
[[nodiscard]] std::string formatTemp(double celsius, bool useFahrenheit);

/// The same in two parts.
[[nodiscard]] NumberWithUnit temperatureHeroDisplay(double celsius, bool useFahrenheit);

/// "55.0°C" or "131.0°F", for rows of readings: red above 90 degrees Celsius, orange above 70, in
/// either unit.
[[nodiscard]] ColoredText temperatureText(double celsius, bool useFahrenheit);

/// Seconds that have passed, fractions dropped: "1h 0m" from an hour, "1m 5s" from a minute, "59s"
/// below. Below 0 counts as 0.
[[nodiscard]] std::string formatDuration(double seconds);

/// "1h 5m" from an hour, "59m" below.
[[nodiscard]] std::string formatDuration(std::chrono::minutes minutes);

/// A refresh interval in short: "2s", "0.5s".
[[nodiscard]] std::string formatRefreshInterval(double seconds);

/// "12.3W".
[[nodiscard]] std::string formatWatts(double watts);

/// "1h 5m left" or "25m to full"; "Battery" without an estimate.
[[nodiscard]] std::string timeRemaining(const BatteryInfo& battery);

/// How good a wattage is: many watts are good while charging and bad otherwise.
[[nodiscard]] ColorName colorForWatts(double watts, bool charging);

/// The same for a reading: `charging` is a reading of the charge input.
[[nodiscard]] ColorName colorForReading(const PowerReading& reading);

/// The word and colour of a thermal state: "Nominal" in green.
[[nodiscard]] ColoredText thermalStateInfo(ThermalState state);

}  // namespace DropdownFormat

}  // namespace quorvex
