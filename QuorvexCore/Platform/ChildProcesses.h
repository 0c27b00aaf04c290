#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace quorvex {

/// One child process with its standard output and standard error on two pipes. Destroying it closes
/// the pipes and reaps the child if it has ended; a child that still runs is left to itself.
/// One thread at a time.
class ChildProcess {
 public:
  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  virtual ~ChildProcess() = default;

  [[nodiscard]] virtual bool isRunning() = 0;
  /// Asks the child to end (SIGTERM). Does not wait.
  virtual void terminate() = 0;
  /// Waits until the child has ended, at most `timeoutSeconds` when given. Whether it has ended.
  virtual bool waitForExit(std::optional<double> timeoutSeconds) = 0;
  /// Exit status once it has ended; the signal's number when a signal ended it.
  [[nodiscard]] virtual std::int32_t exitStatus() = 0;
  /// Reads the rest of a stream to its end, blocking until the child closes it.
  [[nodiscard]] virtual std::string readOutputToEnd() = 0;
  [[nodiscard]] virtual std::string readErrorToEnd() = 0;
};

/// A launch that failed, with the system's words for it.
struct LaunchFailure {
  std::string description;
};

using LaunchResult = std::variant<std::unique_ptr<ChildProcess>, LaunchFailure>;

/// Starts child processes. Any thread.
class ChildProcesses {
 public:
  ChildProcesses() = default;
  ChildProcesses(const ChildProcesses&) = delete;
  ChildProcesses& operator=(const ChildProcesses&) = delete;
  virtual ~ChildProcesses() = default;

  /// Starts the executable at an absolute path with the arguments that follow its name, directly
  /// and with no shell. The child inherits standard input and its two pipes, nothing else.
  [[nodiscard]] virtual LaunchResult launch(const std::string& executablePath,
                                            std::span<const std::string> arguments) = 0;
};

}  // namespace quorvex
