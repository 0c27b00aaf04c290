#pragma once

#include <sys/types.h>

#include <memory>
#include <mutex>
#include <vector>

#include "ChildProcesses.h"
#include "FileDescriptor.h"

namespace quorvex {

/// Children whose owners went before they ended. They are reaped on the next occasion, so that
/// children that outlive a time-out don't pile up as zombies in a process that runs for days.
/// Any thread.
class AbandonedChildren {
 public:
  void add(pid_t child);
  /// Reaps those that have ended. Does not wait.
  void reap();

 private:
  std::mutex mutex_;
  std::vector<pid_t> children_;
};

/// A child started with posix_spawn. While one stream is read to its end, the other one is taken in
/// too and kept for its own read: a child that fills both pipes never stalls on the one that nobody
/// reads yet. Nothing is taken in while waiting for the exit. One thread at a time.
class PosixChildProcess final : public ChildProcess {
 public:
  /// What exitStatus() gives when the system threw the status away (SIGCHLD is ignored).
  static constexpr std::int32_t lostStatus = -1;

  struct Handles {
    pid_t child = 0;
    FileDescriptor exit;    ///< readable once the child has ended; none: it has ended
    FileDescriptor output;  ///< read end of its standard output
    FileDescriptor error;   ///< read end of its standard error
  };

  PosixChildProcess(Handles handles, std::shared_ptr<AbandonedChildren> abandoned);
  ~PosixChildProcess() override;

  [[nodiscard]] bool isRunning() override;
  void terminate() override;
  bool waitForExit(std::optional<double> timeoutSeconds) override;
  /// Waits for the end when the child still runs.
  [[nodiscard]] std::int32_t exitStatus() override;
  [[nodiscard]] std::string readOutputToEnd() override;
  [[nodiscard]] std::string readErrorToEnd() override;

 private:
  struct Stream {
    FileDescriptor descriptor;  ///< none once its end was reached
    std::string text;           ///< what was taken in and not yet given out
  };

  void reap(int options);
  static void takeAvailable(Stream& stream);
  static std::string readToEnd(Stream& wanted, Stream& other);

  pid_t child_;
  FileDescriptor exit_;
  Stream output_;
  Stream error_;
  std::optional<std::int32_t> status_;
  std::shared_ptr<AbandonedChildren> abandoned_;
};

}  // namespace quorvex
