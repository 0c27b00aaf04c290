#pragma once

#include <string>

#include "Appearance.h"
#include "PowerSessionThermalDigest.h"

namespace quorvex {

/// How hot a session was, and for how long.
struct ThermalSummaryCard {
  std::string symbol;
  ColoredText verdict;
  std::string peakTempText;
  std::string timeAboveText;  ///< empty if it was never above 70 degrees
  std::string pressureNote;
  std::string accessibilityText;  ///< the card in words

  bool operator==(const ThermalSummaryCard&) const = default;
};

[[nodiscard]] ThermalSummaryCard thermalSummaryCard(const PowerSessionThermalDigest& digest,
                                                    bool useFahrenheit);

/// The verdict in words. They differ from the command line's on purpose.
[[nodiscard]] ColoredText verdictText(PowerSessionThermalDigest::Verdict verdict);

}  // namespace quorvex
