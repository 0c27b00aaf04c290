#include "RoleModule.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "ModulePath.h"

namespace quorvex {

int runRoleModule(const char* moduleName, int argumentCount, char** arguments) {
  using EntryPoint = int (*)(int, char**);
  // The module stays loaded to the end.
  void* module = dlopen(modulePath(moduleName).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* symbol = module != nullptr ? dlsym(module, roleEntryPoint) : nullptr;
  if (symbol == nullptr) {
    const char* reason = dlerror();
    static_cast<void>(std::fprintf(stderr, "Error: this installation is incomplete: %s\n",
                                   reason != nullptr ? reason : moduleName));
    return EXIT_FAILURE;
  }
  return reinterpret_cast<EntryPoint>(symbol)(argumentCount, arguments);
}

}  // namespace quorvex
