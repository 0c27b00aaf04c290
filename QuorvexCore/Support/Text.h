#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Text as people count and read it: user-perceived characters, Unicode white space, legacy
/// encodings. All functions take and give UTF-8, are pure, and may run on any thread.
namespace quorvex::text {

/// Number of user-perceived characters (extended grapheme clusters). Invalid UTF-8 counts one a
/// broken sequence.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The first `limit` user-perceived characters; the whole text when it has no more.
[[nodiscard]] std::string_view prefix(std::string_view text, std::size_t limit);

/// `text` with blanks appended to make `width` characters, or cut to its first `width` characters.
[[nodiscard]] std::string paddedOrCut(std::string_view text, std::size_t width);

/// Lower case by the Unicode default mapping, without regard to any locale.
[[nodiscard]] std::string lowercased(std::string_view text);

/// Without the Unicode white space and newlines at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// With `replacement` for each code point that is no letter, mark or number and none of the ASCII
/// characters `kept`. A broken sequence counts as one code point.
[[nodiscard]] std::string replacingNonAlphanumerics(std::string_view text, std::string_view kept,
                                                    char replacement);

/// The non-empty lines, split at any newline: LF, VT, FF, CR, CR LF, NEL, LS, PS.
[[nodiscard]] std::vector<std::string_view> nonEmptyLines(std::string_view text);

/// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool isValidUTF8(std::string_view bytes);

/// The bytes as UTF-8 with each ill-formed sequence replaced by U+FFFD.
[[nodiscard]] std::string repairedUTF8(std::string_view bytes);

/// Mac OS Roman bytes as UTF-8.
[[nodiscard]] std::string decodedMacOSRoman(std::string_view bytes);

}  // namespace quorvex::text
