#include "Output.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace quorvex {

namespace {

/// Holds back the interrupt signal of the calling thread for a scope.
class InterruptDelay {
 public:
  InterruptDelay() {
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    pthread_sigmask(SIG_BLOCK, &interrupt, &previous_);
  }
  InterruptDelay(const InterruptDelay&) = delete;
  InterruptDelay& operator=(const InterruptDelay&) = delete;
  ~InterruptDelay() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }

 private:
  sigset_t previous_{};
};

/// 0, or the system's error number.
int writeWhole(int descriptor, std::string_view text) {
  const InterruptDelay delay;
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
      continue;
    }
    const int error = errno;
    if (error == EAGAIN) {
      // Someone who shares the stream has made it non-blocking.
      pollfd ready{.fd = descriptor, .events = POLLOUT, .revents = 0};
      static_cast<void>(poll(&ready, 1, -1));
    } else if (error != EINTR) {
      return error;
    }
  }
  return 0;
}

}  // namespace

bool StandardOutput::print(std::string_view text) {
  if (!isOpen_) {
    return false;
  }
  showProgress("");
  const int error = writeWhole(STDOUT_FILENO, text);
  isOpen_ = error == 0;
  if (error != 0 && error != EPIPE) {
    printError(std::string{"standard output: "} + std::strerror(error));
  }
  return isOpen_;
}

void StandardOutput::printError(std::string_view message) {
  showProgress("");
  std::string line{"Error: "};
  line.append(message).push_back('\n');
  // There is nowhere left to tell a failure of this stream.
  static_cast<void>(writeWhole(STDERR_FILENO, line));
}

void StandardOutput::showProgress(std::string_view line) {
  if ((line.empty() && !showsProgress_) || isatty(STDERR_FILENO) == 0) {
    return;
  }
  std::string text{"\r\x1b[2K"};
  text.append(line);
  static_cast<void>(writeWhole(STDERR_FILENO, text));
  showsProgress_ = !line.empty();
}

void prepareStandardStreams() {
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &ignore, nullptr);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) {
      // Takes the lowest free number, which is this one. A write to it goes on failing.
      static_cast<void>(open("/dev/null", O_RDONLY));
    }
  }
}

}  // namespace quorvex
