#include "MacBatteryDictionaries.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/ps/IOPowerSources.h>

#include "CFConversion.h"
#include "CFReference.h"
#include "FatalError.h"
#include "IOKitObject.h"
#include "ObjectiveC.h"

namespace quorvex {

std::optional<Dictionary> MacBatteryDictionaries::registry() {
  const AutoreleasePool pool;
  // The look-up takes over the matching dictionary.
  const IOKitObject service{
      IOServiceGetMatchingService(kIOMainPortDefault, IOServiceNameMatching("AppleSmartBattery"))};
  if (!service) {
    return std::nullopt;
  }
  CFReference<CFMutableDictionaryRef> properties;
  if (IORegistryEntryCreateCFProperties(service.get(), properties.out(), nullptr, 0) != 0) {
    return std::nullopt;
  }
  return cf::dictionary(properties.get());
}

std::optional<Dictionary> MacBatteryDictionaries::firstPowerSource() {
  const AutoreleasePool pool;
  const CFReference<CFTypeRef> snapshot{IOPSCopyPowerSourcesInfo()};
  if (!snapshot) {
    fatalError("the power-source service gave no snapshot");
  }
  const CFReference<CFArrayRef> sources{IOPSCopyPowerSourcesList(snapshot.get())};
  if (!sources) {
    fatalError("the power-source service gave no list of power sources");
  }
  if (CFArrayGetCount(sources.get()) < 1) {
    return std::nullopt;
  }
  // The description belongs to the snapshot.
  return cf::dictionary(
      IOPSGetPowerSourceDescription(snapshot.get(), CFArrayGetValueAtIndex(sources.get(), 0)));
}

}  // namespace quorvex
