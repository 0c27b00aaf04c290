#include "SamplingWarning.h"

#include <fmt/format.h>

#include <algorithm>

#include "CheckedArithmetic.h"

namespace quorvex {

std::optional<SamplingWarning> samplingWarning(std::optional<double> utilization) {
  constexpr double warningLimit = 0.3;
  constexpr double highestTold = 9.99;
  // NaN, which no comparison holds for, gives no advice.
  if (!utilization || !(*utilization > warningLimit)) {
    return std::nullopt;
  }
  return SamplingWarning{
      .text = fmt::format(
          "Sampling at ~{}% of interval — consider a longer interval or low-impact mode.",
          checkedRound(std::min(*utilization, highestTold) * 100.0)),
      .symbol = "exclamationmark.triangle.fill"};
}

}  // namespace quorvex
