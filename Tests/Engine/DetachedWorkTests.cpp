#include <asio/io_context.hpp>
#include <asio/thread_pool.hpp>
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "DetachedWork.h"
#include "FakeClock.h"
#include "SteppedContext.h"

namespace quorvex {
namespace {

using testing::FakeClock;
using testing::SteppedContext;

TEST(DetachedWork, ResumesWithTheValueOnlyAfterAWorkerRanIt) {
  FakeClock clock;
  SteppedContext stepped{clock};
  const auto result =
      stepped.spawn(runDetached(stepped.context().workers, [] { return std::string{"value"}; }));
  stepped.runMainThread();
  EXPECT_FALSE(result->has_value());
  EXPECT_TRUE(stepped.stepWorkers());
  EXPECT_FALSE(result->has_value());
  stepped.runMainThread();
  EXPECT_EQ(*result, "value");
}

TEST(DetachedWork, RunsOffTheAwaitingThreadAndResumesOnIt) {
  asio::io_context mainThread;
  asio::thread_pool workers{1};
  const auto home = std::this_thread::get_id();
  std::thread::id ranOn;
  std::thread::id resumedOn;
  const auto task = [&]() -> asio::awaitable<void> {
    ranOn = co_await runDetached(workers.get_executor(), [] { return std::this_thread::get_id(); });
    resumedOn = std::this_thread::get_id();
  };
  asio::co_spawn(mainThread, task, asio::detached);
  mainThread.run();
  EXPECT_NE(ranOn, home);
  EXPECT_EQ(resumedOn, home);
}

TEST(DetachedWork, WorkThatNoWorkerEverRunsIsDestroyedWithTheAwaitingTask) {
  const auto witness = std::make_shared<int>(0);
  {
    FakeClock clock;
    SteppedContext stepped{clock};
    (void)stepped.spawn(runDetached(stepped.context().workers, [witness] { return *witness; }));
    stepped.runMainThread();
    EXPECT_GT(witness.use_count(), 1);
  }
  EXPECT_EQ(witness.use_count(), 1);
}

TEST(DetachedWork, AResultThatNobodyTakesIsDestroyedWithTheAwaitingTask) {
  const auto witness = std::make_shared<int>(0);
  {
    FakeClock clock;
    SteppedContext stepped{clock};
    (void)stepped.spawn(
        runDetached(stepped.context().workers, [witness] { return std::shared_ptr{witness}; }));
    stepped.runMainThread();
    stepped.stepWorkers();
  }
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
}  // namespace quorvex
