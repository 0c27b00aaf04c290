#include "HelperControls.h"

#include <fmt/format.h>

#include "AppSettings.h"
#include "Text.h"

namespace quorvex {

bool isHelperReady(const std::optional<HelperStatus>& status) {
  return status && status->isUsable();
}

std::string helperStatusTitle(const std::optional<HelperStatus>& status) {
  if (!status) {
    return "Checking helper...";
  }
  if (isHelperReady(status)) {
    return "Helper installed";
  }
  return status->isInstalled ? "Helper needs reinstall" : "Helper not installed";
}

std::string helperStatusDetail(const std::optional<HelperStatus>& status) {
  if (!status) {
    return "Pro Telemetry uses a root-owned helper for privileged powermetrics samples.";
  }
  if (isHelperReady(status)) {
    return fmt::format("v{} at {}", status->installedVersion.value_or("unknown"), status->path);
  }
  return status->error.value_or("Expected root-owned setuid helper at " + status->path);
}

ColorName helperMessageColor(std::string_view message) {
  const bool isFailure = text::lowercased(message).find("failed") != std::string::npos;
  return isFailure ? ColorName::orange : ColorName::secondary;
}

HelperControls helperControls(const HelperControlsState& state, const ShortTimeFormat& times) {
  const bool isReady = isHelperReady(state.status);
  HelperControls controls{
      .groupTitle = "Pro Telemetry",
      .title = helperStatusTitle(state.status),
      .detail = helperStatusDetail(state.status),
      .isReady = isReady,
      .enabledSwitch = {.key = SettingsKey::proTelemetryEnabled,
                        .title = "Enabled",
                        .isOn = state.proTelemetryEnabled},
      .canSwitch = isReady,
      .installButton = {.title = state.isInstalling ? "Installing..." : "Install Helper",
                        .accessibilityLabel = "Install Helper"},
      .canInstall = !state.isInstalling,
      .refreshButton = {.title = "Refresh", .accessibilityLabel = "Refresh helper status"},
      .canRefresh = !state.isInstalling};
  if (state.proTelemetryEnabled && state.lastSampledAt) {
    controls.lastSample = "Last sample " + times.text(*state.lastSampledAt);
  }
  if (state.message) {
    controls.message = ColoredText{*state.message, helperMessageColor(*state.message)};
  }
  return controls;
}

}  // namespace quorvex
