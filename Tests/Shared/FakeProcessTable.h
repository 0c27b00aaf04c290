#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "ProcessTable.h"

namespace quorvex::testing {

/// A process table that exists only here. Thread-safe.
class FakeProcessTable final : public ProcessTable {
 public:
  /// One call: what was asked for and, for a list, the buffer's number of entries, else the pid.
  struct Call {
    enum class Kind { list, resources, name } kind;
    std::int64_t argument;
    bool operator==(const Call&) const = default;
  };

  /// Adds a process at the end of the list, or replaces its counters.
  void setProcess(std::int32_t pid, std::string name, ProcessResources resources) {
    const std::scoped_lock lock{mutex_};
    if (!processes_.contains(pid)) {
      ids_.push_back(pid);
    }
    processes_[pid] = {std::move(name), resources};
  }
  void removeProcess(std::int32_t pid) {
    const std::scoped_lock lock{mutex_};
    processes_.erase(pid);
    std::erase(ids_, pid);
  }
  void clear() {
    const std::scoped_lock lock{mutex_};
    processes_.clear();
    ids_.clear();
  }
  /// The ids as the system lists them, whatever processes there are.
  void setIDs(std::vector<std::int32_t> ids) {
    const std::scoped_lock lock{mutex_};
    ids_ = std::move(ids);
  }
  /// What the list call gives in place of the number of bytes that it filled.
  void setListResult(std::optional<std::int64_t> bytes) {
    const std::scoped_lock lock{mutex_};
    listResult_ = bytes;
  }
  void setNameFails(std::int32_t pid) {
    const std::scoped_lock lock{mutex_};
    nameless_.insert(pid);
  }
  /// Answers to the next reads of one process's counters, before its lasting ones.
  void queueResources(std::int32_t pid, std::vector<std::optional<ProcessResources>> answers) {
    const std::scoped_lock lock{mutex_};
    queued_[pid] = std::move(answers);
  }

  [[nodiscard]] std::vector<Call> calls() const {
    const std::scoped_lock lock{mutex_};
    return calls_;
  }
  [[nodiscard]] std::int64_t count(Call::Kind kind) const {
    const std::scoped_lock lock{mutex_};
    return std::ranges::count(calls_, kind, &Call::kind);
  }

  std::int64_t listProcessIDs(std::span<std::int32_t> buffer) override {
    const std::scoped_lock lock{mutex_};
    calls_.push_back({Call::Kind::list, static_cast<std::int64_t>(buffer.size())});
    const std::size_t filled = std::min(buffer.size(), ids_.size());
    std::copy_n(ids_.begin(), filled, buffer.begin());
    return listResult_.value_or(static_cast<std::int64_t>(filled * sizeof(std::int32_t)));
  }
  std::optional<ProcessResources> resources(std::int32_t pid) override {
    const std::scoped_lock lock{mutex_};
    calls_.push_back({Call::Kind::resources, pid});
    if (const auto queue = queued_.find(pid); queue != queued_.end() && !queue->second.empty()) {
      const auto answer = queue->second.front();
      queue->second.erase(queue->second.begin());
      return answer;
    }
    const auto process = processes_.find(pid);
    return process == processes_.end() ? std::nullopt : std::optional{process->second.resources};
  }
  std::int64_t processName(std::int32_t pid, std::span<char> buffer) override {
    const std::scoped_lock lock{mutex_};
    calls_.push_back({Call::Kind::name, pid});
    const auto process = processes_.find(pid);
    if (process == processes_.end() || nameless_.contains(pid)) {
      return 0;
    }
    const std::string& name = process->second.name;
    const std::size_t filled = std::min(buffer.size(), name.size());
    std::copy_n(name.begin(), filled, buffer.begin());
    return static_cast<std::int64_t>(filled);
  }

 private:
  struct Process {
    std::string name;
    ProcessResources resources;
  };

  mutable std::mutex mutex_;
  std::map<std::int32_t, Process> processes_;
  std::vector<std::int32_t> ids_;
  std::optional<std::int64_t> listResult_;
  std::set<std::int32_t> nameless_;
  std::map<std::int32_t, std::vector<std::optional<ProcessResources>>> queued_;
  std::vector<Call> calls_;
};

}  // namespace quorvex::testing
