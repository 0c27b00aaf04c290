#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Date.h"
#include "Observation.h"

namespace quorvex {

/// What one observation says about the flow at the battery's terminals. Discharge and charge input
/// are different readings of the same terminals; at most one of them is present.
struct BatteryPoint {
  Date timestamp{};
  std::optional<std::int64_t> percent;
  /// Present when the source is the battery's discharge and the snapshot has the watts of it.
  std::optional<double> dischargeWatts;
  /// Present when the source is the charge input and the snapshot has the watts of it.
  std::optional<double> chargeInputWatts;

  bool operator==(const BatteryPoint&) const = default;
};

/// One point an observation, in their order. Windows, discharge runs and charge runs all walk this
/// list: it is an eighth of the observations' size.
[[nodiscard]] std::vector<BatteryPoint> batteryTrack(std::span<const Observation> observations);

/// What a run of battery points begins and ends with, as far as it has percentages.
struct PercentSpan {
  std::optional<std::int64_t> start;  ///< first present percentage
  std::optional<std::int64_t> end;    ///< last present percentage
};

[[nodiscard]] PercentSpan percentSpan(std::span<const BatteryPoint> points);

/// Seconds from the first to the last point, never negative; 0 without points.
[[nodiscard]] double durationSeconds(std::span<const BatteryPoint> points);

/// Energy of a run's discharge watts.
struct DischargeEnergy {
  std::optional<double> averageWatts;    ///< plain mean; absent without discharge watts
  std::optional<double> totalWattHours;  ///< absent with fewer than two
};

[[nodiscard]] DischargeEnergy dischargeEnergy(std::span<const BatteryPoint> points);

}  // namespace quorvex
