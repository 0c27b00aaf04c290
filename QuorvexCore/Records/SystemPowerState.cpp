#include "SystemPowerState.h"

#include <algorithm>
#include <cmath>

namespace quorvex {

namespace {

/// The constant texts of each kind of reading.
struct ReadingWords {
  PowerReadingKind kind;
  PowerReadingConfidence confidence;
  std::string_view label;
  std::string_view summary;
};

constexpr ReadingWords dischargeWords{PowerReadingKind::batteryDischarge,
                                      PowerReadingConfidence::batteryTerminal, "Battery draw",
                                      "SmartBattery whole-system draw while unplugged"};
constexpr ReadingWords supplementWords{
    PowerReadingKind::batterySupplement, PowerReadingConfidence::batteryTerminal,
    "Battery supplement", "Battery is supplementing adapter input; not total system load"};
constexpr ReadingWords chargeWords{PowerReadingKind::batteryChargeInput,
                                   PowerReadingConfidence::batteryTerminal, "Battery charge input",
                                   "SmartBattery charge rate; not total system load"};
constexpr ReadingWords siliconWords{PowerReadingKind::ioReportSiliconPower,
                                    PowerReadingConfidence::ioReport, "IOReport silicon power",
                                    "CPU/GPU/ANE/DRAM energy model"};

struct Decision {
  double watts;
  const ReadingWords* words;
};

/// The first rule that holds wins.
std::optional<Decision> decide(const SystemPowerState& state) {
  if (const auto watts = state.batteryDischargeWatts()) {
    return Decision{*watts, &dischargeWords};
  }
  if (const auto watts = state.batterySupplementWatts()) {
    return Decision{*watts, &supplementWords};
  }
  if (const auto watts = state.batteryChargeInputWatts()) {
    return Decision{*watts, &chargeWords};
  }
  if (const auto watts = state.siliconWatts()) {
    return Decision{*watts, &siliconWords};
  }
  return std::nullopt;
}

}  // namespace

std::optional<double> SystemPowerState::batteryTerminalWatts() const {
  if (!battery) {
    return std::nullopt;
  }
  return battery->wattage;
}

std::optional<double> SystemPowerState::batteryDischargeWatts() const {
  if (!battery || battery->acConnected || !(battery->wattage < 0.0)) {
    return std::nullopt;
  }
  return std::abs(battery->wattage);
}

std::optional<double> SystemPowerState::batteryChargeInputWatts() const {
  if (!battery || !battery->isCharging || !(battery->wattage > 0.0)) {
    return std::nullopt;
  }
  return battery->wattage;
}

std::optional<double> SystemPowerState::batterySupplementWatts() const {
  if (!battery || !battery->acConnected || !(battery->wattage < 0.0)) {
    return std::nullopt;
  }
  return std::abs(battery->wattage);
}

std::optional<double> SystemPowerState::siliconWatts() const {
  if (!power) {
    return std::nullopt;
  }
  return power->systemPower;
}

bool SystemPowerState::siliconChannelsComplete() const {
  return !power || power->siliconChannelsComplete;
}

std::optional<double> SystemPowerState::unattributedPower() const {
  const auto draw = batteryDischargeWatts();
  if (!draw || !power) {
    return std::nullopt;
  }
  return std::max(0.0, *draw - power->systemPower);
}

std::optional<PowerReading> SystemPowerState::primaryPowerReading() const {
  const auto decision = decide(*this);
  if (!decision) {
    return std::nullopt;
  }
  const ReadingWords& words = *decision->words;
  return PowerReading{.watts = decision->watts,
                      .kind = words.kind,
                      .label = std::string{words.label},
                      .summary = std::string{words.summary},
                      .confidence = words.confidence};
}

PowerSourceInfo powerSourceInfo(const SystemPowerState& state) {
  if (const auto decision = decide(state)) {
    const ReadingWords& words = *decision->words;
    return {rawValue(words.kind), words.label, words.summary};
  }
  if (!state.battery) {
    return {"unavailable", "Unavailable", "No usable power source"};
  }
  if (state.battery->acConnected) {
    return {"onACBatteryIdle", "On AC, battery idle", "No live discharge or charge rate"};
  }
  return {"batteryController", "Battery controller", "No live discharge or charge rate"};
}

}  // namespace quorvex
