#include "RecordedEnergyLibrary.h"

namespace quorvex {

namespace {

constexpr std::string_view energyGroup = "Energy Model";

using Channels = std::vector<RecordedEnergyChannel>;

/// What stands behind every object of the recorded library.
struct EnergyObject {
  const Channels* channels = nullptr;  ///< of the recording; null for everything but a delta
};

class RecordedEnergyEntryPoints final : public EnergyEntryPoints {
 public:
  RecordedEnergyEntryPoints(const Track<Channels>& channels, RecordedClock& clock)
      : channels_(&channels), clock_(&clock) {}

  PlatformObject copyChannelsInGroup(std::string_view group,
                                     std::optional<std::string_view> subgroup) override {
    return group == energyGroup && !subgroup ? markerUnlessMissing() : nullptr;
  }

  EnergySubscription createSubscription(const PlatformObject& channels) override {
    if (!channels) {
      return {};
    }
    const PlatformObject marker = markerUnlessMissing();
    return {.subscription = marker, .channels = marker};
  }

  PlatformObject createSamples(const PlatformObject& subscription,
                               const PlatformObject& channels) override {
    return subscription && channels ? markerUnlessMissing() : nullptr;
  }

  PlatformObject createSamplesDelta(const PlatformObject& previous,
                                    const PlatformObject& current) override {
    const Channels* channels = channels_->value(clock_->positionInPass());
    if (!previous || !current || channels == nullptr) {
      return nullptr;
    }
    return std::make_shared<const EnergyObject>(EnergyObject{channels});
  }

  std::int64_t channelCount(const PlatformObject& samples) override {
    const Channels* channels = channelsOf(samples);
    return channels != nullptr ? static_cast<std::int64_t>(channels->size()) : 0;
  }

  const void* channelEntry(const PlatformObject& samples, std::int64_t index) override {
    const Channels* channels = channelsOf(samples);
    if (index < 0 || index >= channelCount(samples)) {
      return nullptr;
    }
    return &(*channels)[static_cast<std::size_t>(index)];
  }

  std::optional<std::string> channelGroup(const void* channel) override {
    return channel != nullptr ? std::optional{std::string{energyGroup}} : std::nullopt;
  }

  std::optional<std::string> channelName(const void* channel) override {
    return channel != nullptr ? entry(channel).name : std::nullopt;
  }

  std::int64_t simpleIntegerValue(const void* channel, std::int32_t index) override {
    return channel != nullptr && index == 0 ? entry(channel).delta : 0;
  }

 private:
  static const Channels* channelsOf(const PlatformObject& samples) {
    return samples ? static_cast<const EnergyObject*>(samples.get())->channels : nullptr;
  }

  static const RecordedEnergyChannel& entry(const void* channel) {
    return *static_cast<const RecordedEnergyChannel*>(channel);
  }

  /// An object without channels of its own; null in a frame that has no library.
  [[nodiscard]] PlatformObject markerUnlessMissing() const {
    static const auto marker = std::make_shared<const EnergyObject>();
    return channels_->value(clock_->positionInPass()) != nullptr ? marker : nullptr;
  }

  const Track<Channels>* channels_;
  RecordedClock* clock_;
};

}  // namespace

std::unique_ptr<EnergyEntryPoints> RecordedEnergyLibrary::open() {
  if (channels_->value(clock_->positionInPass()) == nullptr) {
    return nullptr;
  }
  return std::make_unique<RecordedEnergyEntryPoints>(*channels_, *clock_);
}

}  // namespace quorvex
