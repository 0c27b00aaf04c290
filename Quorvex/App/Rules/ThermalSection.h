#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "AppSettings.h"
#include "Appearance.h"
#include "Controls.h"
#include "SystemPowerState.h"

namespace quorvex {

/// The thermal section, in the dropdown and in the dashboard.
struct ThermalSection {
  std::string title;
  Badge thermalBadge;                     ///< the state
  std::vector<LabelledValue> rows;        ///< state, pressure, low power mode, representative
  std::vector<LabelledValue> highlights;  ///< at most 3; empty when switched off
  std::optional<std::string> note;        ///< why the representative is no CPU average
  std::string sensorsTitle;
  std::vector<LabelledValue> sensors;       ///< at most 12; empty when switched off
  std::optional<std::string> moreText;      ///< how many sensors the list leaves out
  std::optional<std::string> curationText;  ///< from how many sensors the list is drawn

  bool operator==(const ThermalSection&) const = default;
};

/// The three temperatures that matter most, in the section and in the dropdown. Empty when switched
/// off.
[[nodiscard]] std::vector<LabelledValue> temperatureHighlights(const SystemPowerState& state,
                                                               const AppSettings& settings);

/// Reads `useFahrenheit`, `showTemperatureHighlights` and `showSensors` of the settings.
[[nodiscard]] ThermalSection thermalSection(const SystemPowerState& state,
                                            const AppSettings& settings);

/// "Nominal (0/4)" to "Sleeping (4/4)"; "Unknown" for a level of no name.
[[nodiscard]] std::string pressureText(std::int64_t pressure);

}  // namespace quorvex
