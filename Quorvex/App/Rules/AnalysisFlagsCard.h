#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Appearance.h"
#include "PowerSessionMeasurementOverhead.h"
#include "PowerSessionTelemetryConsistencyCheck.h"

namespace quorvex {

/// What speaks against taking a session's figures at their face.
struct AnalysisFlagsCard {
  struct Overhead {
    ColoredText text;
    std::string fractionText;  ///< share of the monitors; empty when it is not known
    std::string note;

    bool operator==(const Overhead&) const = default;
  };
  struct Check {
    std::string code;
    std::string message;
    std::string samplesText;
    ColorName color = ColorName::secondary;
    std::string accessibilityText;

    bool operator==(const Check&) const = default;
  };

  std::string heading;
  std::optional<Overhead> overhead;  ///< only when observed
  std::vector<Check> checks;

  bool operator==(const AnalysisFlagsCard&) const = default;
};

/// Absent when there is nothing to show.
[[nodiscard]] std::optional<AnalysisFlagsCard> analysisFlagsCard(
    std::span<const PowerSessionTelemetryConsistencyCheck> checks,
    const PowerSessionMeasurementOverhead& overhead);

}  // namespace quorvex
