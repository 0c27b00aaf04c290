#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads the small text files of which the kernel's trees consist. A file that is missing, that may
/// not be read, whose read fails, or whose text has another form is simply none. Any thread.
namespace quorvex::system_tree {

/// The whole file as it stands.
[[nodiscard]] std::optional<std::string> readFile(const std::string& path);

/// The file's text without white space at its ends; none when nothing is left.
[[nodiscard]] std::optional<std::string> readWord(const std::string& path);

/// The file's one decimal integer.
[[nodiscard]] std::optional<std::int64_t> readInteger(const std::string& path);
/// The file's one decimal integer, 0 to 2^64-1.
[[nodiscard]] std::optional<std::uint64_t> readCounter(const std::string& path);

/// A decimal integer with nothing before and after it; none when it does not fit.
[[nodiscard]] std::optional<std::int64_t> parseInteger(std::string_view text);
[[nodiscard]] std::optional<std::uint64_t> parseCounter(std::string_view text);

/// Where a symbolic link points; none when there is no such link.
[[nodiscard]] std::optional<std::string> linkTarget(const std::string& path);

/// The names in a folder, shorter ones first and equally long ones by their bytes, so that
/// "hwmon2" comes before "hwmon10". None when the folder cannot be read.
[[nodiscard]] std::optional<std::vector<std::string>> listFolder(const std::string& path);
/// The same for callers to whom a folder that cannot be read is an empty one.
[[nodiscard]] std::vector<std::string> folderNames(const std::string& path);

}  // namespace quorvex::system_tree
