#include <fcntl.h>
#include <sys/event.h>
#include <unistd.h>

#include <cerrno>

#include "ChildSystem.h"

namespace quorvex::child_system {

int inheritStandardStreamsOnly(posix_spawn_file_actions_t& actions, short& flags) {
  flags = static_cast<short>(flags | POSIX_SPAWN_CLOEXEC_DEFAULT);
  // Standard input is the one descriptor that no action has put in place. One that is closed cannot
  // be inherited.
  if (fcntl(STDIN_FILENO, F_GETFD) < 0) {
    return 0;
  }
  return posix_spawn_file_actions_addinherit_np(&actions, STDIN_FILENO);
}

FileDescriptor exitDescriptor(pid_t child) {
  FileDescriptor queue{kqueue()};
  if (!queue) {
    return {};
  }
  // A queue polls as readable while an event is pending in it, and nobody takes this one out.
  struct kevent ended {};
  EV_SET(&ended, static_cast<uintptr_t>(child), EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
  if (kevent(queue.get(), &ended, 1, nullptr, 0, nullptr) == 0) {
    return queue;
  }
  const int problem = errno;
  queue.reset();
  errno = problem;
  return {};
}

}  // namespace quorvex::child_system
