#pragma once

#include <array>
#include <string_view>

#include "RawEnum.h"
#include "UserDefaults.h"

namespace quorvex {

/// What the dropdown's hero number and graph show.
enum class GraphMode { power, temperature, network };

template <>
struct RawTexts<GraphMode> {
  static constexpr std::array values{
      std::pair{GraphMode::power, std::string_view{"power"}},
      std::pair{GraphMode::temperature, std::string_view{"temperature"}},
      std::pair{GraphMode::network, std::string_view{"network"}}};
};

/// The keys of the user defaults.
namespace SettingsKey {
inline constexpr const char* refreshInterval = "refreshInterval";
inline constexpr const char* showBattery = "showBattery";
inline constexpr const char* showPower = "showPower";
inline constexpr const char* showThermal = "showThermal";
inline constexpr const char* showFans = "showFans";
inline constexpr const char* showSensors = "showSensors";
inline constexpr const char* showNetwork = "showNetwork";
inline constexpr const char* useFahrenheit = "useFahrenheit";
inline constexpr const char* showTemperatureHighlights = "showTemperatureHighlights";
inline constexpr const char* lowImpactMode = "lowImpactMode";
inline constexpr const char* menuGraphMode = "menuGraphMode";
inline constexpr const char* showAdvancedMetrics = "showAdvancedMetrics";
inline constexpr const char* proTelemetryEnabled = "proTelemetryEnabled";
}  // namespace SettingsKey

/// Everything that the user can set, with the values of a user who never did.
struct AppSettings {
  double refreshInterval = 2.0;  ///< seconds between polls, as stored: not yet normalised
  bool showBattery = true;
  bool showPower = true;
  bool showThermal = true;
  bool showFans = true;
  bool showSensors = true;
  bool showNetwork = true;
  bool useFahrenheit = false;
  bool showTemperatureHighlights = true;
  bool lowImpactMode = false;
  bool showAdvancedMetrics = false;
  bool proTelemetryEnabled = false;
  GraphMode menuGraphMode = GraphMode::power;

  bool operator==(const AppSettings&) const = default;
};

/// The settings as stored. A value of the wrong type counts as not stored: an interval that is no
/// number (NaN, Boolean or text), a switch that is neither Boolean nor number (0 is off), a graph
/// mode of an unknown name.
[[nodiscard]] AppSettings appSettings(UserDefaults& defaults);

}  // namespace quorvex
