#include "InterruptHandler.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace quorvex {

namespace {

constexpr std::string_view farewell = "\x1b[?25h\x1b[0m\nStopped.\n";

/// Calls only what may be called inside a signal handler.
void stopOnInterrupt(int /*signal*/) {
  std::string_view rest = farewell;
  while (!rest.empty()) {
    const ssize_t written = write(STDOUT_FILENO, rest.data(), rest.size());
    if (written > 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      break;
    }
  }
  _exit(EXIT_SUCCESS);
}

}  // namespace

void installInterruptHandler() {
  struct sigaction action {};
  action.sa_handler = stopOnInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  // A parent may have started the process with the signal held back.
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_UNBLOCK, &interrupt, nullptr);
}

}  // namespace quorvex
