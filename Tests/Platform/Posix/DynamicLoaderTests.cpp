#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DynamicLoader.h"

namespace quorvex {
namespace {

using Binding = DynamicLoader::Binding;

TEST(SystemDynamicLoader, ProcessItselfHasTheSymbolsOfWhatItLoaded) {
  SystemDynamicLoader loader;
  DynamicLibrary process{loader, loader.open(nullptr, Binding::now)};
  ASSERT_TRUE(process);
  int (*absolute)(int) = nullptr;
  ASSERT_TRUE(process.find("abs", absolute));
  EXPECT_EQ(absolute(-5), 5);
}

TEST(SystemDynamicLoader, MissingSymbolIsNull) {
  SystemDynamicLoader loader;
  DynamicLibrary process{loader, loader.open(nullptr, Binding::lazy)};
  int (*nothing)(int) = nullptr;
  EXPECT_FALSE(process.find("quorvex_no_such_function", nothing));
  EXPECT_EQ(nothing, nullptr);
}

TEST(SystemDynamicLoader, MissingLibraryIsNullAndLeavesNoPendingError) {
  SystemDynamicLoader loader;
  EXPECT_EQ(loader.open("/nowhere/libnothing.so", Binding::lazy), nullptr);
  EXPECT_EQ(dlerror(), nullptr);
}

/// Writes down which handles are closed.
class NotingLoader final : public DynamicLoader {
 public:
  std::vector<void*> closed;

  void* open(const char* /*path*/, Binding /*binding*/) override { return this; }
  void* symbol(void* /*handle*/, const char* /*name*/) override { return nullptr; }
  void close(void* handle) override { closed.push_back(handle); }
};

TEST(DynamicLibrary, IsClosedOnceWithItsObject) {
  NotingLoader loader;
  { const DynamicLibrary library{loader, &loader}; }
  EXPECT_EQ(loader.closed, std::vector<void*>{&loader});
}

TEST(DynamicLibrary, StaysOpenWhenItIsToldTo) {
  NotingLoader loader;
  {
    DynamicLibrary library{loader, &loader};
    library.keepOpen();
  }
  EXPECT_TRUE(loader.closed.empty());
}

TEST(DynamicLibrary, WhatDidNotOpenIsNotClosed) {
  NotingLoader loader;
  {
    const DynamicLibrary library{loader, nullptr};
    EXPECT_FALSE(library);
  }
  EXPECT_TRUE(loader.closed.empty());
}

}  // namespace
}  // namespace quorvex
