#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// How the helper tool is installed: two shell commands, run as root by an AppleScript that asks the
// user for an administrator's password. Pure functions.

/// `value` as one word of the shell: in single quotes, each single quote inside as '\''.
[[nodiscard]] std::string shellQuoted(std::string_view value);

/// `text` as it stands between the double quotes of an AppleScript string.
[[nodiscard]] std::string appleScriptEscaped(std::string_view text);

/// The AppleScript that creates `helperPath`'s folder and copies `sourcePath` to `helperPath`,
/// owned by root and group wheel, mode 4755.
[[nodiscard]] std::string helperInstallScript(std::string_view sourcePath,
                                              std::string_view helperPath);

}  // namespace quorvex
