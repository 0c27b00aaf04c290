#include "NetworkService.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>

#include "CheckedArithmetic.h"
#include "InterfaceMessage.h"
#include "NettopParser.h"
#include "Text.h"

namespace quorvex {

namespace {

static_assert(std::endian::native == std::endian::little, "messages are read as they lie");

constexpr std::string_view loopbackName = "lo0";

/// One sample of the byte counters of all processes, as comma-separated lines.
const std::array<std::string, 6> nettopArguments{"-P", "-x", "-L", "1", "-J", "bytes_in,bytes_out"};

template <typename Number>
Number numberAt(std::span<const std::byte> message, std::size_t offset) {
  Number number{};
  std::memcpy(&number, message.data() + offset, sizeof number);
  return number;
}

double rate(std::uint64_t bytes, double interval) {
  return static_cast<double>(bytes) / interval;
}

std::uint64_t riseOf(std::uint64_t from, std::uint64_t to) {
  return to > from ? to - from : 0;
}

}  // namespace

NetworkService::NetworkService(InterfaceTable& interfaceTable, ChildProcesses& childProcesses,
                               NetworkProcessAttributionMode processAttributionMode,
                               std::string nettopPath, double nettopTimeout)
    : interfaceTable_(&interfaceTable),
      childProcesses_(&childProcesses),
      mode_(processAttributionMode),
      nettopPath_(std::move(nettopPath)),
      nettopTimeout_(nettopTimeout) {}

std::vector<NetworkInterfaceStats> NetworkService::readInterfaces() const {
  const auto buffer = interfaceTable_->readInterfaceList();
  if (!buffer) {
    return {};
  }
  return parseInterfaceList(
      *buffer, [this](std::uint16_t index) { return interfaceTable_->interfaceName(index); });
}

std::vector<NetworkProcessInfo> NetworkService::snapshotProcessActivity() const {
  return mode_ == NetworkProcessAttributionMode::nettop ? readNettopProcessCounters()
                                                        : std::vector<NetworkProcessInfo>{};
}

std::vector<NetworkProcessInfo> NetworkService::readNettopProcessCounters() const {
  auto launched = childProcesses_->launch(nettopPath_, nettopArguments);
  const auto* child = std::get_if<std::unique_ptr<ChildProcess>>(&launched);
  if (child == nullptr) {
    return {};
  }
  if (!(*child)->waitForExit(nettopTimeout_)) {
    (*child)->terminate();
    return {};
  }
  if ((*child)->exitStatus() != 0) {
    return {};
  }
  const std::string output = (*child)->readOutputToEnd();
  if (!text::isValidUTF8(output)) {
    return {};
  }
  auto processes = parseNettopProcessCounters(output);
  const auto bytes = [](const NetworkProcessInfo& process) {
    return checkedAdd(process.bytesIn, process.bytesOut);
  };
  std::erase_if(processes, [&](const NetworkProcessInfo& process) { return bytes(process) == 0; });
  std::ranges::stable_sort(processes, std::ranges::greater{}, bytes);
  return processes;
}

std::vector<NetworkInterfaceStats> NetworkService::parseInterfaceList(
    std::span<const std::byte> buffer, const InterfaceNamer& nameOf) {
  std::vector<NetworkInterfaceStats> interfaces;
  while (buffer.size() >= interface_message::size) {
    const std::size_t length = numberAt<std::uint16_t>(buffer, interface_message::lengthOffset);
    if (length == 0 || length > buffer.size()) {
      break;
    }
    const std::span message = buffer;
    buffer = buffer.subspan(length);
    if (numberAt<std::uint8_t>(message, interface_message::typeOffset) !=
        interface_message::interfaceType) {
      continue;
    }
    const auto index = numberAt<std::uint16_t>(message, interface_message::indexOffset);
    auto name = nameOf(index);
    if (!name || *name == loopbackName) {
      continue;
    }
    NetworkInterfaceStats& interface = interfaces.emplace_back();
    interface.id = index;
    interface.name = std::move(*name);
    interface.bytesIn = numberAt<std::uint64_t>(message, interface_message::bytesInOffset);
    interface.bytesOut = numberAt<std::uint64_t>(message, interface_message::bytesOutOffset);
  }
  return interfaces;
}

std::uint64_t NetworkService::counterDelta(std::uint64_t from, std::uint64_t to) {
  if (to >= from) {
    return to - from;
  }
  constexpr std::uint64_t highest32Bits = std::numeric_limits<std::uint32_t>::max();
  // The larger of the two decides whether this can be a counter of 32 bits.
  if (from > highest32Bits) {
    return 0;
  }
  return highest32Bits - from + 1 + to;
}

std::vector<NetworkInterfaceStats> NetworkService::throughput(
    std::span<const NetworkInterfaceStats> last, std::vector<NetworkInterfaceStats> current,
    double interval) {
  if (!(interval > 0.0)) {
    return current;
  }
  std::unordered_map<std::int64_t, const NetworkInterfaceStats*> lastByID;
  lastByID.reserve(last.size());
  for (const NetworkInterfaceStats& interface : last) {
    lastByID[interface.id] = &interface;
  }
  for (NetworkInterfaceStats& interface : current) {
    const auto known = lastByID.find(interface.id);
    if (known == lastByID.end()) {
      continue;
    }
    const NetworkInterfaceStats& before = *known->second;
    interface.bytesInPerSec = rate(counterDelta(before.bytesIn, interface.bytesIn), interval);
    interface.bytesOutPerSec = rate(counterDelta(before.bytesOut, interface.bytesOut), interval);
  }
  return current;
}

std::vector<NetworkProcessInfo> NetworkService::processThroughput(
    std::span<const NetworkProcessInfo> last, std::vector<NetworkProcessInfo> current,
    double interval) {
  // With the name, a reused pid does not inherit the counters of the process before it.
  std::map<std::pair<std::int32_t, std::string_view>, const NetworkProcessInfo*> lastByIdentity;
  if (interval > 0.0) {
    for (const NetworkProcessInfo& process : last) {
      lastByIdentity[{process.id, process.name}] = &process;
    }
  }
  for (NetworkProcessInfo& process : current) {
    process.bytesInPerSec = 0.0;
    process.bytesOutPerSec = 0.0;
    const auto known = lastByIdentity.find({process.id, process.name});
    if (known == lastByIdentity.end()) {
      continue;
    }
    const NetworkProcessInfo& before = *known->second;
    process.bytesInPerSec = rate(riseOf(before.bytesIn, process.bytesIn), interval);
    process.bytesOutPerSec = rate(riseOf(before.bytesOut, process.bytesOut), interval);
  }
  return current;
}

}  // namespace quorvex
