#include "PowerSourceDescription.h"

namespace quorvex {

namespace {

constexpr std::string_view unavailable = "unavailable";
constexpr std::string_view unavailableLabel = "Unavailable";
constexpr std::string_view batteryIdleLabel = "On AC, battery idle";
constexpr std::string_view noRateSummary = "No live discharge or charge rate";

bool isOnACWithBattery(const SystemPowerState& state) {
  return state.battery && state.battery->acConnected;
}

}  // namespace

PowerSourceInfo powerSourceInfo(const SystemPowerState& state) {
  if (const auto reading = state.primaryPowerReading()) {
    return {rawValue(reading->kind), readingLabel(reading->kind), readingSummary(reading->kind)};
  }
  if (isOnACWithBattery(state)) {
    return {"onACBatteryIdle", batteryIdleLabel, noRateSummary};
  }
  if (state.battery) {
    return {"batteryController", "Battery controller", noRateSummary};
  }
  return {unavailable, unavailableLabel, "No usable power source"};
}

std::optional<double> totalWatts(const SystemPowerState& state) {
  const auto reading = state.primaryPowerReading();
  return reading ? std::optional{reading->watts} : std::nullopt;
}

std::string_view totalWattsConfidence(const SystemPowerState& state) {
  const auto reading = state.primaryPowerReading();
  return reading ? rawValue(reading->confidence) : unavailable;
}

std::string_view powerSourceKind(const SystemPowerState& state) {
  const auto reading = state.primaryPowerReading();
  return reading ? rawValue(reading->kind) : unavailable;
}

std::string_view powerSourceLabel(const SystemPowerState& state) {
  if (const auto reading = state.primaryPowerReading()) {
    return readingLabel(reading->kind);
  }
  return isOnACWithBattery(state) ? batteryIdleLabel : unavailableLabel;
}

}  // namespace quorvex
