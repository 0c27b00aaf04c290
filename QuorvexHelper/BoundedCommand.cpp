#include "BoundedCommand.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>

namespace quorvex {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// Of standard error only the beginning is kept, for the failure's words.
constexpr std::size_t errorLimit = 2048;

/// A descriptor that is closed with its owner and never inherited across exec.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {
    if (number_ >= 0) {
      static_cast<void>(fcntl(number_, F_SETFD, FD_CLOEXEC));
    }
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { close(); }

  void close() {
    if (number_ >= 0) {
      static_cast<void>(::close(std::exchange(number_, -1)));
    }
  }
  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

struct Pipe {
  Descriptor readEnd;
  Descriptor writeEnd;
};

std::optional<Pipe> makePipe() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    return std::nullopt;
  }
  return Pipe{Descriptor{ends[0]}, Descriptor{ends[1]}};
}

/// A started child; killed and reaped with its owner unless it has been waited for.
class Child {
 public:
  explicit Child(pid_t pid) : pid_(pid) {}
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (pid_ > 0) {
      static_cast<void>(kill(pid_, SIGKILL));
      wait(0);
    }
  }

  /// The wait status; none while it runs. `flags` are those of waitpid.
  std::optional<int> wait(int flags) {
    int status = -1;  // neither an exit nor a signal, should there be nothing to wait for
    pid_t result = 0;
    do {
      result = waitpid(pid_, &status, flags);
    } while (result < 0 && errno == EINTR);
    if (result == 0) {
      return std::nullopt;
    }
    pid_ = -1;
    return status;
  }

 private:
  pid_t pid_;
};

/// In the forked child: nothing but calls that are safe between fork and exec.
[[noreturn]] void execute(const char* path, char* const* arguments, int input, int output,
                          int error, int failure) {
  // Constants of the program, and the only environment that the child ever sees.
  static char searchPath[] = "PATH=/usr/bin:/bin:/usr/sbin:/sbin";  // NOLINT(*-avoid-c-arrays)
  static char locale[] = "LC_ALL=C";                                // NOLINT(*-avoid-c-arrays)
  static std::array<char*, 3> environment{searchPath, locale, nullptr};
  const bool isRoot = geteuid() == 0;
  if (dup2(input, STDIN_FILENO) >= 0 && dup2(output, STDOUT_FILENO) >= 0 &&
      dup2(error, STDERR_FILENO) >= 0 && (!isRoot || (setgid(0) == 0 && setuid(0) == 0))) {
    execve(path, arguments, environment.data());
  }
  const int reason = errno;
  static_cast<void>(!write(failure, &reason, sizeof reason));
  _exit(127);
}

std::string errorText(int number) {
  return std::strerror(number);  // NOLINT(concurrency-mt-unsafe): one thread
}

/// Appends what can be read now; closes the descriptor at the end of the stream.
void drain(Descriptor& stream, std::string& text) {
  std::array<char, 16384> buffer{};
  const ssize_t count = read(stream.number(), buffer.data(), buffer.size());
  if (count > 0) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  } else if (count == 0 || errno != EINTR) {
    stream.close();
  }
}

int millisecondsUntil(SteadyClock::time_point deadline) {
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(deadline - SteadyClock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, 60'000));
}

std::string failedEnd(int status, const std::string& error) {
  std::string words = WIFSIGNALED(status)
                          ? " was ended by signal " + std::to_string(WTERMSIG(status))
                          : " exited with status " + std::to_string(WEXITSTATUS(status));
  const std::string line = error.substr(0, error.find('\n'));
  return line.empty() ? words : words + ": " + line;
}

}  // namespace

Result<std::string, CommandFailure> runBounded(const BoundedCommand& command) {
  const auto failure = [&](const std::string& words) {
    return CommandFailure{command.path + words};
  };

  const Descriptor input{open("/dev/null", O_RDONLY)};
  auto output = makePipe();
  auto error = makePipe();
  auto launch = makePipe();
  if (!input.isOpen() || !output || !error || !launch) {
    return failure(" cannot be started: " + errorText(errno));
  }
  std::vector<char*> arguments{const_cast<char*>(command.path.c_str())};
  for (const std::string& argument : command.arguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);

  const SteadyClock::time_point deadline = SteadyClock::now() + command.timeLimit;
  const pid_t pid = fork();
  if (pid < 0) {
    return failure(" cannot be started: " + errorText(errno));
  }
  if (pid == 0) {
    execute(command.path.c_str(), arguments.data(), input.number(), output->writeEnd.number(),
            error->writeEnd.number(), launch->writeEnd.number());
  }
  Child child{pid};
  output->writeEnd.close();
  error->writeEnd.close();
  launch->writeEnd.close();

  // The pipe closes by itself when exec succeeds.
  int reason = 0;
  if (read(launch->readEnd.number(), &reason, sizeof reason) == sizeof reason) {
    return failure(" cannot be started: " + errorText(reason));
  }

  std::string outputText;
  std::string errorStart;
  const std::string late =
      " did not end within " + std::to_string(command.timeLimit.count()) + " ms";
  while (output->readEnd.isOpen() || error->readEnd.isOpen()) {
    // poll passes over the negative number of a closed stream.
    std::array<pollfd, 2> streams{pollfd{output->readEnd.number(), POLLIN, 0},
                                  pollfd{error->readEnd.number(), POLLIN, 0}};
    const int wait = millisecondsUntil(deadline);
    const int ready = poll(streams.data(), streams.size(), wait);
    if (ready < 0 && errno != EINTR) {
      return failure(" cannot be read: " + errorText(errno));
    }
    if (ready == 0 && wait == 0) {
      return failure(late);
    }
    if (ready <= 0) {
      continue;
    }
    if (streams[0].revents != 0) {
      drain(output->readEnd, outputText);
    }
    if (streams[1].revents != 0) {
      drain(error->readEnd, errorStart);
      errorStart.resize(std::min(errorStart.size(), errorLimit));
    }
    if (outputText.size() > command.outputLimit) {
      return failure(" wrote more than " + std::to_string(command.outputLimit) + " bytes");
    }
    if (SteadyClock::now() >= deadline && (output->readEnd.isOpen() || error->readEnd.isOpen())) {
      return failure(late);
    }
  }
  std::optional<int> status = child.wait(WNOHANG);
  while (!status) {
    if (millisecondsUntil(deadline) == 0) {
      return failure(late);
    }
    // It has closed its streams and is about to end; there is nothing left to wake up for.
    static_cast<void>(poll(nullptr, 0, 5));
    status = child.wait(WNOHANG);
  }
  if (!WIFEXITED(*status) || WEXITSTATUS(*status) != 0) {
    return failure(failedEnd(*status, errorStart));
  }
  return outputText;
}

}  // namespace quorvex
