#include "PosixChildProcesses.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>
#include <vector>

#include "ChildSystem.h"
#include "FileDescriptor.h"
#include "PosixChildProcess.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace quorvex {

namespace {

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};

/// The same open file, close-on-exec and above standard error: when this process runs with a closed
/// standard stream, it could otherwise lie where the child's streams are put. None on failure.
FileDescriptor kept(FileDescriptor file) {
  if (file && file.get() <= STDERR_FILENO) {
    return FileDescriptor{fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)};
  }
  if (file && fcntl(file.get(), F_SETFD, FD_CLOEXEC) < 0) {
    return FileDescriptor{};
  }
  return file;
}

/// 0 on success, else the error number.
int makePipe(Pipe& pipeToFill) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    return errno;
  }
  FileDescriptor readEnd{ends[0]};
  FileDescriptor writeEnd{ends[1]};
  pipeToFill.readEnd = kept(std::move(readEnd));
  if (!pipeToFill.readEnd) {
    return errno;
  }
  pipeToFill.writeEnd = kept(std::move(writeEnd));
  return pipeToFill.writeEnd ? 0 : errno;
}

/// How a child is to be started; the first error of its parts is kept.
class SpawnPlan {
 public:
  SpawnPlan() {
    keep(posix_spawn_file_actions_init(&actions_));
    keep(posix_spawnattr_init(&attributes_));
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
  }

  void putStream(const FileDescriptor& source, int target) {
    keep(posix_spawn_file_actions_adddup2(&actions_, source.get(), target));
  }

  void closeOtherDescriptors() { keep(child_system::inheritStandardStreamsOnly(actions_, flags_)); }

  void resetSignals() {
    sigset_t everySignal;
    sigfillset(&everySignal);
    sigdelset(&everySignal, SIGKILL);
    sigdelset(&everySignal, SIGSTOP);
    sigset_t noSignal;
    sigemptyset(&noSignal);
    keep(posix_spawnattr_setsigdefault(&attributes_, &everySignal));
    keep(posix_spawnattr_setsigmask(&attributes_, &noSignal));
    flags_ = static_cast<short>(flags_ | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }

  int spawn(pid_t& child, const std::string& path, std::span<const std::string> arguments) {
    keep(posix_spawnattr_setflags(&attributes_, flags_));
    if (error_ != 0) {
      return error_;
    }
    std::vector<char*> words{const_cast<char*>(path.c_str())};
    for (const std::string& argument : arguments) {
      words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    return posix_spawn(&child, path.c_str(), &actions_, &attributes_, words.data(), environ);
  }

 private:
  void keep(int error) {
    if (error_ == 0) {
      error_ = error;
    }
  }

  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
  short flags_ = 0;
  int error_ = 0;
};

LaunchFailure failure(int error) {
  return LaunchFailure{std::generic_category().message(error)};
}

bool containsNUL(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

}  // namespace

PosixChildProcesses::PosixChildProcesses(std::string root)
    : root_(std::move(root)), abandoned_(std::make_shared<AbandonedChildren>()) {}

PosixChildProcesses::~PosixChildProcesses() {
  abandoned_->reap();
}

LaunchResult PosixChildProcesses::launch(const std::string& executablePath,
                                         std::span<const std::string> arguments) {
  abandoned_->reap();
  if (!executablePath.starts_with('/') || containsNUL(executablePath) ||
      std::ranges::any_of(arguments, containsNUL)) {
    return failure(EINVAL);
  }
  Pipe output;
  Pipe error;
  if (const int problem = makePipe(output); problem != 0) {
    return failure(problem);
  }
  if (const int problem = makePipe(error); problem != 0) {
    return failure(problem);
  }

  SpawnPlan plan;
  plan.putStream(output.writeEnd, STDOUT_FILENO);
  plan.putStream(error.writeEnd, STDERR_FILENO);
  plan.closeOtherDescriptors();
  plan.resetSignals();
  PosixChildProcess::Handles handles;
  if (const int problem = plan.spawn(handles.child, root_ + executablePath, arguments);
      problem != 0) {
    return failure(problem);
  }

  handles.exit = kept(child_system::exitDescriptor(handles.child));
  if (!handles.exit && errno != ESRCH) {
    // A child whose end cannot be waited for is not given out.
    const int problem = errno;
    kill(handles.child, SIGKILL);
    while (waitpid(handles.child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return failure(problem);
  }
  handles.output = std::move(output.readEnd);
  handles.error = std::move(error.readEnd);
  return std::make_unique<PosixChildProcess>(std::move(handles), abandoned_);
}

}  // namespace quorvex
