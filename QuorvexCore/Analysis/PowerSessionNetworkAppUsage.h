#pragma once

#include <cstdint>
#include <string>

#include "RecordFields.h"

namespace quorvex {

/// Traffic of all processes of one name and attribution source, as it was observed: increases of
/// their counters between neighbouring samples.
struct PowerSessionNetworkAppUsage {
  std::string name;
  std::string source;               ///< "nettop" or "none"
  std::uint64_t totalBytesIn = 0;   ///< bytes
  std::uint64_t totalBytesOut = 0;  ///< bytes
  double peakBytesInPerSec = 0.0;   ///< of one process in one sample, bytes per second
  double peakBytesOutPerSec = 0.0;  ///< of one process in one sample, bytes per second
  std::int64_t sampleCount = 0;     ///< process rows, not samples

  bool operator==(const PowerSessionNetworkAppUsage&) const = default;
};

template <>
struct RecordFields<PowerSessionNetworkAppUsage> {
  static constexpr std::tuple values{
      RecordField{"name", &PowerSessionNetworkAppUsage::name},
      RecordField{"peakBytesInPerSec", &PowerSessionNetworkAppUsage::peakBytesInPerSec},
      RecordField{"peakBytesOutPerSec", &PowerSessionNetworkAppUsage::peakBytesOutPerSec},
      RecordField{"sampleCount", &PowerSessionNetworkAppUsage::sampleCount},
      RecordField{"source", &PowerSessionNetworkAppUsage::source},
      RecordField{"totalBytesIn", &PowerSessionNetworkAppUsage::totalBytesIn},
      RecordField{"totalBytesOut", &PowerSessionNetworkAppUsage::totalBytesOut},
  };
};

}  // namespace quorvex
