#pragma once

#include <chrono>

namespace quorvex {

/// Takes from this process everything that the user who started it could have prepared, before
/// anything else is done: the environment is emptied, descriptors 0 to 2 are open (on /dev/null if
/// they were closed) and all others closed, signals have their default effect and are not blocked,
/// files are created for the owner alone, the folder is "/", no core is ever dumped, and a process
/// that still runs after `lifetime` is ended by SIGALRM. False when any of it fails: then nothing
/// further may be done. Once, on a single thread.
[[nodiscard]] bool prepareProcess(std::chrono::seconds lifetime);

}  // namespace quorvex
