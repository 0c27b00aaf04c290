#include "NetworkSnapshot.h"

#include <algorithm>
#include <iterator>

#include "CheckedArithmetic.h"

namespace quorvex {

namespace {

template <typename Value>
Value sumBesidesLoopback(const std::vector<NetworkInterfaceStats>& interfaces,
                         Value NetworkInterfaceStats::*field) {
  Value sum{};
  for (const auto& interface : interfaces) {
    if (interface.isLoopback()) {
      continue;
    }
    if constexpr (std::is_integral_v<Value>) {
      sum = saturatingAdd(sum, interface.*field);
    } else {
      sum += interface.*field;
    }
  }
  return sum;
}

}  // namespace

bool NetworkInterfaceStats::isActive() const {
  return bytesInPerSec > 0.0 || bytesOutPerSec > 0.0;
}

bool NetworkInterfaceStats::isLoopback() const {
  return name == "lo0";
}

bool NetworkInterfaceStats::isTunnel() const {
  return name.starts_with("utun") || name.starts_with("ipsec");
}

std::uint64_t NetworkProcessInfo::totalBytes() const {
  return saturatingAdd(bytesIn, bytesOut);
}

double NetworkSnapshot::totalBytesInPerSec() const {
  return sumBesidesLoopback(interfaces, &NetworkInterfaceStats::bytesInPerSec);
}

double NetworkSnapshot::totalBytesOutPerSec() const {
  return sumBesidesLoopback(interfaces, &NetworkInterfaceStats::bytesOutPerSec);
}

std::uint64_t NetworkSnapshot::totalBytesIn() const {
  return sumBesidesLoopback(interfaces, &NetworkInterfaceStats::bytesIn);
}

std::uint64_t NetworkSnapshot::totalBytesOut() const {
  return sumBesidesLoopback(interfaces, &NetworkInterfaceStats::bytesOut);
}

std::vector<NetworkInterfaceStats> NetworkSnapshot::activeInterfaces() const {
  std::vector<NetworkInterfaceStats> active;
  std::ranges::copy_if(interfaces, std::back_inserter(active), [](const auto& interface) {
    return !interface.isLoopback() && (interface.bytesIn != 0 || interface.bytesOut != 0);
  });
  return active;
}

std::vector<NetworkProcessInfo> NetworkSnapshot::activeProcesses() const {
  std::vector<NetworkProcessInfo> active;
  std::ranges::copy_if(processes, std::back_inserter(active),
                       [](const auto& process) { return process.totalBytesPerSec() > 0.0; });
  return active;
}

std::vector<NetworkProcessInfo> NetworkSnapshot::topProcesses() const {
  auto top = activeProcesses();
  std::ranges::stable_sort(top, std::ranges::greater{}, &NetworkProcessInfo::totalBytesPerSec);
  return top;
}

}  // namespace quorvex
