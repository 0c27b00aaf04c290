#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SessionArguments.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Words = std::vector<std::string>;

TEST(SessionArguments, TheSubcommandIsTheFirstWordFromTheSecondOn) {
  EXPECT_EQ(sessionSubcommand(Words{"session", "show", "x"}), "show");
  EXPECT_EQ(sessionSubcommand(Words{"session", "-v", "--json", "delete"}), "delete");
}

TEST(SessionArguments, WithoutASubcommandItIsList) {
  EXPECT_EQ(sessionSubcommand(Words{"session"}), "list");
  EXPECT_EQ(sessionSubcommand(Words{"session", "--json"}), "list");
  EXPECT_EQ(sessionSubcommand(Words{}), "list");
}

TEST(SessionArguments, AnOptionBeforeSessionMakesSessionTheSubcommand) {
  EXPECT_EQ(sessionSubcommand(Words{"--json", "session", "list"}), "session");
}

TEST(SessionArguments, PositionalArgumentsAreThoseBehindTheWord) {
  EXPECT_THAT(positionalArguments(Words{"session", "show", "a", "b"}, "show"),
              ElementsAre("a", "b"));
  EXPECT_THAT(positionalArguments(Words{"a", "show"}, "show"), IsEmpty());
  EXPECT_THAT(positionalArguments(Words{"session", "a"}, "show"), IsEmpty());
  EXPECT_THAT(positionalArguments(Words{}, "show"), IsEmpty());
}

TEST(SessionArguments, EveryDoubleDashOptionTakesTheArgumentBehindItAlong) {
  EXPECT_THAT(positionalArguments(Words{"show", "--story", "a"}, "show"), IsEmpty());
  EXPECT_THAT(positionalArguments(Words{"show", "a", "--story"}, "show"), ElementsAre("a"));
  EXPECT_THAT(positionalArguments(Words{"show", "--json", "--story", "a"}, "show"),
              ElementsAre("a"));
}

TEST(SessionArguments, ASingleDashIsPositional) {
  EXPECT_THAT(positionalArguments(Words{"record", "-x", "-"}, "record"), ElementsAre("-x", "-"));
}

TEST(SessionArguments, AnOptionsValueIsTheArgumentBehindIt) {
  EXPECT_EQ(optionValue(Words{"export", "--output", "f", "--output", "g"}, "--output"), "f");
  EXPECT_EQ(optionValue(Words{"export", "--output", "--json"}, "--output"), "--json");
}

TEST(SessionArguments, AnOptionThatIsMissingOrLastHasNoValue) {
  EXPECT_EQ(optionValue(Words{"export"}, "--output"), std::nullopt);
  EXPECT_EQ(optionValue(Words{"export", "--output"}, "--output"), std::nullopt);
  EXPECT_EQ(optionValue(Words{}, "--output"), std::nullopt);
}

}  // namespace
}  // namespace quorvex
