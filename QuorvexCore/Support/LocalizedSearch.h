#pragma once

#include <string>
#include <string_view>

namespace quorvex {

/// The user's locale for comparing texts, see `userLocale`: that of LC_CTYPE.
[[nodiscard]] std::string userLocaleForSearching();

/// Finds a text within others without regard to case, as people search in lists. Letters are the
/// same in every form of Unicode and with accents only if the accents are the same; case is that of
/// the locale, so that "I" is no capital of "i" in Turkish. Any thread.
class LocalizedSearch {
 public:
  /// `searched` is UTF-8; what is ill-formed in it or in the searched texts counts as U+FFFD.
  LocalizedSearch(std::string_view searched, const std::string& locale);

  /// Whether `text` contains the searched one. An empty text is contained in none.
  [[nodiscard]] bool isIn(std::string_view text) const;

 private:
  bool isTurkic_;
  std::u16string searched_;  ///< folded and decomposed
};

}  // namespace quorvex
