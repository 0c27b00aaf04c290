#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvex::testing {

/// How a program ended and what it wrote.
struct ProcessResult {
  int exitStatus = -1;  ///< 128 and the signal's number when a signal ended it
  std::string output;   ///< standard output; on a terminal both streams
  std::string error;    ///< standard error
};

/// Where a program's standard output leads.
enum class OutputKind {
  pipe,
  terminal,  ///< a pseudo-terminal of 24 rows and 80 columns that passes bytes through unchanged
  full,      ///< a device on which every write fails for want of space
  closed,    ///< nowhere: the stream is closed at the start
  nobody,    ///< a pipe that nobody reads
};

/// A program that runs, with its streams under the test's control. Destroying it ends the program.
class RunningProcess {
 public:
  RunningProcess(const std::string& executable, const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& environment, OutputKind kind) {
    std::array<int, 2> output = openOutput(kind);
    const std::array<int, 2> error = openPipe();
    child_ = fork();
    if (child_ == 0) {
      become(executable, arguments, environment, kind, output[1], error[1]);
    }
    outputEnd_ = output[0];
    errorEnd_ = error[0];
    close(error[1]);
    if (output[1] >= 0) {
      close(output[1]);
    }
    if (kind == OutputKind::nobody) {
      closeEnd(outputEnd_);
    }
  }
  RunningProcess(const RunningProcess&) = delete;
  RunningProcess& operator=(const RunningProcess&) = delete;
  ~RunningProcess() {
    closeEnd(outputEnd_);
    closeEnd(errorEnd_);
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
  }

  /// Reads until standard output holds `text`, or ends.
  void readUntil(std::string_view text) {
    while (result_.output.find(text) == std::string::npos && (outputEnd_ >= 0 || errorEnd_ >= 0)) {
      readSome();
    }
  }
  /// Types text on the terminal; "\x03" is Ctrl+C.
  void type(std::string_view text) const {
    if (write(outputEnd_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
      throw std::runtime_error{"the terminal takes no text"};
    }
  }
  void sendSignal(int number) const { kill(child_, number); }
  /// Closes the reading end of standard output.
  void stopReading() { closeEnd(outputEnd_); }

  /// Reads to the end of both streams and waits for the program.
  ProcessResult finish() {
    while (outputEnd_ >= 0 || errorEnd_ >= 0) {
      readSome();
    }
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    result_.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return std::move(result_);
  }

 private:
  static std::array<int, 2> openPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
      throw std::runtime_error{"no pipe"};
    }
    return ends;
  }

  /// The test's end and the program's end.
  static std::array<int, 2> openOutput(OutputKind kind) {
    switch (kind) {
      case OutputKind::pipe:
      case OutputKind::nobody:
        return openPipe();
      case OutputKind::terminal: {
        std::array<int, 2> ends{};
        termios mode{};
        cfmakeraw(&mode);
        mode.c_lflag |= ISIG;
        mode.c_cc[VINTR] = 3;
        winsize size{.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
        if (openpty(ends.data(), &ends[1], nullptr, &mode, &size) != 0) {
          throw std::runtime_error{"no pseudo-terminal"};
        }
        fcntl(ends[0], F_SETFD, FD_CLOEXEC);
        return ends;
      }
      case OutputKind::full:
        return {-1, open("/dev/full", O_WRONLY | O_CLOEXEC)};
      case OutputKind::closed:
        break;
    }
    return {-1, -1};
  }

  /// In the child: takes its streams and becomes the program.
  [[noreturn]] static void become(const std::string& executable,
                                  const std::vector<std::string>& arguments,
                                  const std::map<std::string, std::string>& environment,
                                  OutputKind kind, int output, int error) {
    unsetenv("QUORVEX_MACHINE");
    unsetenv("QUORVEX_PACE");
    for (const auto& [name, value] : environment) {
      setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> words{const_cast<char*>(executable.c_str())};
    for (const std::string& argument : arguments) {
      words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    if (kind == OutputKind::terminal) {
      // Makes the terminal the one whose keys send signals to the program.
      setsid();
      ioctl(output, TIOCSCTTY, 0);
    }
    dup2(kind == OutputKind::terminal ? output : error, STDERR_FILENO);
    if (kind == OutputKind::closed) {
      close(STDOUT_FILENO);
    } else {
      dup2(output, STDOUT_FILENO);
    }
    execv(executable.c_str(), words.data());
    std::_Exit(127);
  }

  static void closeEnd(int& end) {
    if (end >= 0) {
      close(std::exchange(end, -1));
    }
  }

  void readSome() {
    std::array<pollfd, 2> ends{pollfd{.fd = outputEnd_, .events = POLLIN, .revents = 0},
                               pollfd{.fd = errorEnd_, .events = POLLIN, .revents = 0}};
    if (poll(ends.data(), ends.size(), -1) <= 0) {
      return;
    }
    if (ends[0].revents != 0) {
      readInto(outputEnd_, result_.output);
    }
    if (ends[1].revents != 0) {
      readInto(errorEnd_, result_.error);
    }
  }

  static void readInto(int& end, std::string& text) {
    std::array<char, 65536> buffer{};
    const ssize_t count = read(end, buffer.data(), buffer.size());
    if (count > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      // A terminal whose last user has gone fails in place of ending.
      closeEnd(end);
    }
  }

  pid_t child_ = -1;
  int outputEnd_ = -1;
  int errorEnd_ = -1;
  ProcessResult result_;
};

/// Runs a program with arguments and an environment of the test's choice.
class ProcessRunner {
 public:
  explicit ProcessRunner(std::string executable) : executable_(std::move(executable)) {}

  /// Sets a variable for the runs that follow.
  ProcessRunner& environment(const std::string& name, std::string value) {
    environment_.insert_or_assign(name, std::move(value));
    return *this;
  }

  [[nodiscard]] ProcessResult run(const std::vector<std::string>& arguments,
                                  OutputKind kind = OutputKind::pipe) const {
    return RunningProcess{executable_, arguments, environment_, kind}.finish();
  }
  /// Starts the program and leaves it running.
  [[nodiscard]] RunningProcess start(const std::vector<std::string>& arguments,
                                     OutputKind kind = OutputKind::pipe) const {
    return {executable_, arguments, environment_, kind};
  }

 private:
  std::string executable_;
  std::map<std::string, std::string> environment_;
};

}  // namespace quorvex::testing
