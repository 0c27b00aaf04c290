#include "RoleModule.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace quorvex {

int runRoleModule(const char* moduleName, int argumentCount, char** arguments) {
  using EntryPoint = int (*)(int, char**);
  // The executable's run path names its own folder. The module stays loaded to the end.
  void* module = dlopen(moduleName, RTLD_NOW | RTLD_LOCAL);
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
