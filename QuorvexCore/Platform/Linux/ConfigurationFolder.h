#pragma once

#include <string>

namespace quorvex {

/// Where programs keep the user's settings: XDG_CONFIG_HOME, else ".config" in the home folder. It
/// need not exist.
[[nodiscard]] std::string configurationFolder();

}  // namespace quorvex
