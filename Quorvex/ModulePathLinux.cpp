#include "ModulePath.h"

namespace quorvex {

std::string modulePath(const char* moduleName) {
  // The caller's run path names that folder, with links resolved.
  return moduleName;
}

}  // namespace quorvex
