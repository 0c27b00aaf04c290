#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// A stretch of continuous unplugged draw.
struct PowerSessionBatteryRun {
  std::int64_t index = 0;        ///< identity; from 0, with holes where a stretch had no percentage
  Date startedAt{};              ///< first sample
  Date endedAt{};                ///< last sample
  double durationSeconds = 0.0;  ///< never negative
  std::int64_t sampleCount = 0;
  std::int64_t batteryPercentStart = 0;  ///< of the first sample
  std::int64_t batteryPercentEnd = 0;    ///< of the last sample
  std::int64_t batteryPercentDelta = 0;  ///< end minus start, negative while draining
  double averageDrawWatts = 0.0;         ///< plain mean, not weighted by time
  std::optional<double> totalWattHours;  ///< absent with fewer than two samples
  /// The run's energy scaled to a drop of 100 points; only on a strong run.
  std::optional<double> estimatedUsableFullBatteryWattHours;
  std::string confidence;  ///< "strong" or "low"

  bool operator==(const PowerSessionBatteryRun&) const = default;
};

/// How the battery's charge moved over a session, and what a full battery would deliver.
struct PowerSessionBatteryCycleInsights {
  std::int64_t totalPercentGained = 0;      ///< sum of all upward steps
  std::int64_t totalPercentDischarged = 0;  ///< sum of all downward steps, not negative
  std::int64_t netPercent = 0;              ///< last percentage minus first
  std::optional<std::int64_t> lowestPercent;
  std::optional<std::int64_t> highestPercent;
  std::vector<PowerSessionBatteryRun> dischargeRuns;  ///< strong and low ones
  /// Mean of the strong runs' estimates, each counted once; absent when there are none.
  std::optional<double> estimatedUsableFullBatteryWattHours;
  /// From the battery's own capacities at the session's mean voltage; absent without a reading.
  std::optional<double> reportedFullChargeCapacityWattHours;
  std::optional<double> reportedDesignCapacityWattHours;
  std::optional<std::int64_t> reportedHealthPercent;  ///< of the session's first battery reading
  /// "derived-from-continuous-discharge" or "insufficient-continuous-discharge".
  std::string confidence;
  std::optional<std::string> note;  ///< present only with the second confidence

  bool operator==(const PowerSessionBatteryCycleInsights&) const = default;
};

template <>
struct RecordFields<PowerSessionBatteryRun> {
  static constexpr std::tuple values{
      RecordField{"averageDrawWatts", &PowerSessionBatteryRun::averageDrawWatts},
      RecordField{"batteryPercentDelta", &PowerSessionBatteryRun::batteryPercentDelta},
      RecordField{"batteryPercentEnd", &PowerSessionBatteryRun::batteryPercentEnd},
      RecordField{"batteryPercentStart", &PowerSessionBatteryRun::batteryPercentStart},
      RecordField{"confidence", &PowerSessionBatteryRun::confidence},
      RecordField{"durationSeconds", &PowerSessionBatteryRun::durationSeconds},
      RecordField{"endedAt", &PowerSessionBatteryRun::endedAt},
      RecordField{"estimatedUsableFullBatteryWattHours",
                  &PowerSessionBatteryRun::estimatedUsableFullBatteryWattHours},
      RecordField{"index", &PowerSessionBatteryRun::index},
      RecordField{"sampleCount", &PowerSessionBatteryRun::sampleCount},
      RecordField{"startedAt", &PowerSessionBatteryRun::startedAt},
      RecordField{"totalWattHours", &PowerSessionBatteryRun::totalWattHours},
  };
};

template <>
struct RecordFields<PowerSessionBatteryCycleInsights> {
  static constexpr std::tuple values{
      RecordField{"confidence", &PowerSessionBatteryCycleInsights::confidence},
      RecordField{"dischargeRuns", &PowerSessionBatteryCycleInsights::dischargeRuns},
      RecordField{"estimatedUsableFullBatteryWattHours",
                  &PowerSessionBatteryCycleInsights::estimatedUsableFullBatteryWattHours},
      RecordField{"highestPercent", &PowerSessionBatteryCycleInsights::highestPercent},
      RecordField{"lowestPercent", &PowerSessionBatteryCycleInsights::lowestPercent},
      RecordField{"netPercent", &PowerSessionBatteryCycleInsights::netPercent},
      RecordField{"note", &PowerSessionBatteryCycleInsights::note},
      RecordField{"reportedDesignCapacityWattHours",
                  &PowerSessionBatteryCycleInsights::reportedDesignCapacityWattHours},
      RecordField{"reportedFullChargeCapacityWattHours",
                  &PowerSessionBatteryCycleInsights::reportedFullChargeCapacityWattHours},
      RecordField{"reportedHealthPercent",
                  &PowerSessionBatteryCycleInsights::reportedHealthPercent},
      RecordField{"totalPercentDischarged",
                  &PowerSessionBatteryCycleInsights::totalPercentDischarged},
      RecordField{"totalPercentGained", &PowerSessionBatteryCycleInsights::totalPercentGained},
  };
};

}  // namespace quorvex
