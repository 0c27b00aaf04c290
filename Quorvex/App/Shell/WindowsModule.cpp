#include "WindowsModule.h"

#include <dlfcn.h>

#include <string>

#include "ModulePath.h"
#include "Output.h"

namespace quorvex {

std::unique_ptr<WindowHost> loadWindows(WindowHost::ModelMaker makeModel) {
  using EntryPoint = WindowHost* (*)(WindowHost::ModelMaker*);
  // The module stays loaded to the end.
  void* module = dlopen(modulePath(QUORVEX_WINDOWS_MODULE).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* symbol = module != nullptr ? dlsym(module, windowsEntryPoint) : nullptr;
  if (symbol == nullptr) {
    const char* reason = dlerror();
    StandardOutput{}.printError(std::string{"this installation is incomplete: "} +
                                (reason != nullptr ? reason : QUORVEX_WINDOWS_MODULE));
    return nullptr;
  }
  return std::unique_ptr<WindowHost>{reinterpret_cast<EntryPoint>(symbol)(&makeModel)};
}

}  // namespace quorvex
