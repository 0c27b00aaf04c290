#include "LocalizedDate.h"

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include "FatalError.h"
#include "UserLocale.h"

namespace quorvex {

namespace {

/// The owner closes it.
UDateFormat* openFormat(UDateFormatStyle time, UDateFormatStyle date, const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  UDateFormat* const format =
      udat_open(time, date, locale.c_str(), nullptr, -1, nullptr, -1, &status);
  if (U_FAILURE(status)) {
    fatalError("the date formats of the locales are missing");
  }
  return format;
}

std::string toUTF8(const std::u16string& text) {
  // A UTF-16 unit is at most three bytes of UTF-8.
  std::string result(text.size() * 3 + 1, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8(result.data(), static_cast<std::int32_t>(result.size()), &length, text.data(),
              static_cast<std::int32_t>(text.size()), &status);
  result.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
  return result;
}

std::string formatted(UDateFormat* format, Date date) {
  const auto milliseconds =
      std::chrono::floor<std::chrono::milliseconds>(date).time_since_epoch().count();
  std::u16string text(64, u'\0');
  while (true) {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        udat_format(format, static_cast<UDate>(milliseconds), text.data(),
                    static_cast<std::int32_t>(text.size()), nullptr, &status);
    text.resize(static_cast<std::size_t>(length));
    if (status != U_BUFFER_OVERFLOW_ERROR) {
      return toUTF8(text);
    }
  }
}

}  // namespace

std::string userLocaleForDates() {
  return userLocale("LC_TIME");
}

std::string mediumDateShortTime(Date date, const std::string& locale) {
  UDateFormat* const format = openFormat(UDAT_SHORT, UDAT_MEDIUM, locale);
  std::string text = formatted(format, date);
  udat_close(format);
  return text;
}

ShortTimeFormat::ShortTimeFormat(const std::string& locale)
    : format_(openFormat(UDAT_SHORT, UDAT_NONE, locale)) {}

std::string ShortTimeFormat::text(Date date) const {
  return formatted(static_cast<UDateFormat*>(format_.get()), date);
}

void ShortTimeFormat::Closer::operator()(void* format) const {
  udat_close(static_cast<UDateFormat*>(format));
}

}  // namespace quorvex
