#include <map>

#include "FakeDarwin.h"
#include "FakeLoader.h"

namespace quorvex::darwin {

namespace {

/// A channel is an object with its name, group and value as children.
enum ChannelPart : std::size_t { namePart, groupPart, valuePart };

CFTypeRef part(CFTypeRef channel, ChannelPart wanted) {
  return cast<OtherObject>(channel)->children.at(wanted);
}

CFArrayRef listOf(CFDictionaryRef samples) {
  const Make key = text(std::string{"IOReportChannels"});
  CFTypeRef name = key();
  const void* list = CFDictionaryGetValue(samples, name);
  CFRelease(name);
  return static_cast<CFArrayRef>(list);
}

CFDictionaryRef copyChannelsInGroup(CFStringRef group, CFStringRef subgroup, const void* unused) {
  fake().note("IOReportCopyChannelsInGroup " + utf8(group) + " " + utf8(subgroup));
  if (unused != nullptr) {
    fake().fault("IOReportCopyChannelsInGroup with other arguments");
  }
  return static_cast<CFDictionaryRef>(fake().channelsInGroup());
}

CFTypeRef createSubscription(const void* unused, CFMutableDictionaryRef channels,
                             CFMutableDictionaryRef* subscribedChannels, std::uint64_t zero,
                             const void* alsoUnused) {
  fake().note("IOReportCreateSubscription");
  if (unused != nullptr || channels == nullptr || *subscribedChannels != nullptr || zero != 0 ||
      alsoUnused != nullptr) {
    fake().fault("IOReportCreateSubscription with other arguments");
  }
  *subscribedChannels =
      static_cast<CFMutableDictionaryRef>(const_cast<void*>(fake().subscribedChannels()));
  return fake().subscription();
}

CFDictionaryRef createSamples(CFTypeRef subscription, CFMutableDictionaryRef channels,
                              const void* unused) {
  fake().note("IOReportCreateSamples");
  if (liveObject(subscription, "IOReportCreateSamples") == nullptr ||
      liveObject(channels, "IOReportCreateSamples") == nullptr || unused != nullptr) {
    fake().fault("IOReportCreateSamples with other arguments");
  }
  return static_cast<CFDictionaryRef>(fake().samples());
}

CFDictionaryRef createSamplesDelta(CFDictionaryRef previous, CFDictionaryRef current,
                                   const void* unused) {
  fake().note("IOReportCreateSamplesDelta");
  if (liveObject(previous, "IOReportCreateSamplesDelta") == nullptr ||
      liveObject(current, "IOReportCreateSamplesDelta") == nullptr || unused != nullptr) {
    fake().fault("IOReportCreateSamplesDelta with other arguments");
  }
  return static_cast<CFDictionaryRef>(fake().delta());
}

CFStringRef getChannelGroup(CFTypeRef channel) {
  return static_cast<CFStringRef>(part(channel, groupPart));
}

CFStringRef getChannelName(CFTypeRef channel) {
  // A temporary object, as some libraries hand out.
  CFTypeRef name = part(channel, namePart);
  return static_cast<CFStringRef>(name != nullptr ? autoreleased(CFRetain(name)) : nullptr);
}

std::int64_t simpleGetIntegerValue(CFTypeRef channel, std::int32_t index) {
  if (index != 0) {
    fake().fault("IOReportSimpleGetIntegerValue with another index");
  }
  std::int64_t value = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(part(channel, valuePart)), kCFNumberSInt64Type, &value);
  return value;
}

std::int32_t getChannelCount(CFDictionaryRef samples) {
  fake().note("IOReportChannelGetCount");
  CFArrayRef list = listOf(samples);
  return list != nullptr ? static_cast<std::int32_t>(CFArrayGetCount(list)) : 0;
}

CFTypeRef getChannelEntry(CFDictionaryRef samples, std::int64_t index) {
  fake().note("IOReportChannelGetChannelEntry");
  CFArrayRef list = listOf(samples);
  return list != nullptr ? CFArrayGetValueAtIndex(list, index) : nullptr;
}

template <typename Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

Make maybeText(const std::optional<std::string>& value) {
  return value ? text(*value) : nothing();
}

}  // namespace

void* energyFunction(const std::string& name) {
  static const std::map<std::string, void*> functions{
      {"IOReportCopyChannelsInGroup", address(copyChannelsInGroup)},
      {"IOReportCreateSubscription", address(createSubscription)},
      {"IOReportCreateSamples", address(createSamples)},
      {"IOReportCreateSamplesDelta", address(createSamplesDelta)},
      {"IOReportChannelGetGroup", address(getChannelGroup)},
      {"IOReportChannelGetChannelName", address(getChannelName)},
      {"IOReportSimpleGetIntegerValue", address(simpleGetIntegerValue)},
      {"IOReportChannelGetCount", address(getChannelCount)},
      {"IOReportChannelGetChannelEntry", address(getChannelEntry)},
  };
  const auto found = functions.find(name);
  return found != functions.end() ? found->second : nullptr;
}

Make channelList(std::vector<Channel> channels) {
  std::vector<Make> made;
  made.reserve(channels.size());
  for (const Channel& channel : channels) {
    made.push_back(
        other({maybeText(channel.name), maybeText(channel.group), number(channel.value)}));
  }
  return dictionary(
      std::vector<std::pair<std::string, Make>>{{"IOReportChannels", array(std::move(made))}});
}

}  // namespace quorvex::darwin
