#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

#include "Date.h"
#include "Observation.h"

/// Decoded samples as a session would have stored them, to be changed by a test in the one field
/// that it is about. Times are seconds after `start`.
namespace quorvex::observations {

/// 2026-03-01T08:00:00Z
inline constexpr Date start{std::chrono::seconds{1'772'352'000}};

inline Date at(double seconds) {
  return dateByAdding(start, seconds);
}

/// A sample whose snapshot does not decode, with no optional column.
inline Observation bare(double seconds) {
  Observation observation;
  observation.columns.timestamp = at(seconds);
  observation.columns.elapsedSeconds = seconds;
  return observation;
}

/// The same with a snapshot of a desktop: no battery, no power record, nothing hot.
inline Observation desktop(double seconds) {
  Observation observation = bare(seconds);
  observation.snapshot.emplace().thermalState = "nominal";
  return observation;
}

/// A laptop's snapshot at `percent` and 12 V; the columns say the same.
inline Observation laptop(double seconds, std::int64_t percent, bool acConnected) {
  Observation observation = desktop(seconds);
  observation.columns.batteryPercent = percent;
  observation.columns.acConnected = acConnected;
  observation.snapshot->battery = ObservedBattery{.chargePercent = percent,
                                                  .maxCapacity = 6000,
                                                  .designCapacity = 6250,
                                                  .healthPercent = 96,
                                                  .voltage = 12.0,
                                                  .acConnected = acConnected};
  return observation;
}

/// A laptop on battery that draws `watts`.
inline Observation discharging(double seconds, std::int64_t percent, double watts) {
  Observation observation = laptop(seconds, percent, false);
  observation.columns.totalWatts = watts;
  observation.snapshot->battery->wattage = -watts;
  observation.snapshot->batteryDischargeWatts = watts;
  observation.snapshot->powerSourceKind = "batteryDischarge";
  observation.snapshot->totalWatts = watts;
  return observation;
}

/// A laptop on AC whose battery takes `watts`.
inline Observation charging(double seconds, std::int64_t percent, double watts) {
  Observation observation = laptop(seconds, percent, true);
  observation.columns.totalWatts = watts;
  observation.snapshot->battery->wattage = watts;
  observation.snapshot->battery->isCharging = true;
  observation.snapshot->batteryChargeInputWatts = watts;
  observation.snapshot->powerSourceKind = "batteryChargeInput";
  observation.snapshot->totalWatts = watts;
  return observation;
}

/// A laptop on AC whose battery rests.
inline Observation idleOnAC(double seconds, std::int64_t percent) {
  return laptop(seconds, percent, true);
}

inline void removePercent(Observation& observation) {
  observation.columns.batteryPercent.reset();
  if (observation.snapshot) {
    observation.snapshot->battery.reset();
  }
}

/// Without the snapshot, as if its blob did not decode.
inline Observation undecodable(Observation observation) {
  observation.snapshot.reset();
  return observation;
}

/// The rows, which must outlive the observation, as those of a privileged snapshot.
inline Observation withProRows(Observation observation, std::span<const ObservedProcess> rows) {
  observation.hasProTelemetry = true;
  observation.processes = rows;
  return observation;
}

/// The rows, which must outlive the observation, as those of the process activity.
inline Observation withActivityRows(Observation observation,
                                    std::span<const ObservedProcess> rows) {
  observation.hasProTelemetry = false;
  observation.processes = rows;
  return observation;
}

}  // namespace quorvex::observations
