#pragma once

#include <string>
#include <vector>

#include "ChildProcesses.h"
#include "FileAttributes.h"
#include "TemperatureSensor.h"

namespace quorvex {

/// Reads the fuller temperature set through the root-owned helper tool, run as a child process.
/// Stateless; any thread.
class PrivilegedSMCHelperService {
 public:
  /// Where the helper tool is installed.
  static constexpr const char* defaultHelperPath =
      "/Library/PrivilegedHelperTools/com.quorvex.helper";

  PrivilegedSMCHelperService(FileAttributes& fileAttributes, ChildProcesses& childProcesses,
                             std::string helperPath = defaultHelperPath);

  /// Whether this user may execute the file at the helper path.
  [[nodiscard]] bool isAvailable() const;

  /// The tool's sensors in its order; empty on any failure. Blocks until the tool has ended, with
  /// no time limit.
  [[nodiscard]] std::vector<TemperatureSensor> readTemperatures() const;

 private:
  FileAttributes* fileAttributes_;
  ChildProcesses* childProcesses_;
  std::string helperPath_;
};

}  // namespace quorvex
