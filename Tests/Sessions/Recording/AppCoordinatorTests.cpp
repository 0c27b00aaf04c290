#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "RecordingFixture.h"
#include "SessionRecordingCoordinator.h"

// The coordinator with the functions that the app binds.

namespace quorvex {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using testing::sessionStart;
using ::testing::SizeIs;

class AppCoordinatorTest : public testing::RecordingTest {
 protected:
  static constexpr double engineInterval = 2.0;

  AppCoordinatorTest() {
    machine.interfaces.names[4] = "en0";
    machine.interfaces.set({{.index = 4, .bytesIn = 1000, .bytesOut = 500}});
    machine.files.set(helper, {});
    machine.children.answer(
        helper, {"read-pro-telemetry-json"},
        {.output = R"({"isAvailable":true,"source":"powermetrics",)"
                   R"("sampledAt":"2023-11-14T22:13:20Z","sampleIntervalMilliseconds":1000,)"
                   R"("processes":[{"pid":7,"name":"measured","energyImpact":2,)"
                   R"("isAggregate":false}]})"});
    makeRecorder();
    engine = MetricsEngine::make(machine, stepped.context(), engineInterval, 60);
  }
  void makeCoordinator() {
    coordinator =
        SessionRecordingCoordinator::make(engine, recorder, machine, stepped.context(), 10.0);
  }
  /// Runs of the helper for a privileged read; the engine runs it for temperatures.
  [[nodiscard]] std::ptrdiff_t telemetryReads() const {
    return std::ranges::count(machine.children.launches(),
                              testing::FakeLaunch{helper, {"read-pro-telemetry-json"}});
  }
  [[nodiscard]] std::size_t polls() const { return engine->history().value().size(); }

  std::shared_ptr<MetricsEngine> engine;
  std::shared_ptr<SessionRecordingCoordinator> coordinator;
};

TEST_F(AppCoordinatorTest, AnAdoptedSessionGoesOnBeingRecordedByItself) {
  ASSERT_NE(recorder->start("Old", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  makeCoordinator();
  EXPECT_TRUE(coordinator->isSampling().value());
  EXPECT_TRUE(engine->isRunning().value());
  stepped.settle();
  EXPECT_THAT(recordedTimes(), SizeIs(1));
}

TEST_F(AppCoordinatorTest, WithoutAnActiveSessionNothingStarts) {
  makeCoordinator();
  stepped.advance(10.0);
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_FALSE(engine->isRunning().value());
  EXPECT_EQ(polls(), 0U);
}

TEST_F(AppCoordinatorTest, ARunningEngineIsNotStartedAgain) {
  engine->start();
  stepped.settle();
  makeCoordinator();
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 2.0, machine.time.now()), nullptr);
  stepped.settle();
  EXPECT_EQ(polls(), 1U);
}

TEST_F(AppCoordinatorTest, ACurrentStateOfARunningEngineIsTakenAsItIs) {
  engine->start();
  stepped.settle();
  makeCoordinator();
  // Just younger than the engine's interval and half a second.
  machine.time.setNow(engine->currentState().value().timestamp + std::chrono::milliseconds{2499});
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 60.0, machine.time.now()), nullptr);
  stepped.settle();
  EXPECT_EQ(polls(), 1U);
  ASSERT_THAT(samples(), SizeIs(1));
  EXPECT_EQ(samples()[0]->timestamp(), engine->currentState().value().timestamp);
}

TEST_F(AppCoordinatorTest, AStateThatIsTooOldForcesAPoll) {
  engine->start();
  stepped.settle();
  makeCoordinator();
  machine.time.setNow(engine->currentState().value().timestamp + std::chrono::milliseconds{2500});
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 60.0, machine.time.now()), nullptr);
  stepped.settle();
  EXPECT_EQ(polls(), 2U);
  ASSERT_THAT(samples(), SizeIs(1));
  EXPECT_EQ(samples()[0]->timestamp(), engine->history().value()[1].timestamp);
}

TEST_F(AppCoordinatorTest, AStoppedEngineIsPolledForEachSample) {
  makeCoordinator();
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 60.0, machine.time.now()), nullptr);
  stepped.settle();
  engine->stop();
  const std::size_t before = polls();
  machine.time.advance(0.1);
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.settle();
  EXPECT_EQ(polls(), before + 1);
}

TEST_F(AppCoordinatorTest, ASessionThatSamplesAsTheEnginePollsAddsNoPolls) {
  engine->start();
  makeCoordinator();
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 2.0, machine.time.now()), nullptr);
  // The first sample finds no state yet and polls.
  stepped.settle();
  const std::size_t first = polls();
  stepped.advance(20.0);
  EXPECT_LE(polls(), first + 10);
  EXPECT_GT(samples().size(), 8U);
}

TEST_F(AppCoordinatorTest, TheSettingIsReadAtEveryUse) {
  makeCoordinator();
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 2.0, machine.time.now()), nullptr);
  stepped.advance(3.0);
  EXPECT_EQ(telemetryReads(), 0);
  machine.defaults.values["proTelemetryEnabled"] = true;
  stepped.advance(6.0);
  EXPECT_EQ(telemetryReads(), 1);
  ASSERT_NE(coordinator->latestProTelemetry().value(), std::nullopt);
  EXPECT_EQ(coordinator->latestProTelemetry().value()->processes.at(0).name, "measured");
  EXPECT_THAT(live().topContributors,
              Contains(::testing::Field(&PowerSessionContributor::name, "measured")));
  machine.defaults.values["proTelemetryEnabled"] = false;
  stepped.advance(3.0);
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
}

TEST_F(AppCoordinatorTest, TheHelperRunsOnAWorkerAndOnlyWithItsOneCommand) {
  machine.defaults.values["proTelemetryEnabled"] = true;
  makeCoordinator();
  const auto result = stepped.spawn(coordinator->sampleProTelemetryNow());
  stepped.runMainThread();
  EXPECT_EQ(launchCount(helper), 0U);
  ASSERT_TRUE(stepped.stepWorkers());
  EXPECT_THAT(machine.children.launches(),
              ElementsAre(testing::FakeLaunch{helper, {"read-pro-telemetry-json"}}));
  stepped.settle();
  ASSERT_TRUE(result->has_value());
  EXPECT_TRUE((**result)->isAvailable);
}

TEST_F(AppCoordinatorTest, AHelperThatFailsSaysSoInTheMessage) {
  machine.children.answer(helper, {"read-pro-telemetry-json"}, {.error = "no", .exitStatus = 1});
  machine.defaults.values["proTelemetryEnabled"] = true;
  makeCoordinator();
  (void)stepped.run(coordinator->sampleProTelemetryNow());
  (void)stepped.run(coordinator->sampleProTelemetryNow());
  EXPECT_EQ(coordinator->lastMessage().value(), "no");
}

TEST_F(AppCoordinatorTest, SleepsAreTheContextsAndEndWithTheSession) {
  makeCoordinator();
  ASSERT_NE(coordinator->start("A", PowerSessionSource::app, 3600.0, machine.time.now()), nullptr);
  stepped.settle();
  EXPECT_THAT(stepped.sleeper().sleeps(), Contains(3600.0));
  engine->stop();
  coordinator->stop(machine.time.now());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
}

}  // namespace
}  // namespace quorvex
