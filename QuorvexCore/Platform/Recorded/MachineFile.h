#pragma once

#include <string>

namespace quorvex {

/// Why a machine file was refused: "{path}: {what is wrong, with the JSON path of the place}".
struct MachineFileError {
  std::string message;
  bool operator==(const MachineFileError&) const = default;
};

/// The content of a machine file.
struct MachineFile;

}  // namespace quorvex
