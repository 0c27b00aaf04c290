#include "AppSettings.h"

#include <cmath>

namespace quorvex {

AppSettings appSettings(UserDefaults& defaults) {
  AppSettings settings;
  const std::optional<double> interval = defaults.number(SettingsKey::refreshInterval);
  if (interval && !std::isnan(*interval)) {
    settings.refreshInterval = *interval;
  }
  const auto read = [&](bool& setting, const char* key) {
    setting = defaults.boolean(key, setting);
  };
  read(settings.showBattery, SettingsKey::showBattery);
  read(settings.showPower, SettingsKey::showPower);
  read(settings.showThermal, SettingsKey::showThermal);
  read(settings.showFans, SettingsKey::showFans);
  read(settings.showSensors, SettingsKey::showSensors);
  read(settings.showNetwork, SettingsKey::showNetwork);
  read(settings.useFahrenheit, SettingsKey::useFahrenheit);
  read(settings.showTemperatureHighlights, SettingsKey::showTemperatureHighlights);
  read(settings.lowImpactMode, SettingsKey::lowImpactMode);
  read(settings.showAdvancedMetrics, SettingsKey::showAdvancedMetrics);
  read(settings.proTelemetryEnabled, SettingsKey::proTelemetryEnabled);
  if (const std::optional<std::string> mode = defaults.text(SettingsKey::menuGraphMode)) {
    settings.menuGraphMode = fromRawValue<GraphMode>(*mode).value_or(GraphMode::power);
  }
  return settings;
}

}  // namespace quorvex
