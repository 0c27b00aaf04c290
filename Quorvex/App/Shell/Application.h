#pragma once

#include "Machine.h"

namespace quorvex {

/// Runs the menu-bar app until the user quits it, and gives the process's exit status. Without any
/// display there is nothing to run it on, which is told on standard error; on a recorded machine
/// the windows are then drawn off screen. The machine outlives the call. Main thread.
[[nodiscard]] int runApplication(int argumentCount, char** arguments, Machine& machine);

}  // namespace quorvex
