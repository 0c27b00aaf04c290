#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "BoundedCommand.h"
#include "Date.h"
#include "FileAttributes.h"
#include "Result.h"
#include "SMCPort.h"

namespace quorvex {

/// What the tool can be asked, each by one word as its only argument.
enum class HelperCommand {
  status,       ///< "status-json"
  telemetry,    ///< "read-pro-telemetry-json"
  temperatures  ///< "read-temperatures-json"
};

/// The command of `main`'s arguments; none unless there is exactly one and it is one of the words.
[[nodiscard]] std::optional<HelperCommand> helperCommand(int argumentCount,
                                                         const char* const* arguments);

/// What the tool writes and how it exits.
struct HelperAnswer {
  int exitStatus = 0;
  std::string output;  ///< one JSON document and a newline; empty on failure
  std::string error;   ///< one line; empty on success

  bool operator==(const HelperAnswer&) const = default;
};

/// Exit statuses besides 0.
inline constexpr int failureStatus = 1;
inline constexpr int usageStatus = 64;

/// The tool's file as it lies at its installed path.
struct InstalledFile {
  std::optional<FileAttributeRecord> attributes;  ///< none when there is no file
  bool isExecutable = false;                      ///< by the user who started the tool
};

[[nodiscard]] HelperAnswer answerUsage();
[[nodiscard]] HelperAnswer answerStatus(const InstalledFile& file);

/// The one command line that the tool ever runs: one sample of a second.
[[nodiscard]] BoundedCommand powermetricsCommand();

/// Bytes of the longest telemetry reply. A client that reads only after the tool has ended gets no
/// more than a pipe holds, which is 16 KiB on some systems; rows that do not fit are left out, the
/// least active ones first.
inline constexpr std::size_t longestTelemetryReply = 16'000;

/// `powermetricsOutput` is what running `powermetricsCommand()` gave.
[[nodiscard]] HelperAnswer answerTelemetry(
    const Result<std::string, CommandFailure>& powermetricsOutput, Date now);

/// `smc` is null on a machine that has none.
[[nodiscard]] HelperAnswer answerTemperatures(SMCPort* smc);

}  // namespace quorvex
