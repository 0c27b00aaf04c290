#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Appearance.h"
#include "LoginItem.h"

namespace quorvex {

/// The title of the control, in the settings and in the dashboard.
inline constexpr std::string_view launchAtLoginTitle = "Launch at Login";

/// The control that opens the app at login.
struct LaunchAtLoginToggle {
  std::string title;
  std::string symbol;
  bool isEnabled = false;                   ///< the position of the switch: the true status
  std::string help;                         ///< the status in words, as tooltip
  std::optional<std::string> caption;       ///< the same below the switch, where it is wanted
  std::optional<ColoredText> errorMessage;  ///< why the last change failed

  bool operator==(const LaunchAtLoginToggle&) const = default;
};

/// `showsStatus` asks for the caption; `errorMessage` is the description of the last change's
/// failure, absent after a success. A change that failed shows the position read anew.
[[nodiscard]] LaunchAtLoginToggle launchAtLoginToggle(
    LoginItemStatus status, std::string_view title, bool showsStatus,
    const std::optional<std::string>& errorMessage);

namespace LaunchAtLoginRules {

/// On also while the user's approval is outstanding.
[[nodiscard]] bool isEnabled(LoginItemStatus status);

[[nodiscard]] std::string_view statusText(LoginItemStatus status);

}  // namespace LaunchAtLoginRules

}  // namespace quorvex
