#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "ArgumentParser.h"
#include "CLINetworkSampler.h"
#include "Machine.h"
#include "Output.h"
#include "PowerSessionStore.h"
#include "RunningEnergy.h"
#include "StopFlag.h"
#include "StoreError.h"

namespace quorvex {

/// The recording of one session that is active in the store: samples until the interrupt signal,
/// which takes effect between samples. Main thread.
class SessionRecording {
 public:
  /// All but `session` must outlive it.
  SessionRecording(Machine& machine, Output& output, PowerSessionStore& store,
                   CommandLineOptions options, std::shared_ptr<PowerSession> session);

  /// Samples, reports and sleeps in turn; comes back after the interrupt signal, or when nobody
  /// reads the output any more; without `isRead` nobody did so at the start, and it takes one
  /// sample. A sample that cannot be stored is the error, and leaves the session
  /// active.
  [[nodiscard]] StoreResult<void> run(const StopFlag& stop, bool isRead);

  /// One snapshot that carries `timestamp` and `network`, by freshly opened sources. Temperatures
  /// come from the first of SMC, helper tool and HID sensors that gives any. Blocks for the 0.1 s
  /// between the two energy samples and for as long as the helper tool runs.
  [[nodiscard]] SystemPowerState readState(Date timestamp, NetworkSnapshot network) const;

 private:
  [[nodiscard]] std::vector<ProcessActivityInfo> readProcesses(Date timestamp);
  /// Whether there is any use in writing more.
  [[nodiscard]] bool report(const SystemPowerState& state);

  Machine* machine_;
  Output* output_;
  PowerSessionStore* store_;
  CommandLineOptions options_;
  std::shared_ptr<PowerSession> session_;
  CLINetworkSampler sampler_;
  std::optional<Date> lastProcessSample_;
  RunningEnergy energy_;
};

}  // namespace quorvex
