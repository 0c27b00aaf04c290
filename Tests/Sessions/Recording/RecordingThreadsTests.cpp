#include <asio/io_context.hpp>
#include <asio/thread_pool.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "DetachedWork.h"
#include "ProTelemetryService.h"
#include "RecordedMachine.h"
#include "SessionRecordingCoordinator.h"
#include "TimerSleeper.h"

// A recording on a real main thread and real workers.

namespace quorvex {
namespace {

using ProTelemetry = SessionRecordingCoordinator::ProTelemetry;

/// A recorded laptop with the helper tool, on a clock that jumps.
class RecordingThreadsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto loaded =
        RecordedMachine::load(std::string{QUORVEX_MACHINES_FOLDER} + "/helper-installed.json",
                              RecordedMachine::Pace::instant);
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<RecordedMachine>>(loaded));
    machine = std::move(std::get<std::unique_ptr<RecordedMachine>>(loaded));
    store = *PowerSessionStore::open({.appVersion = "0.14.0", .inMemory = true}, machine->clock());
    sleeper = std::make_unique<TimerSleeper>(mainThread.get_executor(), machine->clock());
    engine = MetricsEngine::make(*machine, context(), 2.0, 60);
    recorder = PowerSessionRecorder::make(store, *machine, workers.get_executor(), 10.0);
    coordinator =
        SessionRecordingCoordinator::make(recorder, functions(), machine->clock(), context(), 10.0);
  }
  void TearDown() override { workers.join(); }

  [[nodiscard]] AsyncContext context() {
    return {mainThread.get_executor(), workers.get_executor(), sleeper.get()};
  }
  /// As the app's, but for a sleep that takes no real time.
  [[nodiscard]] SessionRecordingCoordinator::Functions functions() {
    Clock* const clock = &machine->clock();
    const auto pool = workers.get_executor();
    return {.stateProvider = [this] { return engine->sampleAndPublish(); },
            .ensureEngineRunning = [] {},
            .proTelemetryEnabled = [] { return true; },
            .proTelemetryProvider =
                [service = ProTelemetryService{machine->fileAttributes(), machine->childProcesses(),
                                               machine->clock()},
                 pool] {
                  return runDetached(pool,
                                     [service] { return ProTelemetry{service.readSnapshot()}; });
                },
            .sleep = [clock, pool](std::shared_ptr<TaskHandle> /*task*/, double seconds)
                -> asio::awaitable<void> { co_await sleepOn(pool, clock, seconds); }};
  }
  static asio::awaitable<bool> sleepOn(asio::any_io_executor pool, Clock* clock, double seconds) {
    return runDetached(std::move(pool), [clock, seconds] {
      clock->sleep(seconds);
      return true;
    });
  }

  std::unique_ptr<RecordedMachine> machine;
  std::shared_ptr<PowerSessionStore> store;
  asio::io_context mainThread;
  asio::thread_pool workers{3};
  std::unique_ptr<TimerSleeper> sleeper;
  std::shared_ptr<MetricsEngine> engine;
  std::shared_ptr<PowerSessionRecorder> recorder;
  std::shared_ptr<SessionRecordingCoordinator> coordinator;
};

TEST_F(RecordingThreadsTest, ARecordingWithAllItsExtrasIsWhole) {
  constexpr std::int64_t count = 40;
  const auto session =
      coordinator->start("A", PowerSessionSource::app, 2.0, machine->clock().now());
  ASSERT_NE(session, nullptr);
  PowerSessionSummary last;
  const Subscription subscription =
      recorder->activeSummary().subscribe([&](const PowerSessionSummary& summary) {
        if (summary.sampleCount == count) {
          last = summary;
          coordinator->stop(machine->clock().now());
        }
      });
  mainThread.run();
  const auto samples = store->samples(*session);
  EXPECT_EQ(samples.size(), static_cast<std::size_t>(count));
  const PowerSessionSummary stored = recorder->summary(*session);
  EXPECT_EQ(stored.wattSampleCount, last.wattSampleCount);
  EXPECT_EQ(stored.topContributors, last.topContributors);
  EXPECT_EQ(stored.topNetworkApps, last.topNetworkApps);
  EXPECT_FALSE(last.topNetworkApps.empty());
  // Privileged rows, and before the first of them the process sample.
  EXPECT_FALSE(last.topContributors.empty());
  EXPECT_NE(coordinator->latestProTelemetry().value(), std::nullopt);
}

TEST_F(RecordingThreadsTest, ACoordinatorThatGoesInTheMiddleLetsTheThreadsEndInOrder) {
  const auto session =
      coordinator->start("A", PowerSessionSource::app, 2.0, machine->clock().now());
  ASSERT_NE(session, nullptr);
  const std::weak_ptr<SessionRecordingCoordinator> weak = coordinator;
  asio::post(mainThread, [this] { coordinator.reset(); });
  mainThread.run();
  EXPECT_TRUE(weak.expired());
  EXPECT_LE(store->samples(*session).size(), 1U);
}

}  // namespace
}  // namespace quorvex
