#include <mach-o/dyld.h>
#include <stdlib.h>

#include <cstdint>

#include "ModulePath.h"

namespace quorvex {

std::string modulePath(const char* moduleName) {
  // A plain name would be looked for in the working folder too.
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::string executable(size, '\0');
  char* resolved = nullptr;
  if (_NSGetExecutablePath(executable.data(), &size) == 0) {
    resolved = realpath(executable.c_str(), nullptr);
  }
  std::string folder = resolved != nullptr ? resolved : executable.c_str();
  free(resolved);
  folder.erase(folder.rfind('/') + 1);
  return folder + moduleName;
}

}  // namespace quorvex
