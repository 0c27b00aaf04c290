#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "FaultyDisk.h"
#include "RecordingFixture.h"

// What may happen while a state waits for the workers: repeats, other states, the session's end,
// the recorder's.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FaultyDisk;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::networkedState;
using testing::privileged;
using testing::secondsIn;
using testing::sessionStart;
using ::testing::SizeIs;

using RecorderOverlapTest = testing::RecordingTest;
using RecorderOverlapTestOnAFaultyDisk = FaultyDisk<RecorderOverlapTest>;

TEST_F(RecorderOverlapTest, ExtrasRunOnTheWorkersAndTheSampleIsWrittenAfterThem) {
  setNettop("Safari.9,100,200,\n");
  startRecording();
  const auto ended = spawnRecord(networkedState(2.0));
  stepped.runMainThread();
  EXPECT_EQ(processWalks(), 0);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(2.0));
  ASSERT_TRUE(stepped.stepWorkers());
  EXPECT_EQ(processWalks(), 2);
  EXPECT_EQ(launchCount(nettop), 0U);
  stepped.runMainThread();
  ASSERT_TRUE(stepped.stepWorkers());
  EXPECT_EQ(launchCount(nettop), 1U);
  EXPECT_THAT(recordedTimes(), IsEmpty());
  stepped.runMainThread();
  EXPECT_TRUE(ended->has_value());
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
}

TEST_F(RecorderOverlapTest, ASampleWithoutExtrasWaitsForNobody) {
  startRecording();
  record(laptopState(2.0));
  const auto ended = spawnRecord(laptopState(4.0));
  stepped.runMainThread();
  EXPECT_TRUE(ended->has_value());
  EXPECT_FALSE(stepped.stepWorkers());
}

TEST_F(RecorderOverlapTest, TheSameStateOfferedWhileItWaitsIsRecordedOnce) {
  startRecording();
  const auto first = spawnRecord(laptopState(2.0));
  stepped.runMainThread();
  const auto second = spawnRecord(laptopState(2.0));
  stepped.runMainThread();
  EXPECT_TRUE(second->has_value());
  EXPECT_FALSE(first->has_value());
  stepped.settle();
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
}

TEST_F(RecorderOverlapTest, ALaterStateOverlapsWithoutExtras) {
  startRecording();
  const auto first = spawnRecord(laptopState(2.0));
  stepped.runMainThread();
  const auto second = spawnRecord(laptopState(4.0));
  stepped.runMainThread();
  EXPECT_TRUE(second->has_value());
  EXPECT_THAT(recordedTimes(), ElementsAre(4.0));
  stepped.settle();
  EXPECT_TRUE(first->has_value());
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0, 4.0));
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(4.0));
}

TEST_F(RecorderOverlapTestOnAFaultyDisk, AFailureDoesNotForgetALaterStateThatWasRecordedMeanwhile) {
  startRecording();
  record(laptopState(2.0));
  (void)spawnRecord(laptopState(12.0));
  stepped.runMainThread();
  const auto later = spawnRecord(laptopState(14.0));
  stepped.runMainThread();
  ASSERT_TRUE(later->has_value());
  disk.failAfter(0, SQLITE_FULL);
  stepped.settle();
  ASSERT_NE(lastError(), std::nullopt);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(14.0));
}

TEST_F(RecorderOverlapTest, ASessionThatEndsWhileProcessesAreSampledLosesTheSample) {
  const auto session = startRecording();
  const auto ended = spawnRecord(networkedState(2.0));
  stepped.runMainThread();
  recorder->stop(secondsIn(3.0));
  stepped.settle();
  EXPECT_TRUE(ended->has_value());
  EXPECT_THAT(store->samples(*session), IsEmpty());
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(launchCount(nettop), 0U);
}

TEST_F(RecorderOverlapTest, ASessionThatEndsWhileTheToolRunsLosesTheSampleAndItsRows) {
  setNettop("Safari.9,100,200,\n");
  const auto session = startRecording();
  const auto ended = spawnRecord(networkedState(2.0), privileged(1.0));
  stepped.runMainThread();
  recorder->stop(secondsIn(3.0));
  stepped.settle();
  EXPECT_TRUE(ended->has_value());
  EXPECT_THAT(store->samples(*session), IsEmpty());
  EXPECT_EQ(recorder->lastNetworkProcessCounters().value(), std::nullopt);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
}

TEST_F(RecorderOverlapTest, ASampleOfOneSessionIsNotWrittenIntoTheNext) {
  startRecording();
  (void)spawnRecord(laptopState(2.0));
  stepped.runMainThread();
  recorder->stop(secondsIn(3.0));
  recorder->start("Next", PowerSessionSource::app, 2.0, secondsIn(4.0));
  stepped.settle();
  EXPECT_THAT(recordedTimes(), IsEmpty());
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
}

TEST_F(RecorderOverlapTest, AStateThatWaitedWhileItsSessionWasJoinedIsNotRecordedAgain) {
  startRecording();
  (void)spawnRecord(laptopState(2.0));
  stepped.runMainThread();
  recorder->start("Again", PowerSessionSource::app, 2.0, secondsIn(3.0));
  stepped.settle();
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
  record(laptopState(2.0));
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
  EXPECT_EQ(live().sampleCount, 1);
}

TEST_F(RecorderOverlapTest, AStateThatWaitedWhileItsSessionWasAdoptedAnewIsNotRecordedAgain) {
  const auto old = startRecording();
  recorder->stop(secondsIn(1.0));
  recorder->start("Now", PowerSessionSource::app, 2.0, secondsIn(2.0));
  (void)spawnRecord(laptopState(4.0));
  stepped.runMainThread();
  recorder->deleteSession(old);
  stepped.settle();
  EXPECT_THAT(recordedTimes(), ElementsAre(4.0));
  record(laptopState(4.0));
  EXPECT_THAT(recordedTimes(), ElementsAre(4.0));
}

TEST_F(RecorderOverlapTest, ARecorderThatIsLetGoWhileItWaitsFinishesTheSampleAndGoes) {
  const auto session = startRecording();
  const auto ended = spawnRecord(networkedState(2.0));
  stepped.runMainThread();
  const std::weak_ptr<PowerSessionRecorder> weak = recorder;
  recorder.reset();
  EXPECT_FALSE(weak.expired());
  stepped.settle();
  EXPECT_TRUE(ended->has_value());
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(store->samples(*session), SizeIs(1));
}

TEST_F(RecorderOverlapTest, ARecordingThatIsNeverTakenUpAgainGoesWithItsThreads) {
  std::weak_ptr<PowerSessionRecorder> weak;
  {
    testing::SteppedContext own{machine.time};
    auto ownRecorder = PowerSessionRecorder::make(store, machine, own.context().workers, cadence);
    weak = ownRecorder;
    ASSERT_NE(ownRecorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
    (void)own.spawn(toTheEnd(ownRecorder->record(laptopState(2.0), std::nullopt)));
    own.runMainThread();
    ownRecorder.reset();
    EXPECT_FALSE(weak.expired());
  }
  EXPECT_TRUE(weak.expired());
}

TEST_F(RecorderOverlapTest, AnObserverMayStopTheSessionWhileASampleIsCounted) {
  startRecording();
  record(laptopState(2.0));
  const Subscription subscription = recorder->running().subscribe([&](const RunningSummary& now) {
    if (now.sampleCount() == 2) {
      recorder->stop(secondsIn(5.0));
    }
  });
  record(laptopState(4.0));
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
}

}  // namespace
}  // namespace quorvex
