#pragma once

#include <optional>
#include <string>

#include "Appearance.h"

namespace quorvex {

/// The advice to a user whose machine spends much of the interval on sampling.
struct SamplingWarning {
  std::string text;
  std::string symbol;
  ColorName color = ColorName::orange;

  bool operator==(const SamplingWarning&) const = default;
};

/// `utilization` is the engine's `pollUtilizationFraction`, 1 being the whole interval. Absent
/// unless it is above 0.3; the text tells no more than 999%.
[[nodiscard]] std::optional<SamplingWarning> samplingWarning(std::optional<double> utilization);

}  // namespace quorvex
