#pragma once

#include <memory>

#include "SMCPort.h"

namespace quorvex {

/// The system management controller of this computer; null on a system that has none. Defined once
/// a system.
[[nodiscard]] std::unique_ptr<SMCPort> systemSMC();

}  // namespace quorvex
