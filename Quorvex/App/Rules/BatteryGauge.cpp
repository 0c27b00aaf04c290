#include "BatteryGauge.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

#include "DropdownFormat.h"
#include "StatsRow.h"

namespace quorvex {

namespace {

constexpr const char* healthHelp =
    "Smart Battery estimate — fluctuates with temperature, charge state, and recent load. Don't "
    "interpret short-term changes as permanent degradation.";

std::string statusText(const BatteryInfo& battery) {
  if (battery.isFullyCharged) {
    return "Full";
  }
  if (battery.isPluggedInAndDraining()) {
    return "Plugged In, Draining";
  }
  if (battery.isCharging) {
    return "Charging";
  }
  return battery.acConnected ? "On AC" : "Discharging";
}

std::string timeLabel(const BatteryInfo& battery) {
  if (!battery.timeRemainingKind) {
    return "Time";
  }
  return battery.timeRemainingKind == BatteryTimeRemainingKind::untilFull ? "To Full" : "Remaining";
}

std::vector<BatteryGaugeRow> gaugeRows(const BatteryInfo& battery) {
  std::vector<BatteryGaugeRow> rows{{.label = "Status", .value = statusText(battery)}};
  if (battery.isPluggedInAndDraining()) {
    rows.push_back({.label = "Weak Charger",
                    .symbol = "exclamationmark.triangle.fill",
                    .color = ColorName::orange,
                    .isBadge = true});
  }
  if (battery.timeRemaining) {
    rows.push_back(
        {.label = timeLabel(battery),
         .value = DropdownFormat::formatDuration(std::chrono::minutes{*battery.timeRemaining})});
  }
  rows.push_back({.label = "Health",
                  .value = fmt::format("{}% ({})", battery.healthPercent, battery.health),
                  .help = healthHelp});
  rows.push_back({.label = "Cycles", .value = fmt::format("{}", battery.cycleCount)});
  rows.push_back({.label = "Power", .value = DropdownFormat::formatWatts(battery.wattage)});
  // Always Celsius: battery temperatures are compared with the maker's limits.
  rows.push_back({.label = "Temp", .value = fmt::format("{:.1f}°C", battery.temperature)});
  return rows;
}

}  // namespace

BatteryGauge batteryGauge(const BatteryInfo& battery) {
  const ColorName color = batteryPercentColor(battery);
  const auto percent = std::clamp<std::int64_t>(battery.chargePercent, 0, 100);
  return {.title = "Battery",
          .symbol = batteryIcon(battery),
          .percentText = fmt::format("{}%", battery.chargePercent),
          .fraction = static_cast<double>(percent) / 100.0,
          .color = color == ColorName::primary ? ColorName::green : color,
          .rows = gaugeRows(battery),
          .accessibilityText =
              fmt::format("Battery: {}%, {}", battery.chargePercent, statusText(battery))};
}

std::string batteryIcon(const BatteryInfo& battery) {
  if (battery.isPluggedInAndDraining()) {
    return "battery.25";
  }
  if (battery.isCharging) {
    return "battery.100.bolt";
  }
  if (battery.chargePercent >= 76) {
    return "battery.100";
  }
  if (battery.chargePercent >= 51) {
    return "battery.75";
  }
  return battery.chargePercent >= 26 ? "battery.50" : "battery.25";
}

}  // namespace quorvex
