#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// The few messages that the program sends to Objective-C objects, through the runtime's C
/// functions. Objects are borrowed: they live at least as long as the innermost AutoreleasePool.
namespace quorvex {

/// Frees, when it goes, the temporary objects that were made while it lived. One nests in another
/// on the same thread.
class AutoreleasePool {
 public:
  AutoreleasePool();
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;
  ~AutoreleasePool();

 private:
  void* pool_;
};

namespace objective_c {

/// A class or an object; null answers every message with null, 0 or false.
using Object = void*;

/// The class of this name; null when no loaded framework has it.
[[nodiscard]] Object classNamed(const char* name);

[[nodiscard]] Object sendForObject(Object receiver, const char* message);
[[nodiscard]] std::int64_t sendForInteger(Object receiver, const char* message);
[[nodiscard]] bool sendForBoolean(Object receiver, const char* message);
/// A message that tells by an error object why it failed: none on success, else the error's
/// description for people.
[[nodiscard]] std::optional<std::string> sendWithError(Object receiver, const char* message);

}  // namespace objective_c
}  // namespace quorvex
