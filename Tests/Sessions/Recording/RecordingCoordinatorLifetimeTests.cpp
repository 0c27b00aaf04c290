#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CoordinatorFixture.h"

// A coordinator that goes, at each point where its tasks wait.

namespace quorvex {
namespace {

using testing::laptopState;
using testing::sessionStart;
using ::testing::SizeIs;

class RecordingCoordinatorLifetimeTest : public testing::CoordinatorTest {
 protected:
  /// Lets go of the coordinator; a look at whether it is gone.
  std::weak_ptr<SessionRecordingCoordinator> letGo() {
    const std::weak_ptr<SessionRecordingCoordinator> weak = coordinator;
    coordinator.reset();
    return weak;
  }
};

TEST_F(RecordingCoordinatorLifetimeTest, BeforeItsFirstTurnItTakesNoSample) {
  makeCoordinator();
  start();
  EXPECT_TRUE(letGo().expired());
  stepped.advance(10.0);
  EXPECT_EQ(stateReads, 0);
}

TEST_F(RecordingCoordinatorLifetimeTest, WhileItSleepsItGoesAtOnceAndEndsTheSleep) {
  makeCoordinator();
  start();
  stepped.settle();
  ASSERT_EQ(stepped.sleeper().pendingCount(), 1U);
  EXPECT_TRUE(letGo().expired());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  stepped.advance(10.0);
  EXPECT_EQ(stateReads, 1);
  // The session is still active, for the next start of the app.
  EXPECT_NE(*store->activeSession(), nullptr);
}

TEST_F(RecordingCoordinatorLifetimeTest, WhileAStateIsReadTheSampleFinishesAndItGoes) {
  makeCoordinator();
  statesWait = true;
  start();
  stepped.runMainThread();
  const auto weak = letGo();
  EXPECT_FALSE(weak.expired());
  stepped.settle();
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(samples(), SizeIs(1));
  stepped.advance(10.0);
  EXPECT_THAT(samples(), SizeIs(1));
}

TEST_F(RecordingCoordinatorLifetimeTest, WhileTheExtrasAreTakenTheSampleFinishesAndItGoes) {
  makeCoordinator();
  start();
  stepped.runMainThread();
  const auto weak = letGo();
  EXPECT_FALSE(weak.expired());
  stepped.settle();
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(samples(), SizeIs(1));
}

TEST_F(RecordingCoordinatorLifetimeTest, WhileARefreshIsInFlightItGoesAtOnce) {
  isEnabled = true;
  makeCoordinator();
  ASSERT_NE(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  record(laptopState(-1.0));
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.runMainThread();
  ASSERT_EQ(telemetryReads, 1);
  EXPECT_TRUE(letGo().expired());
  stepped.settle();
  EXPECT_EQ(telemetryReads, 1);
}

TEST_F(RecordingCoordinatorLifetimeTest, ARefreshThatHasNotBegunIsNeverMade) {
  isEnabled = true;
  makeCoordinator();
  ASSERT_NE(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  record(laptopState(-1.0));
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  while (coordinator->lastProTelemetryRefreshAt() == std::nullopt) {
    ASSERT_TRUE(stepped.stepMainThread());
  }
  ASSERT_EQ(telemetryReads, 0);
  coordinator.reset();
  stepped.settle();
  EXPECT_EQ(telemetryReads, 0);
}

TEST_F(RecordingCoordinatorLifetimeTest, AReadingNowFinishesForItsCallerAndItGoes) {
  isEnabled = true;
  makeCoordinator();
  const auto result = stepped.spawn(coordinator->sampleProTelemetryNow());
  stepped.runMainThread();
  const auto weak = letGo();
  EXPECT_FALSE(weak.expired());
  stepped.settle();
  EXPECT_EQ(**result, testing::privileged(0.0));
  EXPECT_TRUE(weak.expired());
}

TEST_F(RecordingCoordinatorLifetimeTest, ItKeepsItsRecorder) {
  makeCoordinator();
  const auto session = start();
  recorder.reset();
  stepped.settle();
  EXPECT_THAT(store->samples(*session), SizeIs(1));
}

TEST_F(RecordingCoordinatorLifetimeTest, AnObserverOfTheReadingMayLetGoOfIt) {
  isEnabled = true;
  makeCoordinator();
  start();
  const Subscription subscription =
      coordinator->latestProTelemetry().subscribe([&](const auto&) { coordinator.reset(); });
  stepped.settle();
  EXPECT_EQ(coordinator, nullptr);
  stepped.advance(10.0);
  EXPECT_EQ(telemetryReads, 1);
}

TEST_F(RecordingCoordinatorLifetimeTest, TasksThatAreNeverTakenUpAgainGoWithTheirThreads) {
  std::weak_ptr<SessionRecordingCoordinator> weak;
  {
    testing::SteppedContext own{machine.time};
    const auto workers = own.context().workers;
    auto given = functions();
    given.stateProvider = [workers] {
      return runDetached(workers, [] { return laptopState(1.0); });
    };
    auto ownCoordinator =
        SessionRecordingCoordinator::make(recorder, given, machine.time, own.context(), 10.0);
    weak = ownCoordinator;
    ASSERT_NE(ownCoordinator->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
    own.runMainThread();
    ownCoordinator.reset();
    EXPECT_FALSE(weak.expired());
  }
  EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace quorvex
