#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvex {

/// The case texts of one enum, in declared order. An enum whose texts are written to JSON or to
/// stored records specialises it as `template <> struct RawTexts<E> { static constexpr std::array
/// values{std::pair{E::a, std::string_view{"a"}}, …}; };`.
template <typename Enum>
struct RawTexts;

/// The text value of a case.
template <typename Enum>
[[nodiscard]] constexpr std::string_view rawValue(Enum value) {
  for (const auto& [candidate, text] : RawTexts<Enum>::values) {
    if (candidate == value) {
      return text;
    }
  }
  return {};
}

/// The case with exactly this text; none for any other text.
template <typename Enum>
[[nodiscard]] constexpr std::optional<Enum> fromRawValue(std::string_view text) {
  for (const auto& [candidate, candidateText] : RawTexts<Enum>::values) {
    if (candidateText == text) {
      return candidate;
    }
  }
  return std::nullopt;
}

}  // namespace quorvex
