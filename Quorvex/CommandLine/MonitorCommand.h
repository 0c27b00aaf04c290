#pragma once

#include "ArgumentParser.h"
#include "CLINetworkSampler.h"
#include "Machine.h"
#include "Output.h"
#include "PowerService.h"
#include "SMCService.h"
#include "SystemPowerState.h"

namespace quorvex {

/// `quorvex monitor`: redraws the power picture in place, or prints one JSON document a tick, until
/// Ctrl+C. The services that hold connections live for the whole run. Main thread.
class MonitorCommand {
 public:
  MonitorCommand(Machine& machine, Output& output, CommandLineOptions options);

  /// Ticks until the interrupt signal ends the process; comes back only when nobody reads the
  /// output any more. Each period is the time that the reads take and the interval, which may be 0
  /// or negative for none.
  void run();

  /// One snapshot. Temperatures come from the SMC alone; network rates are those since the
  /// snapshot before. Blocks for the 0.1 s between the two energy samples.
  [[nodiscard]] SystemPowerState readState();

 private:
  CommandLineOptions options_;
  Machine* machine_;
  Output* output_;
  PowerService powerService_;
  SMCService smcService_;
  CLINetworkSampler networkSampler_;
};

}  // namespace quorvex
