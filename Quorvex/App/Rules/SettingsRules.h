#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "AppSettings.h"
#include "Controls.h"
#include "RefreshInterval.h"
#include "SamplingWarning.h"

namespace quorvex {

/// The settings window: its sections in the order of the fields.
struct SettingsContent {
  struct RefreshSection {
    std::string title;
    RefreshIntervalStepper stepper;  ///< over `SettingsKey::refreshInterval`
    std::string footer;

    bool operator==(const RefreshSection&) const = default;
  };
  struct SamplingSection {
    std::string title;
    ToggleControl lowImpactMode;
    std::optional<SamplingWarning> warning;

    bool operator==(const SamplingSection&) const = default;
  };
  /// Holds the launch-at-login control, see `launchAtLoginToggle`.
  struct LaunchSection {
    std::string title;
    std::string toggleTitle;

    bool operator==(const LaunchSection&) const = default;
  };
  struct ToggleSection {
    std::string title;
    std::vector<ToggleControl> toggles;

    bool operator==(const ToggleSection&) const = default;
  };

  RefreshSection refresh;
  SamplingSection sampling;
  LaunchSection launch;
  ToggleSection dashboardSections;
  ToggleSection display;

  bool operator==(const SettingsContent&) const = default;
};

/// `utilization` is the engine's `pollUtilizationFraction`.
[[nodiscard]] SettingsContent settingsContent(const AppSettings& settings,
                                              std::optional<double> utilization);

namespace SettingsRules {

/// A refresh interval in full words, normalised first: "1 second", "2 seconds", "0.5 seconds".
[[nodiscard]] std::string formatRefreshInterval(double seconds);

}  // namespace SettingsRules

}  // namespace quorvex
