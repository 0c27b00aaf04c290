#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Clock.h"
#include "ProcessActivityInfo.h"
#include "ProcessTable.h"

namespace quorvex {

/// What one process has used since it began, at the moment of one walk of the process table. A sum
/// of two counters that does not fit 64 bits stays at the largest value.
struct ProcessSample {
  std::int32_t pid = 0;                  ///< process id, above 0
  std::string name;                      ///< never empty
  std::uint64_t cpuTimeNanoseconds = 0;  ///< user and system time
  std::uint64_t wakeups = 0;             ///< of an idle package and by interrupts
  std::uint64_t diskBytes = 0;           ///< read from and written to storage
  std::uint64_t energyNanojoules = 0;    ///< 0 when the system counts none

  bool operator==(const ProcessSample&) const = default;
};

/// Ranks the processes that cost the machine most, without privileges. Two walks of the process
/// table, a short time apart, give rates, and the rates a score; the score only orders processes
/// and is neither watts nor a percentage. No process is left out by its name, this program's
/// neither. Failures show as an empty list. Stateless; any thread.
class ProcessActivityService {
 public:
  /// Samples of distinct processes in ascending order of pid: a map from pid to sample.
  using SamplesByPID = std::vector<ProcessSample>;

  /// Seconds between the two walks, whatever shorter time is asked for.
  static constexpr double shortestInterval = 0.1;
  /// A process is listed only with a score above this.
  static constexpr double leastScore = 0.05;
  /// How many processes the program asks for, and the seconds that it gives them.
  static constexpr std::int64_t usualLimit = 5;
  static constexpr double usualInterval = 0.35;

  ProcessActivityService(ProcessTable& processTable, Clock& clock)
      : processTable_(&processTable), clock_(&clock) {}

  /// At most `limit` processes, highest score first; a `limit` below 1 gives none. Blocks the
  /// calling thread for `interval` seconds, but at least `shortestInterval`; it does not wait at
  /// all when the first walk finds no process.
  [[nodiscard]] std::vector<ProcessActivityInfo> sampleTopProcesses(
      std::int64_t limit = usualLimit, double interval = usualInterval) const;

  /// All process ids in the system's order; empty when the list fails or is larger than the largest
  /// buffer.
  [[nodiscard]] std::vector<std::int32_t> processIDs() const;

  /// The process's name as valid UTF-8; "PID {pid}" when it has none.
  [[nodiscard]] std::string processName(std::int32_t pid) const;

  /// One walk of the process table; processes whose counters cannot be read are left out.
  [[nodiscard]] SamplesByPID processSamplesByPID() const;

  /// What the processes that are in both walks used in the `seconds` (above 0) between them: those
  /// that score above `leastScore`, highest first, equal scores by ascending pid. A counter that
  /// fell, since the pid was used again, counts as not moved.
  [[nodiscard]] static std::vector<ProcessActivityInfo> rankedActivity(
      std::span<const ProcessSample> first, std::span<const ProcessSample> second, double seconds);

 private:
  ProcessTable* processTable_;
  Clock* clock_;
};

}  // namespace quorvex
