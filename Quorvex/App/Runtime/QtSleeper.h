#pragma once

#include <functional>
#include <memory>

#include "AsyncSleeper.h"
#include "Clock.h"

namespace quorvex {

/// Sleeps by timers of the application's event loop, measured on the machine's monotonic clock.
/// Timers may stand still while the machine sleeps and that clock does not, so a long sleep looks
/// at it now and then: after the lid was closed, a sleep that is over ends at most `longestWait`
/// seconds late. Main thread.
class QtSleeper final : public AsyncSleeper {
 public:
  /// Seconds between two looks at the clock; a sleep that is no longer costs a single wake-up.
  static constexpr double defaultLongestWait = 10.0;

  /// `clock` outlives the sleeper and its sleeps.
  explicit QtSleeper(Clock& clock, double longestWait = defaultLongestWait);

  [[nodiscard]] std::unique_ptr<PendingSleep> sleep(double seconds,
                                                    std::function<void()> wake) override;

 private:
  Clock* clock_;
  double longestWait_;
};

}  // namespace quorvex
