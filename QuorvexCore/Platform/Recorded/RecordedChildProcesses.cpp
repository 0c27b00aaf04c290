#include "RecordedChildProcesses.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace quorvex {

namespace {

using std::chrono::nanoseconds;

class RecordedChildProcess final : public ChildProcess {
 public:
  RecordedChildProcess(const RecordedRun& run, RecordedClock& clock)
      : run_(&run), clock_(&clock), startedAt_(clock.monotonic()), status_(run.status) {}

  bool isRunning() override { return remaining() > nanoseconds{0}; }

  void terminate() override {
    if (isRunning()) {
      isTerminated_ = true;
      status_ = SIGTERM;
    }
  }

  bool waitForExit(std::optional<double> timeoutSeconds) override {
    const nanoseconds left = remaining();
    if (!timeoutSeconds) {
      clock_->sleepFor(left);
    } else if (*timeoutSeconds > 0) {
      clock_->sleepFor(std::min(left, nanosecondsFromSeconds(*timeoutSeconds)));
    }
    return !isRunning();
  }

  std::int32_t exitStatus() override { return status_; }

  std::string readOutputToEnd() override {
    waitForExit(std::nullopt);
    return std::exchange(isOutputRead_, true) ? std::string{} : run_->output;
  }

  std::string readErrorToEnd() override {
    waitForExit(std::nullopt);
    return std::exchange(isErrorRead_, true) ? std::string{} : run_->error;
  }

 private:
  /// The time until the child ends by itself; not above 0 once it has ended.
  [[nodiscard]] nanoseconds remaining() {
    return isTerminated_ ? nanoseconds{0} : run_->duration - (clock_->monotonic() - startedAt_);
  }

  const RecordedRun* run_;
  RecordedClock* clock_;
  nanoseconds startedAt_;
  std::int32_t status_;
  bool isTerminated_ = false;
  bool isOutputRead_ = false;
  bool isErrorRead_ = false;
};

LaunchFailure noSuchFile() {
  return {.description = "No such file or directory"};
}

}  // namespace

LaunchResult RecordedChildProcesses::launch(const std::string& executablePath,
                                            std::span<const std::string> arguments) {
  const auto position = clock_->positionInPass();
  if (executablePath == nettopPath) {
    const RecordedRun* run = nettop_->value(position);
    return run != nullptr ? start(*run) : noSuchFile();
  }
  if (executablePath == osascriptPath) {
    const RecordedScript* script = osascript_->value(position);
    if (script == nullptr) {
      return noSuchFile();
    }
    if (script->run.status == 0 && script->installs) {
      helper_->install(*script->installs);
    }
    return start(script->run);
  }
  if (executablePath == RecordedHelperFile::helperPath) {
    return launchHelper(arguments);
  }
  return noSuchFile();
}

LaunchResult RecordedChildProcesses::launchHelper(std::span<const std::string> arguments) {
  static const RecordedRun unknownCommand{.status = unknownCommandStatus};
  const RecordedHelper* helper = helper_->current();
  if (helper == nullptr) {
    return noSuchFile();
  }
  if (!helper->isExecutable) {
    return LaunchFailure{.description = "Permission denied"};
  }
  const auto reply =
      arguments.size() == 1 ? helper->replies.find(arguments.front()) : helper->replies.end();
  return start(reply != helper->replies.end() ? reply->second : unknownCommand);
}

LaunchResult RecordedChildProcesses::start(const RecordedRun& run) {
  return std::make_unique<RecordedChildProcess>(run, *clock_);
}

}  // namespace quorvex
