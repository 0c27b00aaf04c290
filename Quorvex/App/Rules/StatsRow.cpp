#include "StatsRow.h"

#include <fmt/format.h>

#include <algorithm>

#include "DropdownFormat.h"
#include "HeroMetric.h"

namespace quorvex {

namespace {

constexpr const char* noData = "No Data";

StatCell batteryCell(const BatteryInfo& battery) {
  StatCell cell{.kind = StatCell::Kind::battery,
                .symbol = statsBatterySymbol(battery),
                .text = fmt::format("{}%", battery.chargePercent),
                .caption = batteryCaption(battery),
                .color = batteryPercentColor(battery)};
  cell.accessibilityText = fmt::format("Battery: {}, {}", cell.text, cell.caption);
  return cell;
}

StatCell powerCell(const SystemPowerState& state) {
  StatCell cell{.kind = StatCell::Kind::power,
                .symbol = "bolt.slash",
                .text = noData,
                .caption = "Power",
                .color = ColorName::secondary,
                .help = "Current total power"};
  if (const std::optional<PowerReading> reading = state.primaryPowerReading()) {
    cell.symbol = "bolt.fill";
    cell.text = DropdownFormat::formatWatts(reading->watts);
    cell.color = DropdownFormat::colorForReading(*reading);
  }
  cell.accessibilityText = "Power: " + cell.text;
  return cell;
}

StatCell thermalCell(const SystemPowerState& state, bool useFahrenheit) {
  const RepresentativeThermalInfo info = representativeThermalInfo(state);
  StatCell cell{.kind = StatCell::Kind::thermal,
                .symbol = "thermometer.medium",
                .text = noData,
                .caption = info.sourceLabel,
                .color = info.stateColor,
                .help = "Thermal state: " + info.stateLabel};
  if (info.temperature) {
    cell.text = DropdownFormat::formatTemp(*info.temperature, useFahrenheit);
  }
  cell.accessibilityText = fmt::format("{}: {}, {}", cell.caption, cell.text, cell.help);
  return cell;
}

StatCell fanCell(std::vector<FanInfo> fans) {
  StatCell cell{.kind = StatCell::Kind::fan, .symbol = "fan", .caption = "Fans"};
  if (fans.empty()) {
    cell.text = noData;
    cell.color = ColorName::secondary;
    cell.help = "Fan Telemetry";
  } else {
    std::ranges::stable_sort(fans, {}, &FanInfo::id);
    for (const FanInfo& fan : fans) {
      cell.text += fmt::format("{}{}", cell.text.empty() ? "" : " / ", fan.currentRPM);
    }
    cell.caption = "RPM";
    cell.help = "Fan RPM";
  }
  cell.accessibilityText = fmt::format("{}: {}", cell.help, cell.text);
  return cell;
}

}  // namespace

std::vector<StatCell> statsRow(const SystemPowerState& state, const AppSettings& settings) {
  std::vector<StatCell> cells;
  if (settings.showBattery && state.battery) {
    cells.push_back(batteryCell(*state.battery));
  }
  if (settings.showPower) {
    cells.push_back(powerCell(state));
  }
  if (settings.showThermal) {
    cells.push_back(thermalCell(state, settings.useFahrenheit));
  }
  if (settings.showFans) {
    cells.push_back(fanCell(state.fans));
  }
  return cells;
}

std::string statsBatterySymbol(const BatteryInfo& battery) {
  if (battery.isPluggedInAndDraining()) {
    return "battery.25";
  }
  if (battery.isCharging) {
    return "battery.100.bolt";
  }
  if (battery.isFullyCharged) {
    return "battery.100";
  }
  if (battery.chargePercent >= 51) {
    return "battery.75";
  }
  return battery.chargePercent >= 26 ? "battery.50" : "battery.25";
}

ColorName batteryPercentColor(const BatteryInfo& battery) {
  if (battery.isPluggedInAndDraining()) {
    return ColorName::orange;
  }
  if (battery.isCharging) {
    return ColorName::green;
  }
  if (battery.chargePercent < 21) {
    return ColorName::red;
  }
  return battery.chargePercent < 51 ? ColorName::yellow : ColorName::primary;
}

std::string batteryCaption(const BatteryInfo& battery) {
  if (battery.isFullyCharged) {
    return "Full";
  }
  if (battery.timeRemaining) {
    return DropdownFormat::timeRemaining(battery);
  }
  if (battery.isPluggedInAndDraining()) {
    return "Plugged in, draining";
  }
  if (battery.isCharging) {
    return "Charging";
  }
  return battery.acConnected ? "On AC" : "Battery";
}

}  // namespace quorvex
