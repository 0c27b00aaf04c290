#pragma once

#include <string>

#include "BatteryInfo.h"
#include "SystemPowerState.h"

namespace quorvex {

/// Telemetry as boxes of text for a terminal. With `color` false the text holds no colour sequence;
/// nothing else decides that. Parts that the machine does not have are left out. No operation ends
/// its text with a newline. Pure functions; any thread.
class TableFormatter {
 public:
  /// The boxes of one snapshot.
  [[nodiscard]] static std::string formatStatus(const SystemPowerState& state, bool color);

  /// One frame of the live display: a header with the time and the boxes. A frame of fewer than 30
  /// lines goes on with sequences that blank what a longer frame before it has left on the screen.
  [[nodiscard]] static std::string formatMonitor(const SystemPowerState& state, bool color);

  /// Every detail of the battery in one box, without colour.
  [[nodiscard]] static std::string formatBatteryDetail(const BatteryInfo& info);

  /// The remaining time as people say it: "2:05 left", "0:30 to full", "Full", "On AC" and the
  /// like.
  [[nodiscard]] static std::string formatBatteryTime(const BatteryInfo& info);
};

}  // namespace quorvex
