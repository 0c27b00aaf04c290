#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "RecordFields.h"

namespace quorvex {

/// How many samples had one coarse thermal state.
struct PowerSessionThermalPressureState {
  std::string state;  ///< identity; text of a thermal state
  std::int64_t sampleCount = 0;

  bool operator==(const PowerSessionThermalPressureState&) const = default;
};

/// Temperatures, fans and the system's own thermal pressure over a session. Temperatures are
/// degrees Celsius, of each sample's hottest sensor. A new record is the empty one.
struct PowerSessionThermalSummary {
  std::optional<double> maxTemperatureCelsius;
  std::optional<double> medianMaxSensorTemperatureCelsius;
  std::optional<double> p95MaxSensorTemperatureCelsius;
  std::optional<std::int64_t> maxFanRPM;
  std::int64_t maxThermalPressure = 0;                           ///< 0 to 4
  std::vector<PowerSessionThermalPressureState> pressureStates;  ///< in byte order of `state`
  bool thermalPressureWasTriggered = false;                      ///< pressure was above 0
  /// "cool", "warm-not-constrained" or "thermally-constrained"; the last only on the system's
  /// pressure, however hot the sensors read.
  std::string verdict = "cool";
  std::string note = "No thermal samples were captured.";

  /// The value of a session without samples.
  [[nodiscard]] static PowerSessionThermalSummary empty() { return {}; }

  bool operator==(const PowerSessionThermalSummary&) const = default;
};

template <>
struct RecordFields<PowerSessionThermalPressureState> {
  static constexpr std::tuple values{
      RecordField{"sampleCount", &PowerSessionThermalPressureState::sampleCount},
      RecordField{"state", &PowerSessionThermalPressureState::state},
  };
};

template <>
struct RecordFields<PowerSessionThermalSummary> {
  static constexpr std::tuple values{
      RecordField{"maxFanRPM", &PowerSessionThermalSummary::maxFanRPM},
      RecordField{"maxTemperatureCelsius", &PowerSessionThermalSummary::maxTemperatureCelsius},
      RecordField{"maxThermalPressure", &PowerSessionThermalSummary::maxThermalPressure},
      RecordField{"medianMaxSensorTemperatureCelsius",
                  &PowerSessionThermalSummary::medianMaxSensorTemperatureCelsius},
      RecordField{"note", &PowerSessionThermalSummary::note},
      RecordField{"p95MaxSensorTemperatureCelsius",
                  &PowerSessionThermalSummary::p95MaxSensorTemperatureCelsius},
      RecordField{"pressureStates", &PowerSessionThermalSummary::pressureStates},
      RecordField{"thermalPressureWasTriggered",
                  &PowerSessionThermalSummary::thermalPressureWasTriggered},
      RecordField{"verdict", &PowerSessionThermalSummary::verdict},
  };
};

}  // namespace quorvex
