#pragma once

#include <string>

namespace quorvex {

/// The user's locale for a category of the environment ("LC_TIME", "LC_CTYPE") as an ICU name
/// ("en_US", "de_DE"): the first of LC_ALL, the category and LANG that says one, without its
/// encoding; else the platform's default. "C" and "POSIX" are "en_US_POSIX".
[[nodiscard]] std::string userLocale(const char* category);

}  // namespace quorvex
