#pragma once

#include <optional>

namespace quorvex {

/// The silicon energy model of one poll, from the IOReport energy channels. All powers are watts
/// and never negative. Copied freely between threads.
struct PowerMetrics {
  double cpuPower = 0.0;                  ///< CPU clusters
  double gpuPower = 0.0;                  ///< GPU
  double anePower = 0.0;                  ///< neural engine
  double ramPower = 0.0;                  ///< DRAM
  double systemPower = 0.0;               ///< sum of the four: not the whole machine's draw
  double cpuUsagePercent = 0.0;           ///< CPU load in percent; 0 when the source has none
  std::optional<double> gpuUsagePercent;  ///< GPU load in percent; absent when not measured
  bool siliconChannelsComplete = false;   ///< a value was found for each of the four channels

  bool operator==(const PowerMetrics&) const = default;
};

}  // namespace quorvex
