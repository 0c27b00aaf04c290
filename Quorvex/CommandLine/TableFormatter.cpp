#include "TableFormatter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>
#include <vector>

#include "ByteFormat.h"
#include "Date.h"
#include "Text.h"
#include "TextBox.h"

namespace quorvex {

namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t batteryBarWidth = 12;
constexpr std::size_t powerBarWidth = 20;
constexpr std::size_t fanBarWidth = 10;
constexpr std::size_t sensorLimit = 12;
constexpr std::size_t topProcessLimit = 5;
/// The frame's rows that are blanked when the boxes do not reach down to them.
constexpr std::size_t monitorRows = 30;
/// Below this wattage a battery on AC counts as drained; smaller losses are a charger's regulation.
constexpr double drainingWatts = -1.0;

constexpr ByteFormatStyle byteStyle = ByteFormatStyle::si;

std::string rule(std::size_t length) {
  return fmt::format(" {}", repeated("─", length));
}

bool isDrainingOnAC(const BatteryInfo& info) {
  return info.acConnected && info.wattage < drainingWatts;
}

ANSIColor chargeColor(std::int64_t percent) {
  if (percent < 21) {
    return ANSIColor::red;
  }
  return percent < 51 ? ANSIColor::yellow : ANSIColor::green;
}

/// Green up to `warm`, yellow up to `hot`, red above.
ANSIColor levelColor(double value, double warm, double hot) {
  if (value > hot) {
    return ANSIColor::red;
  }
  return value > warm ? ANSIColor::yellow : ANSIColor::green;
}

std::string powerText(const BatteryInfo& info) {
  if (info.acConnected && info.isFullyCharged) {
    return "0.0W (full, on AC)";
  }
  if (isDrainingOnAC(info)) {
    return fmt::format("{:.1f}W (PLUGGED IN, DRAINING)", info.wattage);
  }
  if (info.isCharging) {
    return fmt::format("+{:.1f}W (charging)", std::abs(info.wattage));
  }
  return fmt::format("{:.1f}W (discharging)", info.wattage);
}

std::string batteryBox(const BatteryInfo& info, bool color) {
  const auto percent = std::clamp<std::int64_t>(info.chargePercent, 0, 100);
  const auto filled = percent * static_cast<std::int64_t>(batteryBarWidth) / 100;
  const std::string charge =
      colored(fmt::format("{}%", info.chargePercent), chargeColor(info.chargePercent), color);
  const Lines lines{fmt::format(" Charge:     {}  {}  {}", charge,
                                cells(static_cast<double>(filled), batteryBarWidth),
                                TableFormatter::formatBatteryTime(info)),
                    fmt::format(" Health:     {}%  {}  ({} cycles)", info.healthPercent,
                                info.health, info.cycleCount),
                    " Power:      " + powerText(info),
                    fmt::format(" Temp:       {:.1f}°C", info.temperature)};
  return box("Battery", lines);
}

std::string powerBox(const PowerMetrics& power, std::optional<double> phantom) {
  const double scale = std::max(
      {power.cpuPower, power.gpuPower, power.anePower, power.ramPower, phantom.value_or(0.0), 1.0});
  Lines lines;
  const auto addRow = [&](std::string_view label, double watts) {
    lines.push_back(
        fmt::format("{}{}  {:5.1f}W", label, horizontalBar(watts, scale, powerBarWidth), watts));
  };
  addRow(" CPU:    ", power.cpuPower);
  addRow(" GPU:    ", power.gpuPower);
  addRow(" ANE:    ", power.anePower);
  addRow(" DRAM:   ", power.ramPower);
  if (phantom) {
    addRow(" Other:  ", *phantom);
  }
  lines.push_back(rule(35));
  lines.push_back(fmt::format(" Total:  {:35.1f}W", power.systemPower + phantom.value_or(0.0)));
  return box("Power", lines);
}

std::string thermalStateText(ThermalState state, bool color) {
  switch (state) {
    case ThermalState::nominal:
      return colored("Nominal", ANSIColor::green, color);
    case ThermalState::fair:
      return colored("Fair", ANSIColor::yellow, color);
    case ThermalState::serious:
      return colored("Serious", ANSIColor::red, color);
    case ThermalState::critical:
      break;
  }
  return colored("Critical", ANSIColor::red, color);
}

std::string_view pressureName(std::int64_t level) {
  constexpr std::array<std::string_view, 5> names{"Nominal", "Moderate", "Heavy", "Trapping",
                                                  "Sleeping"};
  return level >= 0 && level < std::ssize(names) ? names[static_cast<std::size_t>(level)]
                                                 : "Unknown";
}

std::string thermalBox(const ThermalInfo& thermal, bool color) {
  const Lines lines{
      " State:      " + thermalStateText(thermal.state, color),
      fmt::format(" Pressure:   {} ({}/4)", pressureName(thermal.pressure), thermal.pressure),
      " Low Power:  " +
          (thermal.isLowPowerMode ? colored("On", ANSIColor::yellow, color) : std::string{"Off"})};
  return box("Thermal", lines);
}

/// The speed's place between the fan's limits in percent; beyond 0 and 100 outside of them.
double fanPercent(const FanInfo& fan) {
  if (fan.maxRPM < 1) {
    return 0.0;
  }
  const auto current = static_cast<double>(fan.currentRPM);
  const auto least = static_cast<double>(fan.minRPM);
  const auto most = static_cast<double>(fan.maxRPM);
  if (most == least) {
    return current <= least ? 0.0 : 100.0;
  }
  return (current - least) / (most - least) * 100.0;
}

/// One cell for every ten whole percent.
std::string fanBar(double percent) {
  const auto wholePercent = static_cast<std::int64_t>(std::clamp(percent, 0.0, 100.0));
  const std::int64_t filled = wholePercent / 10;
  return cells(static_cast<double>(filled), fanBarWidth);
}

std::string fanBox(const std::vector<FanInfo>& fans, bool color) {
  Lines lines;
  for (const auto& fan : fans) {
    const double percent = fanPercent(fan);
    const std::string speed =
        colored(fmt::format("{}", fan.currentRPM), levelColor(percent, 50.0, 80.0), color);
    lines.push_back(fmt::format(" {}:  {} RPM  {}  [{}–{}]", fan.name, speed, fanBar(percent),
                                fan.minRPM, fan.maxRPM));
  }
  return box("Fans", lines);
}

std::string sensorBox(const std::vector<TemperatureSensor>& sensors, bool color) {
  Lines lines;
  for (const auto& sensor : std::span{sensors}.first(std::min(sensors.size(), sensorLimit))) {
    const std::string degrees = colored(fmt::format("{:5.1f}", sensor.temperature),
                                        levelColor(sensor.temperature, 70.0, 90.0), color);
    lines.push_back(fmt::format(" {} {}°C", text::paddedOrCut(sensor.name, 22), degrees));
  }
  if (sensors.size() > sensorLimit) {
    lines.push_back(fmt::format(" ... and {} more sensors", sensors.size() - sensorLimit));
  }
  return box("Temperature Sensors", lines);
}

std::string bytes(std::uint64_t count) {
  return formatBytes(count, byteStyle);
}

std::string rate(double bytesPerSecond) {
  return formatBytesPerSec(bytesPerSecond, byteStyle);
}

std::string networkBox(const NetworkSnapshot& network,
                       const std::vector<NetworkInterfaceStats>& active) {
  Lines lines{fmt::format(" Rate:   ↓{}  ↑{}", rate(network.totalBytesInPerSec()),
                          rate(network.totalBytesOutPerSec())),
              fmt::format(" Total:  ↓{}  ↑{}", bytes(network.totalBytesIn()),
                          bytes(network.totalBytesOut()))};
  for (const auto& interface : active) {
    lines.push_back(fmt::format(" {} ↓{} ↑{}  total ↓{} ↑{}", text::paddedOrCut(interface.name, 8),
                                text::paddedOrCut(rate(interface.bytesInPerSec), 10),
                                rate(interface.bytesOutPerSec), bytes(interface.bytesIn),
                                bytes(interface.bytesOut)));
  }
  const auto top = network.topProcesses();
  if (!top.empty()) {
    lines.push_back(rule(30));
  }
  for (const auto& process : std::span{top}.first(std::min(top.size(), topProcessLimit))) {
    lines.push_back(fmt::format(" {} ↓{} ↑{}", text::paddedOrCut(process.name, 16),
                                text::paddedOrCut(rate(process.bytesInPerSec), 10),
                                rate(process.bytesOutPerSec)));
  }
  return box("Network", lines);
}

/// The boxes of a snapshot, joined with newlines.
std::string sections(const SystemPowerState& state, bool color) {
  std::string result;
  const auto add = [&result](const std::string& section) {
    if (!result.empty()) {
      result.push_back('\n');
    }
    result.append(section);
  };
  if (state.battery) {
    add(batteryBox(*state.battery, color));
  }
  if (state.power) {
    add(powerBox(*state.power, state.unattributedPower()));
  }
  add(thermalBox(state.thermal, color));
  if (!state.fans.empty()) {
    add(fanBox(state.fans, color));
  }
  if (!state.sensors.empty()) {
    add(sensorBox(state.sensors, color));
  }
  if (state.network) {
    if (const auto active = state.network->activeInterfaces(); !active.empty()) {
      add(networkBox(*state.network, active));
    }
  }
  return result;
}

std::string_view yesOrNo(bool flag) {
  return flag ? "Yes" : "No";
}

}  // namespace

