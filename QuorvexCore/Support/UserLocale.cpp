#include "UserLocale.h"

#include <unicode/uloc.h>

#include <cstdlib>
#include <string_view>

namespace quorvex {

std::string userLocale(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || *value == '\0') {
      continue;
    }
    const std::string_view full{value};
    const std::string_view name = full.substr(0, full.find_first_of(".@"));
    return name == "C" || name == "POSIX" ? "en_US_POSIX" : std::string{name};
  }
  return uloc_getDefault();
}

}  // namespace quorvex
