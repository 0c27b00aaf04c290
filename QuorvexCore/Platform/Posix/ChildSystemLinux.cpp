#include <sys/syscall.h>
#include <unistd.h>

#include "ChildSystem.h"

namespace quorvex::child_system {

int inheritStandardStreamsOnly(posix_spawn_file_actions_t& actions, short& /*flags*/) {
  return posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

FileDescriptor exitDescriptor(pid_t child) {
  // The C library's own wrapper cannot be linked from C++ in all of its releases.
  return FileDescriptor{static_cast<int>(syscall(SYS_pidfd_open, child, 0U))};
}

}  // namespace quorvex::child_system
