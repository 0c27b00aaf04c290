#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <cmath>
#include <limits>
#include <memory>

#include "FakeClock.h"
#include "QtSleeper.h"

namespace quorvex {
namespace {

using testing::FakeClock;

class QtSleeperTest : public ::testing::Test {
 protected:
  /// Runs the event loop until `isDone`, for a thousand turns at most.
  template <typename Condition>
  void turnUntil(Condition&& isDone) {
    for (int turn = 0; turn < 1000 && !isDone(); ++turn) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
  }

  FakeClock clock;
};

TEST_F(QtSleeperTest, WakesOnceTheMachinesClockSaysSo) {
  // The fake clock moves with each look that the sleeper takes at it, by its timer.
  QtSleeper sleeper(clock, 0.001);
  int wakes = 0;
  const auto sleep = sleeper.sleep(60.0, [&] { ++wakes; });
  int turns = 0;
  turnUntil([&] {
    clock.advance(20.0);
    ++turns;
    return wakes > 0;
  });
  EXPECT_EQ(wakes, 1);
  // Three advances of 20 s are due before 60 s are over.
  EXPECT_GE(turns, 3);
}

TEST_F(QtSleeperTest, DoesNotWakeWhileTheMachinesClockStandsStill) {
  QtSleeper sleeper(clock, 0.0);
  int wakes = 0;
  const auto sleep = sleeper.sleep(0.001, [&] { ++wakes; });
  for (int turn = 0; turn < 20; ++turn) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  EXPECT_EQ(wakes, 0);
}

TEST_F(QtSleeperTest, ZeroNegativeAndNaNWakeAsSoonAsPossibleButNotWithinTheCall) {
  QtSleeper sleeper(clock);
  for (const double seconds : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    int wakes = 0;
    const auto sleep = sleeper.sleep(seconds, [&] { ++wakes; });
    EXPECT_EQ(wakes, 0);
    turnUntil([&] { return wakes > 0; });
    EXPECT_EQ(wakes, 1);
  }
}

TEST_F(QtSleeperTest, ADestroyedSleepNeverWakes) {
  QtSleeper sleeper(clock);
  int wakes = 0;
  auto sleep = sleeper.sleep(0.0, [&] { ++wakes; });
  sleep.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(wakes, 0);
}

TEST_F(QtSleeperTest, ASleepMayBeDestroyedByItsOwnWakeUpAndOutliveItsSleeper) {
  auto sleeper = std::make_unique<QtSleeper>(clock);
  int wakes = 0;
  std::unique_ptr<PendingSleep> sleep;
  sleep = sleeper->sleep(0.0, [&] {
    ++wakes;
    sleep.reset();
  });
  sleeper.reset();
  turnUntil([&] { return wakes > 0; });
  EXPECT_EQ(wakes, 1);
  EXPECT_EQ(sleep, nullptr);
}

}  // namespace
}  // namespace quorvex
