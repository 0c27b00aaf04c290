#include "HeroContext.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "NetworkSection.h"

namespace quorvex {

namespace {

/// What the silicon draws, when that is worth telling; else nothing.
std::vector<std::string> componentRow(const SystemPowerState& state) {
  constexpr double worthTelling = 0.5;
  if (!state.power ||
      !(state.power->cpuPower > worthTelling || state.power->gpuPower > worthTelling)) {
    return {};
  }
  std::vector<std::string> row{fmt::format("CPU {:.1f}W", state.power->cpuPower),
                               fmt::format("GPU {:.1f}W", state.power->gpuPower)};
  if (const std::optional<double> other = currentUnattributedWatts(state)) {
    row.push_back(fmt::format("Other {:.1f}W (incomplete)", *other));
  }
  return row;
}

/// The source of the number, when it is the battery.
std::optional<ColoredText> sourceWord(const SystemPowerState& state) {
  const std::optional<PowerReading> reading = state.primaryPowerReading();
  if (!reading) {
    return std::nullopt;
  }
  switch (reading->kind) {
    case PowerReadingKind::batteryChargeInput:
      return ColoredText{"Charging", ColorName::secondary};
    case PowerReadingKind::batteryDischarge:
      return ColoredText{"Battery draw", ColorName::secondary};
    case PowerReadingKind::batterySupplement:
      return ColoredText{"Battery supplement", ColorName::orange};
    case PowerReadingKind::ioReportSiliconPower:
      break;
  }
  return std::nullopt;
}

std::string adapterPillLabel(const BatteryInfo& battery, bool isWeak) {
  if (!battery.adapterWatts) {
    return "On AC";
  }
  return fmt::format("{}W {}", *battery.adapterWatts, isWeak ? "Weak" : "Adapter");
}

}  // namespace

HeroContext heroContext(GraphMode mode, const SystemPowerState& state) {
  HeroContext context{.mode = mode};
  switch (mode) {
    case GraphMode::power:
      context.adapterPill = adapterStatusPill(state);
      context.components = componentRow(state);
      if (context.components.empty()) {
        context.text = sourceWord(state);
      }
      break;
    case GraphMode::temperature:
      if (const std::optional<PowerReading> reading = state.primaryPowerReading()) {
        context.text =
            ColoredText{fmt::format("{:.1f}W power", reading->watts), ColorName::secondary};
      }
      break;
    case GraphMode::network:
      context.text = ColoredText{fmt::format("{} Interfaces", shownInterfaces(state).size()),
                                 ColorName::secondary};
      break;
  }
  return context;
}

std::optional<double> currentUnattributedWatts(const SystemPowerState& state) {
  constexpr double worthTelling = 0.05;
  if (!state.battery || !state.power || state.battery->isCharging ||
      !(state.battery->wattage < 0.0)) {
    return std::nullopt;
  }
  const double watts = std::max(0.0, std::abs(state.battery->wattage) - state.power->systemPower);
  return watts > worthTelling ? std::optional{watts} : std::nullopt;
}

std::optional<AdapterPill> adapterStatusPill(const SystemPowerState& state) {
  constexpr double drainingWatts = -1.0;
  constexpr double fillOpacity = 0.15;
  if (!state.battery || !state.battery->acConnected) {
    return std::nullopt;
  }
  // Unlike everywhere else a full battery that drains counts too, and a charging one does not.
  const bool isWeak = !state.battery->isCharging && state.battery->wattage < drainingWatts;
  AdapterPill pill{.label = adapterPillLabel(*state.battery, isWeak), .fillOpacity = fillOpacity};
  if (isWeak) {
    pill.symbol = "exclamationmark.triangle.fill";
    pill.color = ColorName::orange;
    pill.help = "Plugged in and draining: charger is not overcoming current load";
  } else {
    pill.color = ColorName::green;
    pill.help = "Connected adapter";
  }
  return pill;
}

}  // namespace quorvex
