#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "Date.h"

namespace quorvex {

/// The scalar columns of one stored sample. Each is written from the same state as the sample's
/// snapshot and stands in for it where the snapshot does not decode.
struct SampleColumns {
  Date timestamp{};                            ///< the sample's time, to the nanosecond
  double elapsedSeconds = 0.0;                 ///< since the session's start, never negative
  std::optional<double> totalWatts;            ///< of the primary reading; absent without one
  std::optional<std::int64_t> batteryPercent;  ///< absent without a battery
  std::optional<bool> acConnected;             ///< absent without a battery
  std::int64_t thermalPressure = 0;            ///< 0 to 4
  std::optional<std::int64_t> maxFanRPM;       ///< absent without fans
  std::optional<double> maxTemperature;        ///< degrees Celsius; absent without sensors

  bool operator==(const SampleColumns&) const = default;
};

/// One stored sample as it lies in the store: columns and undecoded blobs. The views belong to
/// whoever made it.
struct StoredSample {
  SampleColumns columns;
  std::string_view snapshotData;                        ///< JSON of a `SystemPowerStateDTO`
  std::optional<std::string_view> processActivityData;  ///< JSON array of `ProcessActivityDTO`
  std::optional<std::string_view> proTelemetryData;     ///< JSON of a `ProTelemetrySnapshot`
};

/// What conclusions need of a stored battery reading; fields as in `BatteryInfoDTO`.
struct ObservedBattery {
  std::int64_t chargePercent = 0;
  std::int64_t maxCapacity = 0;
  std::int64_t designCapacity = 0;
  std::int64_t healthPercent = 0;
  double voltage = 0.0;
  double wattage = 0.0;
  bool isCharging = false;
  bool acConnected = false;

  bool operator==(const ObservedBattery&) const = default;
};

/// One row of per-process network counters.
struct ObservedNetworkProcess {
  std::int32_t pid = 0;
  std::string_view name;
  bool isFromNettop = false;  ///< the row's own attribution source says "nettop"
  std::uint64_t bytesIn = 0;
  std::uint64_t bytesOut = 0;
  double bytesInPerSec = 0.0;
  double bytesOutPerSec = 0.0;
};

/// The network of one stored snapshot.
struct ObservedNetwork {
  double totalBytesInPerSec = 0.0;
  double totalBytesOutPerSec = 0.0;
  std::string_view attributionSource;
  std::span<const ObservedNetworkProcess> processes;
};

/// What conclusions need of a stored snapshot that decoded; fields as in `SystemPowerStateDTO`.
struct ObservedSnapshot {
  std::optional<ObservedBattery> battery;
  std::optional<double> systemPower;      ///< `power.systemPower`; present exactly when `power` is
  bool siliconChannelsComplete = false;   ///< `power.siliconChannelsComplete`
  std::string_view thermalState;          ///< `thermal.state`
  std::optional<std::int64_t> maxFanRPM;  ///< largest `currentRPM` of `fans`
  std::optional<double> maxSensorTemperature;  ///< largest `temperature` of `sensors`
  std::optional<double> unattributedPower;
  std::optional<double> displayAndOtherPower;
  std::optional<double> batteryDischargeWatts;
  std::optional<double> batteryChargeInputWatts;
  std::optional<double> siliconWatts;
  std::optional<std::string_view> powerSourceKind;
  std::optional<std::string_view> powerSourceLabel;
  std::optional<double> totalWatts;
  std::optional<ObservedNetwork> network;
};

/// One process row that scored above 0.
struct ObservedProcess {
  std::string_view name;
  double score = 0.0;
  bool isAggregate = false;  ///< the row says so itself, or its name is a known group of processes
};

/// One stored sample, decoded once for every conclusion that is drawn from it. Texts and rows
/// belong to the `ObservationSet` that it came from. Immutable; any thread.
struct Observation {
  SampleColumns columns;
  std::optional<ObservedSnapshot> snapshot;  ///< absent when the blob does not decode
  /// Whether a privileged snapshot was stored and decodes; `processes` are then its rows, scored by
  /// the first present of energy impact, CPU time and wakeups. Otherwise they are the rows of the
  /// process activity, by impact score.
  bool hasProTelemetry = false;
  Date proTelemetrySampledAt{};                ///< time of that snapshot; says nothing without one
  std::span<const ObservedProcess> processes;  ///< in stored order, scores above 0 only

  /// The snapshot's battery percentage, else the column.
  [[nodiscard]] std::optional<std::int64_t> batteryPercent() const {
    return snapshot && snapshot->battery ? snapshot->battery->chargePercent
                                         : columns.batteryPercent;
  }

  /// The stored kind of power source; without it "batteryDischarge" when the column says unplugged,
  /// else "unavailable".
  [[nodiscard]] std::string_view sourceKind() const {
    if (snapshot && snapshot->powerSourceKind) {
      return *snapshot->powerSourceKind;
    }
    return columns.acConnected == false ? "batteryDischarge" : "unavailable";
  }
};

}  // namespace quorvex
