#pragma once

#include "ArgumentParser.h"
#include "Machine.h"
#include "Output.h"

namespace quorvex {

/// `quorvex battery`: every detail of the battery, printed once. Main thread.
class BatteryCommand {
 public:
  BatteryCommand(Machine& machine, Output& output, CommandLineOptions options)
      : options_(options), machine_(&machine), output_(&output) {}

  /// Reads and prints; a machine without a battery is told as an error.
  void run() const;

 private:
  CommandLineOptions options_;
  Machine* machine_;
  Output* output_;
};

}  // namespace quorvex
