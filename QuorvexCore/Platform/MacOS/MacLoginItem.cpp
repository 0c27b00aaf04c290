#include "MacLoginItem.h"

#include "ObjectiveC.h"

namespace quorvex {

LoginItemStatus MacLoginItem::status() {
  const AutoreleasePool pool;
  void* const item = service();
  if (item == nullptr) {
    return LoginItemStatus::unknown;
  }
  switch (objective_c::sendForInteger(item, "status")) {
    case 0:
      return LoginItemStatus::notRegistered;
    case 1:
      return LoginItemStatus::enabled;
    case 2:
      return LoginItemStatus::requiresApproval;
    case 3:
      return LoginItemStatus::notFound;
    default:
      return LoginItemStatus::unknown;
  }
}

std::optional<std::string> MacLoginItem::registerItem() {
  return change("registerAndReturnError:");
}

std::optional<std::string> MacLoginItem::unregisterItem() {
  return change("unregisterAndReturnError:");
}

std::optional<std::string> MacLoginItem::change(const char* message) {
  const AutoreleasePool pool;
  void* const item = service();
  if (item == nullptr) {
    return "This system has no login items.";
  }
  return objective_c::sendWithError(item, message);
}

void* MacLoginItem::service() {
  if (!isLoaded_) {
    // Frameworks with classes stay loaded to the end of the process.
    isLoaded_ =
        loader_->open("/System/Library/Frameworks/ServiceManagement.framework/ServiceManagement",
                      DynamicLoader::Binding::lazy) != nullptr;
  }
  return objective_c::sendForObject(objective_c::classNamed("SMAppService"), "mainAppService");
}

}  // namespace quorvex
