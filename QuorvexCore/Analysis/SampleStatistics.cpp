#include "SampleStatistics.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstddef>

namespace quorvex {

namespace {

/// Total also over NaN, so that no value can lead a partial sort astray.
bool isLess(double left, double right) {
  return std::is_lt(std::strong_order(left, right));
}

double valueAtRank(std::vector<double>& values, std::size_t rank) {
  const auto position = values.begin() + static_cast<std::ptrdiff_t>(rank);
  std::nth_element(values.begin(), position, values.end(), isLess);
  return *position;
}

}  // namespace

std::optional<double> median(std::vector<double> values) {
  if (values.empty()) {
    return std::nullopt;
  }
  const std::size_t middle = values.size() / 2;
  const double upper = valueAtRank(values, middle);
  if (values.size() % 2 == 1) {
    return upper;
  }
  const double lower = *std::max_element(
      values.begin(), values.begin() + static_cast<std::ptrdiff_t>(middle), isLess);
  return (lower + upper) / 2.0;
}

std::optional<double> percentile(std::vector<double> values, double fraction) {
  if (values.empty()) {
    return std::nullopt;
  }
  const auto last = static_cast<double>(values.size() - 1);
  const double rank = std::clamp(std::ceil(fraction * last), 0.0, last);
  return valueAtRank(values, static_cast<std::size_t>(rank));
}

}  // namespace quorvex
