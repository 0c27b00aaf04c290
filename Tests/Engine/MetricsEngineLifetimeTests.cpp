#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "MetricsEngineFixture.h"

// Who keeps the engine alive, and what observers may do to it from within a poll.

namespace quorvex {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MetricsEngineLifetimeTest : public testing::MetricsEngineTest {};

TEST_F(MetricsEngineLifetimeTest, TheLoopDoesNotKeepTheEngineAlive) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  const std::weak_ptr<MetricsEngine> weak = engine;
  engine.reset();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  const auto reads = machine.battery.log().size();
  stepped.advance(100.0);
  EXPECT_EQ(machine.battery.log().size(), reads);
}

TEST_F(MetricsEngineLifetimeTest, AnEngineThatGoesBeforeItsFirstTurnReadsNothing) {
  makeEngine(2.0);
  engine->start();
  engine.reset();
  stepped.advance(100.0);
  EXPECT_THAT(machine.battery.log(), IsEmpty());
}

TEST_F(MetricsEngineLifetimeTest, AnEngineThatIsLetGoDuringAReadEndsWithIt) {
  makeEngine(2.0);
  engine->start();
  stepped.runMainThread();
  const std::weak_ptr<MetricsEngine> weak = engine;
  engine.reset();
  EXPECT_FALSE(weak.expired());
  stepped.settle();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
}

TEST_F(MetricsEngineLifetimeTest, ASnapshotOutlivesWhoLetsGoOfTheEngineBeforeItBegins) {
  makeEngine();
  auto operation = engine->snapshot();
  engine.reset();
  EXPECT_EQ(stepped.run(std::move(operation)).power->cpuPower, 4.0);
}

TEST_F(MetricsEngineLifetimeTest, AnObserverMayStopTheEngineFromWithinAPoll) {
  makeEngine(2.0);
  const Subscription subscription =
      engine->currentState().subscribe([this](const SystemPowerState&) { engine->stop(); });
  engine->start();
  stepped.advance(100.0);
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_FALSE(engine->isRunning().value());
}

TEST_F(MetricsEngineLifetimeTest, AnObserverMayRestartTheLoopFromWithinAPoll) {
  makeEngine(2.0);
  const Subscription subscription =
      engine->currentState().subscribe([this](const SystemPowerState&) {
        if (engine->interval().value() < 5.0) {
          engine->setInterval(5.0);
        }
      });
  engine->start();
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(5.0));
}

TEST_F(MetricsEngineLifetimeTest, AnObserverMayStopTheEngineFromWithinItsStart) {
  makeEngine(2.0);
  const Subscription subscription = engine->isRunning().subscribe([this](bool isRunning) {
    if (isRunning) {
      engine->stop();
    }
  });
  engine->start();
  EXPECT_FALSE(engine->isRunning().value());
  stepped.advance(100.0);
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
}

TEST_F(MetricsEngineLifetimeTest, AnObserverMayLetGoOfTheEngineFromWithinAPoll) {
  makeEngine(2.0);
  const Subscription subscription =
      engine->currentState().subscribe([this](const SystemPowerState&) { engine.reset(); });
  const std::weak_ptr<MetricsEngine> weak = engine;
  engine->start();
  stepped.settle();
  EXPECT_TRUE(weak.expired());
}

TEST_F(MetricsEngineLifetimeTest, AnIntervalOfZeroPollsInEveryTurnAndStillCanBeStopped) {
  makeEngine(0.0);
  std::size_t polls = 0;
  const Subscription subscription = engine->currentState().subscribe([&](const SystemPowerState&) {
    if (++polls == 5) {
      engine->stop();
    }
  });
  engine->start();
  stepped.advance(0.0);
  stepped.advance(1.0);
  EXPECT_EQ(polls, 5U);
}

}  // namespace
}  // namespace quorvex
