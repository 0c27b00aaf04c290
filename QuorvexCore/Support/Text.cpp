#include "Text.h"

#include <unicode/ubrk.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "FatalError.h"

namespace quorvex::text {

namespace {

template <auto close>
struct Closer {
  template <typename Handle>
  void operator()(Handle* handle) const {
    close(handle);
  }
};

using BreakIterator = std::unique_ptr<UBreakIterator, Closer<ubrk_close>>;
using TextHandle = std::unique_ptr<UText, Closer<utext_close>>;
using CaseMap = std::unique_ptr<UCaseMap, Closer<ucasemap_close>>;

bool isASCII(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

struct CodePoint {
  UChar32 value;      ///< U_SENTINEL (-1) for an ill-formed sequence
  std::size_t begin;  ///< byte offset
  std::size_t end;
};

CodePoint codePointAt(std::string_view text, std::size_t offset) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  auto next = static_cast<std::int64_t>(offset);
  const auto length = static_cast<std::int64_t>(text.size());
  UChar32 value = 0;
  U8_NEXT(bytes, next, length, value);
  return {value < 0 ? U_SENTINEL : value, offset, static_cast<std::size_t>(next)};
}

/// Whether the code point forms a character of its own whatever stands beside it. CR is left out,
/// since it joins a following LF.
bool standsAlone(UChar32 value) {
  if (value < 0x300) {
    return value != '\r';
  }
  const auto kind = u_getIntPropertyValue(value, UCHAR_GRAPHEME_CLUSTER_BREAK);
  return kind == U_GCB_OTHER || kind == U_GCB_CONTROL;
}

/// Byte offset behind the first `limit` characters when every code point stands alone; none when
/// cluster rules are needed. `count` receives how many characters were passed.
std::optional<std::size_t> simpleBoundary(std::string_view text, std::size_t limit,
                                          std::size_t& count) {
  std::size_t offset = 0;
  std::optional<std::size_t> boundary;
  count = 0;
  // One code point past the limit is looked at too: it could extend the last character.
  while (offset < text.size()) {
    const CodePoint point = codePointAt(text, offset);
    if (point.value != U_SENTINEL && !standsAlone(point.value)) {
      return std::nullopt;
    }
    if (count == limit) {
      boundary = offset;
      break;
    }
    offset = point.end;
    ++count;
  }
  return boundary.value_or(offset);
}

/// The same by the full cluster rules.
std::size_t clusterBoundary(std::string_view text, std::size_t limit, std::size_t& count) {
  UErrorCode status = U_ZERO_ERROR;
  const TextHandle handle{
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status)};
  const BreakIterator breaks{ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status)};
  if (U_FAILURE(status)) {
    fatalError("the Unicode break rules are missing");
  }
  ubrk_setUText(breaks.get(), handle.get(), &status);
  count = 0;
  std::int32_t offset = 0;
  while (count < limit) {
    const std::int32_t next = ubrk_next(breaks.get());
    if (next == UBRK_DONE) {
      break;
    }
    offset = next;
    ++count;
  }
  return static_cast<std::size_t>(offset);
}

std::size_t boundary(std::string_view text, std::size_t limit, std::size_t& count) {
  if (const auto simple = simpleBoundary(text, limit, count)) {
    return *simple;
  }
  return clusterBoundary(text, limit, count);
}

bool isNewline(UChar32 value) {
  return (value >= 0x0A && value <= 0x0D) || value == 0x85 || value == 0x2028 || value == 0x2029;
}

bool isTrimmed(UChar32 value) {
  return value != U_SENTINEL && (u_isUWhiteSpace(value) != 0 || isNewline(value));
}

bool isAlphanumeric(UChar32 value) {
  return value != U_SENTINEL &&
         (U_MASK(u_charType(value)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

}  // namespace

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  boundary(text, text.size(), count);
  return count;
}

std::string_view prefix(std::string_view text, std::size_t limit) {
  std::size_t count = 0;
  return text.substr(0, boundary(text, limit, count));
}

std::string paddedOrCut(std::string_view text, std::size_t width) {
  std::size_t count = 0;
  std::string result{text.substr(0, boundary(text, width, count))};
  result.append(width - count, ' ');
  return result;
}

std::string lowercased(std::string_view text) {
  if (isASCII(text)) {
    std::string result{text};
    for (char& c : result) {
      if (c >= 'A' && c <= 'Z') {
        c = static_cast<char>(c - 'A' + 'a');
      }
    }
    return result;
  }
  UErrorCode status = U_ZERO_ERROR;
  const CaseMap map{ucasemap_open("", 0, &status)};
  std::string result(text.size() + text.size() / 2 + 8, '\0');
  while (true) {
    status = U_ZERO_ERROR;
    const std::int32_t length =
        ucasemap_utf8ToLower(map.get(), result.data(), static_cast<std::int32_t>(result.size()),
                             text.data(), static_cast<std::int32_t>(text.size()), &status);
    result.resize(static_cast<std::size_t>(length));
    if (status != U_BUFFER_OVERFLOW_ERROR) {
      break;
    }
  }
  if (U_FAILURE(status)) {
    fatalError("the Unicode case mapping is missing");
  }
  return result;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty()) {
    const CodePoint first = codePointAt(text, 0);
    if (!isTrimmed(first.value)) {
      break;
    }
    text.remove_prefix(first.end);
  }
  while (!text.empty()) {
    std::size_t begin = text.size() - 1;
    // Steps back over continuation bytes to the start of the last code point.
    while (begin > 0 && text.size() - begin < 4 && U8_IS_TRAIL(text[begin])) {
      --begin;
    }
    const CodePoint last = codePointAt(text, begin);
    if (last.end != text.size() || !isTrimmed(last.value)) {
      break;
    }
    text.remove_suffix(text.size() - begin);
  }
  return text;
}

std::string replacingNonAlphanumerics(std::string_view text, std::string_view kept,
                                      char replacement) {
  std::string result;
  result.reserve(text.size());
  std::size_t offset = 0;
  while (offset < text.size()) {
    const CodePoint point = codePointAt(text, offset);
    const bool isKept = isAlphanumeric(point.value) ||
                        (point.end - offset == 1 && kept.find(text[offset]) != kept.npos);
    if (isKept) {
      result.append(text.substr(offset, point.end - offset));
    } else {
      result.push_back(replacement);
    }
    offset = point.end;
  }
  return result;
}

std::vector<std::string_view> nonEmptyLines(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t lineBegin = 0;
  std::size_t offset = 0;
  while (offset < text.size()) {
    const CodePoint point = codePointAt(text, offset);
    if (isNewline(point.value)) {
      if (offset > lineBegin) {
        lines.push_back(text.substr(lineBegin, offset - lineBegin));
      }
      lineBegin = point.end;
    }
    offset = point.end;
  }
  if (text.size() > lineBegin) {
    lines.push_back(text.substr(lineBegin));
  }
  return lines;
}

}  // namespace quorvex::text
