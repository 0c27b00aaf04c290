#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quorvex {

/// Cumulative resource counters of one process.
struct ProcessResources {
  std::uint64_t userTime = 0;          ///< nanoseconds
  std::uint64_t systemTime = 0;        ///< nanoseconds
  std::uint64_t idleWakeups = 0;       ///< wakeups of an idle package
  std::uint64_t interruptWakeups = 0;  ///< wakeups by interrupts
  std::uint64_t bytesRead = 0;         ///< bytes read from storage
  std::uint64_t bytesWritten = 0;      ///< bytes written to storage
  std::uint64_t energy = 0;            ///< nanojoules; 0 when the system counts none

  bool operator==(const ProcessResources&) const = default;
};

/// The process table. Any thread.
class ProcessTable {
 public:
  ProcessTable() = default;
  ProcessTable(const ProcessTable&) = delete;
  ProcessTable& operator=(const ProcessTable&) = delete;
  virtual ~ProcessTable() = default;

  /// Fills `buffer` with process ids and gives the number of bytes filled, which equals the
  /// buffer's size when the list may have been cut. Below 1 on failure.
  [[nodiscard]] virtual std::int64_t listProcessIDs(std::span<std::int32_t> buffer) = 0;
  /// A process's counters; none when it is gone or not accessible.
  [[nodiscard]] virtual std::optional<ProcessResources> resources(std::int32_t pid) = 0;
  /// Fills `buffer` with the process's name and gives its length in bytes; below 1 on failure.
  [[nodiscard]] virtual std::int64_t processName(std::int32_t pid, std::span<char> buffer) = 0;
};

}  // namespace quorvex
