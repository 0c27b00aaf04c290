#pragma once

#include <string>
#include <vector>

#include "ArgumentParser.h"
#include "Machine.h"
#include "Output.h"

namespace quorvex {

/// The command line: answers "--version" and "--help", else runs the command that the arguments
/// name. Every outcome, an unknown command included, counts as success. Main thread.
class CLIRunner {
 public:
  using Options = CommandLineOptions;

  /// `arguments` is the whole command line, the program's own name first. Machine and output must
  /// outlive the runner.
  CLIRunner(std::vector<std::string> arguments, Machine& machine, Output& output)
      : arguments_(std::move(arguments)), machine_(&machine), output_(&output) {}

  /// Runs to the command's end. "monitor" ends only with its output or with the process.
  void run();

 private:
  std::vector<std::string> arguments_;
  Machine* machine_;
  Output* output_;
};

}  // namespace quorvex
