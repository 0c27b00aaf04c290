#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "EnergyLibrary.h"

namespace quorvex {

/// The private IOReport library behind its entry points. An instance exists only when the library
/// and all its required entry points were found. Destroying it closes the library.
/// Several threads may call at a time.
class IOReportBridge {
 public:
  /// Loads the library; null when it is missing, which is a normal state.
  [[nodiscard]] static std::unique_ptr<IOReportBridge> load(EnergyLibrary& library);

  [[nodiscard]] PlatformObject channelsInGroup(
      std::string_view group, std::optional<std::string_view> subgroup = std::nullopt) const;
  /// None unless both the subscription and its subscribed channels came back.
  [[nodiscard]] std::optional<EnergySubscription> subscription(
      const PlatformObject& channels) const;
  [[nodiscard]] PlatformObject sample(const EnergySubscription& subscription) const;
  [[nodiscard]] PlatformObject delta(const PlatformObject& previous,
                                     const PlatformObject& current) const;

  [[nodiscard]] std::int64_t channelCount(const PlatformObject& samples) const;
  [[nodiscard]] const void* channelEntry(const PlatformObject& samples, std::int64_t index) const;
  [[nodiscard]] std::optional<std::string> channelGroupName(const void* channel) const;
  [[nodiscard]] std::optional<std::string> channelName(const void* channel) const;
  [[nodiscard]] std::int64_t integerValue(const void* channel, std::int32_t index) const;

 private:
  explicit IOReportBridge(std::unique_ptr<EnergyEntryPoints> entryPoints);

  std::unique_ptr<EnergyEntryPoints> entryPoints_;
};

}  // namespace quorvex
