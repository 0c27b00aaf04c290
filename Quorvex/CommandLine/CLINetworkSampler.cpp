#include "CLINetworkSampler.h"

#include <utility>

namespace quorvex {

CLINetworkSampler::CLINetworkSampler(NetworkService networkService,
                                     NetworkService attributionService,
                                     bool includeProcessAttribution)
    : networkService_(std::move(networkService)),
      attributionService_(std::move(attributionService)),
      includeProcessAttribution_(includeProcessAttribution) {}

CLINetworkSampler::CLINetworkSampler(Machine& machine, bool includeProcessAttribution)
    : CLINetworkSampler(NetworkService{machine.interfaceTable(), machine.childProcesses(),
                                       NetworkProcessAttributionMode::disabled},
                        NetworkService{machine.interfaceTable(), machine.childProcesses(),
                                       NetworkProcessAttributionMode::nettop},
                        includeProcessAttribution) {}

NetworkSnapshot CLINetworkSampler::read(Date timestamp) {
  NetworkSnapshot snapshot{.timestamp = timestamp};
  snapshot.interfaces = networkService_.readInterfaces();
  if (includeProcessAttribution_) {
    snapshot.processes = attributionService_.snapshotProcessActivity();
  }
  auto rawInterfaces = snapshot.interfaces;
  auto rawProcesses = snapshot.processes;
  if (lastTimestamp_) {
    const double interval = secondsBetween(*lastTimestamp_, timestamp);
    if (lastInterfaces_) {
      snapshot.interfaces =
          NetworkService::throughput(*lastInterfaces_, std::move(snapshot.interfaces), interval);
    }
    if (includeProcessAttribution_ && lastProcesses_) {
      snapshot.processes = NetworkService::processThroughput(
          *lastProcesses_, std::move(snapshot.processes), interval);
    }
  }
  lastInterfaces_ = std::move(rawInterfaces);
  lastProcesses_ = std::move(rawProcesses);
  lastTimestamp_ = timestamp;
  if (!snapshot.processes.empty()) {
    snapshot.attributionSource = NetworkAttributionSource::nettop;
  }
  return snapshot;
}

}  // namespace quorvex
