#pragma once

#include <optional>
#include <string_view>

#include "SystemPowerState.h"

namespace quorvex {

/// A word for the source of the total, also when there is no reading.
struct PowerSourceInfo {
  std::string_view kind;     ///< a reading kind's text, or one of the words for "no reading"
  std::string_view label;    ///< short display label
  std::string_view summary;  ///< one line of explanation

  bool operator==(const PowerSourceInfo&) const = default;
};

/// Kind, label and summary of the source of the total, for reports. The views are of static texts.
[[nodiscard]] PowerSourceInfo powerSourceInfo(const SystemPowerState& state);

/// The coarser forms that stored sessions and histories carry. They know no kind for an idle
/// battery: a sample without a reading is "unavailable" whatever its label says. The views are of
/// static texts.

/// Watts of the total; absent without a reading.
[[nodiscard]] std::optional<double> totalWatts(const SystemPowerState& state);
/// The confidence's text; "unavailable" without a reading.
[[nodiscard]] std::string_view totalWattsConfidence(const SystemPowerState& state);
/// The reading kind's text; "unavailable" without a reading.
[[nodiscard]] std::string_view powerSourceKind(const SystemPowerState& state);
/// The reading's label; without a reading "On AC, battery idle" or "Unavailable".
[[nodiscard]] std::string_view powerSourceLabel(const SystemPowerState& state);

}  // namespace quorvex
