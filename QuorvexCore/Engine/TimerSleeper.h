#pragma once

#include <functional>
#include <memory>

#include "AsyncSleeper.h"
#include "Clock.h"
#include "Coroutines.h"

namespace quorvex {

/// Sleeps by timers of an executor, measured on the machine's monotonic clock. Timers stand still
/// while the machine sleeps and that clock does not, so a long sleep looks at it now and then:
/// after the lid was closed, a sleep that is over ends at most `longestWait` seconds late.
class TimerSleeper final : public AsyncSleeper {
 public:
  /// Seconds between two looks at the clock; a sleep that is no longer costs a single wake-up.
  static constexpr double defaultLongestWait = 10.0;

  /// `executor` is the main thread's and has timers; `clock` outlives the sleeper and its sleeps.
  TimerSleeper(asio::any_io_executor executor, Clock& clock,
               double longestWait = defaultLongestWait);

  [[nodiscard]] std::unique_ptr<PendingSleep> sleep(double seconds,
                                                    std::function<void()> wake) override;

 private:
  asio::any_io_executor executor_;
  Clock* clock_;
  double longestWait_;
};

}  // namespace quorvex
