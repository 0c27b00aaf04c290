#pragma once

#include <functional>
#include <memory>

namespace quorvex {

/// A sleep that has begun. Destroying it ends it: its owner is then never woken. It may be
/// destroyed within the wake-up itself and after its sleeper.
class PendingSleep {
 public:
  PendingSleep() = default;
  PendingSleep(const PendingSleep&) = delete;
  PendingSleep& operator=(const PendingSleep&) = delete;
  virtual ~PendingSleep() = default;
};

/// Sleeps that block no thread: the asynchronous companion of `Clock::sleep`. The app's runs on
/// timers, a test's on a virtual clock. Main thread.
class AsyncSleeper {
 public:
  AsyncSleeper() = default;
  AsyncSleeper(const AsyncSleeper&) = delete;
  AsyncSleeper& operator=(const AsyncSleeper&) = delete;
  virtual ~AsyncSleeper() = default;

  /// Calls `wake` once on the main thread, `seconds` from now on a clock that goes on while the
  /// machine sleeps; as soon as possible for 0, negative values and NaN, but never within this
  /// call. A sleep that fails ends early.
  [[nodiscard]] virtual std::unique_ptr<PendingSleep> sleep(double seconds,
                                                            std::function<void()> wake) = 0;
};

}  // namespace quorvex
