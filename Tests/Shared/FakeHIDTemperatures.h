#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "HIDTemperatures.h"

namespace quorvex::testing {

/// HID temperature services as a test sets them; the entry points are there, with no service, at
/// first. Any thread.
class FakeHIDTemperatures final : public HIDTemperatures {
 public:
  /// What clients list; none: the list cannot be copied.
  void setServices(std::optional<std::vector<HIDTemperatureService>> services) {
    const std::scoped_lock lock{state_->mutex};
    state_->services = std::move(services);
  }
  /// Whether open() gives a client.
  void setAvailable(bool available) {
    const std::scoped_lock lock{state_->mutex};
    state_->available = available;
  }

  /// How often open() was called, failures included.
  [[nodiscard]] int opens() const { return counter(&State::opens); }
  /// How often a list of services was copied.
  [[nodiscard]] int copies() const { return counter(&State::copies); }
  /// How many clients are not released yet.
  [[nodiscard]] int liveClients() const { return counter(&State::liveClients); }

  std::unique_ptr<HIDTemperatureClient> open() override {
    const std::scoped_lock lock{state_->mutex};
    ++state_->opens;
    if (!state_->available) {
      return nullptr;
    }
    ++state_->liveClients;
    return std::make_unique<Client>(state_);
  }

 private:
  struct State {
    std::mutex mutex;
    std::optional<std::vector<HIDTemperatureService>> services{std::in_place};
    bool available = true;
    int opens = 0;
    int copies = 0;
    int liveClients = 0;
  };

  class Client final : public HIDTemperatureClient {
   public:
    explicit Client(std::shared_ptr<State> state) : state_(std::move(state)) {}
    ~Client() override {
      const std::scoped_lock lock{state_->mutex};
      --state_->liveClients;
    }

    std::optional<std::vector<HIDTemperatureService>> copyServices() override {
      const std::scoped_lock lock{state_->mutex};
      ++state_->copies;
      return state_->services;
    }

   private:
    std::shared_ptr<State> state_;
  };

  [[nodiscard]] int counter(int State::*member) const {
    const std::scoped_lock lock{state_->mutex};
    return (*state_).*member;
  }

  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace quorvex::testing
