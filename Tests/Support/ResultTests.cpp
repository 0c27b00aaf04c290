#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "Result.h"

namespace quorvex {
namespace {

struct Problem {
  std::string words;
};

TEST(ResultTests, AValueIsNoError) {
  const Result<int, Problem> result = 5;
  EXPECT_TRUE(result);
  EXPECT_TRUE(result.hasValue());
  EXPECT_EQ(*result, 5);
  EXPECT_THROW(static_cast<void>(result.error()), std::bad_variant_access);
}

TEST(ResultTests, AnErrorIsNoValue) {
  const Result<int, Problem> result = Problem{"why"};
  EXPECT_FALSE(result);
  EXPECT_EQ(result.error().words, "why");
  EXPECT_THROW(static_cast<void>(*result), std::bad_variant_access);
}

TEST(ResultTests, AValueCanBeMovedOut) {
  Result<std::unique_ptr<int>, Problem> result = std::make_unique<int>(7);
  const std::unique_ptr<int> value = *std::move(result);
  EXPECT_EQ(*value, 7);
}

TEST(ResultTests, SuccessWithoutAValue) {
  const Result<void, Problem> good;
  EXPECT_TRUE(good);
  const Result<void, Problem> bad = Problem{"why"};
  EXPECT_FALSE(bad);
  EXPECT_EQ(bad.error().words, "why");
}

}  // namespace
}  // namespace quorvex
