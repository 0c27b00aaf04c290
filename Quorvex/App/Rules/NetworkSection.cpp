#include "NetworkSection.h"

#include <fmt/format.h>

#include <cstddef>
#include <utility>

#include "DropdownFormat.h"

namespace quorvex {

namespace {

constexpr std::size_t topProcessLimit = 5;

std::string rate(double bytesPerSecond) {
  return formatBytesPerSec(bytesPerSecond, appByteStyle);
}

NetworkRow rowOf(const std::string& name, double bytesInPerSec, double bytesOutPerSec) {
  NetworkRow row{.name = name, .inText = rate(bytesInPerSec), .outText = rate(bytesOutPerSec)};
  row.accessibilityText = fmt::format("{}: download {}, upload {}", name, row.inText, row.outText);
  return row;
}

}  // namespace

NetworkSection networkSection(const SystemPowerState& state,
                              std::span<const SystemPowerState> history,
                              std::uint64_t totalBytesInSinceStart,
                              std::uint64_t totalBytesOutSinceStart) {
  const NetworkSnapshot network = state.network.value_or(NetworkSnapshot{});
  NetworkSection section{
      .title = "Network",
      .download = {"Download", "arrow.down", rate(network.totalBytesInPerSec())},
      .upload = {"Upload", "arrow.up", rate(network.totalBytesOutPerSec())},
      .throughput = sparklineContent({.values = throughputHistory(history), .label = "Throughput"}),
      .totalLabel = "Total",
      .totalIn = {"Download", "arrow.down", formatBytes(totalBytesInSinceStart, appByteStyle)},
      .totalOut = {"Upload", "arrow.up", formatBytes(totalBytesOutSinceStart, appByteStyle)},
      .totalNote = "since monitoring started"};

  for (const NetworkProcessInfo& process : network.topProcesses()) {
    if (section.topProcesses.size() == topProcessLimit) {
      break;
    }
    section.topProcesses.push_back(
        rowOf(process.name, process.bytesInPerSec, process.bytesOutPerSec));
  }
  if (!section.topProcesses.empty()) {
    section.topProcessesTitle = "Top Processes";
  }

  for (const NetworkInterfaceStats& interface : shownInterfaces(state)) {
    section.interfaces.push_back(
        rowOf(interface.name, interface.bytesInPerSec, interface.bytesOutPerSec));
  }
  section.interfacesTitle = fmt::format("Interfaces ({})", section.interfaces.size());
  return section;
}

std::vector<NetworkInterfaceStats> shownInterfaces(const SystemPowerState& state) {
  std::vector<NetworkInterfaceStats> shown;
  if (state.network) {
    for (const NetworkInterfaceStats& interface : state.network->interfaces) {
      if (!interface.isLoopback()) {
        shown.push_back(interface);
      }
    }
  }
  return shown;
}

}  // namespace quorvex
