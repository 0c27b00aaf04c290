#include "RecordedClock.h"

#include <unistd.h>

#include <csignal>
#include <thread>

namespace quorvex {

namespace {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

/// Sum that stays at the latest time instead of overflowing; both parts are not negative.
nanoseconds saturatingSum(nanoseconds left, nanoseconds right) {
  return left > nanoseconds::max() - right ? nanoseconds::max() : left + right;
}

}  // namespace

RecordedClock::RecordedClock(const MachineFile& file, MachineFile::Pace pace)
    : startedAt_(file.startedAt.value_or(std::chrono::system_clock::now())),
      pace_(pace),
      atEnd_(file.atEnd),
      duration_(file.duration),
      suspensions_(file.suspensions),
      realStart_(steady_clock::now()) {}

Date RecordedClock::now() {
  const nanoseconds elapsed = monotonic();
  const nanoseconds start = startedAt_.time_since_epoch();
  return Date{start > nanoseconds{0} ? saturatingSum(start, elapsed) : start + elapsed};
}

nanoseconds RecordedClock::monotonic() {
  if (pace_ == MachineFile::Pace::real) {
    return steady_clock::now() - realStart_;
  }
  const std::lock_guard lock{mutex_};
  return elapsed_;
}

RecordedClock::Position RecordedClock::position() {
  const nanoseconds elapsed = monotonic();
  if (atEnd_ != MachineFile::AtEnd::repeat) {
    return {.inPass = elapsed};
  }
  const nanoseconds inPass = elapsed % duration_;
  return {.inPass = inPass, .passStart = elapsed - inPass};
}

nanoseconds RecordedClock::passLength() const {
  return atEnd_ == MachineFile::AtEnd::repeat ? duration_ : nanoseconds{0};
}

void RecordedClock::sleep(double seconds) {
  // Written so that NaN returns too.
  if (seconds > 0) {
    sleepFor(nanosecondsFromSeconds(seconds));
  }
}

void RecordedClock::sleepFor(nanoseconds length) {
  if (length <= nanoseconds{0}) {
    return;
  }
  if (pace_ == MachineFile::Pace::real) {
    sleepReally(length);
  } else {
    advance(length);
  }
}

void RecordedClock::sleepReally(nanoseconds length) {
  const auto wakeUp = saturatingSum(monotonic(), length);
  // The interrupt comes at its moment and not at the end of a long sleep.
  if (atEnd_ == MachineFile::AtEnd::interrupt && wakeUp >= duration_) {
    std::this_thread::sleep_for(duration_ - monotonic());
    interruptAtEnd();
  }
  std::this_thread::sleep_for(wakeUp - monotonic());
}

void RecordedClock::advance(nanoseconds length) {
  nanoseconds wakeUp{0};
  {
    const std::lock_guard lock{mutex_};
    elapsed_ = afterSuspensions(saturatingSum(elapsed_, length));
    wakeUp = elapsed_;
  }
  if (atEnd_ == MachineFile::AtEnd::interrupt && wakeUp >= duration_) {
    interruptAtEnd();
  }
}

nanoseconds RecordedClock::afterSuspensions(nanoseconds wakeUp) const {
  const nanoseconds pass = passLength();
  // One walk in ascending order carries a wake-up through adjoining suspensions. Where the
  // recording repeats, the end of one pass may run into the start of the next; a recording that is
  // suspended all the time would carry on for ever, so that the walks are counted.
  for (std::size_t walk = 0; walk <= suspensions_.size(); ++walk) {
    const nanoseconds before = wakeUp;
    for (const auto& suspension : suspensions_) {
      const bool isNeverReached = pass > nanoseconds{0} && suspension.at >= pass;
      if (wakeUp < suspension.at || isNeverReached) {
        continue;
      }
      const nanoseconds intoPass =
          pass > nanoseconds{0} ? (wakeUp - suspension.at) % pass : wakeUp - suspension.at;
      if (intoPass < suspension.length) {
        wakeUp = saturatingSum(wakeUp, suspension.length - intoPass);
      }
    }
    if (wakeUp == before) {
      break;
    }
  }
  return wakeUp;
}

void RecordedClock::interruptAtEnd() {
  if (!interruptDelivered_.exchange(true)) {
    static_cast<void>(::kill(::getpid(), SIGINT));
  }
}

}  // namespace quorvex
