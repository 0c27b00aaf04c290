#include <gtest/gtest.h>

#include <vector>

#include "AppVersion.h"
#include "ImmediateAnswers.h"

namespace quorvex {
namespace {

std::string answer(std::vector<std::string_view> arguments) {
  return immediateAnswer(arguments);
}

constexpr const char* wholeUsage =
    "Quorvex 0.14.0\n"
    "\n"
    "USAGE: quorvex <command> [options]\n"
    "\n"
    "COMMANDS:\n"
    "  status      One-shot system power snapshot (default)\n"
    "  battery     Detailed battery information\n"
    "  monitor     Live-updating power metrics (Ctrl+C to stop)\n"
    "  session     Record, list, show, export, and delete measurement sessions\n"
    "\n"
    "OPTIONS:\n"
    "  --json           Output as JSON\n"
    "  --interval <s>   Sampling interval in seconds (monitor only, default: 2)\n"
    "  --no-color       Disable colored output\n"
    "  --version        Print version and exit\n"
    "  --help           Show help\n";

TEST(AppVersion, TheTextIsBuiltFromItsThreeNumbers) {
  EXPECT_EQ(AppVersion::shortText, std::to_string(AppVersion::major) + "." +
                                       std::to_string(AppVersion::minor) + "." +
                                       std::to_string(AppVersion::patch));
  EXPECT_STREQ(AppVersion::shortText, "0.14.0");
}

TEST(ImmediateAnswers, TheUsageTextIsExact) {
  EXPECT_EQ(usageText(), wholeUsage);
}

TEST(ImmediateAnswers, VersionIsOneLine) {
  EXPECT_EQ(answer({"--version"}), "Quorvex 0.14.0\n");
}

TEST(ImmediateAnswers, VersionCountsAnywhereOnTheLine) {
  EXPECT_EQ(answer({"session", "record", "--version"}), "Quorvex 0.14.0\n");
}

TEST(ImmediateAnswers, VersionGoesBeforeHelpInEitherOrder) {
  EXPECT_EQ(answer({"--version", "--help"}), "Quorvex 0.14.0\n");
  EXPECT_EQ(answer({"-h", "--version"}), "Quorvex 0.14.0\n");
}

TEST(ImmediateAnswers, HelpHasTwoSpellings) {
  EXPECT_EQ(answer({"--help"}), wholeUsage);
  EXPECT_EQ(answer({"-h"}), wholeUsage);
}

TEST(ImmediateAnswers, HelpOfACommandIsTheGeneralUsage) {
  EXPECT_EQ(answer({"session", "--help"}), wholeUsage);
}

TEST(ImmediateAnswers, OtherArgumentsHaveNone) {
  EXPECT_EQ(answer({}), "");
  EXPECT_EQ(answer({"status", "--json"}), "");
  EXPECT_EQ(answer({"version", "help", "-v", "--Version", "--helpx", "-help"}), "");
}

}  // namespace
}  // namespace quorvex
