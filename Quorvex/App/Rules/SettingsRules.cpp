#include "SettingsRules.h"

#include <fmt/format.h>

#include <cmath>

#include "LaunchAtLoginRules.h"

namespace quorvex {

SettingsContent settingsContent(const AppSettings& settings, std::optional<double> utilization) {
  SettingsContent content;

  content.refresh = {.title = "Refresh",
                     .stepper = refreshIntervalStepper(settings.refreshInterval),
                     .footer = "Applies to the menu bar, dashboard, and graph history."};
  content.refresh.stepper.valueText =
      SettingsRules::formatRefreshInterval(settings.refreshInterval);

  content.sampling = {
      .title = "Sampling",
      .lowImpactMode = {.key = SettingsKey::lowImpactMode,
                        .title = "Low-impact mode",
                        .caption = "Skip silicon power breakdown and sensor fallback to reduce "
                                   "Quorvex's own CPU and energy cost. Recommended for long "
                                   "unattended sessions.",
                        .isOn = settings.lowImpactMode},
      .warning = samplingWarning(utilization)};

  content.launch = {.title = "Launch", .toggleTitle = std::string{launchAtLoginTitle}};

  const auto toggle = [](const char* key, const char* title, bool isOn) {
    return ToggleControl{.key = key, .title = title, .isOn = isOn};
  };
  content.dashboardSections = {
      .title = "Dashboard Sections",
      .toggles = {
          toggle(SettingsKey::showBattery, "Battery", settings.showBattery),
          toggle(SettingsKey::showPower, "Power Metrics", settings.showPower),
          toggle(SettingsKey::showThermal, "Thermal", settings.showThermal),
          toggle(SettingsKey::showFans, "Fans", settings.showFans),
          toggle(SettingsKey::showSensors, "Temperature Sensors", settings.showSensors),
          toggle(SettingsKey::showNetwork, "Network", settings.showNetwork),
      }};
  content.display = {
      .title = "Display",
      .toggles = {
          toggle(SettingsKey::useFahrenheit, "Show temperatures in Fahrenheit",
                 settings.useFahrenheit),
          toggle(SettingsKey::showTemperatureHighlights, "Show 3-temperature highlights",
                 settings.showTemperatureHighlights),
      }};
  return content;
}

namespace SettingsRules {

std::string formatRefreshInterval(double seconds) {
  const double value = normalisedRefreshInterval(seconds);
  if (value == 1.0) {
    return "1 second";
  }
  if (value == std::trunc(value)) {
    return fmt::format("{:.0f} seconds", value);
  }
  return fmt::format("{:.1f} seconds", value);
}

}  // namespace SettingsRules

}  // namespace quorvex
