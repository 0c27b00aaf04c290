#include "DropdownControls.h"

#include "DropdownFormat.h"

namespace quorvex {

DropdownControls dropdownControls(const AppSettings& settings, const ThermalInfo& thermal,
                                  std::optional<double> utilization) {
  DropdownControls controls{
      .refreshInterval = refreshIntervalStepper(settings.refreshInterval),
      .refresh = {.title = "Refresh", .symbol = "arrow.clockwise", .accessibilityLabel = "Refresh"},
      .lowImpactMode = {.key = SettingsKey::lowImpactMode,
                        .title = "Low-impact mode",
                        .symbol = "leaf",
                        .isOn = settings.lowImpactMode},
      .warning = samplingWarning(utilization)};
  controls.refreshInterval.valueText =
      DropdownFormat::formatRefreshInterval(controls.refreshInterval.value);
  if (thermal.isLowPowerMode) {
    controls.lowPowerMode =
        Badge{.text = "Low Power Mode", .symbol = "leaf.fill", .color = ColorName::green};
  }
  return controls;
}

}  // namespace quorvex
