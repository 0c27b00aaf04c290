#include "FakeLoader.h"

#include "FakeDarwin.h"

namespace quorvex::darwin {

namespace {

/// Handles of libraries; what they point to is never looked at.
int library = 0;

}  // namespace

void* FakeLoader::open(const char* path, Binding binding) {
  const std::string name = path != nullptr ? path : "";
  fake().note("open " + (name.empty() ? "(process)" : name) +
              (binding == Binding::lazy ? " lazy" : " now"));
  if (fake().libraries.count(name) == 0) {
    return nullptr;
  }
  fake().opened("library");
  return &library;
}

void* FakeLoader::symbol(void* handle, const char* name) {
  fake().note(std::string{"symbol "} + name);
  if (handle != &library || fake().openCount("library") < 1) {
    fake().fault("a symbol of a library that is not open");
  }
  if (fake().missingSymbols.count(name) != 0) {
    return nullptr;
  }
  void* function = energyFunction(name);
  return function != nullptr ? function : hidFunction(name);
}

void FakeLoader::close(void* handle) {
  fake().note("close");
  if (handle != &library) {
    fake().fault("close of another handle");
  }
  fake().closed("library");
}

}  // namespace quorvex::darwin
