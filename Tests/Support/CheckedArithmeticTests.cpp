#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "CheckedArithmetic.h"

namespace quorvex {
namespace {

constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

TEST(CheckedArithmetic, ResultsThatFitAreExact) {
  EXPECT_EQ(checkedAdd(largest - 1, std::int64_t{1}), largest);
  EXPECT_EQ(checkedSubtract(smallest + 1, std::int64_t{1}), smallest);
  EXPECT_EQ(checkedMultiply(std::int64_t{-3}, std::int64_t{7}), -21);
}

TEST(CheckedArithmetic, SaturationStaysAtTheLargestValue) {
  constexpr auto top = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(saturatingAdd(top, std::uint64_t{1}), top);
  EXPECT_EQ(saturatingAdd(std::uint64_t{2}, std::uint64_t{3}), 5U);
}

TEST(CheckedArithmetic, RoundingTiesGoAwayFromZero) {
  EXPECT_EQ(checkedRound(2.5), 3);
  EXPECT_EQ(checkedRound(-2.5), -3);
  EXPECT_EQ(checkedRound(2.49), 2);
}

TEST(CheckedArithmetic, TruncationDropsTheFraction) {
  EXPECT_EQ(checkedTruncate(2.99), 2);
  EXPECT_EQ(checkedTruncate(-2.99), -2);
}

TEST(CheckedArithmetic, TheEndsOfTheRangeAreTheirOwn) {
  EXPECT_EQ(checkedTruncate(-9223372036854775808.0), smallest);
  EXPECT_EQ(checkedTruncate(std::nextafter(9223372036854775808.0, 0.0)), 9223372036854774784);
}

TEST(CheckedArithmeticDeathTest, OverflowIsFatal) {
  EXPECT_DEATH(static_cast<void>(checkedAdd(largest, std::int64_t{1})), "overflow in an addition");
  EXPECT_DEATH(static_cast<void>(checkedSubtract(smallest, std::int64_t{1})),
               "overflow in a subtraction");
  EXPECT_DEATH(static_cast<void>(checkedMultiply(largest, std::int64_t{2})),
               "overflow in a multiplication");
}

TEST(CheckedArithmeticDeathTest, FloatsOutsideTheRangeAreFatal) {
  constexpr const char* words = "Fatal error: a floating-point value does not fit";
  EXPECT_DEATH(static_cast<void>(checkedRound(9223372036854775808.0)), words);
  EXPECT_DEATH(static_cast<void>(checkedTruncate(-1e19)), words);
  EXPECT_DEATH(static_cast<void>(checkedRound(std::nan(""))), words);
  EXPECT_DEATH(static_cast<void>(checkedTruncate(HUGE_VAL)), words);
}

}  // namespace
}  // namespace quorvex
