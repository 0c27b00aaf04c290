#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Appearance.h"
#include "Controls.h"
#include "LocalizedDate.h"
#include "PowerSessionSamplingConfidence.h"

namespace quorvex {

/// How far the samples of a session cover its time.
struct SamplingConfidenceCard {
  /// A stretch without gap.
  struct Window {
    std::string timeRange;
    std::string samplesText;
    ColoredText confidence;
    std::string accessibilityText;

    bool operator==(const Window&) const = default;
  };

  std::string heading;
  Badge badge;                             ///< the flags, or "Dense"
  std::vector<LabelledValue> rows;         ///< wall clock, active sampled, samples, median gap
  std::optional<std::string> gapSentence;  ///< absent without gaps
  std::vector<Window> windows;             ///< in time order

  bool operator==(const SamplingConfidenceCard&) const = default;
};

[[nodiscard]] SamplingConfidenceCard samplingConfidenceCard(
    const PowerSessionSamplingConfidence& confidence, const ShortTimeFormat& times);

}  // namespace quorvex
