#pragma once

#include <cstddef>

namespace quorvex {

/// The length of the number that begins at `at` if it stands there exactly as it would be written
/// anew: the shortest text that reads back to the same float and, of those of one length, the
/// nearest. 0 for any other number and for what is none. The number must be within a document, so
/// that a comma or bracket ends it, and `CanonicalReader::padding` zero bytes must stand behind the
/// document.
[[nodiscard]] std::size_t canonicalNumberLength(const char* at);

}  // namespace quorvex
