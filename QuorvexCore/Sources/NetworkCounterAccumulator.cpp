#include "NetworkCounterAccumulator.h"

#include "CheckedArithmetic.h"
#include "NetworkService.h"

namespace quorvex {

NetworkCounterAccumulator::Counters NetworkCounterAccumulator::ingest(
    std::span<const NetworkInterfaceStats> interfaces) {
  for (const NetworkInterfaceStats& interface : interfaces) {
    const Counters current{interface.bytesIn, interface.bytesOut};
    const auto [entry, isNew] = lastCounters.try_emplace(interface.id, current);
    if (isNew) {
      continue;
    }
    Counters& last = entry->second;
    totalBytesIn =
        checkedAdd(totalBytesIn, NetworkService::counterDelta(last.bytesIn, current.bytesIn));
    totalBytesOut =
        checkedAdd(totalBytesOut, NetworkService::counterDelta(last.bytesOut, current.bytesOut));
    last = current;
  }
  return {totalBytesIn, totalBytesOut};
}

}  // namespace quorvex
