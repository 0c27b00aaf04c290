#pragma once

#include <string>

namespace quorvex {

/// What `dlopen` finds a module by that lies in the executable's own folder, also when the program
/// was started through a symbolic link. The caller's own run path must name that folder. Main
/// thread.
[[nodiscard]] std::string modulePath(const char* moduleName);

}  // namespace quorvex
