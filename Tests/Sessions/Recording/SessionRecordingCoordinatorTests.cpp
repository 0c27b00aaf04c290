#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CoordinatorFixture.h"
#include "SessionRecordingCoordinator.h"

// The sampling loop, with functions that the test answers for.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::secondsIn;
using testing::sessionStart;
using ::testing::SizeIs;

using SessionRecordingCoordinatorTest = testing::CoordinatorTest;

TEST_F(SessionRecordingCoordinatorTest, BeginsIdle) {
  makeCoordinator();
  stepped.advance(100.0);
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
  EXPECT_EQ(coordinator->lastMessage().value(), std::nullopt);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), std::nullopt);
  EXPECT_EQ(coordinator->proTelemetrySampleInterval(), 10.0);
  EXPECT_EQ(&coordinator->recorder(), recorder.get());
  EXPECT_EQ(stateReads, 0);
  EXPECT_EQ(engineStarts, 0);
}

TEST_F(SessionRecordingCoordinatorTest, StartSamplesAtOnceAndThenAtTheSessionsInterval) {
  makeCoordinator();
  const auto session = start(3.0);
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(engineStarts, 1);
  EXPECT_TRUE(coordinator->isSampling().value());
  // Not within the call itself.
  EXPECT_EQ(stateReads, 0);
  stepped.settle();
  EXPECT_THAT(recordedTimes(), SizeIs(1));
  stepped.advance(9.0);
  EXPECT_THAT(recordedTimes(), SizeIs(4));
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(3.0, 3.0, 3.0, 3.0));
}

TEST_F(SessionRecordingCoordinatorTest, TheIntervalComesOnTopOfTheWorkOfASample) {
  makeCoordinator();
  start(3.0);
  // The first sample takes the extras, which last 0.35 s.
  stepped.advance(3.35);
  EXPECT_THAT(recordedTimes(), ElementsAre(0.0, 3.35));
}

TEST_F(SessionRecordingCoordinatorTest, ASampleIntervalOfATenthSleepsHalfASecond) {
  makeCoordinator();
  start(0.1);
  stepped.settle();
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(0.5));
}

TEST_F(SessionRecordingCoordinatorTest, AFailedStartSamplesNothing) {
  makeCoordinator();
  auto other = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  EXPECT_EQ(start(), nullptr);
  EXPECT_FALSE(coordinator->isSampling().value());
  stepped.advance(10.0);
  EXPECT_EQ(stateReads, 0);
  EXPECT_EQ(engineStarts, 0);
  EXPECT_NE(lastError(), std::nullopt);
}

TEST_F(SessionRecordingCoordinatorTest, StartingTwiceKeepsOneLoop) {
  makeCoordinator();
  const auto session = start();
  stepped.settle();
  EXPECT_EQ(start(), session);
  stepped.settle();
  EXPECT_EQ(engineStarts, 1);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
}

