#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Date.h"
#include "RawEnum.h"

namespace quorvex {

/// Counters and rates of one network interface, from the kernel's interface list. The loopback
/// interface is never collected.
struct NetworkInterfaceStats {
  std::int64_t id = 0;          ///< the interface's system index
  std::string name;             ///< for example "en0"
  std::uint64_t bytesIn = 0;    ///< bytes received, the kernel's running counter
  std::uint64_t bytesOut = 0;   ///< bytes sent, the kernel's running counter
  double bytesInPerSec = 0.0;   ///< receive rate; 0 until two reads exist
  double bytesOutPerSec = 0.0;  ///< send rate; 0 until two reads exist

  /// Whether traffic flows now: a rate above 0.
  [[nodiscard]] bool isActive() const;
  [[nodiscard]] bool isLoopback() const;
  /// Whether the name says a VPN tunnel ("utun…", "ipsec…").
  [[nodiscard]] bool isTunnel() const;

  bool operator==(const NetworkInterfaceStats&) const = default;
};

/// Where per-process network numbers come from.
enum class NetworkAttributionSource { none, nettop };

template <>
struct RawTexts<NetworkAttributionSource> {
  static constexpr std::array values{
      std::pair{NetworkAttributionSource::none, std::string_view{"none"}},
      std::pair{NetworkAttributionSource::nettop, std::string_view{"nettop"}}};
};

/// Network counters and rates of one process.
struct NetworkProcessInfo {
  std::int32_t id = 0;          ///< process id
  std::string name;             ///< as the attribution source prints it
  std::uint64_t bytesIn = 0;    ///< bytes received so far
  std::uint64_t bytesOut = 0;   ///< bytes sent so far
  double bytesInPerSec = 0.0;   ///< since the previous sample
  double bytesOutPerSec = 0.0;  ///< since the previous sample
  NetworkAttributionSource attributionSource = NetworkAttributionSource::none;

  [[nodiscard]] double totalBytesPerSec() const { return bytesInPerSec + bytesOutPerSec; }
  /// Bytes in both directions; stays at the largest value when the sum does not fit 64 bits.
  [[nodiscard]] std::uint64_t totalBytes() const;

  bool operator==(const NetworkProcessInfo&) const = default;
};

/// The network at one moment. Totals leave out "lo0" and count tunnels; a total that does not fit
/// 64 bits stays at the largest value, so that a corrupt counter cannot end the program.
struct NetworkSnapshot {
  std::vector<NetworkInterfaceStats> interfaces;  ///< all that were read, in the kernel's order
  std::vector<NetworkProcessInfo> processes;      ///< empty when attribution is off or failed
  NetworkAttributionSource attributionSource =
      NetworkAttributionSource::none;  ///< `nettop` only when `processes` was filled from it
  std::optional<std::string> attributionUnavailableReason;  ///< why attribution is missing
  Date timestamp{};                                         ///< when the interfaces were read

  [[nodiscard]] double totalBytesInPerSec() const;
  [[nodiscard]] double totalBytesOutPerSec() const;
  [[nodiscard]] std::uint64_t totalBytesIn() const;
  [[nodiscard]] std::uint64_t totalBytesOut() const;

  /// The interfaces besides "lo0" that have ever moved a byte, in their order. It looks at the
  /// counters and not at `isActive`: an interface that is idle right now stays listed.
  [[nodiscard]] std::vector<NetworkInterfaceStats> activeInterfaces() const;

  /// The processes with traffic now, in their order.
  [[nodiscard]] std::vector<NetworkProcessInfo> activeProcesses() const;

  /// `activeProcesses`, busiest first; equal ones keep their order. Not cut.
  [[nodiscard]] std::vector<NetworkProcessInfo> topProcesses() const;

  bool operator==(const NetworkSnapshot&) const = default;
};

}  // namespace quorvex
