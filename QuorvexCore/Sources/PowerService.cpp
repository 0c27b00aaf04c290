#include "PowerService.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "CheckedArithmetic.h"
#include "Text.h"

namespace quorvex {

namespace {

constexpr std::string_view energyGroup = "Energy Model";
constexpr double samplingIntervalSeconds = 0.1;
constexpr double nanojoulesPerJoule = 1e9;

/// Components of the silicon, as indices.
enum Component : std::size_t { cpu, gpu, ane, ram, componentCount };

/// The channels that carry a component's whole energy, by component.
constexpr std::array<std::string_view, componentCount> exactNames{"CPU Energy", "GPU Energy",
                                                                  "ANE0", "DRAM0"};

struct PartialName {
  std::string_view word;
  Component component;
};

/// Words that mark a channel as a part of a component; the first word found decides.
constexpr std::array partialNames{PartialName{"cpu", cpu}, PartialName{"gpu", gpu},
                                  PartialName{"ane", ane}, PartialName{"dram", ram},
                                  PartialName{"ram", ram}};

/// Collects channel values by component. A component's exact channel wins over the sum of its
/// partial ones, so that energy is never counted twice.
class EnergyAccumulator {
 public:
  void add(std::string_view name, std::int64_t nanojoules) {
    const auto exact = std::ranges::find(exactNames, name);
    if (exact != exactNames.end()) {
      Energy& energy = energies_[static_cast<std::size_t>(exact - exactNames.begin())];
      energy.exact = nanojoules;
      energy.hasExact = true;
      foundAnything_ = true;
      return;
    }
    const std::string lowercased = text::lowercased(name);
    for (const PartialName& partial : partialNames) {
      if (lowercased.find(partial.word) != std::string::npos) {
        Energy& energy = energies_[partial.component];
        energy.sum = checkedAdd(energy.sum, nanojoules);
        foundAnything_ = true;
        return;
      }
    }
  }

  [[nodiscard]] std::optional<PowerMetrics> metrics(double intervalSeconds) const {
    if (!foundAnything_ || !(intervalSeconds > 0.0)) {
      return std::nullopt;
    }
    const double wattsPerNanojoule = 1.0 / (intervalSeconds * nanojoulesPerJoule);
    const auto watts = [&](Component component) {
      const Energy& energy = energies_[component];
      const std::int64_t nanojoules = energy.hasExact ? energy.exact : energy.sum;
      return std::max(0.0, wattsPerNanojoule * static_cast<double>(nanojoules));
    };
    PowerMetrics metrics;
    metrics.cpuPower = watts(cpu);
    metrics.gpuPower = watts(gpu);
    metrics.anePower = watts(ane);
    metrics.ramPower = watts(ram);
    metrics.systemPower = metrics.cpuPower + metrics.gpuPower + metrics.anePower + metrics.ramPower;
    metrics.siliconChannelsComplete = std::ranges::all_of(energies_, &Energy::hasExact);
    return metrics;
  }

 private:
  struct Energy {
    std::int64_t exact = 0;
    bool hasExact = false;
    std::int64_t sum = 0;
  };

  std::array<Energy, componentCount> energies_{};
  bool foundAnything_ = false;
};

}  // namespace

PowerService::PowerService(EnergyLibrary& library, Clock& clock)
    : clock_(&clock), bridge_(IOReportBridge::load(library)) {}

std::optional<PowerMetrics> PowerService::read() {
  if (bridge_ == nullptr) {
    return std::nullopt;
  }
  const auto subscription = acquireSubscription();
  if (!subscription) {
    return std::nullopt;
  }
  const PlatformObject first = bridge_->sample(*subscription);
  if (first == nullptr) {
    return std::nullopt;
  }
  clock_->sleep(samplingIntervalSeconds);
  const PlatformObject second = bridge_->sample(*subscription);
  if (second == nullptr) {
    return std::nullopt;
  }
  const PlatformObject delta = bridge_->delta(first, second);
  if (delta == nullptr) {
    return std::nullopt;
  }
  return parseEnergyDelta(*bridge_, delta, samplingIntervalSeconds);
}

std::optional<EnergySubscription> PowerService::acquireSubscription() {
  const std::scoped_lock lock{mutex_};
  if (!cachedSubscription_) {
    const PlatformObject channels = bridge_->channelsInGroup(energyGroup);
    if (channels != nullptr) {
      cachedSubscription_ = bridge_->subscription(channels);
    }
  }
  return cachedSubscription_;
}

std::optional<PowerMetrics> PowerService::parseEnergyDelta(const IOReportBridge& bridge,
                                                           const PlatformObject& delta,
                                                           double intervalSeconds) {
  EnergyAccumulator accumulator;
  const std::int64_t count = bridge.channelCount(delta);
  for (std::int64_t index = 0; index < count; ++index) {
    const void* channel = bridge.channelEntry(delta, index);
    if (channel == nullptr) {
      continue;
    }
    if (const auto name = bridge.channelName(channel)) {
      accumulator.add(*name, bridge.integerValue(channel, 0));
    }
  }
  return accumulator.metrics(intervalSeconds);
}

std::optional<PowerMetrics> PowerService::parseEnergyChannels(
    std::span<const EnergyChannelDelta> channels, double intervalSeconds) {
  EnergyAccumulator accumulator;
  for (const EnergyChannelDelta& channel : channels) {
    accumulator.add(channel.name, channel.nanojoules);
  }
  return accumulator.metrics(intervalSeconds);
}

}  // namespace quorvex
