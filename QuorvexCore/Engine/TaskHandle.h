#pragma once

#include <functional>
#include <memory>

#include "AsyncSleeper.h"
#include "Coroutines.h"

namespace quorvex {

/// The cancellation of one task, shared by the task and by who may cancel it. Cancelling asks: it
/// ends the task's sleep and interrupts nothing else, and the task ends at its next look at
/// `isCancelled`. Main thread.
class TaskHandle {
 public:
  [[nodiscard]] bool isCancelled() const { return isCancelled_; }
  void cancel();

  /// Sleeps within the task of `handle`, on the main thread; a cancelled task goes on in its next
  /// turn. One sleep a handle at a time. The sleeper outlives the sleep.
  [[nodiscard]] static asio::awaitable<void> sleep(std::shared_ptr<TaskHandle> handle,
                                                   AsyncSleeper& sleeper, double seconds);

 private:
  void wake();

  bool isCancelled_ = false;
  std::unique_ptr<PendingSleep> pendingSleep_;
  std::function<void()> resume_;
};

}  // namespace quorvex
