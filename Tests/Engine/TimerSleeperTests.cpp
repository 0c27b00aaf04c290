#include <asio/io_context.hpp>
#include <gtest/gtest.h>

#include <limits>

#include "FakeClock.h"
#include "TimerSleeper.h"

namespace quorvex {
namespace {

using testing::FakeClock;

/// The clock stands still until a test moves it, and the timers wait no real time: they look at the
/// clock whenever the executor is stepped.
class TimerSleeperTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<PendingSleep> sleep(double seconds) {
    return sleeper.sleep(seconds, [this] { ++wakes; });
  }
  /// Lets timers look at the clock a number of times.
  void look() {
    for (int i = 0; i < 10; ++i) {
      context.restart();
      context.poll_one();
    }
  }

  asio::io_context context;
  FakeClock clock;
  TimerSleeper sleeper{context.get_executor(), clock, 0.0};
  int wakes = 0;
};

TEST_F(TimerSleeperTest, WakesOnceWhenTheTimeHasPassedOnTheMachinesClock) {
  const auto pending = sleep(60.0);
  look();
  EXPECT_EQ(wakes, 0);
  clock.advance(59.5);
  look();
  EXPECT_EQ(wakes, 0);
  clock.advance(0.5);
  look();
  look();
  EXPECT_EQ(wakes, 1);
}

TEST_F(TimerSleeperTest, ASleepThatIsOverAfterTheLidWasClosedEndsAtTheNextLook) {
  const auto pending = sleep(60.0);
  clock.advance(8 * 3600.0);
  look();
  EXPECT_EQ(wakes, 1);
}

TEST_F(TimerSleeperTest, AChangeOfTheWallClockMeansNothing) {
  const auto pending = sleep(60.0);
  clock.setNow(clock.now() + std::chrono::hours{1});
  look();
  EXPECT_EQ(wakes, 0);
}

TEST_F(TimerSleeperTest, NothingToSleepWakesAsSoonAsPossibleButNotWithinTheCall) {
  for (const double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(),
                               -std::numeric_limits<double>::infinity()}) {
    wakes = 0;
    const auto pending = sleep(seconds);
    EXPECT_EQ(wakes, 0);
    look();
    EXPECT_EQ(wakes, 1) << seconds;
  }
}

TEST_F(TimerSleeperTest, AnEndlessSleepDoesNotEnd) {
  const auto pending = sleep(std::numeric_limits<double>::infinity());
  clock.advance(100.0 * 365 * 86'400);
  look();
  EXPECT_EQ(wakes, 0);
}

TEST_F(TimerSleeperTest, AnEndedSleepNeverWakesAndKeepsTheExecutorFromNothing) {
  auto pending = sleep(60.0);
  pending.reset();
  clock.advance(60.0);
  context.restart();
  context.run();
  EXPECT_EQ(wakes, 0);
}

TEST_F(TimerSleeperTest, EndingALongWaitLetsTheExecutorRunDryAtOnce) {
  TimerSleeper patient{context.get_executor(), clock, 3600.0};
  auto pending = patient.sleep(3600.0, [this] { ++wakes; });
  context.poll();
  pending.reset();
  context.restart();
  context.run();
  EXPECT_EQ(wakes, 0);
}

TEST_F(TimerSleeperTest, ASleepThatIsEndedBetweenItsExpiryAndItsWakeUpDoesNotWake) {
  // Both are over at once; the one that wakes first ends the other.
  std::unique_ptr<PendingSleep> one;
  std::unique_ptr<PendingSleep> other;
  one = sleeper.sleep(0.0, [&] {
    ++wakes;
    other.reset();
  });
  other = sleeper.sleep(0.0, [&] {
    ++wakes;
    one.reset();
  });
  look();
  EXPECT_EQ(wakes, 1);
}

TEST_F(TimerSleeperTest, ASleepMayBeDestroyedWithinItsOwnWakeUp) {
  std::unique_ptr<PendingSleep> pending;
  const auto captured = std::make_shared<int>(0);
  pending = sleeper.sleep(0.0, [&pending, captured] {
    pending.reset();
    ++*captured;
  });
  look();
  EXPECT_EQ(*captured, 1);
  EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(TimerSleeperTest, ManySleepsEachWakeAtTheirOwnTime) {
  const auto longer = sleep(2.0);
  const auto shorter = sleep(1.0);
  clock.advance(1.0);
  look();
  EXPECT_EQ(wakes, 1);
  clock.advance(1.0);
  look();
  EXPECT_EQ(wakes, 2);
}

}  // namespace
}  // namespace quorvex
