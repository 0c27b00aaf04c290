#include <map>

#include "FakeDarwin.h"
#include "FakeLoader.h"

namespace quorvex::darwin {

namespace {

/// A service is an object with its product and its event as children; an event is its number.
enum ServicePart : std::size_t { productPart, eventPart };

std::int64_t integerAt(CFDictionaryRef dictionary, const char* key) {
  CFTypeRef name = text(std::string{key})();
  const void* value = CFDictionaryGetValue(dictionary, name);
  CFRelease(name);
  std::int64_t integer = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &integer);
  return integer;
}

CFTypeRef createClient(CFAllocatorRef allocator) {
  fake().note("IOHIDEventSystemClientCreate");
  if (allocator != kCFAllocatorDefault) {
    fake().fault("IOHIDEventSystemClientCreate with another allocator");
  }
  return fake().hasHIDClient ? other()() : nullptr;
}

void clientSetMatching(CFTypeRef client, CFDictionaryRef matching) {
  static_cast<void>(liveObject(client, "IOHIDEventSystemClientSetMatching"));
  fake().note("IOHIDEventSystemClientSetMatching " +
              std::to_string(integerAt(matching, "PrimaryUsagePage")) + " " +
              std::to_string(integerAt(matching, "PrimaryUsage")));
}

CFArrayRef clientCopyServices(CFTypeRef client) {
  static_cast<void>(liveObject(client, "IOHIDEventSystemClientCopyServices"));
  fake().note("IOHIDEventSystemClientCopyServices");
  if (!fake().hidServices) {
    return nullptr;
  }
  std::vector<Make> services;
  for (const auto& service : *fake().hidServices) {
    services.push_back(
        other({service.product, service.value ? number(*service.value) : nothing()}));
  }
  return static_cast<CFArrayRef>(array(std::move(services))());
}

CFTypeRef serviceCopyProperty(CFTypeRef service, CFStringRef key) {
  fake().note("IOHIDServiceClientCopyProperty " + utf8(key));
  CFTypeRef product = cast<OtherObject>(service)->children.at(productPart);
  return product != nullptr ? CFRetain(product) : nullptr;
}

CFTypeRef serviceCopyEvent(CFTypeRef service, std::uint32_t type, std::int32_t options,
                           std::uint32_t timestamp) {
  fake().note("IOHIDServiceClientCopyEvent " + std::to_string(type) + " " +
              std::to_string(options) + " " + std::to_string(timestamp));
  CFTypeRef event = cast<OtherObject>(service)->children.at(eventPart);
  return event != nullptr ? CFRetain(event) : nullptr;
}

double eventGetFloatValue(CFTypeRef event, std::uint32_t field) {
  fake().note("IOHIDEventGetFloatValue " + std::to_string(field));
  double value = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(event), kCFNumberFloat64Type, &value);
  return value;
}

template <typename Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

}  // namespace

void* hidFunction(const std::string& name) {
  static const std::map<std::string, void*> functions{
      {"IOHIDEventSystemClientCreate", address(createClient)},
      {"IOHIDEventSystemClientSetMatching", address(clientSetMatching)},
      {"IOHIDEventSystemClientCopyServices", address(clientCopyServices)},
      {"IOHIDServiceClientCopyProperty", address(serviceCopyProperty)},
      {"IOHIDServiceClientCopyEvent", address(serviceCopyEvent)},
      {"IOHIDEventGetFloatValue", address(eventGetFloatValue)},
  };
  const auto found = functions.find(name);
  return found != functions.end() ? found->second : nullptr;
}

}  // namespace quorvex::darwin
