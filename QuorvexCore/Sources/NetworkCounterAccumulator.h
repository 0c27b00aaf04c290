#pragma once

#include <cstdint>
#include <map>
#include <span>

#include "NetworkSnapshot.h"

namespace quorvex {

/// Running byte totals since the first reading, from a stream of interface readings. Wraps are
/// bridged and resets add nothing, so the totals never fall. A plain value; one owner.
struct NetworkCounterAccumulator {
  struct Counters {
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    bool operator==(const Counters&) const = default;
  };

  std::map<std::int64_t, Counters> lastCounters;  ///< the last reading of each interface id
  std::uint64_t totalBytesIn = 0;
  std::uint64_t totalBytesOut = 0;

  /// Adds what each known interface moved since its last reading; an interface seen for the first
  /// time only sets its baseline. Gives the two totals; their overflow is a fatal error.
  Counters ingest(std::span<const NetworkInterfaceStats> interfaces);

  bool operator==(const NetworkCounterAccumulator&) const = default;
};

}  // namespace quorvex
