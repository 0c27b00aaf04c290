#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "AsyncSleeper.h"
#include "FakeClock.h"

namespace quorvex::testing {

/// Sleeps on a clock that stands still until a test moves it. One thread.
class FakeSleeper final : public AsyncSleeper {
 public:
  explicit FakeSleeper(FakeClock& clock) : clock_(&clock) {}

  std::unique_ptr<PendingSleep> sleep(double seconds, std::function<void()> wake) override {
    sleeps_.push_back(seconds);
    auto entry = std::make_shared<Entry>();
    entry->deadline = clock_->monotonic() + nanosecondsFromSeconds(std::max(seconds, 0.0));
    entry->wake = std::move(wake);
    entries_.push_back(entry);
    return std::make_unique<Pending>(std::move(entry));
  }

  /// The seconds of every call of sleep() so far, in order.
  [[nodiscard]] const std::vector<double>& sleeps() const { return sleeps_; }
  /// How many sleeps are neither over nor ended.
  [[nodiscard]] std::size_t pendingCount() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(entries_, [](const auto& entry) { return isPending(entry); }));
  }
  /// When the next sleep is over on the monotonic clock; none while nobody sleeps.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> nextDeadline() const {
    std::optional<std::chrono::nanoseconds> result;
    for (const auto& entry : entries_) {
      if (isPending(entry) && (!result || entry->deadline < *result)) {
        result = entry->deadline;
      }
    }
    return result;
  }
  /// Wakes the one whose sleep is over first; nothing while nobody's is.
  void wakeNext() {
    const auto deadline = nextDeadline();
    if (!deadline || *deadline > clock_->monotonic()) {
      return;
    }
    const auto due = std::ranges::find_if(entries_, [&](const auto& entry) {
      return isPending(entry) && entry->deadline == *deadline;
    });
    const auto entry = *due;
    entries_.erase(due);
    std::exchange(entry->wake, nullptr)();
  }

 private:
  struct Entry {
    std::chrono::nanoseconds deadline{0};
    std::function<void()> wake;
  };

  class Pending final : public PendingSleep {
   public:
    explicit Pending(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}
    ~Pending() override { entry_->wake = nullptr; }

   private:
    std::shared_ptr<Entry> entry_;
  };

  static bool isPending(const std::shared_ptr<Entry>& entry) { return entry->wake != nullptr; }

  FakeClock* clock_;
  std::vector<std::shared_ptr<Entry>> entries_;
  std::vector<double> sleeps_;
};

}  // namespace quorvex::testing
