#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ArgumentParser.h"

namespace quorvex {
namespace {

ParsedArguments parse(std::vector<std::string> arguments) {
  return parseArguments(arguments);
}

TEST(ArgumentParser, WithoutArgumentsTheCommandIsStatus) {
  EXPECT_EQ(parse({}), (ParsedArguments{.command = "status", .options = {}}));
}

TEST(ArgumentParser, DefaultsAreTableWithColourEveryTwoSeconds) {
  const CommandLineOptions options = parse({"monitor"}).options;
  EXPECT_FALSE(options.json);
  EXPECT_FALSE(options.noColor);
  EXPECT_EQ(options.interval, 2.0);
}

TEST(ArgumentParser, JSONAloneIsStatusWithJSON) {
  EXPECT_EQ(parse({"--json"}), (ParsedArguments{.command = "status", .options = {.json = true}}));
}

TEST(ArgumentParser, NoColorAloneIsStatusWithoutColour) {
  EXPECT_EQ(parse({"--no-color"}),
            (ParsedArguments{.command = "status", .options = {.noColor = true}}));
}

TEST(ArgumentParser, AnUnknownOptionIsNoCommandAndIgnored) {
  EXPECT_EQ(parse({"-x"}), (ParsedArguments{.command = "status", .options = {}}));
  EXPECT_EQ(parse({"--jsonx", "-", "--", "battery"}).command, "battery");
}

TEST(ArgumentParser, OptionsCountWhereverTheyStand) {
  const ParsedArguments parsed = parse({"--no-color", "monitor", "--json"});
  EXPECT_EQ(parsed.command, "monitor");
  EXPECT_TRUE(parsed.options.json);
  EXPECT_TRUE(parsed.options.noColor);
}

TEST(ArgumentParser, TheFirstArgumentWithoutADashIsTheCommand) {
  EXPECT_EQ(parse({"status", "extra"}).command, "status");
  EXPECT_EQ(parse({"extra", "status"}).command, "extra");
}

TEST(ArgumentParser, AnEmptyArgumentIsACommand) {
  EXPECT_EQ(parse({"", "status"}).command, "");
}

TEST(ArgumentParser, TheValueOfIntervalIsMistakenForTheCommand) {
  const ParsedArguments parsed = parse({"--interval", "5"});
  EXPECT_EQ(parsed.command, "5");
  EXPECT_EQ(parsed.options.interval, 5.0);
}

TEST(ArgumentParser, IntervalBehindTheCommandIsRight) {
  const ParsedArguments parsed = parse({"monitor", "--interval", "5"});
  EXPECT_EQ(parsed.command, "monitor");
  EXPECT_EQ(parsed.options.interval, 5.0);
}

TEST(ArgumentParser, IntervalWithoutAValueKeepsTheDefault) {
  EXPECT_EQ(parse({"monitor", "--interval"}).options.interval, 2.0);
}

TEST(ArgumentParser, IntervalWithABadValueKeepsTheDefault) {
  EXPECT_EQ(parse({"monitor", "--interval", "abc"}).options.interval, 2.0);
}

TEST(ArgumentParser, AnOptionBehindIntervalIsABadValueAndStillCounts) {
  const CommandLineOptions options = parse({"monitor", "--interval", "--json"}).options;
  EXPECT_EQ(options.interval, 2.0);
  EXPECT_TRUE(options.json);
}

TEST(ArgumentParser, OfRepeatedIntervalsTheFirstCounts) {
  EXPECT_EQ(parse({"monitor", "--interval", "1", "--interval", "3"}).options.interval, 1.0);
}

TEST(ArgumentParser, ABadFirstIntervalIsNotRescuedByTheSecond) {
  EXPECT_EQ(parse({"monitor", "--interval", "abc", "--interval", "3"}).options.interval, 2.0);
}

TEST(ArgumentParser, IntervalHasNoFloor) {
  EXPECT_EQ(parse({"monitor", "--interval", "0"}).options.interval, 0.0);
  EXPECT_EQ(parse({"monitor", "--interval", "-1.5"}).options.interval, -1.5);
}

TEST(ArgumentParser, IntervalJoinedByAnEqualsSignIsUnknown) {
  EXPECT_EQ(parse({"monitor", "--interval=5"}).options.interval, 2.0);
}

TEST(DecimalNumber, TakesSignDigitsPointAndExponent) {
  EXPECT_EQ(parseDecimalNumber("5"), 5.0);
  EXPECT_EQ(parseDecimalNumber("+5"), 5.0);
  EXPECT_EQ(parseDecimalNumber("-0.25"), -0.25);
  EXPECT_EQ(parseDecimalNumber(".5"), 0.5);
  EXPECT_EQ(parseDecimalNumber("5."), 5.0);
  EXPECT_EQ(parseDecimalNumber("007"), 7.0);
  EXPECT_EQ(parseDecimalNumber("1e3"), 1000.0);
  EXPECT_EQ(parseDecimalNumber("1E+3"), 1000.0);
  EXPECT_EQ(parseDecimalNumber("25e-2"), 0.25);
}

TEST(DecimalNumber, KeepsTheSignOfZero) {
  const auto zero = parseDecimalNumber("-0");
  ASSERT_TRUE(zero.has_value());
  EXPECT_EQ(*zero, 0.0);
  EXPECT_TRUE(std::signbit(*zero));
}

TEST(DecimalNumber, WhatIsTooLargeIsInfinite) {
  EXPECT_EQ(parseDecimalNumber("1e999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(parseDecimalNumber("-1e999"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(parseDecimalNumber(std::string(400, '9')), std::numeric_limits<double>::infinity());
}

TEST(DecimalNumber, WhatIsTooSmallIsZero) {
  EXPECT_EQ(parseDecimalNumber("1e-999"), 0.0);
}

class NoDecimalNumber : public ::testing::TestWithParam<const char*> {};

TEST_P(NoDecimalNumber, IsRefusedWhole) {
  EXPECT_EQ(parseDecimalNumber(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoDecimalNumber,
                         ::testing::Values("", " ", "abc", "5s", " 5", "5 ", "5\n", "+", "-", ".",
                                           "+.", "e3", ".e3", "1e", "1e+", "1.2.3", "1,5", "--5",
                                           "+-5", "0x10", "0x1p3", "1e0x3", "1e3.5", "inf", "+inf",
                                           "infinity", "nan", "NaN", "1_000", "1d3", "٥"));

}  // namespace
}  // namespace quorvex
