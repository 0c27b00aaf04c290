#pragma once

#include <optional>

#include "WattHours.h"

namespace quorvex {

/// Adds up the energy between power samples as they come: the one integration behind summaries,
/// live figures and segments. An interval that exceeds the limit is left out and noted; one that is
/// not above 0 seconds adds nothing.
class WattHoursAccumulator {
 public:
  /// `maxGap`: seconds across which energy is not integrated; absent: there is no limit.
  explicit WattHoursAccumulator(std::optional<double> maxGap = std::nullopt) : maxGap_(maxGap) {}

  /// Adds the interval since the sample before.
  void ingest(WattPoint point);

  /// Energy in watt-hours so far; 0 without any interval.
  [[nodiscard]] double wattHours() const { return wattHours_; }
  /// The same, but absent when no interval above 0 seconds was used.
  [[nodiscard]] std::optional<double> coveredWattHours() const {
    return hasInterval_ ? std::optional{wattHours_} : std::nullopt;
  }
  /// Whether an interval exceeded the limit.
  [[nodiscard]] bool hasGap() const { return hasGap_; }

 private:
  std::optional<double> maxGap_;
  std::optional<WattPoint> last_;
  double wattHours_ = 0.0;
  bool hasInterval_ = false;
  bool hasGap_ = false;
};

}  // namespace quorvex
