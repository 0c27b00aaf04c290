#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Date.h"
#include "RecordFields.h"

namespace quorvex {

/// A run of consecutive samples on one power source. Only within a run are watts comparable.
struct PowerSessionPowerSegment {
  std::int64_t index = 0;           ///< identity; from 0, in time order
  std::string sourceKind;           ///< kind of power reading, "unavailable" without one
  std::string sourceLabel;          ///< of the run's first sample
  std::optional<bool> acConnected;  ///< absent without a battery
  Date startedAt{};                 ///< first sample
  Date endedAt{};                   ///< last sample
  double durationSeconds = 0.0;     ///< never negative
  std::int64_t sampleCount = 0;
  std::int64_t wattSampleCount = 0;
  /// Weighted by time where the energy is known, otherwise the plain mean.
  std::optional<double> averageWatts;
  std::optional<double> minWatts;
  std::optional<double> maxWatts;
  std::optional<double> totalWattHours;  ///< absent below two watt samples and across a gap
  std::optional<std::int64_t> batteryPercentStart;  ///< first present one
  std::optional<std::int64_t> batteryPercentEnd;    ///< last present one
  std::optional<std::int64_t> batteryPercentDelta;  ///< end minus start

  bool operator==(const PowerSessionPowerSegment&) const = default;
};

template <>
struct RecordFields<PowerSessionPowerSegment> {
  static constexpr std::tuple values{
      RecordField{"acConnected", &PowerSessionPowerSegment::acConnected},
      RecordField{"averageWatts", &PowerSessionPowerSegment::averageWatts},
      RecordField{"batteryPercentDelta", &PowerSessionPowerSegment::batteryPercentDelta},
      RecordField{"batteryPercentEnd", &PowerSessionPowerSegment::batteryPercentEnd},
      RecordField{"batteryPercentStart", &PowerSessionPowerSegment::batteryPercentStart},
      RecordField{"durationSeconds", &PowerSessionPowerSegment::durationSeconds},
      RecordField{"endedAt", &PowerSessionPowerSegment::endedAt},
      RecordField{"index", &PowerSessionPowerSegment::index},
      RecordField{"maxWatts", &PowerSessionPowerSegment::maxWatts},
      RecordField{"minWatts", &PowerSessionPowerSegment::minWatts},
      RecordField{"sampleCount", &PowerSessionPowerSegment::sampleCount},
      RecordField{"sourceKind", &PowerSessionPowerSegment::sourceKind},
      RecordField{"sourceLabel", &PowerSessionPowerSegment::sourceLabel},
      RecordField{"startedAt", &PowerSessionPowerSegment::startedAt},
      RecordField{"totalWattHours", &PowerSessionPowerSegment::totalWattHours},
      RecordField{"wattSampleCount", &PowerSessionPowerSegment::wattSampleCount},
  };
};

}  // namespace quorvex
