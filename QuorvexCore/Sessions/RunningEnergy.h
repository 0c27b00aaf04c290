#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Date.h"
#include "PowerSegmentAccumulator.h"
#include "SessionEnergy.h"
#include "WattHoursAccumulator.h"

namespace quorvex {

/// Average power and energy of a session that goes on: the same figures as the summary of its
/// samples so far, at a cost that does not grow with their number. Only a sample that is earlier
/// than one before, since the clock was set back, costs a pass over all. One thread.
class RunningEnergy {
 public:
  /// Of a session that is not ended. `sampleInterval`: seconds, as it was asked for.
  RunningEnergy(Date startedAt, double sampleInterval);

  /// Adds a sample. The text of its kind must outlive this.
  void ingest(const PowerSamplePoint& point);

  /// Samples so far.
  [[nodiscard]] std::int64_t sampleCount() const {
    return static_cast<std::int64_t>(points_.size());
  }
  /// What the session's summary says of average and energy.
  [[nodiscard]] SessionEnergy energy() const;

 private:
  /// What the figures need of one sample.
  struct Point {
    Date timestamp;
    std::optional<double> watts;
    std::string_view sourceKind;
    std::optional<bool> acConnected;
  };

  void advance(const Point& point);
  void finishSegment();

  Date startedAt_;
  double maxGap_;
  std::vector<Point> points_;  ///< in ascending order of time
  SessionWatts watts_;         ///< without the energy, which `wattHours_` adds up
  WattHoursAccumulator wattHours_;
  std::optional<PowerSegmentBuilder> segment_;
  /// Of the finished segments those that the figures depend on: the first, one of another kind, and
  /// one whose energy is withheld.
  std::vector<PowerSessionPowerSegment> tellingSegments_;
};

}  // namespace quorvex
