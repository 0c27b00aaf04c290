#pragma once

#include "SavePanel.h"

namespace quorvex {

/// The platform's own panel, of which one is open at most. Main thread.
[[nodiscard]] SavePanel fileSavePanel();

}  // namespace quorvex
