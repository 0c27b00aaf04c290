#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "SampleStatistics.h"

namespace quorvex {
namespace {

TEST(Median, IsAbsentWithoutValues) {
  EXPECT_EQ(median({}), std::nullopt);
}

TEST(Median, IsTheOnlyValue) {
  EXPECT_EQ(median({7.5}), 7.5);
}

TEST(Median, IsTheMiddleOfAnOddCount) {
  EXPECT_EQ(median({9.0, 1.0, 5.0}), 5.0);
}

TEST(Median, IsTheMeanOfTheTwoMiddleOnesOfAnEvenCount) {
  EXPECT_EQ(median({10.0, 1.0, 2.0, 5.0}), (2.0 + 5.0) / 2.0);
  EXPECT_EQ(median({4.0, 2.0}), (4.0 + 2.0) / 2.0);
}

TEST(Percentile, IsAbsentWithoutValues) {
  EXPECT_EQ(percentile({}, 0.95), std::nullopt);
}

TEST(Percentile, RoundsTheRankUpWithoutInterpolation) {
  // Five values: 0.3 * 4 = 1.2, so rank 2 of 0 to 4.
  EXPECT_EQ(percentile({50.0, 20.0, 40.0, 10.0, 30.0}, 0.3), 30.0);
}

TEST(Percentile, At95OfTenValuesIsTheLargest) {
  // 0.95 * 9 = 8.55, so rank 9.
  EXPECT_EQ(percentile({3.0, 10.0, 1.0, 2.0, 4.0, 9.0, 5.0, 6.0, 8.0, 7.0}, 0.95), 10.0);
}

TEST(Percentile, At95OfTwentyOneValuesIsTheSecondLargest) {
  // 0.95 * 20 = 19, of the ranks 0 to 20.
  std::vector<double> values;
  for (int i = 20; i >= 0; --i) {
    values.push_back(i);
  }
  EXPECT_EQ(percentile(values, 0.95), 19.0);
}

TEST(Percentile, CutsRanksOutsideTheValues) {
  EXPECT_EQ(percentile({1.0, 2.0, 3.0}, -1.0), 1.0);
  EXPECT_EQ(percentile({1.0, 2.0, 3.0}, 0.0), 1.0);
  EXPECT_EQ(percentile({1.0, 2.0, 3.0}, 1.0), 3.0);
  EXPECT_EQ(percentile({1.0, 2.0, 3.0}, 7.0), 3.0);
}

TEST(Median, SurvivesValuesThatHaveNoOrder) {
  std::vector<double> values(1000, std::numeric_limits<double>::quiet_NaN());
  for (std::size_t i = 0; i < values.size(); i += 3) {
    values[i] = 1.0;
  }
  EXPECT_TRUE(median(values).has_value());
  EXPECT_EQ(percentile(values, 0.0), 1.0);
}

RC_GTEST_PROP(Median, IsThatOfTheSortedValues, (std::vector<int> numbers)) {
  RC_PRE(!numbers.empty());
  std::sort(numbers.begin(), numbers.end());
  const std::size_t upper = numbers.size() / 2;
  const std::size_t lower = (numbers.size() - 1) / 2;
  const double expected =
      (static_cast<double>(numbers[lower]) + static_cast<double>(numbers[upper])) / 2.0;
  std::vector<double> mixed(numbers.rbegin(), numbers.rend());
  std::rotate(mixed.begin(), mixed.begin() + static_cast<std::ptrdiff_t>(upper), mixed.end());
  RC_ASSERT(median(mixed) == expected);
}

}  // namespace
}  // namespace quorvex
