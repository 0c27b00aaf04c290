#include <sys/event.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "ContinuousClock.h"
#include "FileDescriptor.h"

namespace quorvex::continuous_clock {

namespace {

/// Waits for a timer that goes on while the machine sleeps. It may end early, by a signal for one.
/// Whether there was such a timer.
bool waitForTimer(std::chrono::nanoseconds length) {
  const FileDescriptor queue{kqueue()};
  if (!queue) {
    return false;
  }
  struct kevent timer {};
  EV_SET(&timer, 0, EVFILT_TIMER, EV_ADD | EV_ONESHOT, NOTE_NSECONDS | NOTE_MACH_CONTINUOUS_TIME,
         length.count(), nullptr);
  if (kevent(queue.get(), &timer, 1, nullptr, 0, nullptr) != 0) {
    return false;
  }
  struct kevent fired {};
  return kevent(queue.get(), nullptr, 0, &fired, 1, nullptr) >= 0 || errno == EINTR;
}

/// Waits by the clock that stops while the machine sleeps: a second at most, so that a wait that
/// was slept through ends soon after.
void waitBriefly(std::chrono::nanoseconds length) {
  constexpr std::chrono::nanoseconds longest =
      std::chrono::seconds{1} - std::chrono::nanoseconds{1};
  const timespec time{.tv_sec = 0, .tv_nsec = static_cast<long>(std::min(length, longest).count())};
  nanosleep(&time, nullptr);
}

}  // namespace

std::chrono::nanoseconds now() {
  // The raw clock is the one that counts the machine's sleep, too; it is set by nobody.
  return std::chrono::nanoseconds{clock_gettime_nsec_np(CLOCK_MONOTONIC_RAW)};
}

void sleepUntil(std::chrono::nanoseconds deadline) {
  for (auto remaining = deadline - now(); remaining > std::chrono::nanoseconds::zero();
       remaining = deadline - now()) {
    if (!waitForTimer(remaining)) {
      waitBriefly(remaining);
    }
  }
}

}  // namespace quorvex::continuous_clock
