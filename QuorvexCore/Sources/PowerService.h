#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>

#include "Clock.h"
#include "EnergyLibrary.h"
#include "IOReportBridge.h"
#include "PowerMetrics.h"

namespace quorvex {

/// One energy channel of a delta.
struct EnergyChannelDelta {
  std::string name;
  std::int64_t nanojoules = 0;
};

/// Measures CPU, GPU, neural-engine and DRAM power from the IOReport energy channels. The library
/// is looked for once, at construction. Reads may overlap; the cached subscription is guarded.
class PowerService {
 public:
  PowerService(EnergyLibrary& library, Clock& clock);

  /// Takes a pair of samples 0.1 s apart, blocking the thread for that long; none when the library,
  /// the channel group, a sample or any known channel is missing.
  [[nodiscard]] std::optional<PowerMetrics> read();

  /// The powers of one delta over `intervalSeconds`. Values count as nanojoules whatever unit the
  /// channel reports. None for an empty delta, no known channel, or an interval not above 0.
  [[nodiscard]] static std::optional<PowerMetrics> parseEnergyDelta(const IOReportBridge& bridge,
                                                                    const PlatformObject& delta,
                                                                    double intervalSeconds);
  /// The same for a list of channels.
  [[nodiscard]] static std::optional<PowerMetrics> parseEnergyChannels(
      std::span<const EnergyChannelDelta> channels, double intervalSeconds);

 private:
  [[nodiscard]] std::optional<EnergySubscription> acquireSubscription();

  Clock* clock_;
  std::unique_ptr<IOReportBridge> bridge_;
  std::mutex mutex_;
  std::optional<EnergySubscription> cachedSubscription_;
};

}  // namespace quorvex
