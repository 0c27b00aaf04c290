#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Sparkline.h"
#include "SystemPowerState.h"

namespace quorvex {

/// A figure of the network section with its direction.
struct NetworkRate {
  std::string label;
  std::string symbol;
  std::string text;

  bool operator==(const NetworkRate&) const = default;
};

/// A process or an interface with its rates.
struct NetworkRow {
  std::string name;
  std::string inText;
  std::string outText;
  std::string accessibilityText;

  bool operator==(const NetworkRow&) const = default;
};

/// The network section, in the dropdown and in the dashboard.
struct NetworkSection {
  std::string title;
  NetworkRate download;
  NetworkRate upload;
  SparklineContent throughput;
  std::string totalLabel;
  NetworkRate totalIn;   ///< bytes
  NetworkRate totalOut;  ///< bytes
  std::string totalNote;
  std::string topProcessesTitle;         ///< empty without rows
  std::vector<NetworkRow> topProcesses;  ///< busiest first, at most 5
  std::string interfacesTitle;
  std::vector<NetworkRow> interfaces;  ///< all but loopback

  bool operator==(const NetworkSection&) const = default;
};

/// An absent snapshot counts as one of no interfaces. The totals are the engine's.
[[nodiscard]] NetworkSection networkSection(const SystemPowerState& state,
                                            std::span<const SystemPowerState> history,
                                            std::uint64_t totalBytesInSinceStart,
                                            std::uint64_t totalBytesOutSinceStart);

/// The interfaces of the snapshot besides loopback, in their order; none without a snapshot.
[[nodiscard]] std::vector<NetworkInterfaceStats> shownInterfaces(const SystemPowerState& state);

}  // namespace quorvex
