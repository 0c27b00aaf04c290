#include <IOKit/IOKitLib.h>
#include <IOKit/ps/IOPowerSources.h>

#include <string>

#include "FakeDarwin.h"
#include "Objects.h"

using quorvex::darwin::Array;
using quorvex::darwin::cast;
using quorvex::darwin::fake;
using quorvex::darwin::Make;
using quorvex::darwin::OtherObject;

namespace {

constexpr io_service_t batteryService = 101;
constexpr io_service_t smcService = 102;
constexpr io_connect_t smcConnection = 201;

CFMutableDictionaryRef matching(const char* key, const char* name) {
  fake().note(std::string{key} + " " + name);
  const Make dictionary = quorvex::darwin::dictionary(
      std::vector<std::pair<std::string, Make>>{{key, quorvex::darwin::text(std::string{name})}});
  return static_cast<CFMutableDictionaryRef>(const_cast<void*>(dictionary()));
}

bool hasEntry(CFDictionaryRef dictionary, const std::string& key, const std::string& value) {
  const auto wanted = quorvex::darwin::text(key);
  CFTypeRef name = wanted();
  const void* found = CFDictionaryGetValue(dictionary, name);
  CFRelease(name);
  return found != nullptr && quorvex::darwin::utf8(found) == value;
}

}  // namespace

extern "C" {

const mach_port_t kIOMainPortDefault = 0;
mach_port_t mach_task_self_ = 7;

CFMutableDictionaryRef IOServiceMatching(const char* className) {
  return matching("IOServiceMatching", className);
}

CFMutableDictionaryRef IOServiceNameMatching(const char* name) {
  return matching("IOServiceNameMatching", name);
}

io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef dictionary) {
  fake().note("IOServiceGetMatchingService");
  io_service_t service = 0;
  if (mainPort != kIOMainPortDefault) {
    fake().fault("another main port");
  }
  if (fake().hasBatteryService &&
      hasEntry(dictionary, "IOServiceNameMatching", "AppleSmartBattery")) {
    service = batteryService;
  } else if (fake().hasSMCService && hasEntry(dictionary, "IOServiceMatching", "AppleSMC")) {
    service = smcService;
  }
  CFRelease(dictionary);
  if (service != 0) {
    fake().opened("service " + std::to_string(service));
  }
  return service;
}

kern_return_t IOObjectRelease(io_object_t object) {
  fake().note("IOObjectRelease");
  fake().closed("service " + std::to_string(object));
  return 0;
}

kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties,
                                                CFAllocatorRef allocator, IOOptionBits options) {
  fake().note("IORegistryEntryCreateCFProperties");
  if (entry != batteryService || allocator != nullptr || options != 0) {
    fake().fault("IORegistryEntryCreateCFProperties with other arguments");
  }
  if (fake().propertiesResult == 0) {
    *properties = static_cast<CFMutableDictionaryRef>(const_cast<void*>(fake().properties()));
  }
  return fake().propertiesResult;
}

kern_return_t IOServiceOpen(io_service_t service, mach_port_t owningTask, uint32_t type,
                            io_connect_t* connection) {
  fake().note("IOServiceOpen " + std::to_string(type));
  if (service != smcService || owningTask != mach_task_self_) {
    fake().fault("IOServiceOpen with other arguments");
  }
  if (fake().connectionResult == 0) {
    *connection = smcConnection;
    fake().opened("connection " + std::to_string(smcConnection));
  }
  return fake().connectionResult;
}

kern_return_t IOServiceClose(io_connect_t connection) {
  fake().note("IOServiceClose");
  fake().closed("connection " + std::to_string(connection));
  return 0;
}

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize) {
  fake().note("IOConnectCallStructMethod " + std::to_string(selector) + " " +
              std::to_string(inputSize) + " " + std::to_string(*outputSize));
  if (fake().openCount("connection " + std::to_string(connection)) != 1) {
    fake().fault("a call over a connection that is not open");
  }
  return fake().smcCall(input, output);
}

CFTypeRef IOPSCopyPowerSourcesInfo() {
  fake().note("IOPSCopyPowerSourcesInfo");
  if (!fake().hasPowerSnapshot) {
    return nullptr;
  }
  return quorvex::darwin::other(fake().powerSources)();
}

CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef snapshot) {
  fake().note("IOPSCopyPowerSourcesList");
  if (!fake().hasPowerList) {
    return nullptr;
  }
  // A source is named by its place in the snapshot.
  std::vector<Make> sources;
  for (std::size_t i = 0; i < cast<OtherObject>(snapshot)->children.size(); ++i) {
    sources.push_back(quorvex::darwin::number(static_cast<std::int64_t>(i)));
  }
  return static_cast<CFArrayRef>(quorvex::darwin::array(sources)());
}

CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef snapshot, CFTypeRef source) {
  std::int64_t index = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(source), kCFNumberSInt64Type, &index);
  fake().note("IOPSGetPowerSourceDescription " + std::to_string(index));
  return static_cast<CFDictionaryRef>(
      cast<OtherObject>(snapshot)->children.at(static_cast<std::size_t>(index)));
}

}  // extern "C"
