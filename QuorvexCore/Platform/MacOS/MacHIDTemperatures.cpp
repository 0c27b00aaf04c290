#include "MacHIDTemperatures.h"

#include <CoreFoundation/CoreFoundation.h>

#include <array>
#include <cstdint>
#include <utility>

#include "CFConversion.h"
#include "CFReference.h"
#include "ObjectiveC.h"

namespace quorvex {

namespace {

constexpr std::int32_t sensorUsagePage = 0xFF00;
constexpr std::int32_t sensorUsage = 5;
constexpr std::uint32_t temperatureEvent = 15;
constexpr std::uint32_t temperatureField = temperatureEvent << 16U;

/// The functions as the system passes and expects them; they have no public header. What they copy
/// or create is retained.
struct Functions {
  CFTypeRef (*createClient)(CFAllocatorRef allocator) = nullptr;
  void (*clientSetMatching)(CFTypeRef client, CFDictionaryRef matching) = nullptr;
  CFArrayRef (*clientCopyServices)(CFTypeRef client) = nullptr;
  CFTypeRef (*serviceCopyProperty)(CFTypeRef service, CFStringRef key) = nullptr;
  CFTypeRef (*serviceCopyEvent)(CFTypeRef service, std::uint32_t type, std::int32_t options,
                                std::uint32_t timestamp) = nullptr;
  double (*eventGetFloatValue)(CFTypeRef event, std::uint32_t field) = nullptr;
};

bool findFunctions(DynamicLibrary& library, Functions& functions) {
  return library.find("IOHIDEventSystemClientCreate", functions.createClient) &&
         library.find("IOHIDEventSystemClientSetMatching", functions.clientSetMatching) &&
         library.find("IOHIDEventSystemClientCopyServices", functions.clientCopyServices) &&
         library.find("IOHIDServiceClientCopyProperty", functions.serviceCopyProperty) &&
         library.find("IOHIDServiceClientCopyEvent", functions.serviceCopyEvent) &&
         library.find("IOHIDEventGetFloatValue", functions.eventGetFloatValue);
}

CFReference<CFDictionaryRef> sensorMatching() {
  const auto pageKey = cf::makeString("PrimaryUsagePage");
  const auto usageKey = cf::makeString("PrimaryUsage");
  const CFReference<CFNumberRef> page{
      CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &sensorUsagePage)};
  const CFReference<CFNumberRef> usage{
      CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &sensorUsage)};
  std::array<const void*, 2> keys{pageKey.get(), usageKey.get()};
  std::array<const void*, 2> values{page.get(), usage.get()};
  return CFReference<CFDictionaryRef>{
      CFDictionaryCreate(kCFAllocatorDefault, keys.data(), values.data(), keys.size(),
                         &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks)};
}

class MacHIDTemperatureClient final : public HIDTemperatureClient {
 public:
  MacHIDTemperatureClient(const Functions& functions, CFReference<CFTypeRef> client)
      : functions_(functions), client_(std::move(client)), productKey_(cf::makeString("Product")) {
    functions_.clientSetMatching(client_.get(), sensorMatching().get());
  }

  std::optional<std::vector<HIDTemperatureService>> copyServices() override {
    const AutoreleasePool pool;
    const CFReference<CFArrayRef> services{functions_.clientCopyServices(client_.get())};
    if (!services) {
      return std::nullopt;
    }
    const CFIndex count = CFArrayGetCount(services.get());
    std::vector<HIDTemperatureService> result;
    result.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i) {
      result.push_back(read(CFArrayGetValueAtIndex(services.get(), i)));
    }
    return result;
  }

 private:
  [[nodiscard]] HIDTemperatureService read(CFTypeRef service) const {
    const CFReference<CFTypeRef> product{
        functions_.serviceCopyProperty(service, productKey_.get())};
    HIDTemperatureService result{.product = cf::text(product.get()), .value = std::nullopt};
    const CFReference<CFTypeRef> event{
        functions_.serviceCopyEvent(service, temperatureEvent, 0, 0)};
    if (event) {
      result.value = functions_.eventGetFloatValue(event.get(), temperatureField);
    }
    return result;
  }

  Functions functions_;
  CFReference<CFTypeRef> client_;
  CFReference<CFStringRef> productKey_;
};

}  // namespace

std::unique_ptr<HIDTemperatureClient> MacHIDTemperatures::open() {
  DynamicLibrary process{*loader_, loader_->open(nullptr, DynamicLoader::Binding::now)};
  Functions functions;
  if (!process || !findFunctions(process, functions)) {
    return nullptr;
  }
  CFReference<CFTypeRef> client{functions.createClient(kCFAllocatorDefault)};
  if (!client) {
    return nullptr;
  }
  // The client calls into it for as long as it lives.
  process.keepOpen();
  return std::make_unique<MacHIDTemperatureClient>(functions, std::move(client));
}

}  // namespace quorvex
