#pragma once

// This system's own header, with what Darwin has beyond it.

#include_next <spawn.h>

#define POSIX_SPAWN_CLOEXEC_DEFAULT 0x4000

#ifdef __cplusplus
extern "C" {
#endif

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* actions, int descriptor);

#ifdef __cplusplus
}
#endif
