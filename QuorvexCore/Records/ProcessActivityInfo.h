#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace quorvex {

/// One process in the activity ranking, from two reads of its resource counters.
struct ProcessActivityInfo {
  ProcessActivityInfo() = default;
  /// Takes the process id once and uses it as the identity too.
  ProcessActivityInfo(std::int32_t processID, std::string processName, double cpu, double wakeups,
                      double diskBytes, std::optional<double> energyWatts, double score)
      : id(processID),
        pid(processID),
        name(std::move(processName)),
        cpuPercent(cpu),
        wakeupsPerSecond(wakeups),
        diskBytesPerSecond(diskBytes),
        energyWattsEstimate(energyWatts),
        impactScore(score) {}

  std::int32_t id = 0;                        ///< identity in lists, always equal to `pid`
  std::int32_t pid = 0;                       ///< process id
  std::string name;                           ///< process name
  double cpuPercent = 0.0;                    ///< percent of one core, not capped
  double wakeupsPerSecond = 0.0;              ///< wakeups per second
  double diskBytesPerSecond = 0.0;            ///< bytes read and written per second
  std::optional<double> energyWattsEstimate;  ///< watts, best effort; absent without a counter
  double impactScore = 0.0;                   ///< relative score: neither watts nor percent

  bool operator==(const ProcessActivityInfo&) const = default;
};

}  // namespace quorvex
