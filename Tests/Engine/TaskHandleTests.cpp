#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeClock.h"
#include "SteppedContext.h"
#include "TaskHandle.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeClock;
using testing::SteppedContext;

class TaskHandleTest : public ::testing::Test {
 protected:
  /// A task that sleeps once and tells whether it was cancelled then.
  static asio::awaitable<bool> sleepOnce(std::shared_ptr<TaskHandle> task, AsyncSleeper* sleeper,
                                         double seconds) {
    co_await TaskHandle::sleep(task, *sleeper, seconds);
    co_return task->isCancelled();
  }
  auto spawnSleep(double seconds) {
    return stepped.spawn(sleepOnce(task, &stepped.sleeper(), seconds));
  }

  FakeClock clock;
  SteppedContext stepped{clock};
  std::shared_ptr<TaskHandle> task = std::make_shared<TaskHandle>();
};

TEST_F(TaskHandleTest, ASleepEndsWhenItsTimeHasPassed) {
  const auto result = spawnSleep(3.0);
  stepped.advance(2.5);
  EXPECT_FALSE(result->has_value());
  stepped.advance(0.5);
  EXPECT_EQ(*result, false);
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(3.0));
}

TEST_F(TaskHandleTest, CancellingEndsARunningSleepInATurnOfItsOwn) {
  const auto result = spawnSleep(3600.0);
  stepped.settle();
  task->cancel();
  EXPECT_FALSE(result->has_value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  stepped.settle();
  EXPECT_EQ(*result, true);
}

TEST_F(TaskHandleTest, CancellingTwiceIsCancellingOnce) {
  const auto result = spawnSleep(3600.0);
  stepped.settle();
  task->cancel();
  task->cancel();
  stepped.settle();
  EXPECT_EQ(*result, true);
}

TEST_F(TaskHandleTest, ACancelledTaskDoesNotSleep) {
  task->cancel();
  const auto result = spawnSleep(3600.0);
  stepped.settle();
  EXPECT_EQ(*result, true);
  EXPECT_TRUE(stepped.sleeper().sleeps().empty());
}

TEST_F(TaskHandleTest, CancellingBetweenWakingAndTheTasksTurnIsSeenByTheTask) {
  const auto result = spawnSleep(1.0);
  stepped.settle();
  clock.advance(1.0);
  stepped.sleeper().wakeNext();
  task->cancel();
  stepped.settle();
  EXPECT_EQ(*result, true);
}

TEST_F(TaskHandleTest, OneHandleSleepsAgainAndAgain) {
  const auto loop = [](std::shared_ptr<TaskHandle> handle,
                       AsyncSleeper* sleeper) -> asio::awaitable<int> {
    for (int i = 0; i < 3; ++i) {
      co_await TaskHandle::sleep(handle, *sleeper, 1.0);
    }
    co_return 3;
  };
  const auto result = stepped.spawn(loop(task, &stepped.sleeper()));
  stepped.advance(2.0);
  EXPECT_FALSE(result->has_value());
  stepped.advance(1.0);
  EXPECT_EQ(*result, 3);
}

TEST(TaskHandle, ATaskThatStillSleepsWhenItsExecutorGoesIsDestroyedOnCancellation) {
  FakeClock clock;
  const auto task = std::make_shared<TaskHandle>();
  const auto witness = std::make_shared<int>(0);
  {
    SteppedContext stepped{clock};
    const auto sleeping = [](std::shared_ptr<TaskHandle> handle, AsyncSleeper* sleeper,
                             std::shared_ptr<int> kept) -> asio::awaitable<int> {
      co_await TaskHandle::sleep(handle, *sleeper, 1.0);
      co_return *kept;
    };
    (void)stepped.spawn(sleeping(task, &stepped.sleeper(), witness));
    stepped.settle();
    EXPECT_EQ(witness.use_count(), 2);
    task->cancel();
  }
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
}  // namespace quorvex
