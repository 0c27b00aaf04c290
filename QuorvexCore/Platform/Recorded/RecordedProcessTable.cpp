#include "RecordedProcessTable.h"

#include <algorithm>

namespace quorvex {

std::int64_t RecordedProcessTable::listProcessIDs(std::span<std::int32_t> buffer) {
  const RecordedProcessList* list = processes_->value(clock_->positionInPass());
  if (list == nullptr) {
    return 0;
  }
  const std::size_t count = std::min(buffer.size(), list->processes.size());
  std::transform(list->processes.begin(),
                 list->processes.begin() + static_cast<std::ptrdiff_t>(count), buffer.begin(),
                 [](const RecordedProcess& process) { return process.pid; });
  return static_cast<std::int64_t>(count * sizeof(std::int32_t));
}

std::optional<ProcessResources> RecordedProcessTable::resources(std::int32_t pid) {
  const auto position = clock_->positionInPass();
  const auto* entry = processes_->entry(position);
  const RecordedProcess* process =
      entry != nullptr && entry->value ? entry->value->find(pid) : nullptr;
  if (process == nullptr || !process->isAccessible) {
    return std::nullopt;
  }
  const auto sinceFrame = position - entry->at;
  return ProcessResources{.userTime = process->userTime.value(sinceFrame),
                          .systemTime = process->systemTime.value(sinceFrame),
                          .idleWakeups = process->idleWakeups.value(sinceFrame),
                          .interruptWakeups = process->interruptWakeups.value(sinceFrame),
                          .bytesRead = process->bytesRead.value(sinceFrame),
                          .bytesWritten = process->bytesWritten.value(sinceFrame),
                          .energy = process->energy.value(sinceFrame)};
}

std::int64_t RecordedProcessTable::processName(std::int32_t pid, std::span<char> buffer) {
  const RecordedProcessList* list = processes_->value(clock_->positionInPass());
  const RecordedProcess* process = list != nullptr ? list->find(pid) : nullptr;
  if (process == nullptr || !process->name || buffer.empty()) {
    return 0;
  }
  const std::size_t length = std::min(process->name->size(), buffer.size() - 1);
  std::copy_n(process->name->begin(), length, buffer.begin());
  buffer[length] = '\0';
  return static_cast<std::int64_t>(length);
}

}  // namespace quorvex
