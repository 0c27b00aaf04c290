#include "ProcessActivityService.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "CheckedArithmetic.h"
#include "Text.h"

namespace quorvex {

namespace {

constexpr std::array<std::size_t, 5> idBufferSizes{4096, 8192, 16384, 32768, 65536};
constexpr std::size_t nameBufferSize = 1024;

constexpr double pointsPerWakeupPerSecond = 0.2;
constexpr double pointsPerMegabytePerSecond = 0.5;
constexpr double pointsPerWatt = 10.0;
/// The most that wakeups, disk and energy can each add to a score; CPU load has no such limit.
constexpr double mostPoints = 100.0;

constexpr double bytesPerMegabyte = 1e6;
constexpr double nanoPerUnit = 1e9;

double increase(std::uint64_t before, std::uint64_t after) {
  return after > before ? static_cast<double>(after - before) : 0.0;
}

double points(double rate, double weight) {
  return std::min(rate * weight, mostPoints);
}

ProcessActivityInfo activity(const ProcessSample& before, const ProcessSample& after,
                             double seconds) {
  const double cpuPercent = increase(before.cpuTimeNanoseconds, after.cpuTimeNanoseconds) /
                            (seconds * nanoPerUnit) * 100.0;
  const double wakeupsPerSecond = increase(before.wakeups, after.wakeups) / seconds;
  const double diskBytesPerSecond = increase(before.diskBytes, after.diskBytes) / seconds;
  double score = cpuPercent + points(wakeupsPerSecond, pointsPerWakeupPerSecond) +
                 points(diskBytesPerSecond / bytesPerMegabyte, pointsPerMegabytePerSecond);
  std::optional<double> watts;
  if (after.energyNanojoules > before.energyNanojoules) {
    watts = increase(before.energyNanojoules, after.energyNanojoules) / (seconds * nanoPerUnit);
    score += points(*watts, pointsPerWatt);
  }
  return {after.pid, {}, cpuPercent, wakeupsPerSecond, diskBytesPerSecond, watts, score};
}

/// Brings samples into the order of their pids and keeps the last one of each pid.
void makeMap(ProcessActivityService::SamplesByPID& samples) {
  const bool ascends = std::ranges::adjacent_find(samples, std::ranges::greater_equal{},
                                                  &ProcessSample::pid) == samples.end();
  if (ascends) {
    return;
  }
  std::ranges::stable_sort(samples, {}, &ProcessSample::pid);
  const auto firstOfKept =
      std::unique(samples.rbegin(), samples.rend(), [](const auto& left, const auto& right) {
        return left.pid == right.pid;
      }).base();
  samples.erase(samples.begin(), firstOfKept);
}

}  // namespace

std::vector<std::int32_t> ProcessActivityService::processIDs() const {
  std::vector<std::int32_t> buffer;
  for (const std::size_t size : idBufferSizes) {
    buffer.assign(size, 0);
    const std::int64_t filled = processTable_->listProcessIDs(buffer);
    if (filled < 1) {
      return {};
    }
    // A full buffer may have cut the list.
    if (filled < static_cast<std::int64_t>(size * sizeof(std::int32_t))) {
      buffer.resize(static_cast<std::size_t>(filled) / sizeof(std::int32_t));
      return buffer;
    }
  }
  return {};
}

std::string ProcessActivityService::processName(std::int32_t pid) const {
  std::array<char, nameBufferSize> buffer;
  const std::int64_t length = processTable_->processName(pid, buffer);
  if (length >= 1) {
    const std::string_view bytes{buffer.data(),
                                 std::min(static_cast<std::size_t>(length), buffer.size())};
    if (const std::string_view name = bytes.substr(0, bytes.find('\0')); !name.empty()) {
      return text::repairedUTF8(name);
    }
  }
  return fmt::format("PID {}", pid);
}

ProcessActivityService::SamplesByPID ProcessActivityService::processSamplesByPID() const {
  const std::vector<std::int32_t> pids = processIDs();
  SamplesByPID samples;
  samples.reserve(pids.size());
  for (const std::int32_t pid : pids) {
    if (pid <= 0) {
      continue;
    }
    const std::optional<ProcessResources> used = processTable_->resources(pid);
    if (!used) {
      continue;
    }
    samples.push_back({.pid = pid,
                       .name = processName(pid),
                       .cpuTimeNanoseconds = saturatingAdd(used->userTime, used->systemTime),
                       .wakeups = saturatingAdd(used->idleWakeups, used->interruptWakeups),
                       .diskBytes = saturatingAdd(used->bytesRead, used->bytesWritten),
                       .energyNanojoules = used->energy});
  }
  makeMap(samples);
  return samples;
}

std::vector<ProcessActivityInfo> ProcessActivityService::rankedActivity(
    std::span<const ProcessSample> first, std::span<const ProcessSample> second, double seconds) {
  std::vector<ProcessActivityInfo> ranked;
  auto before = first.begin();
  for (const ProcessSample& after : second) {
    // Both maps ascend by pid, so one pass over them together finds all pairs.
    while (before != first.end() && before->pid < after.pid) {
      ++before;
    }
    if (before == first.end()) {
      break;
    }
    if (before->pid != after.pid) {
      continue;
    }
    ProcessActivityInfo info = activity(*before, after, seconds);
    if (info.impactScore > leastScore) {
      info.name = after.name;
      ranked.push_back(std::move(info));
    }
  }
  std::ranges::stable_sort(ranked, std::ranges::greater{}, &ProcessActivityInfo::impactScore);
  return ranked;
}

std::vector<ProcessActivityInfo> ProcessActivityService::sampleTopProcesses(std::int64_t limit,
                                                                            double interval) const {
  const SamplesByPID first = processSamplesByPID();
  if (first.empty()) {
    return {};
  }
  const double seconds = interval > shortestInterval ? interval : shortestInterval;
  clock_->sleep(seconds);
  const SamplesByPID second = processSamplesByPID();
  std::vector<ProcessActivityInfo> ranked = rankedActivity(first, second, seconds);
  const auto kept = static_cast<std::size_t>(
      std::clamp<std::int64_t>(limit, 0, static_cast<std::int64_t>(ranked.size())));
  ranked.erase(ranked.begin() + static_cast<std::ptrdiff_t>(kept), ranked.end());
  return ranked;
}

}  // namespace quorvex
