#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

/// A retained platform object (a dictionary, sample or subscription) that is released with its last
/// owner; null stands for none.
using PlatformObject = std::shared_ptr<const void>;

/// A subscription with the channels that it really covers; either may be null when it failed.
struct EnergySubscription {
  PlatformObject subscription;
  PlatformObject channels;
};

/// The entry points of a loaded energy library. Destroying it closes the library. Calls on one
/// object may come from several threads at a time.
class EnergyEntryPoints {
 public:
  EnergyEntryPoints() = default;
  EnergyEntryPoints(const EnergyEntryPoints&) = delete;
  EnergyEntryPoints& operator=(const EnergyEntryPoints&) = delete;
  virtual ~EnergyEntryPoints() = default;

  /// The channels of a group, all subgroups when `subgroup` is none; null when there are none.
  [[nodiscard]] virtual PlatformObject copyChannelsInGroup(
      std::string_view group, std::optional<std::string_view> subgroup) = 0;
  /// Subscribes to channels; a null member tells which half of the answer is missing.
  [[nodiscard]] virtual EnergySubscription createSubscription(const PlatformObject& channels) = 0;
  /// The counters of the subscribed channels now; null on failure.
  [[nodiscard]] virtual PlatformObject createSamples(const PlatformObject& subscription,
                                                     const PlatformObject& channels) = 0;
  /// What the counters moved between two samples; null on failure.
  [[nodiscard]] virtual PlatformObject createSamplesDelta(const PlatformObject& previous,
                                                          const PlatformObject& current) = 0;

  /// Number of channels of a sample or delta; 0 without a channel list.
  [[nodiscard]] virtual std::int64_t channelCount(const PlatformObject& samples) = 0;
  /// The channel at an index: a borrowed pointer that lives as long as `samples`; null for none.
  [[nodiscard]] virtual const void* channelEntry(const PlatformObject& samples,
                                                 std::int64_t index) = 0;
  [[nodiscard]] virtual std::optional<std::string> channelGroup(const void* channel) = 0;
  [[nodiscard]] virtual std::optional<std::string> channelName(const void* channel) = 0;
  /// The channel's counter; nanojoules for energy channels.
  [[nodiscard]] virtual std::int64_t simpleIntegerValue(const void* channel,
                                                        std::int32_t index) = 0;
};

/// Finds the private energy library (IOReport) at run time.
class EnergyLibrary {
 public:
  EnergyLibrary() = default;
  EnergyLibrary(const EnergyLibrary&) = delete;
  EnergyLibrary& operator=(const EnergyLibrary&) = delete;
  virtual ~EnergyLibrary() = default;

  /// Loads the library; null when it or one of its required entry points is missing. Any thread.
  [[nodiscard]] virtual std::unique_ptr<EnergyEntryPoints> open() = 0;
};

}  // namespace quorvex
