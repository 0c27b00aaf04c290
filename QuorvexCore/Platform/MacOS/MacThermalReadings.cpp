#include "MacThermalReadings.h"

#include <notify.h>

#include "ObjectiveC.h"

namespace quorvex {

namespace {

constexpr const char* pressureKey = "com.apple.system.thermalpressurelevel";

}  // namespace

std::int64_t MacThermalReadings::thermalState() {
  const AutoreleasePool pool;
  return objective_c::sendForInteger(processInfo(), "thermalState");
}

std::optional<std::uint64_t> MacThermalReadings::thermalPressure() {
  int token = 0;
  if (notify_register_check(pressureKey, &token) != NOTIFY_STATUS_OK) {
    return std::nullopt;
  }
  std::uint64_t state = 0;
  const bool isKnown = notify_get_state(token, &state) == NOTIFY_STATUS_OK;
  notify_cancel(token);
  return isKnown ? std::optional{state} : std::nullopt;
}

bool MacThermalReadings::isLowPowerModeEnabled() {
  const AutoreleasePool pool;
  return objective_c::sendForBoolean(processInfo(), "isLowPowerModeEnabled");
}

void* MacThermalReadings::processInfo() {
  std::call_once(isLoaded_, [this] {
    // Frameworks with classes stay loaded to the end of the process.
    static_cast<void>(loader_->open("/System/Library/Frameworks/Foundation.framework/Foundation",
                                    DynamicLoader::Binding::lazy));
  });
  return objective_c::sendForObject(objective_c::classNamed("NSProcessInfo"), "processInfo");
}

}  // namespace quorvex
