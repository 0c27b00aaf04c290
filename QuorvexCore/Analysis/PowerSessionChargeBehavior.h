#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// A stretch of charging; short interruptions within the gap limit do not end it.
struct PowerSessionChargeRun {
  std::int64_t index = 0;       ///< identity; from 0
  Date startedAt{};             ///< first sample
  Date endedAt{};               ///< last sample
  double elapsedSeconds = 0.0;  ///< never negative
  std::int64_t sampleCount = 0;
  std::optional<std::int64_t> batteryPercentStart;  ///< first present one of the run
  std::optional<std::int64_t> batteryPercentEnd;    ///< last present one of the run
  std::optional<double> averageChargeInputWatts;    ///< plain mean, not weighted by time
  std::string confidence;                           ///< "observed" or "low-sample"

  bool operator==(const PowerSessionChargeRun&) const = default;
};

/// The first charging sample of a session at or past a charge.
struct PowerSessionChargeMilestone {
  std::int64_t percent = 0;  ///< identity; the target: 70, 80, 90, 95 or 100
  Date timestamp{};
  std::optional<double> inputWatts;

  bool operator==(const PowerSessionChargeMilestone&) const = default;
};

/// How the battery was charged. A new record is the empty one.
struct PowerSessionChargeBehavior {
  std::vector<PowerSessionChargeRun> chargeRuns;
  std::vector<PowerSessionChargeMilestone> taperMilestones;  ///< ascending by `percent`
  std::string note = "Battery charge input is separate from discharge/system draw.";

  /// The value of a session without charging samples.
  [[nodiscard]] static PowerSessionChargeBehavior empty() { return {}; }

  bool operator==(const PowerSessionChargeBehavior&) const = default;
};

template <>
struct RecordFields<PowerSessionChargeRun> {
  static constexpr std::tuple values{
      RecordField{"averageChargeInputWatts", &PowerSessionChargeRun::averageChargeInputWatts},
      RecordField{"batteryPercentEnd", &PowerSessionChargeRun::batteryPercentEnd},
      RecordField{"batteryPercentStart", &PowerSessionChargeRun::batteryPercentStart},
      RecordField{"confidence", &PowerSessionChargeRun::confidence},
      RecordField{"elapsedSeconds", &PowerSessionChargeRun::elapsedSeconds},
      RecordField{"endedAt", &PowerSessionChargeRun::endedAt},
      RecordField{"index", &PowerSessionChargeRun::index},
      RecordField{"sampleCount", &PowerSessionChargeRun::sampleCount},
      RecordField{"startedAt", &PowerSessionChargeRun::startedAt},
  };
};

template <>
struct RecordFields<PowerSessionChargeMilestone> {
  static constexpr std::tuple values{
      RecordField{"inputWatts", &PowerSessionChargeMilestone::inputWatts},
      RecordField{"percent", &PowerSessionChargeMilestone::percent},
      RecordField{"timestamp", &PowerSessionChargeMilestone::timestamp},
  };
};

template <>
struct RecordFields<PowerSessionChargeBehavior> {
  static constexpr std::tuple values{
      RecordField{"chargeRuns", &PowerSessionChargeBehavior::chargeRuns},
      RecordField{"note", &PowerSessionChargeBehavior::note},
      RecordField{"taperMilestones", &PowerSessionChargeBehavior::taperMilestones},
  };
};

}  // namespace quorvex
