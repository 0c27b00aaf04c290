#pragma once

#include "ProcessTable.h"
#include "RecordedClock.h"
#include "Track.h"

namespace quorvex {

/// The recorded process table. Any thread.
class RecordedProcessTable final : public ProcessTable {
 public:
  RecordedProcessTable(const MachineFile& file, RecordedClock& clock)
      : processes_(&file.processes), clock_(&clock) {}

  [[nodiscard]] std::int64_t listProcessIDs(std::span<std::int32_t> buffer) override;
  [[nodiscard]] std::optional<ProcessResources> resources(std::int32_t pid) override;
  /// Cuts a name that does not fit, and closes it with a NUL as the kernel does.
  [[nodiscard]] std::int64_t processName(std::int32_t pid, std::span<char> buffer) override;

 private:
  const Track<RecordedProcessList>* processes_;
  RecordedClock* clock_;
};

}  // namespace quorvex
