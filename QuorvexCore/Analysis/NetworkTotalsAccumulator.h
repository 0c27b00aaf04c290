#pragma once

#include <cstdint>
#include <optional>

#include "Date.h"

namespace quorvex {

/// Integrates the total rates of the interfaces over a session. Samples come in ascending order of
/// time.
class NetworkTotalsAccumulator {
 public:
  /// `maxSampleGap`: seconds across which rates are not integrated; absent: there is no limit.
  explicit NetworkTotalsAccumulator(std::optional<double> maxSampleGap = std::nullopt)
      : maxSampleGap_(maxSampleGap) {}

  /// A sample's rates hold since the sample before it. The bytes of each interval are cut to a
  /// whole number; negative rates add nothing, and totals stay at the largest value.
  void ingest(double bytesInPerSec, double bytesOutPerSec, Date timestamp);

  [[nodiscard]] std::uint64_t totalBytesIn() const { return totalBytesIn_; }
  [[nodiscard]] std::uint64_t totalBytesOut() const { return totalBytesOut_; }
  /// Greatest rate; absent unless above 0.
  [[nodiscard]] std::optional<double> peakBytesInPerSec() const;
  [[nodiscard]] std::optional<double> peakBytesOutPerSec() const;

 private:
  std::optional<double> maxSampleGap_;
  std::optional<Date> lastTimestamp_;
  std::uint64_t totalBytesIn_ = 0;
  std::uint64_t totalBytesOut_ = 0;
  double peakBytesInPerSec_ = 0.0;
  double peakBytesOutPerSec_ = 0.0;
};

}  // namespace quorvex
