#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ChildProcesses.h"

namespace quorvex::testing {

/// What one launched child does.
struct FakeChild {
  std::string output;
  std::string error;
  std::int32_t exitStatus = 0;
  /// Seconds of waiting after which it ends by itself; none: only terminate() ends it.
  std::optional<double> seconds = 0.0;
  /// Number of times that isRunning() is true although `seconds` have passed.
  int runningAnswers = 0;
  /// What exitStatus() gives after terminate() ended it: the number of SIGTERM.
  std::int32_t statusWhenTerminated = 15;
  /// A child that ignores SIGTERM goes on.
  bool ignoresTerminate = false;
};

/// One call of launch().
struct FakeLaunch {
  std::string path;
  std::vector<std::string> arguments;
  bool operator==(const FakeLaunch&) const = default;
};

/// Children that exist only here. Answers are queued by path and arguments; the last one of a queue
/// goes on answering. What nobody answers fails with "no such file". No call takes real time.
class FakeChildProcesses final : public ChildProcesses {
 public:
  using Arguments = std::vector<std::string>;

  /// Queues an answer to the launch of `path` with exactly `arguments`.
  void answer(const std::string& path, const Arguments& arguments, FakeChild child) {
    queue(path, arguments, std::move(child));
  }
  /// Queues a failing launch of `path` with exactly `arguments`.
  void fail(const std::string& path, const Arguments& arguments, std::string description) {
    queue(path, arguments, LaunchFailure{std::move(description)});
  }
  /// Answers every launch that no queue of its own answers.
  void answerAll(FakeChild child) {
    const std::scoped_lock lock{shared_->mutex};
    fallback_ = std::move(child);
  }
  void failAll(std::string description) {
    const std::scoped_lock lock{shared_->mutex};
    fallback_ = LaunchFailure{std::move(description)};
  }

  /// The launches so far, the failed ones included.
  [[nodiscard]] std::vector<FakeLaunch> launches() const {
    const std::scoped_lock lock{shared_->mutex};
    return launches_;
  }
  /// Every call in order: "launch {path} {arguments…}", then on its children "isRunning",
  /// "terminate", "waitForExit" or "waitForExit {seconds}", "exitStatus", "readOutputToEnd",
  /// "readErrorToEnd", and "destroyed".
  [[nodiscard]] std::vector<std::string> log() const {
    const std::scoped_lock lock{shared_->mutex};
    return shared_->log;
  }

  LaunchResult launch(const std::string& executablePath,
                      std::span<const std::string> arguments) override {
    const std::scoped_lock lock{shared_->mutex};
    FakeLaunch request{executablePath, {arguments.begin(), arguments.end()}};
    std::string entry = "launch " + executablePath;
    for (const std::string& argument : arguments) {
      entry += " " + argument;
    }
    shared_->log.push_back(std::move(entry));
    const Answer answer = nextAnswer({request.path, request.arguments});
    launches_.push_back(std::move(request));
    if (const auto* failure = std::get_if<LaunchFailure>(&answer)) {
      return *failure;
    }
    return std::make_unique<Child>(std::get<FakeChild>(answer), shared_);
  }

 private:
  using Answer = std::variant<FakeChild, LaunchFailure>;
  using Key = std::pair<std::string, Arguments>;

  struct Shared {
    std::mutex mutex;
    std::vector<std::string> log;
  };

  class Child final : public ChildProcess {
   public:
    Child(FakeChild script, std::shared_ptr<Shared> shared)
        : script_(std::move(script)), shared_(std::move(shared)) {
      ended_ = script_.seconds && *script_.seconds <= 0.0;
    }
    ~Child() override { note("destroyed"); }

    bool isRunning() override {
      note("isRunning");
      if (ended_ && !terminated_ && script_.runningAnswers > 0) {
        --script_.runningAnswers;
        return true;
      }
      return !ended_;
    }
    void terminate() override {
      note("terminate");
      if (!ended_ && !script_.ignoresTerminate) {
        ended_ = true;
        terminated_ = true;
      }
    }
    bool waitForExit(std::optional<double> timeoutSeconds) override {
      note(timeoutSeconds ? "waitForExit " + number(*timeoutSeconds) : "waitForExit");
      if (!ended_ && script_.seconds) {
        if (!timeoutSeconds || *timeoutSeconds >= *script_.seconds) {
          ended_ = true;
        } else {
          *script_.seconds -= *timeoutSeconds;
        }
      }
      return ended_;
    }
    std::int32_t exitStatus() override {
      note("exitStatus");
      return terminated_ ? script_.statusWhenTerminated : script_.exitStatus;
    }
    std::string readOutputToEnd() override {
      note("readOutputToEnd");
      return std::exchange(script_.output, {});
    }
    std::string readErrorToEnd() override {
      note("readErrorToEnd");
      return std::exchange(script_.error, {});
    }

   private:
    void note(std::string entry) {
      const std::scoped_lock lock{shared_->mutex};
      shared_->log.push_back(std::move(entry));
    }
    /// 8 for 8.0, 0.5 for 0.5.
    static std::string number(double value) {
      std::string text = std::to_string(value);
      text.erase(text.find_last_not_of('0') + 1);
      if (text.back() == '.') {
        text.pop_back();
      }
      return text;
    }

    FakeChild script_;
    std::shared_ptr<Shared> shared_;
    bool ended_ = false;
    bool terminated_ = false;
  };

  void queue(const std::string& path, const Arguments& arguments, Answer answer) {
    const std::scoped_lock lock{shared_->mutex};
    answers_[{path, arguments}].push_back(std::move(answer));
  }

  Answer nextAnswer(const Key& key) {
    const auto found = answers_.find(key);
    if (found == answers_.end()) {
      return fallback_;
    }
    Answer answer = found->second.front();
    if (found->second.size() > 1) {
      found->second.pop_front();
    }
    return answer;
  }

  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::map<Key, std::deque<Answer>> answers_;
  Answer fallback_ = LaunchFailure{"no such file"};
  std::vector<FakeLaunch> launches_;
};

}  // namespace quorvex::testing
