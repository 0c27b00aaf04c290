#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

/// Makes `content` the whole content of the file, at once: whoever looks sees the old file or the
/// new one, never a part, also after a power loss. The new one takes the old one's place and
/// permissions; a link keeps leading to it. What is no regular file (a terminal, a pipe) is simply
/// written to. On failure the old file stays as it was and nothing is left behind.
///
/// The error in words; none on success. Main thread.
[[nodiscard]] std::optional<std::string> writeAtomically(const std::filesystem::path& file,
                                                         std::string_view content);

/// The path with a leading "~" or "~name" replaced by that user's home folder; as it is when there
/// is no such user.
[[nodiscard]] std::filesystem::path expandingTilde(const std::string& path);

}  // namespace quorvex
