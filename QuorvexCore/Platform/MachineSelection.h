#pragma once

#include <memory>
#include <string>
#include <variant>

#include "Machine.h"

namespace quorvex {

/// Why there is no machine to read: the whole message after "Error: ".
struct MachineSelectionError {
  std::string message;
  bool operator==(const MachineSelectionError&) const = default;
};

/// Whether the environment names a recorded machine. An empty QUORVEX_MACHINE counts as not set.
[[nodiscard]] bool isRecordedMachineSelected();

/// How a recorded machine's clock may run.
enum class PacePolicy {
  asRecorded,  ///< as the file or QUORVEX_PACE says (command line)
  realOnly,    ///< "instant" counts as "real" (app)
};

/// The machine that the environment selects: the recorded one that QUORVEX_MACHINE names, else the
/// one that the process runs on. Main thread, before anything else.
[[nodiscard]] std::variant<std::unique_ptr<Machine>, MachineSelectionError> selectMachine(
    PacePolicy pacePolicy);

}  // namespace quorvex
