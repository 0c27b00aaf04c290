#pragma once

#include <memory>
#include <string>

#include "Date.h"

namespace quorvex {

/// The user's locale for dates, see `userLocale`: that of LC_TIME.
[[nodiscard]] std::string userLocaleForDates();

/// Date in the medium and time in the short style of a locale, in the user's time zone:
/// "Jan 31, 2026, 9:30 AM". A locale that is not known falls back as ICU's do. Any thread.
[[nodiscard]] std::string mediumDateShortTime(Date date, const std::string& locale);

/// Writes times of day without the date, in the short style of a locale and in the time zone that
/// the user has when it is made: "2:05 PM", "14:05". For many times: making it is the dear part.
/// One thread at a time.
class ShortTimeFormat {
 public:
  explicit ShortTimeFormat(const std::string& locale);

  [[nodiscard]] std::string text(Date date) const;

 private:
  struct Closer {
    void operator()(void* format) const;
  };
  std::unique_ptr<void, Closer> format_;
};

}  // namespace quorvex
