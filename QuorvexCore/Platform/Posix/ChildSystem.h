#pragma once

#include <spawn.h>
#include <sys/types.h>

#include "FileDescriptor.h"

/// The two things about children that each system does in its own way; one source file a system
/// (ChildSystemLinux.cpp).
namespace quorvex::child_system {

/// Makes the child inherit no descriptor above standard error, whether or not it is marked as
/// close-on-exec. To be called after all other actions were added. `flags` are the spawn flags that
/// will be set. 0 on success, else the error number.
[[nodiscard]] int inheritStandardStreamsOnly(posix_spawn_file_actions_t& actions, short& flags);

/// A descriptor that polls as readable as soon as this process's child has ended. None on failure,
/// with the reason in `errno`; ESRCH when the system keeps no ended children and this one has
/// ended.
[[nodiscard]] FileDescriptor exitDescriptor(pid_t child);

}  // namespace quorvex::child_system
