#pragma once

#include <optional>

#include "AppSettings.h"
#include "Controls.h"
#include "RefreshInterval.h"
#include "SamplingWarning.h"
#include "ThermalInfo.h"

namespace quorvex {

/// The dropdown's controls of the engine.
struct DropdownControls {
  RefreshIntervalStepper refreshInterval;  ///< goes through `applyRefreshInterval`
  CommandButton refresh;                   ///< polls now
  ToggleControl lowImpactMode;
  std::optional<Badge> lowPowerMode;  ///< while the system's low power mode is on
  std::optional<SamplingWarning> warning;

  bool operator==(const DropdownControls&) const = default;
};

/// `utilization` is the engine's `pollUtilizationFraction`.
[[nodiscard]] DropdownControls dropdownControls(const AppSettings& settings,
                                                const ThermalInfo& thermal,
                                                std::optional<double> utilization);

}  // namespace quorvex
