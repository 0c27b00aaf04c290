#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Date.h"
#include "PowerSessionPowerSegment.h"
#include "WattHoursAccumulator.h"

namespace quorvex {

/// What segmenting needs of one sample. The texts belong to whoever made the point.
struct PowerSamplePoint {
  Date timestamp{};
  std::optional<double> watts;  ///< of the primary reading; absent without one
  std::string_view sourceKind;  ///< kind of power reading, "unavailable" without one
  std::string_view sourceLabel;
  std::optional<bool> acConnected;  ///< absent without a battery
  std::optional<std::int64_t> batteryPercent;

  bool operator==(const PowerSamplePoint&) const = default;
};

/// The segment that samples are being added to.
class PowerSegmentBuilder {
 public:
  /// Of the kind, label, AC state and time of its first sample, which is not yet ingested.
  PowerSegmentBuilder(std::int64_t index, const PowerSamplePoint& first,
                      std::optional<double> maxSampleGap);

  [[nodiscard]] bool continues(const PowerSamplePoint& point) const {
    return point.sourceKind == sourceKind_ && point.acConnected == acConnected_;
  }
  void ingest(const PowerSamplePoint& point);
  [[nodiscard]] PowerSessionPowerSegment materialize() const;

 private:
  std::int64_t index_;
  std::string sourceKind_;
  std::string sourceLabel_;
  std::optional<bool> acConnected_;
  Date startedAt_;
  Date endedAt_;
  std::int64_t sampleCount_ = 0;
  std::int64_t wattSampleCount_ = 0;
  double wattSum_ = 0.0;
  std::optional<double> minWatts_;
  std::optional<double> maxWatts_;
  WattHoursAccumulator energy_;
  std::optional<std::int64_t> batteryPercentStart_;
  std::optional<std::int64_t> batteryPercentEnd_;
};

/// Cuts samples, in ascending order of time, into segments: a new one begins where the kind of the
/// source or the AC state changes, absence of the latter being a state of its own. A change of
/// label alone does not cut.
class PowerSegmentAccumulator {
 public:
  /// `maxSampleGap`: seconds across which energy is not integrated; absent: there is no limit.
  explicit PowerSegmentAccumulator(std::optional<double> maxSampleGap = std::nullopt)
      : maxSampleGap_(maxSampleGap) {}

  void ingest(const PowerSamplePoint& point);

  /// The finished segments and the one that goes on.
  [[nodiscard]] std::vector<PowerSessionPowerSegment> materialize() const;

 private:
  std::optional<double> maxSampleGap_;
  std::optional<PowerSegmentBuilder> current_;
  std::vector<PowerSessionPowerSegment> finished_;
};

}  // namespace quorvex