std::string TableFormatter::formatStatus(const SystemPowerState& state, bool color) {
  return sections(state, color);
}

std::string TableFormatter::formatMonitor(const SystemPowerState& state, bool color) {
  std::string result =
      colored(fmt::format("  Quorvex Monitor  {}  (Ctrl+C to stop)", iso8601(state.timestamp)),
              ANSIColor::green, color);
  result.append("\n\n").append(sections(state, color));
  const auto lineCount = static_cast<std::size_t>(std::ranges::count(result, '\n')) + 1;
  if (lineCount < monitorRows) {
    result.append(repeated("\n\x1b[2K", monitorRows - lineCount));
  }
  return result;
}

std::string TableFormatter::formatBatteryDetail(const BatteryInfo& info) {
  const std::string adapter = info.adapterWatts ? fmt::format("{}W", *info.adapterWatts) : "N/A";
  const Lines lines{fmt::format(" Charge:           {}%", info.chargePercent),
                    fmt::format(" Current Capacity: {} mAh", info.currentCapacity),
                    fmt::format(" Max Capacity:     {} mAh", info.maxCapacity),
                    fmt::format(" Design Capacity:  {} mAh", info.designCapacity),
                    fmt::format(" Health:           {}% ({})", info.healthPercent, info.health),
                    fmt::format(" Cycle Count:      {}", info.cycleCount),
                    fmt::format(" Voltage:          {:.3f} V", info.voltage),
                    fmt::format(" Amperage:         {:.3f} A", info.amperage),
                    fmt::format(" Wattage:          {:.2f} W", info.wattage),
                    fmt::format(" Temperature:      {:.1f}°C", info.temperature),
                    fmt::format(" Charging:         {}", yesOrNo(info.isCharging)),
                    fmt::format(" Fully Charged:    {}", yesOrNo(info.isFullyCharged)),
                    fmt::format(" AC Connected:     {}", yesOrNo(info.acConnected)),
                    " Adapter Watts:    " + adapter,
                    " Time Remaining:   " + formatBatteryTime(info),
                    " Serial:           " + info.serialNumber.value_or("Unknown")};
  return box("Battery Detail", lines);
}

std::string TableFormatter::formatBatteryTime(const BatteryInfo& info) {
  if (info.timeRemaining) {
    std::string text = fmt::format("{}:{:02}", *info.timeRemaining / 60, *info.timeRemaining % 60);
    if (info.timeRemainingKind) {
      text.append(*info.timeRemainingKind == BatteryTimeRemainingKind::untilEmpty ? " left"
                                                                                  : " to full");
    }
    return text;
  }
  if (info.isFullyCharged) {
    return "Full";
  }
  if (isDrainingOnAC(info)) {
    return "Plugged in, draining";
  }
  if (info.isCharging) {
    return "Calculating to full...";
  }
  return info.acConnected ? "On AC" : "Calculating...";
}

}  // namespace quorvex
