#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "EnergyLibrary.h"

namespace quorvex::testing {

/// One channel of the delta that the fake library forms.
struct FakeEnergyChannel {
  std::optional<std::string> name;
  std::int64_t value = 0;  ///< nanojoules
  bool hasEntry = true;    ///< false: there is no entry at this index
  std::string group = "Energy Model";
};

/// An energy library that exists only here: settable answers, a log of calls and a count of what is
/// not released yet. Any thread.
class FakeEnergyLibrary final : public EnergyLibrary {
 public:
  /// The steps that a test can let fail.
  enum class Step { open, channels, subscription, subscribedChannels, delta };

  /// The channels of every delta formed from now on.
  void setChannels(std::vector<FakeEnergyChannel> channels) {
    const std::scoped_lock lock{state_->mutex};
    state_->channels = std::move(channels);
  }
  void setFails(Step step, bool fails = true) {
    const std::scoped_lock lock{state_->mutex};
    state_->fails[static_cast<std::size_t>(step)] = fails;
  }
  /// Lets the n-th sample from now on fail, counted from 1, and no other.
  void failSample(int number) {
    const std::scoped_lock lock{state_->mutex};
    state_->failingSample = number;
  }
  /// The count that deltas claim to have in place of the number of channels.
  void setCount(std::optional<std::int64_t> count) {
    const std::scoped_lock lock{state_->mutex};
    state_->count = count;
  }

  /// Every call in order, by the names of the port's functions; the walk over channels is left out.
  [[nodiscard]] std::vector<std::string> log() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->log;
  }
  /// Group and subgroup ("-" for none) of the last request for channels.
  [[nodiscard]] std::string requestedGroup() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->requestedGroup;
  }
  /// How many dictionaries, subscriptions and samples are not released yet.
  [[nodiscard]] int liveObjects() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->liveObjects;
  }
  /// How often objects were released after their library was closed.
  [[nodiscard]] int lateReleases() const {
    const std::scoped_lock lock{state_->mutex};
    return state_->lateReleases;
  }

  std::unique_ptr<EnergyEntryPoints> open() override {
    const std::scoped_lock lock{state_->mutex};
    state_->log.emplace_back("open");
    if (state_->failing(Step::open)) {
      return nullptr;
    }
    state_->isOpen = true;
    return std::make_unique<EntryPoints>(state_);
  }

 private:
  struct State {
    mutable std::mutex mutex;
    std::vector<FakeEnergyChannel> channels;
    bool fails[5] = {};
    int failingSample = 0;
    std::optional<std::int64_t> count;
    std::vector<std::string> log;
    std::string requestedGroup;
    int liveObjects = 0;
    int lateReleases = 0;
    bool isOpen = false;

    [[nodiscard]] bool failing(Step step) const { return fails[static_cast<std::size_t>(step)]; }
  };
  using Channels = std::vector<FakeEnergyChannel>;

  class EntryPoints final : public EnergyEntryPoints {
   public:
    explicit EntryPoints(std::shared_ptr<State> state) : state_(std::move(state)) {}
    ~EntryPoints() override {
      const std::scoped_lock lock{state_->mutex};
      state_->log.emplace_back("close");
      state_->isOpen = false;
    }

    PlatformObject copyChannelsInGroup(std::string_view group,
                                       std::optional<std::string_view> subgroup) override {
      const std::scoped_lock lock{state_->mutex};
      state_->log.emplace_back("copyChannelsInGroup");
      state_->requestedGroup =
          std::string{group} + " " + std::string{subgroup.value_or(std::string_view{"-"})};
      return state_->failing(Step::channels) ? nullptr : object({});
    }
    EnergySubscription createSubscription(const PlatformObject& /*channels*/) override {
      const std::scoped_lock lock{state_->mutex};
      state_->log.emplace_back("createSubscription");
      return {state_->failing(Step::subscription) ? nullptr : object({}),
              state_->failing(Step::subscribedChannels) ? nullptr : object({})};
    }
    PlatformObject createSamples(const PlatformObject& /*subscription*/,
                                 const PlatformObject& /*channels*/) override {
      const std::scoped_lock lock{state_->mutex};
      state_->log.emplace_back("createSamples");
      const bool fails = state_->failingSample == 1;
      state_->failingSample = state_->failingSample > 0 ? state_->failingSample - 1 : 0;
      return fails ? nullptr : object({});
    }
    PlatformObject createSamplesDelta(const PlatformObject& /*previous*/,
                                      const PlatformObject& /*current*/) override {
      const std::scoped_lock lock{state_->mutex};
      state_->log.emplace_back("createSamplesDelta");
      return state_->failing(Step::delta) ? nullptr : object(state_->channels);
    }

    std::int64_t channelCount(const PlatformObject& samples) override {
      const std::scoped_lock lock{state_->mutex};
      return state_->count.value_or(static_cast<std::int64_t>(channelsOf(samples).size()));
    }
    const void* channelEntry(const PlatformObject& samples, std::int64_t index) override {
      const Channels& channels = channelsOf(samples);
      if (index < 0 || index >= static_cast<std::int64_t>(channels.size())) {
        return nullptr;
      }
      const FakeEnergyChannel& channel = channels[static_cast<std::size_t>(index)];
      return channel.hasEntry ? &channel : nullptr;
    }
    std::optional<std::string> channelGroup(const void* channel) override {
      return static_cast<const FakeEnergyChannel*>(channel)->group;
    }
    std::optional<std::string> channelName(const void* channel) override {
      return static_cast<const FakeEnergyChannel*>(channel)->name;
    }
    std::int64_t simpleIntegerValue(const void* channel, std::int32_t index) override {
      // A simple channel has one value; another index must never be asked for.
      return index == 0 ? static_cast<const FakeEnergyChannel*>(channel)->value : -1;
    }

   private:
    static const Channels& channelsOf(const PlatformObject& samples) {
      return *static_cast<const Channels*>(samples.get());
    }

    /// A counted object. The caller holds the mutex; the release takes it.
    PlatformObject object(Channels channels) {
      ++state_->liveObjects;
      return {new Channels(std::move(channels)), [state = state_](const void* released) {
                delete static_cast<const Channels*>(released);
                const std::scoped_lock lock{state->mutex};
                --state->liveObjects;
                state->lateReleases += state->isOpen ? 0 : 1;
              }};
    }

    std::shared_ptr<State> state_;
  };

  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace quorvex::testing
