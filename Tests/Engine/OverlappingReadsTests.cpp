#include <asio/io_context.hpp>
#include <asio/thread_pool.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "MetricsEngine.h"
#include "RecordedMachine.h"
#include "TimerSleeper.h"

namespace quorvex {
namespace {

using ::testing::SizeIs;

/// A recorded laptop on a clock that jumps, a real main thread and real workers.
class OverlappingReadsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto loaded =
        RecordedMachine::load(std::string{QUORVEX_MACHINES_FOLDER} + "/laptop-unplugged.json",
                              RecordedMachine::Pace::instant);
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<RecordedMachine>>(loaded));
    machine = std::move(std::get<std::unique_ptr<RecordedMachine>>(loaded));
    sleeper = std::make_unique<TimerSleeper>(mainThread.get_executor(), machine->clock());
    engine = MetricsEngine::make(
        *machine, {mainThread.get_executor(), workers.get_executor(), sleeper.get()}, 0.0, 60);
  }
  void TearDown() override { workers.join(); }

  static asio::awaitable<void> takeSnapshots(std::shared_ptr<MetricsEngine> source,
                                             std::size_t count,
                                             std::vector<SystemPowerState>* taken) {
    for (std::size_t i = 0; i < count; ++i) {
      taken->push_back(co_await source->snapshot());
    }
  }
  static asio::awaitable<void> takeSamples(std::shared_ptr<MetricsEngine> source, std::size_t count,
                                           std::vector<SystemPowerState>* taken) {
    for (std::size_t i = 0; i < count; ++i) {
      taken->push_back(co_await source->sampleAndPublish());
    }
  }

  std::unique_ptr<RecordedMachine> machine;
  asio::io_context mainThread;
  asio::thread_pool workers{3};
  std::unique_ptr<TimerSleeper> sleeper;
  std::shared_ptr<MetricsEngine> engine;
};

TEST_F(OverlappingReadsTest, SnapshotsSamplesAndTheLoopAllGetWholeReadings) {
  constexpr std::size_t count = 25;
  std::vector<SystemPowerState> snapshots;
  std::vector<SystemPowerState> samples;
  std::size_t polls = 0;
  const Subscription subscription = engine->currentState().subscribe([&](const SystemPowerState&) {
    if (++polls == 2 * count) {
      engine->stop();
    }
  });
  engine->start();
  asio::co_spawn(mainThread, takeSnapshots(engine, count, &snapshots), asio::detached);
  asio::co_spawn(mainThread, takeSamples(engine, count, &samples), asio::detached);
  mainThread.run();

  EXPECT_THAT(snapshots, SizeIs(count));
  EXPECT_THAT(samples, SizeIs(count));
  EXPECT_GE(polls, 2 * count);
  snapshots.insert(snapshots.end(), samples.begin(), samples.end());
  snapshots.insert(snapshots.end(), engine->history().value().begin(),
                   engine->history().value().end());
  for (const SystemPowerState& state : snapshots) {
    EXPECT_TRUE(state.battery.has_value());
    EXPECT_TRUE(state.power.has_value());
    EXPECT_FALSE(state.sensors.empty());
    ASSERT_TRUE(state.network.has_value());
    EXPECT_FALSE(state.network->interfaces.empty());
  }
}

TEST_F(OverlappingReadsTest, AnEngineThatIsLetGoWhileWorkersReadEndsInOrder) {
  std::vector<SystemPowerState> snapshots;
  engine->start();
  asio::co_spawn(mainThread, takeSnapshots(engine, 1, &snapshots), asio::detached);
  asio::post(mainThread, [this] { engine.reset(); });
  mainThread.run();
  EXPECT_THAT(snapshots, SizeIs(1));
}

TEST_F(OverlappingReadsTest, AReadWhoseMainThreadGoesIsDestroyedWithAllThatItHeld) {
  std::weak_ptr<MetricsEngine> weak;
  {
    asio::io_context ownMainThread;
    asio::thread_pool ownWorkers{1};
    TimerSleeper ownSleeper{ownMainThread.get_executor(), machine->clock()};
    auto ownEngine = MetricsEngine::make(
        *machine, {ownMainThread.get_executor(), ownWorkers.get_executor(), &ownSleeper}, 0.0, 60);
    weak = ownEngine;
    ownEngine->start();
    ownMainThread.poll();
    ownWorkers.join();
    // The read has ended, and the main thread never takes its result.
    EXPECT_GT(ownEngine.use_count(), 1);
  }
  EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace quorvex
