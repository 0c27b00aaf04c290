#include "ModulePath.h"

namespace quorvex {

std::string modulePath(const char* moduleName) {
  // The executable's run path names its own folder, with links resolved.
  return moduleName;
}

}  // namespace quorvex
