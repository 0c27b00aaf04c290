#pragma once

#include "ArgumentParser.h"
#include "Machine.h"
#include "Output.h"
#include "SystemPowerState.h"

namespace quorvex {

/// `quorvex status`: one snapshot of the whole machine, printed once. Main thread.
class StatusCommand {
 public:
  StatusCommand(Machine& machine, Output& output, CommandLineOptions options)
      : options_(options), machine_(&machine), output_(&output) {}

  /// Reads and prints. Sources that answer nothing leave their section out.
  void run() const;

  /// One snapshot. Temperatures come from the first of SMC, helper tool and HID sensors that gives
  /// any; network rates are 0, since there is no earlier reading. Blocks for the 0.1 s between the
  /// two energy samples and for as long as the helper tool runs.
  [[nodiscard]] SystemPowerState readState() const;

 private:
  CommandLineOptions options_;
  Machine* machine_;
  Output* output_;
};

}  // namespace quorvex
