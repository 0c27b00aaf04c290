#pragma once

#include <string>
#include <string_view>

namespace quorvex {

/// The words of the panel that saves an exported session.
namespace SessionExportPanel {
inline constexpr std::string_view title = "Export Session";
/// The only type of file that it allows: JSON Lines, a kind of JSON.
inline constexpr std::string_view fileExtension = "jsonl";
inline constexpr std::string_view fileTypeName = "JSON Lines";

/// The name that is proposed for a session of this title: "Idle test.jsonl".
[[nodiscard]] std::string proposedName(std::string_view sessionTitle);

/// What the user is told when the export or the writing of the file failed.
[[nodiscard]] std::string failureMessage(std::string_view error);
}  // namespace SessionExportPanel

/// A title as a file name, without extension: every Unicode scalar that is no letter, mark or
/// number and none of "-", "_" and blank becomes "-"; white space at the ends goes. "Quorvex
/// Session" when nothing is left.
[[nodiscard]] std::string safeFilename(std::string_view title);

}  // namespace quorvex
