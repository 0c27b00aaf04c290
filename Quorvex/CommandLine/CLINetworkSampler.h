#pragma once

#include <optional>
#include <vector>

#include "Date.h"
#include "Machine.h"
#include "NetworkService.h"
#include "NetworkSnapshot.h"

namespace quorvex {

/// Turns the network's raw counters into snapshots with rates, by remembering the reading before.
/// One thread at a time.
class CLINetworkSampler {
 public:
  /// Reads over the services given, which say where interfaces and process rows come from.
  CLINetworkSampler(NetworkService networkService, NetworkService attributionService,
                    bool includeProcessAttribution);

  /// Reads the machine's interfaces and, with `includeProcessAttribution`, its process rows by one
  /// run of nettop a reading.
  CLINetworkSampler(Machine& machine, bool includeProcessAttribution);

  /// One snapshot that carries `timestamp`. Rates are over the time since the previous snapshot's
  /// timestamp, and 0 in the first. Blocks while nettop runs.
  [[nodiscard]] NetworkSnapshot read(Date timestamp);

 private:
  NetworkService networkService_;
  NetworkService attributionService_;
  bool includeProcessAttribution_;
  std::optional<std::vector<NetworkInterfaceStats>> lastInterfaces_;
  std::optional<std::vector<NetworkProcessInfo>> lastProcesses_;
  std::optional<Date> lastTimestamp_;
};

}  // namespace quorvex
