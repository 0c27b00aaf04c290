#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ChildProcesses.h"
#include "InterfaceTable.h"
#include "NetworkSnapshot.h"

namespace quorvex {

/// Whether per-process counters are read at all, and with which tool.
enum class NetworkProcessAttributionMode { disabled, nettop };

/// Reads per-interface byte counters from the kernel and, when asked to, per-process counters by
/// one run of the tool nettop; turns two readings into rates. It holds no state between calls;
/// failures show as empty lists. Any thread.
class NetworkService {
 public:
  /// Where the tool lives and how many seconds it may take, in every use of the program.
  static constexpr const char* defaultNettopPath = "/usr/bin/nettop";
  static constexpr double defaultNettopTimeout = 8.0;

  NetworkService(InterfaceTable& interfaceTable, ChildProcesses& childProcesses,
                 NetworkProcessAttributionMode processAttributionMode,
                 std::string nettopPath = defaultNettopPath,
                 double nettopTimeout = defaultNettopTimeout);

  [[nodiscard]] NetworkProcessAttributionMode processAttributionMode() const { return mode_; }

  /// All interfaces besides "lo0" in the kernel's order, rates 0.
  [[nodiscard]] std::vector<NetworkInterfaceStats> readInterfaces() const;

  /// `readNettopProcessCounters()`, or empty when attribution is disabled.
  [[nodiscard]] std::vector<NetworkProcessInfo> snapshotProcessActivity() const;

  /// Runs the tool once and gives the processes with traffic, most bytes first, rates 0. Blocks for
  /// up to the time-out. A sum of a process's counters past 64 bits is a fatal error.
  [[nodiscard]] std::vector<NetworkProcessInfo> readNettopProcessCounters() const;

  /// Names an interface index; none when there is no such interface.
  using InterfaceNamer = std::function<std::optional<std::string>(std::uint16_t)>;

  /// Walks a buffer of interface messages; a truncated or malformed rest ends the walk.
  [[nodiscard]] static std::vector<NetworkInterfaceStats> parseInterfaceList(
      std::span<const std::byte> buffer, const InterfaceNamer& nameOf);

  /// How far a counter moved. A fall is a 32-bit wrap when both values fit 32 bits, else a reset,
  /// which counts as 0.
  [[nodiscard]] static std::uint64_t counterDelta(std::uint64_t from, std::uint64_t to);

  /// `current` with the rates since `last`; as it came when `interval` is not above 0 seconds.
  /// Interfaces that `last` does not hold keep their rates.
  [[nodiscard]] static std::vector<NetworkInterfaceStats> throughput(
      std::span<const NetworkInterfaceStats> last, std::vector<NetworkInterfaceStats> current,
      double interval);

  /// The same for processes, matched by pid and name together; a counter that fell gives 0. Every
  /// other process, and every one when `interval` is not above 0, comes with rates of 0.
  [[nodiscard]] static std::vector<NetworkProcessInfo> processThroughput(
      std::span<const NetworkProcessInfo> last, std::vector<NetworkProcessInfo> current,
      double interval);

 private:
  InterfaceTable* interfaceTable_;
  ChildProcesses* childProcesses_;
  NetworkProcessAttributionMode mode_;
  std::string nettopPath_;
  double nettopTimeout_;
};

}  // namespace quorvex
