#include "MacEnergyLibrary.h"

#include <CoreFoundation/CoreFoundation.h>

#include <array>
#include <memory>
#include <utility>

#include "CFConversion.h"
#include "CFReference.h"
#include "ObjectiveC.h"

namespace quorvex {

namespace {

constexpr std::array libraryPaths{
    "/usr/lib/libIOReport.dylib",
    "/System/Library/PrivateFrameworks/IOReport.framework/IOReport",
    "/System/Library/PrivateFrameworks/IOReport.framework/Versions/A/IOReport",
    "libIOReport.dylib",
    "IOReport",
};

/// The library's functions as it passes and expects them; it has no public header. Objects that it
/// creates or copies are retained.
struct Functions {
  CFDictionaryRef (*copyChannelsInGroup)(CFStringRef group, CFStringRef subgroup,
                                         const void* unused) = nullptr;
  CFTypeRef (*createSubscription)(const void* unused, CFMutableDictionaryRef channels,
                                  CFMutableDictionaryRef* subscribedChannels, std::uint64_t zero,
                                  const void* alsoUnused) = nullptr;
  CFDictionaryRef (*createSamples)(CFTypeRef subscription, CFMutableDictionaryRef channels,
                                   const void* unused) = nullptr;
  CFDictionaryRef (*createSamplesDelta)(CFDictionaryRef previous, CFDictionaryRef current,
                                        const void* unused) = nullptr;
  CFStringRef (*getChannelGroup)(CFTypeRef channel) = nullptr;
  CFStringRef (*getChannelName)(CFTypeRef channel) = nullptr;
  std::int64_t (*simpleGetIntegerValue)(CFTypeRef channel, std::int32_t index) = nullptr;
  // Not in every release.
  std::int32_t (*getChannelCount)(CFDictionaryRef samples) = nullptr;
  CFTypeRef (*getChannelInGroup)(CFDictionaryRef samples, std::int64_t index) = nullptr;
};

/// Whether all functions were found that must be there.
bool findFunctions(DynamicLibrary& library, Functions& functions) {
  const bool isComplete =
      library.find("IOReportCopyChannelsInGroup", functions.copyChannelsInGroup) &&
      library.find("IOReportCreateSubscription", functions.createSubscription) &&
      library.find("IOReportCreateSamples", functions.createSamples) &&
      library.find("IOReportCreateSamplesDelta", functions.createSamplesDelta) &&
      library.find("IOReportChannelGetGroup", functions.getChannelGroup) &&
      library.find("IOReportChannelGetChannelName", functions.getChannelName) &&
      library.find("IOReportSimpleGetIntegerValue", functions.simpleGetIntegerValue);
  if (isComplete) {
    library.find("IOReportChannelGetCount", functions.getChannelCount);
    library.find("IOReportChannelGetChannelEntry", functions.getChannelInGroup);
  }
  return isComplete;
}

/// Takes over a retained object.
PlatformObject owned(CFTypeRef object) {
  return object != nullptr ? PlatformObject{object, CFRelease} : nullptr;
}

template <typename Reference>
Reference reference(const PlatformObject& object) {
  return static_cast<Reference>(const_cast<void*>(object.get()));
}

class MacEnergyEntryPoints final : public EnergyEntryPoints {
 public:
  MacEnergyEntryPoints(std::unique_ptr<DynamicLibrary> library, const Functions& functions)
      : library_(std::move(library)),
        functions_(functions),
        channelListKey_(cf::makeString("IOReportChannels")) {}

  PlatformObject copyChannelsInGroup(std::string_view group,
                                     std::optional<std::string_view> subgroup) override {
    const AutoreleasePool pool;
    const auto groupName = cf::makeString(group);
    const auto subgroupName = subgroup ? cf::makeString(*subgroup) : CFReference<CFStringRef>{};
    return owned(functions_.copyChannelsInGroup(groupName.get(), subgroupName.get(), nullptr));
  }

  EnergySubscription createSubscription(const PlatformObject& channels) override {
    const AutoreleasePool pool;
    CFMutableDictionaryRef subscribed = nullptr;
    CFTypeRef subscription = functions_.createSubscription(
        nullptr, reference<CFMutableDictionaryRef>(channels), &subscribed, 0, nullptr);
    return {.subscription = owned(subscription), .channels = owned(subscribed)};
  }

  PlatformObject createSamples(const PlatformObject& subscription,
                               const PlatformObject& channels) override {
    const AutoreleasePool pool;
    return owned(functions_.createSamples(subscription.get(),
                                          reference<CFMutableDictionaryRef>(channels), nullptr));
  }

  PlatformObject createSamplesDelta(const PlatformObject& previous,
                                    const PlatformObject& current) override {
    const AutoreleasePool pool;
    return owned(functions_.createSamplesDelta(reference<CFDictionaryRef>(previous),
                                               reference<CFDictionaryRef>(current), nullptr));
  }

  std::int64_t channelCount(const PlatformObject& samples) override {
    if (functions_.getChannelCount != nullptr) {
      return functions_.getChannelCount(reference<CFDictionaryRef>(samples));
    }
    CFArrayRef list = channelList(samples);
    return list != nullptr ? CFArrayGetCount(list) : 0;
  }

  const void* channelEntry(const PlatformObject& samples, std::int64_t index) override {
    if (functions_.getChannelInGroup != nullptr) {
      return functions_.getChannelInGroup(reference<CFDictionaryRef>(samples), index);
    }
    CFArrayRef list = channelList(samples);
    if (list == nullptr || index < 0 || index >= CFArrayGetCount(list)) {
      return nullptr;
    }
    return CFArrayGetValueAtIndex(list, index);
  }

  std::optional<std::string> channelGroup(const void* channel) override {
    const AutoreleasePool pool;
    return cf::text(functions_.getChannelGroup(channel));
  }

  std::optional<std::string> channelName(const void* channel) override {
    const AutoreleasePool pool;
    return cf::text(functions_.getChannelName(channel));
  }

  std::int64_t simpleIntegerValue(const void* channel, std::int32_t index) override {
    const AutoreleasePool pool;
    return functions_.simpleGetIntegerValue(channel, index);
  }

 private:
  /// The array of channels inside a sample or delta; null when there is none.
  [[nodiscard]] CFArrayRef channelList(const PlatformObject& samples) const {
    const void* list =
        CFDictionaryGetValue(reference<CFDictionaryRef>(samples), channelListKey_.get());
    const bool isArray = list != nullptr && CFGetTypeID(list) == CFArrayGetTypeID();
    return isArray ? static_cast<CFArrayRef>(list) : nullptr;
  }

  std::unique_ptr<DynamicLibrary> library_;
  Functions functions_;
  CFReference<CFStringRef> channelListKey_;
};

}  // namespace

std::unique_ptr<EnergyEntryPoints> MacEnergyLibrary::open() {
  for (const char* path : libraryPaths) {
    auto library = std::make_unique<DynamicLibrary>(
        *loader_, loader_->open(path, DynamicLoader::Binding::lazy));
    if (*library) {
      Functions functions;
      return findFunctions(*library, functions)
                 ? std::make_unique<MacEnergyEntryPoints>(std::move(library), functions)
                 : nullptr;
    }
  }
  return nullptr;
}

}  // namespace quorvex
