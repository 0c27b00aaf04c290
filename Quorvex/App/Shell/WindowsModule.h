#pragma once

#include <memory>

#include "WindowHost.h"

namespace quorvex {

/// Loads the module of the windows from beside the program; everything that draws comes with it. A
/// module that is missing or damaged is told on standard error and gives null. Main thread.
[[nodiscard]] std::unique_ptr<WindowHost> loadWindows(WindowHost::ModelMaker makeModel);

}  // namespace quorvex
