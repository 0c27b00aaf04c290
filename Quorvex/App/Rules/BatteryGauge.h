#pragma once

#include <string>
#include <vector>

#include "Appearance.h"
#include "BatteryInfo.h"

namespace quorvex {

/// One row of the battery section: a label with its value, or a badge, which has no value.
struct BatteryGaugeRow {
  std::string label;
  std::string value;
  std::string symbol;  ///< empty for none
  ColorName color = ColorName::primary;
  bool isBadge = false;
  std::string help;  ///< tooltip; empty for none

  bool operator==(const BatteryGaugeRow&) const = default;
};

/// The battery section, in the dropdown and in the dashboard.
struct BatteryGauge {
  std::string title;
  std::string symbol;       ///< `batteryIcon`
  std::string percentText;  ///< "80%"
  double fraction = 0.0;    ///< the charge, 0 to 1, for the bar
  ColorName color =
      ColorName::green;  ///< of the bar: as the percentage of the dropdown, else green
  std::vector<BatteryGaugeRow> rows;
  std::string accessibilityText;

  bool operator==(const BatteryGauge&) const = default;
};

[[nodiscard]] BatteryGauge batteryGauge(const BatteryInfo& battery);

/// The section's symbol: by charge, unless the battery charges or drains on AC.
[[nodiscard]] std::string batteryIcon(const BatteryInfo& battery);

}  // namespace quorvex
