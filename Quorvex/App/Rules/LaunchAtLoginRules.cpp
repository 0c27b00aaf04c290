#include "LaunchAtLoginRules.h"

namespace quorvex {

LaunchAtLoginToggle launchAtLoginToggle(LoginItemStatus status, std::string_view title,
                                        bool showsStatus,
                                        const std::optional<std::string>& errorMessage) {
  LaunchAtLoginToggle toggle{.title = std::string{title},
                             .symbol = "power",
                             .isEnabled = LaunchAtLoginRules::isEnabled(status),
                             .help = std::string{LaunchAtLoginRules::statusText(status)}};
  if (showsStatus) {
    toggle.caption = toggle.help;
  }
  if (errorMessage) {
    toggle.errorMessage = ColoredText{*errorMessage, ColorName::red};
  }
  return toggle;
}

namespace LaunchAtLoginRules {

bool isEnabled(LoginItemStatus status) {
  return status == LoginItemStatus::enabled || status == LoginItemStatus::requiresApproval;
}

std::string_view statusText(LoginItemStatus status) {
  switch (status) {
    case LoginItemStatus::notRegistered:
      return "Quorvex will not open automatically.";
    case LoginItemStatus::enabled:
      return "Quorvex will open automatically when you log in.";
    case LoginItemStatus::requiresApproval:
      return "Enable Quorvex in System Settings > Login Items.";
    case LoginItemStatus::notFound:
      return "Install Quorvex.app before enabling launch at login.";
    case LoginItemStatus::unknown:
      break;
  }
  return "Launch-at-login status is unavailable.";
}

}  // namespace LaunchAtLoginRules

}  // namespace quorvex
