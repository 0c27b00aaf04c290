#include "LinuxProcessTable.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "SystemTree.h"

namespace quorvex {

namespace {

/// The text's fields between single blanks.
std::vector<std::string_view> fields(std::string_view text) {
  std::vector<std::string_view> result;
  while (true) {
    const std::size_t end = text.find(' ');
    result.push_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return result;
    }
    text.remove_prefix(end + 1);
  }
}

/// The number behind "{name}:" at the start of a line; none when there is no such line.
std::optional<std::uint64_t> namedCounter(std::string_view text, std::string_view name) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.starts_with(name) && line.substr(name.size()).starts_with(':')) {
      line.remove_prefix(name.size() + 1);
      line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
      return system_tree::parseCounter(line);
    }
  }
  return std::nullopt;
}

struct CPUTicks {
  std::uint64_t user = 0;
  std::uint64_t system = 0;
};

/// The ticks of a "stat" line. The name in its second field is in brackets and may itself hold
/// blanks and brackets, so the line is taken apart behind the last one.
std::optional<CPUTicks> parseStat(std::string_view text) {
  constexpr std::size_t userField = 11;
  constexpr std::size_t systemField = 12;
  const std::size_t nameEnd = text.rfind(')');
  if (nameEnd == std::string_view::npos || text.size() < nameEnd + 2) {
    return std::nullopt;
  }
  const std::vector<std::string_view> values = fields(text.substr(nameEnd + 2));
  if (values.size() <= systemField) {
    return std::nullopt;
  }
  const auto user = system_tree::parseCounter(values[userField]);
  const auto system = system_tree::parseCounter(values[systemField]);
  return user && system ? std::optional{CPUTicks{*user, *system}} : std::nullopt;
}

}  // namespace

LinuxProcessTable::LinuxProcessTable(std::string procRoot)
    : folder_(std::move(procRoot)),
      nanosecondsPerTick_(1'000'000'000U / static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK))) {}

std::int64_t LinuxProcessTable::listProcessIDs(std::span<std::int32_t> buffer) {
  std::size_t count = 0;
  // Shorter names first is the numbers' own order.
  for (const std::string& name : system_tree::folderNames(folder_)) {
    const std::optional<std::int64_t> pid = system_tree::parseInteger(name);
    if (!pid || *pid < 1 || *pid > std::numeric_limits<std::int32_t>::max()) {
      continue;
    }
    if (count == buffer.size()) {
      break;
    }
    buffer[count++] = static_cast<std::int32_t>(*pid);
  }
  return static_cast<std::int64_t>(count * sizeof(std::int32_t));
}

std::optional<ProcessResources> LinuxProcessTable::resources(std::int32_t pid) {
  const std::optional<std::string> stat = system_tree::readFile(path(pid, "stat"));
  const std::optional<CPUTicks> ticks = stat ? parseStat(*stat) : std::nullopt;
  ProcessResources resources;
  if (!ticks || __builtin_mul_overflow(ticks->user, nanosecondsPerTick_, &resources.userTime) ||
      __builtin_mul_overflow(ticks->system, nanosecondsPerTick_, &resources.systemTime)) {
    return std::nullopt;
  }
  const std::string status = system_tree::readFile(path(pid, "status")).value_or("");
  resources.interruptWakeups = namedCounter(status, "voluntary_ctxt_switches").value_or(0);
  const std::string io = system_tree::readFile(path(pid, "io")).value_or("");
  resources.bytesRead = namedCounter(io, "read_bytes").value_or(0);
  resources.bytesWritten = namedCounter(io, "write_bytes").value_or(0);
  return resources;
}

std::int64_t LinuxProcessTable::processName(std::int32_t pid, std::span<char> buffer) {
  std::string name = system_tree::readFile(path(pid, "comm")).value_or("");
  if (name.ends_with('\n')) {
    name.pop_back();
  }
  const std::size_t length = std::min(name.size(), buffer.size());
  std::copy_n(name.begin(), length, buffer.begin());
  if (length < buffer.size()) {
    buffer[length] = '\0';
  }
  return static_cast<std::int64_t>(length);
}

std::string LinuxProcessTable::path(std::int32_t pid, const char* file) const {
  return fmt::format("{}/{}/{}", folder_, pid, file);
}

}  // namespace quorvex
