#include "SystemPowerState.h"

#include <algorithm>
#include <cmath>

namespace quorvex {

namespace {

struct Decision {
  double watts;
  PowerReadingKind kind;
};

/// The first rule that holds wins.
std::optional<Decision> decide(const SystemPowerState& state) {
  if (const auto watts = state.batteryDischargeWatts()) {
    return Decision{*watts, PowerReadingKind::batteryDischarge};
  }
  if (const auto watts = state.batterySupplementWatts()) {
    return Decision{*watts, PowerReadingKind::batterySupplement};
  }
  if (const auto watts = state.batteryChargeInputWatts()) {
    return Decision{*watts, PowerReadingKind::batteryChargeInput};
  }
  if (const auto watts = state.siliconWatts()) {
    return Decision{*watts, PowerReadingKind::ioReportSiliconPower};
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
  return PowerReading{.watts = decision->watts,
                      .kind = decision->kind,
                      .label = std::string{readingLabel(decision->kind)},
                      .summary = std::string{readingSummary(decision->kind)},
                      .confidence = readingConfidence(decision->kind)};
}

}  // namespace quorvex
