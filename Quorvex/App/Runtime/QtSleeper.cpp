#include "QtSleeper.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "Date.h"

namespace quorvex {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

class QtPendingSleep final : public PendingSleep {
 public:
  QtPendingSleep(Clock& clock, nanoseconds length, nanoseconds longestWait,
                 std::function<void()> wake)
      : clock_(&clock),
        start_(clock.monotonic()),
        length_(length),
        longestWait_(longestWait),
        wake_(std::move(wake)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { lookAtClock(); });
    wait();
  }

 private:
  [[nodiscard]] nanoseconds remaining() const { return length_ - (clock_->monotonic() - start_); }

  void wait() {
    const nanoseconds next = std::clamp(remaining(), nanoseconds{0}, longestWait_);
    timer_.start(std::chrono::ceil<milliseconds>(next));
  }

  void lookAtClock() {
    if (remaining() > nanoseconds{0}) {
      wait();
      return;
    }
    // The wake-up may destroy this sleep.
    const auto wake = std::exchange(wake_, nullptr);
    wake();
  }

  Clock* clock_;
  nanoseconds start_;
  nanoseconds length_;
  nanoseconds longestWait_;
  std::function<void()> wake_;
  QTimer timer_;
};

}  // namespace

QtSleeper::QtSleeper(Clock& clock, double longestWait)
    : clock_(&clock), longestWait_(longestWait) {}

std::unique_ptr<PendingSleep> QtSleeper::sleep(double seconds, std::function<void()> wake) {
  const nanoseconds length = std::max(nanoseconds{0}, nanosecondsFromSeconds(seconds));
  return std::make_unique<QtPendingSleep>(*clock_, length, nanosecondsFromSeconds(longestWait_),
                                          std::move(wake));
}

}  // namespace quorvex
