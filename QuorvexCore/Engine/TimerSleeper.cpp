#include "TimerSleeper.h"

#include <asio/steady_timer.hpp>

#include <algorithm>
#include <chrono>
#include <utility>

#include "Date.h"

namespace quorvex {

namespace {

using std::chrono::nanoseconds;

/// One sleep. Its timer's handler keeps it alive, so that the pending sleep may go at any time.
struct TimedSleep : std::enable_shared_from_this<TimedSleep> {
  TimedSleep(const asio::any_io_executor& executor, Clock& machineClock, nanoseconds length,
             nanoseconds waitAtMost, std::function<void()> whenOver)
      : timer(executor),
        clock(&machineClock),
        start(machineClock.monotonic()),
        duration(length),
        longestWait(waitAtMost),
        wake(std::move(whenOver)) {}

  void wait() {
    timer.expires_after(std::min(remaining(), longestWait));
    timer.async_wait([self = shared_from_this()](const asio::error_code& error) {
      if (self->hasEnded) {
        return;
      }
      if (!error && self->remaining() > nanoseconds{0}) {
        self->wait();
        return;
      }
      self->hasEnded = true;
      std::exchange(self->wake, nullptr)();
    });
  }

  void end() {
    hasEnded = true;
    wake = nullptr;
    timer.cancel();
  }

  [[nodiscard]] nanoseconds remaining() const { return duration - (clock->monotonic() - start); }

  asio::steady_timer timer;
  Clock* clock;
  nanoseconds start;
  nanoseconds duration;
  nanoseconds longestWait;
  std::function<void()> wake;
  bool hasEnded = false;
};

class PendingTimedSleep final : public PendingSleep {
 public:
  explicit PendingTimedSleep(std::shared_ptr<TimedSleep> sleep) : sleep_(std::move(sleep)) {}
  ~PendingTimedSleep() override { sleep_->end(); }

 private:
  std::shared_ptr<TimedSleep> sleep_;
};

}  // namespace

TimerSleeper::TimerSleeper(asio::any_io_executor executor, Clock& clock, double longestWait)
    : executor_(std::move(executor)), clock_(&clock), longestWait_(longestWait) {}

std::unique_ptr<PendingSleep> TimerSleeper::sleep(double seconds, std::function<void()> wake) {
  const nanoseconds length = std::max(nanoseconds{0}, nanosecondsFromSeconds(seconds));
  auto timed = std::make_shared<TimedSleep>(executor_, *clock_, length,
                                            nanosecondsFromSeconds(longestWait_), std::move(wake));
  timed->wait();
  return std::make_unique<PendingTimedSleep>(std::move(timed));
}

}  // namespace quorvex
