#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "LocalizedSearch.h"

namespace quorvex {
namespace {

bool contains(std::string_view text, std::string_view searched,
              const std::string& locale = "en_US") {
  return LocalizedSearch{searched, locale}.isIn(text);
}

TEST(LocalizedSearch, IgnoresCase) {
  EXPECT_TRUE(contains("foo run", "FOO"));
  EXPECT_TRUE(contains("A FOO run", "foo"));
  EXPECT_FALSE(contains("fo", "foo"));
  EXPECT_TRUE(contains("GRÖSSE", "größe")) << "a folding may change the length";
  EXPECT_TRUE(contains("ΣΊΣΥΦΟΣ", "σίσυφος")) << "a final sigma is a sigma";
}

TEST(LocalizedSearch, AnEmptyTextIsContainedInNone) {
  EXPECT_FALSE(contains("foo", ""));
  EXPECT_FALSE(contains("", ""));
  EXPECT_FALSE(contains("", "foo"));
}

TEST(LocalizedSearch, AccentsMustAgreeInWhateverForm) {
  EXPECT_TRUE(contains("Café au lait", "CAFÉ"));
  EXPECT_TRUE(contains("Café", "cafe\u0301"));
  EXPECT_TRUE(contains("Cafe\u0301", "café"));
  EXPECT_FALSE(contains("Café", "cafe"));
  EXPECT_FALSE(contains("Cafe", "café"));
}

TEST(LocalizedSearch, AnAccentBelongsToItsLetter) {
  EXPECT_FALSE(contains("Cafe\u0301", "\u0301"));
  EXPECT_TRUE(contains("e\u0301e", "e")) << "the second letter has no accent";
}

TEST(LocalizedSearch, DottedAndDotlessLettersDifferInTurkic) {
  for (const char* locale : {"tr_TR", "az", "tr"}) {
    EXPECT_TRUE(contains("Ilık", "ılık", locale));
    EXPECT_TRUE(contains("İyi", "iyi", locale));
    EXPECT_FALSE(contains("Ilık", "ilik", locale));
    EXPECT_FALSE(contains("IDLE", "idle", locale));
  }
  EXPECT_TRUE(contains("IDLE", "idle", "en_US_POSIX"));
}

TEST(LocalizedSearch, BrokenSequencesAreNoMatchForText) {
  EXPECT_TRUE(contains("a\xff foo", "foo"));
  EXPECT_FALSE(contains("foo", "\xff"));
}

/// A variable of the environment, put back in its place after a test.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* const old = std::getenv(name)) {
      old_ = old;
    }
    setenv(name, value, 1);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() {
    if (old_) {
      setenv(name_, old_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(LocalizedSearch, TheUsersLocaleIsThatOfLettersAndNotOfDates) {
  const Variable all{"LC_ALL", ""};
  const Variable dates{"LC_TIME", "de_DE.UTF-8"};
  const Variable letters{"LC_CTYPE", "tr_TR.UTF-8"};
  EXPECT_EQ(userLocaleForSearching(), "tr_TR");
}

}  // namespace
}  // namespace quorvex
