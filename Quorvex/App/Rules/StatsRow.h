#pragma once

#include <string>
#include <vector>

#include "AppSettings.h"
#include "Appearance.h"
#include "SystemPowerState.h"

namespace quorvex {

/// One cell of the dropdown's row of figures.
struct StatCell {
  enum class Kind { battery, power, thermal, fan };

  Kind kind = Kind::battery;
  std::string symbol;
  std::string text;     ///< the figure, or "No Data"
  std::string caption;  ///< below it
  ColorName color = ColorName::primary;
  std::string help;  ///< tooltip; empty for none
  std::string accessibilityText;

  bool operator==(const StatCell&) const = default;
};

/// The cells in their order: battery, power, thermal, fan. Those that the user has switched off are
/// left out, and so is the battery's on a machine without one.
[[nodiscard]] std::vector<StatCell> statsRow(const SystemPowerState& state,
                                             const AppSettings& settings);

/// The symbol of the battery cell. Its steps differ from those of `batteryIcon` on purpose: the
/// full symbol stands for a full battery only.
[[nodiscard]] std::string statsBatterySymbol(const BatteryInfo& battery);

/// Colour of the battery percentage.
[[nodiscard]] ColorName batteryPercentColor(const BatteryInfo& battery);

/// The word below the battery percentage.
[[nodiscard]] std::string batteryCaption(const BatteryInfo& battery);

}  // namespace quorvex
