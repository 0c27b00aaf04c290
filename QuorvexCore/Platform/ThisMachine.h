#pragma once

#include <memory>

#include "Machine.h"

namespace quorvex {

/// The computer that the process runs on. Defined once a system.
[[nodiscard]] std::unique_ptr<Machine> thisMachine();

}  // namespace quorvex
