// The runtime's header declares the message function without a type; this file therefore does not
// include it.

#include <set>
#include <string>

#include "FakeDarwin.h"

namespace quorvex::darwin {

namespace {

/// Classes and objects of the runtime; what they point to is never looked at.
int processInfoClass = 0;
int processInfoObject = 0;
int loginItemClass = 0;
int loginItemObject = 0;
int errorObject = 0;

std::vector<std::vector<CFTypeRef>>& poolStack() {
  static std::vector<std::vector<CFTypeRef>> stack;
  return stack;
}

std::intptr_t address(const void* object) {
  return reinterpret_cast<std::intptr_t>(object);
}

std::intptr_t changeLoginItem(std::int64_t statusAfter, void** error) {
  if (fake().loginItemError) {
    *error = &errorObject;
    return 0;
  }
  fake().loginItemStatus = statusAfter;
  return 1;
}

std::intptr_t answer(const void* receiver, const std::string& message, void** error) {
  if (receiver == &processInfoClass && message == "processInfo") {
    return address(&processInfoObject);
  }
  if (receiver == &processInfoObject && message == "thermalState") {
    return static_cast<std::intptr_t>(fake().thermalState);
  }
  if (receiver == &processInfoObject && message == "isLowPowerModeEnabled") {
    return fake().isLowPowerModeEnabled ? 1 : 0;
  }
  if (receiver == &loginItemClass && message == "mainAppService") {
    return address(&loginItemObject);
  }
  if (receiver == &loginItemObject && message == "status") {
    return static_cast<std::intptr_t>(fake().loginItemStatus);
  }
  if (receiver == &loginItemObject && message == "registerAndReturnError:") {
    return changeLoginItem(1, error);
  }
  if (receiver == &loginItemObject && message == "unregisterAndReturnError:") {
    return changeLoginItem(0, error);
  }
  if (receiver == &errorObject && message == "localizedDescription") {
    return fake().isErrorDescribed ? address(autoreleased(text(*fake().loginItemError)())) : 0;
  }
  fake().fault("unknown message " + message);
  return 0;
}

}  // namespace

CFTypeRef autoreleased(CFTypeRef object) {
  if (poolStack().empty()) {
    fake().fault("a temporary object outside of any pool");
  } else {
    poolStack().back().push_back(object);
  }
  return object;
}

}  // namespace quorvex::darwin

using quorvex::darwin::fake;

extern "C" {

void* objc_autoreleasePoolPush() {
  quorvex::darwin::poolStack().emplace_back();
  ++fake().pools;
  return reinterpret_cast<void*>(quorvex::darwin::poolStack().size());
}

void objc_autoreleasePoolPop(void* pool) {
  auto& stack = quorvex::darwin::poolStack();
  if (reinterpret_cast<std::size_t>(pool) != stack.size() || stack.empty()) {
    fake().fault("autorelease pools out of order");
    return;
  }
  for (CFTypeRef object : stack.back()) {
    CFRelease(object);
  }
  stack.pop_back();
  --fake().pools;
}

void* objc_getClass(const char* name) {
  const std::string wanted{name};
  fake().note("objc_getClass " + wanted);
  if (wanted == "NSProcessInfo" && fake().hasProcessInfo) {
    return &quorvex::darwin::processInfoClass;
  }
  if (wanted == "SMAppService" && fake().hasLoginItems) {
    return &quorvex::darwin::loginItemClass;
  }
  return nullptr;
}

const char* sel_registerName(const char* name) {
  static std::set<std::string> names;
  return names.insert(name).first->c_str();
}

/// Every message that is sent has at most one argument and an integer or pointer as its result,
/// which this one type can take and give.
std::intptr_t objc_msgSend(void* receiver, const char* selector, void** error) {
  if (receiver == nullptr) {
    return 0;
  }
  fake().note(std::string{"objc_msgSend "} + selector);
  if (fake().pools < 1) {
    fake().fault("a message outside of any pool");
  }
  return quorvex::darwin::answer(receiver, selector, error);
}

}  // extern "C"
