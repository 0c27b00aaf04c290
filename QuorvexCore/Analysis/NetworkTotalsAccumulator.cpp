#include "NetworkTotalsAccumulator.h"

#include <algorithm>
#include <limits>

#include "CheckedArithmetic.h"

namespace quorvex {

namespace {

/// Rates are read from a file: whatever they are, drawing conclusions from them does not fail.
std::uint64_t wholeBytes(double bytes) {
  constexpr double limit = 18446744073709551616.0;
  if (!(bytes > 0.0)) {
    return 0;
  }
  return bytes >= limit ? std::numeric_limits<std::uint64_t>::max()
                        : static_cast<std::uint64_t>(bytes);
}

std::optional<double> aboveZero(double peak) {
  return peak > 0.0 ? std::optional{peak} : std::nullopt;
}

}  // namespace

void NetworkTotalsAccumulator::ingest(double bytesInPerSec, double bytesOutPerSec, Date timestamp) {
  peakBytesInPerSec_ = std::max(peakBytesInPerSec_, bytesInPerSec);
  peakBytesOutPerSec_ = std::max(peakBytesOutPerSec_, bytesOutPerSec);
  const double seconds = lastTimestamp_ ? secondsBetween(*lastTimestamp_, timestamp) : 0.0;
  if (seconds > 0.0 && (!maxSampleGap_ || seconds <= *maxSampleGap_)) {
    totalBytesIn_ = saturatingAdd(totalBytesIn_, wholeBytes(bytesInPerSec * seconds));
    totalBytesOut_ = saturatingAdd(totalBytesOut_, wholeBytes(bytesOutPerSec * seconds));
  }
  lastTimestamp_ = timestamp;
}

std::optional<double> NetworkTotalsAccumulator::peakBytesInPerSec() const {
  return aboveZero(peakBytesInPerSec_);
}

std::optional<double> NetworkTotalsAccumulator::peakBytesOutPerSec() const {
  return aboveZero(peakBytesOutPerSec_);
}

}  // namespace quorvex
