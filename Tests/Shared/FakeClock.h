#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <vector>

#include "Clock.h"

namespace quorvex::testing {

/// A clock that stands still until a test or a sleep moves it: `sleep` returns at once and advances
/// both times. Any thread.
class FakeClock final : public Clock {
 public:
  explicit FakeClock(Date start = Date{std::chrono::seconds{1'700'000'000}}) : now_(start) {}

  Date now() override {
    const std::scoped_lock lock{mutex_};
    return now_;
  }
  std::chrono::nanoseconds monotonic() override {
    const std::scoped_lock lock{mutex_};
    return monotonic_;
  }
  void sleep(double seconds) override {
    std::function<void()> action;
    {
      const std::scoped_lock lock{mutex_};
      sleeps_.push_back(seconds);
      action = duringSleep_;
    }
    if (action) {
      action();
    }
    advance(seconds);
  }

  /// Moves both times forward, at most to the end of their range; nothing for 0, negative values
  /// and NaN.
  void advance(double seconds) {
    if (seconds > 0.0) {
      const std::scoped_lock lock{mutex_};
      now_ = dateByAdding(now_, seconds);
      monotonic_ = dateByAdding(Date{monotonic_}, seconds).time_since_epoch();
    }
  }
  /// Sets the wall clock alone, as a user or a time server does.
  void setNow(Date date) {
    const std::scoped_lock lock{mutex_};
    now_ = date;
  }
  /// What happens in the world during each sleep, before the time advances.
  void duringSleep(std::function<void()> action) {
    const std::scoped_lock lock{mutex_};
    duringSleep_ = std::move(action);
  }
  /// The seconds of every call of sleep() so far, in order.
  [[nodiscard]] std::vector<double> sleeps() const {
    const std::scoped_lock lock{mutex_};
    return sleeps_;
  }

 private:
  mutable std::mutex mutex_;
  Date now_;
  std::chrono::nanoseconds monotonic_{0};
  std::vector<double> sleeps_;
  std::function<void()> duringSleep_;
};

}  // namespace quorvex::testing
