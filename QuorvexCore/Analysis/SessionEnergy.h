#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "PowerSessionPowerSegment.h"

namespace quorvex {

/// Average power and energy of a whole session, as far as they may be told.
struct SessionEnergy {
  std::optional<double> averageWatts;
  std::optional<double> totalWattHours;
  std::optional<std::string> note;  ///< why both are withheld

  bool operator==(const SessionEnergy&) const = default;
};

/// What the watt samples of a session add up to.
struct SessionWatts {
  std::int64_t sampleCount = 0;          ///< samples with watts
  double sum = 0.0;                      ///< of their watts
  std::optional<double> totalWattHours;  ///< over the intervals that were used; absent without any
  bool hasGap = false;                   ///< an interval exceeded the limit
  double durationSeconds = 0.0;          ///< of the session
};

/// Withholds average and energy where they would mix kinds of power source or cross a gap. The
/// average is weighted by time over the whole session where the energy is known, otherwise it is
/// the mean of the samples.
[[nodiscard]] SessionEnergy sessionEnergy(const SessionWatts& watts,
                                          std::span<const PowerSessionPowerSegment> segments);

}  // namespace quorvex
