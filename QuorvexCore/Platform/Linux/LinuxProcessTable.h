#pragma once

#include <cstdint>
#include <string>

#include "ProcessTable.h"

namespace quorvex {

/// The processes under /proc. CPU time comes from the process's "stat" in clock ticks; without it
/// the process counts as gone. Storage bytes come from "io", which is readable for the user's own
/// processes only: 0 otherwise. Each voluntary context switch in "status" counts as one wakeup by
/// an interrupt, as a thread that gave up its processor had to be woken to go on; "status" tells
/// those of the main thread only. There are no idle wakeups and no energy: 0. Any thread.
class LinuxProcessTable final : public ProcessTable {
 public:
  explicit LinuxProcessTable(std::string procRoot);

  /// Ascending process ids. 0 when the folder cannot be read or holds no process.
  [[nodiscard]] std::int64_t listProcessIDs(std::span<std::int32_t> buffer) override;
  [[nodiscard]] std::optional<ProcessResources> resources(std::int32_t pid) override;
  /// The name that the kernel keeps, at most 15 bytes, with a NUL behind it when there is room.
  [[nodiscard]] std::int64_t processName(std::int32_t pid, std::span<char> buffer) override;

 private:
  [[nodiscard]] std::string path(std::int32_t pid, const char* file) const;

  std::string folder_;
  std::uint64_t nanosecondsPerTick_;
};

}  // namespace quorvex
