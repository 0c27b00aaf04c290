#pragma once

#include <string>

#include "DynamicLoader.h"

namespace quorvex::darwin {

/// The loader of the Darwin that the tests run on: the libraries that it lists can be opened, and
/// all have all symbols but those that are said to be missing.
class FakeLoader final : public DynamicLoader {
 public:
  [[nodiscard]] void* open(const char* path, Binding binding) override;
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  void close(void* handle) override;
};

/// The functions of the private libraries by their names; null for others.
[[nodiscard]] void* energyFunction(const std::string& name);
[[nodiscard]] void* hidFunction(const std::string& name);

}  // namespace quorvex::darwin
