#pragma once

#include <string>

#include "Appearance.h"

namespace quorvex {

/// A push button. Where `title` is empty the button shows its symbol alone, where `symbol` is empty
/// its title alone; `accessibilityLabel` names it in either case and is never empty.
struct CommandButton {
  std::string title;
  std::string symbol;
  std::string help;  ///< tooltip; empty for none
  std::string accessibilityLabel;

  bool operator==(const CommandButton&) const = default;
};

/// A switch over one of the user's settings.
struct ToggleControl {
  std::string key;  ///< the settings key that it writes
  std::string title;
  std::string symbol;   ///< empty for none
  std::string caption;  ///< explanation below the switch; empty for none
  bool isOn = false;

  bool operator==(const ToggleControl&) const = default;
};

/// A short word of state that stands out, in its colour.
struct Badge {
  std::string text;
  std::string symbol;  ///< empty for none
  ColorName color = ColorName::primary;
  std::string help;  ///< tooltip; empty for none

  bool operator==(const Badge&) const = default;
};

}  // namespace quorvex
