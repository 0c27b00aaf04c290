#include "ObjectiveC.h"

#include <objc/message.h>
#include <objc/runtime.h>

#include "CFConversion.h"

extern "C" {
// The runtime's own interface for compilers, without a public header.
// NOLINTBEGIN(readability-identifier-naming)
void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);
// NOLINTEND(readability-identifier-naming)
}

namespace quorvex {

AutoreleasePool::AutoreleasePool() : pool_(objc_autoreleasePoolPush()) {}

AutoreleasePool::~AutoreleasePool() {
  objc_autoreleasePoolPop(pool_);
}

namespace objective_c {

namespace {

/// Sends a message; every kind of result and argument needs a function of its own type.
template <typename Result, typename... Arguments>
Result send(Object receiver, const char* message, Arguments... arguments) {
  using Function = Result (*)(Object, SEL, Arguments...);
  return reinterpret_cast<Function>(objc_msgSend)(receiver, sel_registerName(message),
                                                  arguments...);
}

}  // namespace

Object classNamed(const char* name) {
  return reinterpret_cast<Object>(objc_getClass(name));
}

Object sendForObject(Object receiver, const char* message) {
  return send<Object>(receiver, message);
}

std::int64_t sendForInteger(Object receiver, const char* message) {
  return send<std::int64_t>(receiver, message);
}

bool sendForBoolean(Object receiver, const char* message) {
  return send<bool>(receiver, message);
}

std::optional<std::string> sendWithError(Object receiver, const char* message) {
  Object error = nullptr;
  if (send<bool>(receiver, message, &error)) {
    return std::nullopt;
  }
  // The description is a string of both worlds.
  return cf::text(sendForObject(error, "localizedDescription")).value_or("Unknown error");
}

}  // namespace objective_c
}  // namespace quorvex
