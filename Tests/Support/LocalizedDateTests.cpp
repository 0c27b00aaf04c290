#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>

#include "LocalizedDate.h"

namespace quorvex {
namespace {

/// Sets variables of the environment for one test.
class Environment {
 public:
  explicit Environment(const std::map<const char*, const char*>& values) {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG", "TZ"}) {
      const char* const old = std::getenv(name);
      old_[name] = old == nullptr ? std::nullopt : std::optional<std::string>{old};
      unsetenv(name);
    }
    for (const auto& [name, value] : values) {
      setenv(name, value, 1);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() {
    for (const auto& [name, value] : old_) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
  }

 private:
  std::map<std::string, std::optional<std::string>> old_;
};

/// The newer formats put a narrow no-break space before "AM".
std::string withPlainBlanks(const std::string& text) {
  const std::string narrowBlank = "\u202F";
  const auto at = text.find(narrowBlank);
  return at == std::string::npos ? text
                                 : text.substr(0, at) + " " + text.substr(at + narrowBlank.size());
}

TEST(LocalizedDateTests, DateIsMediumAndTimeIsShort) {
  const Environment environment{{{"TZ", "UTC"}}};
  const Date date = *parseISO8601("2026-01-31T09:30:05Z");
  EXPECT_EQ(withPlainBlanks(mediumDateShortTime(date, "en_US")), "Jan 31, 2026, 9:30 AM");
  EXPECT_EQ(mediumDateShortTime(date, "de_DE"), "31.01.2026, 09:30");
}

TEST(LocalizedDateTests, AShortTimeHasNoDateAndNoSeconds) {
  const Environment environment{{{"TZ", "UTC"}}};
  const Date date = *parseISO8601("2026-01-31T14:05:59Z");
  EXPECT_EQ(withPlainBlanks(ShortTimeFormat{"en_US"}.text(date)), "2:05 PM");
  EXPECT_EQ(ShortTimeFormat{"de_DE"}.text(date), "14:05");
}

TEST(LocalizedDateTests, OneShortTimeFormatWritesManyTimes) {
  const Environment environment{{{"TZ", "UTC"}}};
  const ShortTimeFormat format{"de_DE"};
  EXPECT_EQ(format.text(*parseISO8601("2026-01-31T00:00:00Z")), "00:00");
  EXPECT_EQ(format.text(*parseISO8601("2026-01-31T23:59:59.999Z")), "23:59");
}

TEST(LocalizedDateTests, TheUsersLocaleComesFromTheEnvironmentInItsOrder) {
  {
    const Environment environment{{{"LANG", "fr_FR.UTF-8"}}};
    EXPECT_EQ(userLocaleForDates(), "fr_FR");
  }
  {
    const Environment environment{{{"LANG", "fr_FR.UTF-8"}, {"LC_TIME", "de_DE@euro"}}};
    EXPECT_EQ(userLocaleForDates(), "de_DE");
  }
  {
    const Environment environment{{{"LC_TIME", "de_DE"}, {"LC_ALL", "en_GB.UTF-8"}}};
    EXPECT_EQ(userLocaleForDates(), "en_GB");
  }
  {
    const Environment environment{{{"LC_ALL", ""}, {"LANG", "sv_SE"}}};
    EXPECT_EQ(userLocaleForDates(), "sv_SE");
  }
}

TEST(LocalizedDateTests, TheLocalesWithoutALanguageAreAmericanByConvention) {
  for (const char* name : {"C", "POSIX", "C.UTF-8"}) {
    const Environment environment{{{"LC_ALL", name}}};
    EXPECT_EQ(userLocaleForDates(), "en_US_POSIX");
  }
}

}  // namespace
}  // namespace quorvex
