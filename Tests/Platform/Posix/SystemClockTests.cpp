#include <gtest/gtest.h>
#include <sys/time.h>

#include <chrono>
#include <csignal>
#include <limits>

#include "SystemClock.h"

namespace quorvex {
namespace {

using namespace std::chrono_literals;

TEST(SystemClockTests, NowIsTheWallClock) {
  SystemClock clock;
  const auto before = std::chrono::system_clock::now();
  const Date now = clock.now();
  const auto after = std::chrono::system_clock::now();
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

TEST(SystemClockTests, MonotonicNeverStepsBack) {
  SystemClock clock;
  std::chrono::nanoseconds last = clock.monotonic();
  EXPECT_GT(last, 0ns);
  for (int count = 0; count < 1000; ++count) {
    const std::chrono::nanoseconds next = clock.monotonic();
    EXPECT_GE(next, last);
    last = next;
  }
}

TEST(SystemClockTests, SleepLastsAtLeastAsLongAsAsked) {
  SystemClock clock;
  const std::chrono::nanoseconds start = clock.monotonic();
  clock.sleep(0.001);
  EXPECT_GE(clock.monotonic() - start, 1ms);
}

TEST(SystemClockTests, SleepReturnsForNothingToWait) {
  SystemClock clock;
  clock.sleep(0.0);
  clock.sleep(-3600.0);
  clock.sleep(-std::numeric_limits<double>::infinity());
  clock.sleep(std::numeric_limits<double>::quiet_NaN());
}

volatile std::sig_atomic_t alarms = 0;

TEST(SystemClockTests, ASignalDoesNotShortenASleep) {
  struct sigaction counting {};
  counting.sa_handler = [](int) { alarms = alarms + 1; };
  struct sigaction old {};
  ASSERT_EQ(sigaction(SIGALRM, &counting, &old), 0);
  const itimerval everyMillisecond{.it_interval = {0, 1000}, .it_value = {0, 1000}};
  const itimerval never{};
  SystemClock clock;
  const std::chrono::nanoseconds start = clock.monotonic();
  ASSERT_EQ(setitimer(ITIMER_REAL, &everyMillisecond, nullptr), 0);
  while (alarms == 0) {
    clock.sleep(0.01);
  }
  const std::chrono::nanoseconds slept = clock.monotonic() - start;
  ASSERT_EQ(setitimer(ITIMER_REAL, &never, nullptr), 0);
  ASSERT_EQ(sigaction(SIGALRM, &old, nullptr), 0);
  EXPECT_GE(slept, 10ms);
}

}  // namespace
}  // namespace quorvex