TEST_F(SessionRecordingCoordinatorTest, TheDesignatedConstructorLeavesAnAdoptedSessionAlone) {
  ASSERT_NE(recorder->start("Old", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  makeCoordinator();
  stepped.advance(10.0);
  EXPECT_EQ(stateReads, 0);
  coordinator->resumeIfNeeded();
  EXPECT_TRUE(coordinator->isSampling().value());
  stepped.settle();
  EXPECT_EQ(stateReads, 1);
  coordinator->resumeIfNeeded();
  stepped.settle();
  EXPECT_EQ(stateReads, 1);
}

TEST_F(SessionRecordingCoordinatorTest, ResumeWithoutAnActiveSessionDoesNothing) {
  makeCoordinator();
  coordinator->resumeIfNeeded();
  stepped.advance(10.0);
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_EQ(stateReads, 0);
}

TEST_F(SessionRecordingCoordinatorTest, StopEndsTheLoopItsSleepAndTheSession) {
  makeCoordinator();
  const auto session = start();
  stepped.advance(4.35);
  coordinator->stop(secondsIn(5.0));
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  EXPECT_EQ(session->status(), PowerSessionStatus::completed);
  const int reads = stateReads;
  stepped.advance(100.0);
  EXPECT_EQ(stateReads, reads);
  EXPECT_FALSE(coordinator->isSampling().value());
}

TEST_F(SessionRecordingCoordinatorTest, StopBeforeTheFirstTurnTakesNoSample) {
  makeCoordinator();
  start();
  coordinator->stop(secondsIn(0.0));
  stepped.advance(10.0);
  EXPECT_EQ(stateReads, 0);
}

TEST_F(SessionRecordingCoordinatorTest, StopDuringASamplesAwaitDropsTheSampleInFlight) {
  makeCoordinator();
  statesWait = true;
  const auto session = start();
  stepped.runMainThread();
  EXPECT_EQ(stateReads, 1);
  coordinator->stop(secondsIn(1.0));
  stepped.settle();
  EXPECT_THAT(store->samples(*session), IsEmpty());
  EXPECT_FALSE(coordinator->isSampling().value());
  stepped.advance(100.0);
  EXPECT_EQ(stateReads, 1);
}

TEST_F(SessionRecordingCoordinatorTest, AStopThatFailsLeavesTheSessionActiveAndTheLoopEnded) {
  makeCoordinator();
  const auto session = start();
  stepped.settle();
  auto other = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  coordinator->stop(secondsIn(1.0));
  EXPECT_EQ(recorder->activeSession().value(), session);
  EXPECT_FALSE(coordinator->isSampling().value());
  ASSERT_TRUE(other->execute("COMMIT"));
  coordinator->resumeIfNeeded();
  stepped.advance(2.0);
  EXPECT_TRUE(coordinator->isSampling().value());
}

TEST_F(SessionRecordingCoordinatorTest, ANewSessionAfterAStopIsSampledByANewLoopAlone) {
  makeCoordinator();
  start();
  stepped.settle();
  coordinator->stop(machine.time.now());
  start();
  // The old loop ends in a turn of its own and leaves the new one alone.
  stepped.settle();
  EXPECT_TRUE(coordinator->isSampling().value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
  EXPECT_EQ(stateReads, 2);
  stepped.advance(2.0);
  EXPECT_EQ(stateReads, 3);
}

TEST_F(SessionRecordingCoordinatorTest, StopAndStartDuringASamplesAwaitLeaveOneLoop) {
  makeCoordinator();
  statesWait = true;
  start();
  stepped.runMainThread();
  coordinator->stop(machine.time.now());
  start();
  stepped.settle();
  EXPECT_TRUE(coordinator->isSampling().value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
}

TEST_F(SessionRecordingCoordinatorTest, ASessionThatIsDeletedEndsSamplingAfterTheSleep) {
  makeCoordinator();
  start();
  stepped.settle();
  recorder->deleteSession(recorder->activeSession().value());
  EXPECT_TRUE(coordinator->isSampling().value());
  stepped.advance(2.0);
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_EQ(stateReads, 1);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  // And a new one can be sampled.
  start();
  stepped.settle();
  EXPECT_EQ(stateReads, 2);
}

TEST_F(SessionRecordingCoordinatorTest, WithoutASessionTheLoopSleepsTwoSeconds) {
  makeCoordinator();
  statesWait = true;
  start(7.0);
  stepped.runMainThread();
  // The session goes while its first state is read, without the coordinator's doing.
  recorder->deleteSession(recorder->activeSession().value());
  stepped.settle();
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(2.0));
}

TEST_F(SessionRecordingCoordinatorTest, TheIntervalIsReadAnewOnEachPass) {
  makeCoordinator();
  start(3.0);
  stepped.settle();
  const auto session = recorder->activeSession().value();
  PowerSessionColumns columns = session->columns();
  columns.sampleInterval = 5.0;
  session->refresh(columns);
  stepped.advance(3.0);
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(3.0, 5.0));
}

TEST_F(SessionRecordingCoordinatorTest, WithInjectedSleepAndStatesTheLoopIsDrivenByHand) {
  std::vector<double> sleeps;
  auto given = functions();
  const auto step = [&](double seconds) {
    sleeps.push_back(seconds);
    machine.time.advance(seconds);
    return runDetached(stepped.context().workers, [] { return true; });
  };
  given.sleep = [&](std::shared_ptr<TaskHandle>, double seconds) -> asio::awaitable<void> {
    co_await step(seconds);
  };
  makeCoordinator(std::move(given));
  start(2.0);
  stepped.runMainThread();
  stepped.stepWorkers();  // The extras of the first sample.
  stepped.runMainThread();
  EXPECT_THAT(sleeps, ElementsAre(2.0));
  EXPECT_EQ(stateReads, 1);
  for (int pass = 2; pass <= 4; ++pass) {
    ASSERT_TRUE(stepped.stepWorkers());
    stepped.runMainThread();
    EXPECT_EQ(stateReads, pass);
  }
  EXPECT_THAT(sleeps, ElementsAre(2.0, 2.0, 2.0, 2.0));
  EXPECT_THAT(stepped.sleeper().sleeps(), IsEmpty());
}

TEST_F(SessionRecordingCoordinatorTest, CancellationIsLookedAtAfterASleepThatDidNotEndEarly) {
  auto given = functions();
  given.sleep = [this](std::shared_ptr<TaskHandle>, double) -> asio::awaitable<void> {
    co_await runDetached(stepped.context().workers, [] { return true; });
  };
  makeCoordinator(std::move(given));
  start();
  stepped.runMainThread();
  stepped.stepWorkers();
  stepped.runMainThread();
  coordinator->stop(machine.time.now());
  recorder->start("Elsewhere", PowerSessionSource::app, 2.0, machine.time.now());
  stepped.settle();
  EXPECT_EQ(stateReads, 1);
}

TEST_F(SessionRecordingCoordinatorTest, ASampleNowIsOutsideTheRhythm) {
  makeCoordinator();
  start(10.0);
  stepped.settle();
  machine.time.advance(1.0);
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.settle();
  EXPECT_THAT(recordedTimes(), SizeIs(2));
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(10.0));
}

TEST_F(SessionRecordingCoordinatorTest, ASampleNowWithoutASessionEndsSampling) {
  makeCoordinator();
  start();
  stepped.settle();
  recorder->stop(secondsIn(1.0));
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.settle();
  EXPECT_FALSE(coordinator->isSampling().value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  EXPECT_EQ(stateReads, 1);
}

}  // namespace
}  // namespace quorvex
