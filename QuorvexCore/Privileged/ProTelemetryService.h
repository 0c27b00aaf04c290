#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>

#include "ChildProcesses.h"
#include "Clock.h"
#include "FileAttributes.h"
#include "HelperStatus.h"
#include "PrivilegedSMCHelperService.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessRunResult.h"

namespace quorvex {

/// How an installation went.
struct HelperInstallResult {
  bool succeeded = false;
  std::string message;  ///< for people, in both cases

  bool operator==(const HelperInstallResult&) const = default;
};

/// Status, samples and installation of the root-owned helper tool, which is run as a child process
/// with one command word. Failures are data: the records carry the words to show. Stateless,
/// nothing is kept between calls; any thread, but every call blocks it.
class ProTelemetryService {
 public:
  static constexpr const char* defaultHelperPath = PrivilegedSMCHelperService::defaultHelperPath;
  /// The tool's file name among the app's resources.
  static constexpr const char* bundledHelperName = "QuorvexHelper";

  ProTelemetryService(FileAttributes& fileAttributes, ChildProcesses& childProcesses, Clock& clock,
                      std::string helperPath = defaultHelperPath);

  /// Examines the installed file and asks it for its version; up to 2 seconds.
  [[nodiscard]] HelperStatus helperStatus() const;

  /// One privileged sample; up to 20 seconds. `isAvailable` is false and `error` set on failure.
  [[nodiscard]] ProTelemetrySnapshot readSnapshot() const;

  /// Installs the file at `sourcePath` as the helper tool, replacing an installed one, after the
  /// user has given an administrator's password; up to 120 seconds.
  [[nodiscard]] HelperInstallResult installBundledHelper(const std::string& sourcePath) const;

  /// Runs the tool: its output's bytes and no text, or no bytes and why.
  [[nodiscard]] std::pair<std::optional<std::string>, std::optional<std::string>> invokeHelper(
      std::span<const std::string> arguments, double timeout) const;

  /// Runs an executable to its end. After `timeout` seconds it is asked to end; one that does not
  /// is waited for without limit.
  [[nodiscard]] ProcessRunResult runProcess(const std::string& executablePath,
                                            std::span<const std::string> arguments,
                                            double timeout) const;

 private:
  FileAttributes* fileAttributes_;
  ChildProcesses* childProcesses_;
  Clock* clock_;
  std::string helperPath_;
};

}  // namespace quorvex
