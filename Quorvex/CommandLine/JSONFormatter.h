#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Date.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "SystemPowerState.h"

namespace quorvex {

/// Telemetry as JSON for machines and for reports that people hand in. Every operation gives one
/// pretty-printed document with sorted keys and no newline at its end. Absent values leave their
/// key out; dates are ISO 8601 in UTC and whole seconds; watts have at most 2 decimals, volts and
/// amperes 3, rates 1. A record that has no JSON form (a number that is not finite, a text that is
/// no UTF-8) gives "{}". Pure functions; any thread.
class JSONFormatter {
 public:
  /// One snapshot. The object holds `power`, `battery` and the other parts only as far as the
  /// machine has them; `powerReadings`, `thermal` and `timestamp` always.
  [[nodiscard]] static std::string systemStateDict(const SystemPowerState& state);

  /// One battery. Its serial number is deliberately left out.
  [[nodiscard]] static std::string batteryDict(const BatteryInfo& info);

  /// What the full report holds beside the snapshot.
  struct ReportContext {
    std::span<const SystemPowerState> history;               ///< earlier snapshots, oldest first
    double refreshInterval = 0.0;                            ///< the configured interval in seconds
    std::span<const ProcessActivityInfo> processActivities;  ///< in the order of the report
    std::optional<ProTelemetrySnapshot>
        proTelemetry;    ///< absent when there is no privileged sample
    Date generatedAt{};  ///< when the report is made
  };

  /// The report that explains itself: the snapshot, where its total comes from, how old it is, and
  /// notes against misreading. A disk rate that is not finite or too large for an integer is a
  /// fatal error.
  [[nodiscard]] static std::string formatSystemReport(const SystemPowerState& state,
                                                      const ReportContext& context);
};

}  // namespace quorvex
