#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// One row of the privileged process telemetry. Absent figures were not in the sample.
struct ProProcessEnergy {
  std::int32_t pid = 0;                      ///< process id, also the row's identity
  std::string name;                          ///< process name
  std::optional<double> energyImpact;        ///< powermetrics' energy-impact figure, no unit
  std::optional<double> cpuTimePercent;      ///< percent of one core
  std::optional<double> wakeupsPerSecond;    ///< wakeups per second
  std::optional<double> diskBytesPerSecond;  ///< bytes per second
  bool isAggregate = false;                  ///< a grouped row, not one process

  bool operator==(const ProProcessEnergy&) const = default;
};

/// One privileged sample, as the root-owned helper tool takes it with powermetrics.
struct ProTelemetrySnapshot {
  /// Seconds for which a sample's total counts as fresh.
  static constexpr double defaultFreshnessWindow = 15.0;

  bool isAvailable = false;                     ///< the sample is good
  std::string source;                           ///< where it came from
  Date sampledAt{};                             ///< time of the sample
  std::int64_t sampleIntervalMilliseconds = 0;  ///< length of the sample
  std::vector<ProProcessEnergy> processes;      ///< per-process rows
  std::optional<double> cpuPowerWatts;          ///< watts
  std::optional<double> gpuPowerWatts;          ///< watts
  std::optional<double> anePowerWatts;          ///< watts
  std::optional<std::string> rawSampleSummary;  ///< diagnostic text
  std::optional<std::string> error;             ///< failure text

  /// Sum in watts of the present power fields; none when the sample is not available, is older than
  /// `maxAge` seconds, or carries no power. A sample from the future counts as fresh.
  [[nodiscard]] std::optional<double> freshPowerTotal(Date now,
                                                      double maxAge = defaultFreshnessWindow) const;

  bool operator==(const ProTelemetrySnapshot&) const = default;
};

template <>
struct RecordFields<ProProcessEnergy> {
  static constexpr std::tuple values{
      RecordField{"cpuTimePercent", &ProProcessEnergy::cpuTimePercent},
      RecordField{"diskBytesPerSecond", &ProProcessEnergy::diskBytesPerSecond},
      RecordField{"energyImpact", &ProProcessEnergy::energyImpact},
      RecordField{"isAggregate", &ProProcessEnergy::isAggregate},
      RecordField{"name", &ProProcessEnergy::name},
      RecordField{"pid", &ProProcessEnergy::pid},
      RecordField{"wakeupsPerSecond", &ProProcessEnergy::wakeupsPerSecond},
  };
};

/// The form in which the helper tool answers, a session stores and an export carries the sample.
template <>
struct RecordFields<ProTelemetrySnapshot> {
  static constexpr std::tuple values{
      RecordField{"anePowerWatts", &ProTelemetrySnapshot::anePowerWatts},
      RecordField{"cpuPowerWatts", &ProTelemetrySnapshot::cpuPowerWatts},
      RecordField{"error", &ProTelemetrySnapshot::error},
      RecordField{"gpuPowerWatts", &ProTelemetrySnapshot::gpuPowerWatts},
      RecordField{"isAvailable", &ProTelemetrySnapshot::isAvailable},
      RecordField{"processes", &ProTelemetrySnapshot::processes},
      RecordField{"rawSampleSummary", &ProTelemetrySnapshot::rawSampleSummary},
      RecordField{"sampleIntervalMilliseconds", &ProTelemetrySnapshot::sampleIntervalMilliseconds},
      RecordField{"sampledAt", &ProTelemetrySnapshot::sampledAt},
      RecordField{"source", &ProTelemetrySnapshot::source},
  };
};

}  // namespace quorvex
