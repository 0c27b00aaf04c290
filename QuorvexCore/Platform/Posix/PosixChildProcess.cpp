#include "PosixChildProcess.h"

#include <poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <limits>
#include <utility>

#include "ContinuousClock.h"
#include "Date.h"

namespace quorvex {

namespace {

pid_t waitForChild(pid_t child, int& status, int options) {
  pid_t result = 0;
  do {
    result = waitpid(child, &status, options);
  } while (result < 0 && errno == EINTR);
  return result;
}

/// Milliseconds for poll(), rounded up so that a wait never ends early.
int pollTimeout(std::chrono::nanoseconds remaining) {
  const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(remaining).count();
  return static_cast<int>(
      std::clamp<std::int64_t>(milliseconds, 0, std::numeric_limits<int>::max()));
}

/// Waits until the descriptor is readable. Whether it is.
bool waitUntilReadable(const FileDescriptor& descriptor, std::optional<double> timeoutSeconds) {
  constexpr int forever = -1;
  const std::chrono::nanoseconds start = continuous_clock::now();
  while (true) {
    int timeout = forever;
    bool last = false;
    if (timeoutSeconds) {
      const auto passed = continuous_clock::now() - start;
      const auto remaining =
          std::max(nanosecondsFromSeconds(*timeoutSeconds), std::chrono::nanoseconds::zero()) -
          passed;
      timeout = pollTimeout(remaining);
      last = remaining <= std::chrono::nanoseconds::zero();
    }
    pollfd waiting{.fd = descriptor.get(), .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, timeout) > 0) {
      return true;
    }
    if (last) {
      return false;
    }
  }
}

}  // namespace

void AbandonedChildren::add(pid_t child) {
  const std::scoped_lock lock{mutex_};
  children_.push_back(child);
}

void AbandonedChildren::reap() {
  const std::scoped_lock lock{mutex_};
  std::erase_if(children_, [](pid_t child) {
    int status = 0;
    return waitForChild(child, status, WNOHANG) != 0;
  });
}

PosixChildProcess::PosixChildProcess(Handles handles, std::shared_ptr<AbandonedChildren> abandoned)
    : child_(handles.child),
      exit_(std::move(handles.exit)),
      output_{std::move(handles.output), {}},
      error_{std::move(handles.error), {}},
      abandoned_(std::move(abandoned)) {}

PosixChildProcess::~PosixChildProcess() {
  if (!status_) {
    reap(WNOHANG);
  }
  if (!status_) {
    abandoned_->add(child_);
  }
}

bool PosixChildProcess::isRunning() {
  if (!status_) {
    reap(WNOHANG);
  }
  return !status_;
}

void PosixChildProcess::terminate() {
  if (isRunning()) {
    kill(child_, SIGTERM);
  }
}

bool PosixChildProcess::waitForExit(std::optional<double> timeoutSeconds) {
  if (!isRunning()) {
    return true;
  }
  if (exit_ && !waitUntilReadable(exit_, timeoutSeconds)) {
    return false;
  }
  reap(0);
  return true;
}

std::int32_t PosixChildProcess::exitStatus() {
  waitForExit(std::nullopt);
  return status_.value_or(lostStatus);
}

std::string PosixChildProcess::readOutputToEnd() {
  return readToEnd(output_, error_);
}

std::string PosixChildProcess::readErrorToEnd() {
  return readToEnd(error_, output_);
}

void PosixChildProcess::reap(int options) {
  int status = 0;
  const pid_t result = waitForChild(child_, status, options);
  if (result < 0) {
    status_ = lostStatus;
  } else if (result > 0) {
    status_ = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
  }
}

void PosixChildProcess::takeAvailable(Stream& stream) {
  std::array<char, 65536> chunk;
  const ssize_t count = read(stream.descriptor.get(), chunk.data(), chunk.size());
  if (count > 0) {
    stream.text.append(chunk.data(), static_cast<std::size_t>(count));
  } else if (count == 0 || errno != EINTR) {
    stream.descriptor.reset();
  }
}

std::string PosixChildProcess::readToEnd(Stream& wanted, Stream& other) {
  while (wanted.descriptor) {
    // A stream that has ended has descriptor -1, which poll() passes over.
    std::array<pollfd, 2> waiting{{
        {.fd = wanted.descriptor.get(), .events = POLLIN, .revents = 0},
        {.fd = other.descriptor.get(), .events = POLLIN, .revents = 0},
    }};
    if (poll(waiting.data(), waiting.size(), -1) < 0) {
      continue;
    }
    if (waiting[0].revents != 0) {
      takeAvailable(wanted);
    }
    if (waiting[1].revents != 0) {
      takeAvailable(other);
    }
  }
  return std::exchange(wanted.text, {});
}

}  // namespace quorvex
