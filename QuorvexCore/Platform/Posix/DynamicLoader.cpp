#include "DynamicLoader.h"

#include <dlfcn.h>

namespace quorvex {

void* SystemDynamicLoader::open(const char* path, Binding binding) {
  void* const handle = dlopen(path, binding == Binding::lazy ? RTLD_LAZY : RTLD_NOW);
  if (handle == nullptr) {
    static_cast<void>(dlerror());
  }
  return handle;
}

void* SystemDynamicLoader::symbol(void* handle, const char* name) {
  return dlsym(handle, name);
}

void SystemDynamicLoader::close(void* handle) {
  dlclose(handle);
}

}  // namespace quorvex
