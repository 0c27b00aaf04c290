#include "LocalizedSearch.h"

#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <array>

#include "FatalError.h"
#include "UserLocale.h"

namespace quorvex {

namespace {

/// Calls an ICU function that fills a buffer, anew with a larger one when it asks for that.
template <typename Fill>
std::u16string filled(std::size_t expected, Fill fill) {
  std::u16string result(expected, u'\0');
  while (true) {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        fill(result.data(), static_cast<std::int32_t>(result.size()), &status);
    result.resize(static_cast<std::size_t>(length));
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      continue;
    }
    if (U_FAILURE(status)) {
      fatalError("the Unicode case folding is missing");
    }
    return result;
  }
}

std::u16string toUTF16(std::string_view text) {
  constexpr UChar32 replacement = 0xFFFD;
  return filled(text.size(), [&](char16_t* buffer, std::int32_t capacity, UErrorCode* status) {
    std::int32_t length = 0;
    u_strFromUTF8WithSub(buffer, capacity, &length, text.data(),
                         static_cast<std::int32_t>(text.size()), replacement, nullptr, status);
    return length;
  });
}

std::u16string normalized(const std::u16string& text,
                          const UNormalizer2* (*form)(UErrorCode* status)) {
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* const normalizer = form(&status);
  if (U_FAILURE(status)) {
    fatalError("the Unicode normal forms are missing");
  }
  return filled(
      text.size() * 2, [&](char16_t* buffer, std::int32_t capacity, UErrorCode* fillStatus) {
        return unorm2_normalize(normalizer, text.data(), static_cast<std::int32_t>(text.size()),
                                buffer, capacity, fillStatus);
      });
}

/// Folded from the composed form, since Turkic folding must see the dotted capital as one letter,
/// and then decomposed, so that equal texts have one form.
std::u16string comparable(std::string_view text, bool isTurkic) {
  const std::u16string source = normalized(toUTF16(text), unorm2_getNFCInstance);
  const std::uint32_t options = isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
  return normalized(filled(source.size() + 8,
                           [&](char16_t* buffer, std::int32_t capacity, UErrorCode* status) {
                             return u_strFoldCase(buffer, capacity, source.data(),
                                                  static_cast<std::int32_t>(source.size()), options,
                                                  status);
                           }),
                    unorm2_getNFDInstance);
}

bool isTurkicLocale(const std::string& locale) {
  std::array<char, ULOC_LANG_CAPACITY> language{};
  UErrorCode status = U_ZERO_ERROR;
  uloc_getLanguage(locale.c_str(), language.data(), static_cast<std::int32_t>(language.size()),
                   &status);
  const std::string_view name{language.data()};
  return U_SUCCESS(status) && (name == "tr" || name == "az");
}

/// Whether no accent at `offset` belongs to the letter before it.
bool isLetterBoundary(const std::u16string& text, std::size_t offset) {
  if (offset == 0 || offset >= text.size()) {
    return true;
  }
  UChar32 value = 0;
  U16_GET(text.data(), 0, offset, text.size(), value);
  return u_getCombiningClass(value) == 0;
}

}  // namespace

std::string userLocaleForSearching() {
  return userLocale("LC_CTYPE");
}

LocalizedSearch::LocalizedSearch(std::string_view searched, const std::string& locale)
    : isTurkic_(isTurkicLocale(locale)), searched_(comparable(searched, isTurkic_)) {}

bool LocalizedSearch::isIn(std::string_view text) const {
  if (searched_.empty()) {
    return false;
  }
  const std::u16string comparableText = comparable(text, isTurkic_);
  std::size_t found = comparableText.find(searched_);
  while (found != std::u16string::npos) {
    if (isLetterBoundary(comparableText, found) &&
        isLetterBoundary(comparableText, found + searched_.size())) {
      return true;
    }
    found = comparableText.find(searched_, found + 1);
  }
  return false;
}

}  // namespace quorvex
