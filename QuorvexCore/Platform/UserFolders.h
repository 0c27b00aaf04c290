#pragma once

#include <filesystem>
#include <optional>

namespace quorvex {

/// The user's home folder: HOME, else what the account says. "/" when neither is known.
[[nodiscard]] std::filesystem::path homeFolder();

/// Where programs keep what the user does not open as documents, as the platform names it: the
/// Application Support folder of the user's Library on macOS, XDG_DATA_HOME or ~/.local/share
/// elsewhere. It need not exist. None when the platform names none.
[[nodiscard]] std::optional<std::filesystem::path> applicationSupportFolder();

}  // namespace quorvex
