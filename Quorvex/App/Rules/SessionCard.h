#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Appearance.h"
#include "PhaseStrip.h"
#include "PowerSessionSummary.h"

namespace quorvex {

/// The session that is being recorded, in the dashboard.
struct SessionCard {
  std::string title;   ///< of the session
  std::string status;  ///< one word
  ColorName statusColor = ColorName::primary;
  std::vector<LabelledValue> metrics;  ///< duration, average, energy, battery, down, up
  std::optional<PhaseStrip> strip;     ///< once it ran on two or more sources
  std::string accessibilityText;       ///< the card in one sentence

  bool operator==(const SessionCard&) const = default;
};

/// `summary` is the running one.
[[nodiscard]] SessionCard sessionCard(std::string_view title, const PowerSessionSummary& summary);

/// What stands in place of an average or an energy that is withheld: "Sparse" across a gap,
/// "2 phases" over several sources, else "--".
[[nodiscard]] std::string segmentedSummaryLabel(const PowerSessionSummary& summary);

}  // namespace quorvex
