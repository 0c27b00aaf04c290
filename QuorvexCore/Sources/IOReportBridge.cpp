#include "IOReportBridge.h"

#include <utility>

namespace quorvex {

std::unique_ptr<IOReportBridge> IOReportBridge::load(EnergyLibrary& library) {
  auto entryPoints = library.open();
  if (entryPoints == nullptr) {
    return nullptr;
  }
  return std::unique_ptr<IOReportBridge>{new IOReportBridge{std::move(entryPoints)}};
}

IOReportBridge::IOReportBridge(std::unique_ptr<EnergyEntryPoints> entryPoints)
    : entryPoints_(std::move(entryPoints)) {}

PlatformObject IOReportBridge::channelsInGroup(std::string_view group,
                                               std::optional<std::string_view> subgroup) const {
  return entryPoints_->copyChannelsInGroup(group, subgroup);
}

std::optional<EnergySubscription> IOReportBridge::subscription(
    const PlatformObject& channels) const {
  auto result = entryPoints_->createSubscription(channels);
  if (result.subscription == nullptr || result.channels == nullptr) {
    return std::nullopt;
  }
  return result;
}

PlatformObject IOReportBridge::sample(const EnergySubscription& subscription) const {
  return entryPoints_->createSamples(subscription.subscription, subscription.channels);
}

PlatformObject IOReportBridge::delta(const PlatformObject& previous,
                                     const PlatformObject& current) const {
  return entryPoints_->createSamplesDelta(previous, current);
}

std::int64_t IOReportBridge::channelCount(const PlatformObject& samples) const {
  return entryPoints_->channelCount(samples);
}

const void* IOReportBridge::channelEntry(const PlatformObject& samples, std::int64_t index) const {
  return entryPoints_->channelEntry(samples, index);
}

std::optional<std::string> IOReportBridge::channelGroupName(const void* channel) const {
  return entryPoints_->channelGroup(channel);
}

std::optional<std::string> IOReportBridge::channelName(const void* channel) const {
  return entryPoints_->channelName(channel);
}

std::int64_t IOReportBridge::integerValue(const void* channel, std::int32_t index) const {
  return entryPoints_->simpleIntegerValue(channel, index);
}

}  // namespace quorvex
