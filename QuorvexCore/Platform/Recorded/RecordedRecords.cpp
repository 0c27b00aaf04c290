#include "RecordedRecords.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "CheckedArithmetic.h"

namespace quorvex {

std::uint64_t RecordedCounter::value(std::chrono::nanoseconds since) const {
  // Multiplied before divided: whole rates over whole nanoseconds then stay exact. As `start` is
  // whole and the sum not negative, rounding the movement down truncates the sum.
  const double moved = std::floor(perSecond * static_cast<double>(since.count()) / 1e9);
  constexpr double limit = 18446744073709551616.0;
  const std::uint64_t distance = std::abs(moved) < limit
                                     ? static_cast<std::uint64_t>(std::abs(moved))
                                     : std::numeric_limits<std::uint64_t>::max();
  if (moved >= 0) {
    return saturatingAdd(start, distance);
  }
  return start > distance ? start - distance : 0;
}

const RecordedProcess* RecordedProcessList::find(std::int32_t pid) const {
  const auto found = std::lower_bound(
      byPID.begin(), byPID.end(), pid,
      [this](std::size_t index, std::int32_t wanted) { return processes[index].pid < wanted; });
  return found != byPID.end() && processes[*found].pid == pid ? &processes[*found] : nullptr;
}

}  // namespace quorvex
