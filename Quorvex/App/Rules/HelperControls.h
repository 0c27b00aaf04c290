#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Controls.h"
#include "Date.h"
#include "HelperStatus.h"
#include "LocalizedDate.h"

namespace quorvex {

/// The dashboard's controls of the privileged helper tool.
struct HelperControls {
  std::string groupTitle;
  std::string title;            ///< `helperStatusTitle`
  std::string detail;           ///< `helperStatusDetail`; selectable
  bool isReady = false;         ///< the tool can be used
  ToggleControl enabledSwitch;  ///< over `SettingsKey::proTelemetryEnabled`
  bool canSwitch = false;
  CommandButton installButton;
  bool canInstall = false;
  CommandButton refreshButton;  ///< reads the status, and a sample when switched on
  bool canRefresh = false;
  std::optional<std::string> lastSample;  ///< when the last privileged sample was taken
  std::optional<ColoredText> message;     ///< small; selectable

  bool operator==(const HelperControls&) const = default;
};

/// What the controls are made of; `HelperFlow` says how it changes.
struct HelperControlsState {
  std::optional<HelperStatus> status;  ///< absent: not yet asked
  bool isInstalling = false;
  bool proTelemetryEnabled = false;    ///< the setting
  std::optional<Date> lastSampledAt;   ///< of the latest privileged snapshot
  std::optional<std::string> message;  ///< what was last to be told

  bool operator==(const HelperControlsState&) const = default;
};

[[nodiscard]] HelperControls helperControls(const HelperControlsState& state,
                                            const ShortTimeFormat& times);

/// Whether the tool can be used; not as long as nobody has asked.
[[nodiscard]] bool isHelperReady(const std::optional<HelperStatus>& status);
[[nodiscard]] std::string helperStatusTitle(const std::optional<HelperStatus>& status);
[[nodiscard]] std::string helperStatusDetail(const std::optional<HelperStatus>& status);

/// A message is a failure's, and shown as one, when it says so.
[[nodiscard]] ColorName helperMessageColor(std::string_view message);

}  // namespace quorvex
