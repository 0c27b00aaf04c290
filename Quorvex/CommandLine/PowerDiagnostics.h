#pragma once

#include <optional>
#include <span>

#include "Date.h"
#include "JSONFormatter.h"
#include "JSONWriter.h"
#include "SystemPowerState.h"

namespace quorvex {

/// Writes the object that explains the total: its source, its age, how long it has stood still, the
/// raw numbers behind it and its history.
void writePowerDiagnostics(JSONWriter& json, const SystemPowerState& state,
                           const JSONFormatter::ReportContext& context);

/// Seconds for which the total has stood still at `generatedAt`, to unmask a frozen source: the
/// time since the last difference above 0.05 W between neighbours in `history` (oldest first) and
/// `state`, or since the first sample with a total. A change of kind is none. Never negative;
/// absent when `state` has no total.
[[nodiscard]] std::optional<double> valueUnchangedSeconds(const SystemPowerState& state,
                                                          std::span<const SystemPowerState> history,
                                                          Date generatedAt);

}  // namespace quorvex
