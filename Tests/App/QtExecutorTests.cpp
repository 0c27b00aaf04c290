#include <asio/any_io_executor.hpp>
#include <asio/post.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <memory>
#include <thread>
#include <vector>

#include "QtExecutor.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(QtExecutorTest, RunsFunctionsInOrderAndNeverWithinTheCall) {
  QtExecutionContext context;
  const asio::any_io_executor executor = context.get_executor();
  std::vector<int> ran;
  asio::post(executor, [&] { ran.push_back(1); });
  asio::post(executor, [&] { ran.push_back(2); });
  EXPECT_THAT(ran, IsEmpty());
  QCoreApplication::processEvents();
  EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST(QtExecutorTest, RunsOnItsOwnThreadWhatOtherThreadsHandIn) {
  QtExecutionContext context;
  const asio::any_io_executor executor = context.get_executor();
  const QThread* ranOn = nullptr;
  std::thread other([&] { asio::post(executor, [&] { ranOn = QThread::currentThread(); }); });
  other.join();
  QCoreApplication::processEvents();
  EXPECT_EQ(ranOn, QThread::currentThread());
}

TEST(QtExecutorTest, TakesFunctionsThatCanOnlyBeMoved) {
  QtExecutionContext context;
  auto value = std::make_unique<int>(3);
  int seen = 0;
  asio::post(context.get_executor(), [value = std::move(value), &seen] { seen = *value; });
  QCoreApplication::processEvents();
  EXPECT_EQ(seen, 3);
}

TEST(QtExecutorTest, AFunctionHandedInByAnotherRunsInALaterTurn) {
  QtExecutionContext context;
  const asio::any_io_executor executor = context.get_executor();
  std::vector<int> ran;
  asio::post(executor, [&] {
    asio::post(executor, [&] { ran.push_back(2); });
    ran.push_back(1);
  });
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST(QtExecutorTest, DestroysWhatHasNotRunWhenItGoes) {
  const auto held = std::make_shared<int>(0);
  {
    QtExecutionContext context;
    asio::post(context.get_executor(), [held] { FAIL(); });
    EXPECT_EQ(held.use_count(), 2);
  }
  EXPECT_EQ(held.use_count(), 1);
  QCoreApplication::processEvents();
}

TEST(QtExecutorTest, DestroysAlsoWhatADestroyedFunctionHandsIn) {
  const auto held = std::make_shared<int>(0);
  {
    QtExecutionContext context;
    const asio::any_io_executor executor = context.get_executor();
    const std::shared_ptr<void> handsIn(nullptr,
                                        [=](void*) { asio::post(executor, [held] { FAIL(); }); });
    asio::post(executor, [handsIn] {});
    // The queue holds the last reference once this scope's is gone.
  }
  EXPECT_EQ(held.use_count(), 1);
}

TEST(QtExecutorTest, ExecutorsOfOneContextAreEqual) {
  QtExecutionContext one;
  QtExecutionContext other;
  EXPECT_EQ(asio::any_io_executor{one.get_executor()}, asio::any_io_executor{one.get_executor()});
  EXPECT_NE(asio::any_io_executor{one.get_executor()}, asio::any_io_executor{other.get_executor()});
}

}  // namespace
}  // namespace quorvex
