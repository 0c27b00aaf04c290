#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "FaultyDisk.h"
#include "PowerSessionRecorder.h"
#include "RecordingFixture.h"

// Adoption, start, stop and deletion of sessions.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FaultyDisk;
using testing::Heard;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::networkedState;
using testing::privileged;
using testing::secondsIn;
using testing::sessionStart;

using PowerSessionRecorderTest = testing::RecordingTest;
using PowerSessionRecorderTestOnAFaultyDisk = FaultyDisk<PowerSessionRecorderTest>;

// Construction and adoption

TEST_F(PowerSessionRecorderTest, BeginsEmptyOverAnEmptyStore) {
  makeRecorder();
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), std::nullopt);
  EXPECT_EQ(recorder->running().value().sampleCount(), 0);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessCounters().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
  EXPECT_EQ(recorder->processSampleInterval(), 10.0);
  EXPECT_EQ(&recorder->store(), store.get());
}

TEST_F(PowerSessionRecorderTest, AdoptsTheSessionThatTheStoreHasAsActiveWithItsFigures) {
  startElsewhere(0.0, {2.0, 38.0});
  makeRecorder();
  ASSERT_NE(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(recorder->activeSession().value()->title(), "Elsewhere");
  EXPECT_EQ(live().sampleCount, 2);
  // 8 W for 36 s, a hundredth of an hour.
  EXPECT_DOUBLE_EQ(*live().totalWattHours, 8.0 * 0.01);
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), 120.0);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(38.0));
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
}

TEST_F(PowerSessionRecorderTest, AdoptsASessionWithoutSamplesWithTheEmptySummary) {
  startElsewhere(0.0, {});
  makeRecorder();
  EXPECT_NE(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
}

TEST_F(PowerSessionRecorderTest, AdoptsTheLatestSampleAlsoWhenItWasNotTheLastToBeStored) {
  startElsewhere(0.0, {8.0, 2.0});
  makeRecorder();
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(8.0));
}

TEST_F(PowerSessionRecorderTest, ARestartRestoresTheRunningStateFromTheRows) {
  startRecording();
  setNettop("Safari.9,100,200,\n");
  record(networkedState(2.0, 500.0), privileged(1.0));
  record(networkedState(4.0, 500.0), privileged(3.0));
  const PowerSessionSummary before = live();
  ASSERT_EQ(before.sampleCount, 2);

  recorder.reset();
  store.reset();
  store = openStore();
  makeRecorder();
  EXPECT_EQ(live(), before);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(4.0));
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), secondsIn(3.0));
  // The first sample after it takes the extras, and has no rates.
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessCounters().value(), std::nullopt);
}

TEST_F(PowerSessionRecorderTest, TheHoleOfARestartIsJudgedByTheOrdinaryGapRule) {
  startElsewhere(0.0, {2.0, 4.0});
  makeRecorder();
  record(laptopState(104.0));
  EXPECT_DOUBLE_EQ(*live().totalWattHours, 8.0 * 102.0 / 3600.0);
  record(laptopState(304.0));
  EXPECT_EQ(live().totalWattHours, std::nullopt);
  EXPECT_EQ(live().totalWattHoursNote, "Large sampling gaps; energy totals unavailable.");
}

TEST_F(PowerSessionRecorderTest, RefreshAdoptsASessionThatWasStartedElsewhere) {
  makeRecorder();
  startElsewhere(0.0, {2.0});
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  recorder->refreshActiveSession();
  ASSERT_NE(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live().sampleCount, 1);
}

TEST_F(PowerSessionRecorderTest, RefreshSeesWhatAnotherProcessHasAddedSince) {
  startElsewhere(0.0, {2.0});
  makeRecorder();
  recorder->refreshActiveSession();
  const auto other = openStore();
  ASSERT_TRUE(other->appendSample(**other->activeSession(), laptopState(4.0), {}, std::nullopt));
  recorder->refreshActiveSession();
  EXPECT_EQ(live().sampleCount, 2);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(4.0));
}

TEST_F(PowerSessionRecorderTest, RefreshWithoutAnActiveSessionForgetsTheOneThatWas) {
  const auto session = startRecording();
  record(laptopState(2.0), privileged(1.0));
  {
    const auto other = openStore();
    ASSERT_TRUE(other->stopSession(**other->activeSession(), secondsIn(3.0)));
  }
  recorder->refreshActiveSession();
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), std::nullopt);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
}

TEST_F(PowerSessionRecorderTest, RefreshSummaryBuildsTheFiguresFromAllRows) {
  startElsewhere(0.0, {2.0, 4.0});
  makeRecorder();
  recorder->start("Joined", PowerSessionSource::app, 2.0, secondsIn(10.0));
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  recorder->refreshSummary();
  EXPECT_EQ(live().sampleCount, 2);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(4.0));
}

// Start

TEST_F(PowerSessionRecorderTest, StartStoresASessionAndBeginsItsSummaryEmpty) {
  makeRecorder();
  const auto session = recorder->start("  Work ", PowerSessionSource::app, 40.0, secondsIn(3.0));
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(recorder->activeSession().value(), session);
  EXPECT_EQ(session->title(), "Work");
  EXPECT_EQ(session->source(), PowerSessionSource::app);
  EXPECT_EQ(session->startedAt(), secondsIn(3.0));
  EXPECT_EQ(*store->activeSession(), session);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  // Four intervals, which are more than two minutes.
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), 4 * 40.0);
}

TEST_F(PowerSessionRecorderTest,
       StartWhileASessionIsActiveElsewhereJoinsItAndTheSummaryRestartsFromEmpty) {
  makeRecorder();
  startElsewhere(0.0, {2.0, 4.0});
  const auto session = recorder->start("New", PowerSessionSource::app, 60.0, secondsIn(10.0));
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(session->title(), "Elsewhere");
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  // The limit follows the joined session's own interval of 2 s.
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), 120.0);
  record(laptopState(12.0));
  EXPECT_EQ(live().sampleCount, 1);
  EXPECT_EQ(recorder->summary(*session).sampleCount, 3);
}

TEST_F(PowerSessionRecorderTest, StartForgetsWhatTheRecordingBeforeRemembered) {
  startRecording();
  setNettop("Safari.9,100,200,\n");
  record(networkedState(2.0), privileged(1.0));
  ASSERT_NE(recorder->lastNetworkProcessCounters().value(), std::nullopt);
  recorder->start("Again", PowerSessionSource::app, 2.0, secondsIn(3.0));
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessCounters().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
}

TEST_F(PowerSessionRecorderTestOnAFaultyDisk, AFailedStartSaysWhyAndChangesNothingElse) {
  makeRecorder();
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_EQ(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  EXPECT_EQ(lastError(), "The session store cannot be written: the disk is full");
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), std::nullopt);
  disk.repair();
  EXPECT_NE(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  EXPECT_EQ(lastError(), std::nullopt);
}

// Stop

TEST_F(PowerSessionRecorderTest, StopCompletesTheSessionAndForgetsTheRecording) {
  const auto session = startRecording();
  setNettop("Safari.9,100,200,\n");
  record(networkedState(2.0), privileged(1.0));
  recorder->stop(secondsIn(20.0));
  EXPECT_EQ(session->status(), PowerSessionStatus::completed);
  EXPECT_EQ(session->endedAt(), secondsIn(20.0));
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(recorder->running().value().sampleCount(), 0);
  EXPECT_EQ(recorder->running().value().maxPowerSampleGap(), std::nullopt);
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessCounters().value(), std::nullopt);
  EXPECT_EQ(recorder->lastNetworkProcessSampleAt().value(), std::nullopt);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
  EXPECT_EQ(recorder->summary(*session).sampleCount, 1);
}

TEST_F(PowerSessionRecorderTest, StopWithoutAnActiveSessionDoesNothing) {
  makeRecorder();
  Heard running{recorder->running()};
  recorder->stop(secondsIn(20.0));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_THAT(recorder->sessions(), IsEmpty());
  EXPECT_EQ(running.times(), 0);
}

TEST_F(PowerSessionRecorderTestOnAFaultyDisk, StopWithAFailingStoreKeepsTheSessionActive) {
  const auto session = startRecording();
  record(laptopState(2.0));
  const PowerSessionSummary before = live();
  disk.failAfter(0, SQLITE_FULL);
  recorder->stop(secondsIn(20.0));
  EXPECT_EQ(lastError(), "The session store cannot be written: the disk is full");
  EXPECT_EQ(recorder->activeSession().value(), session);
  EXPECT_EQ(live(), before);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(2.0));
  disk.repair();
  record(laptopState(4.0));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(live().sampleCount, 2);
  recorder->stop(secondsIn(30.0));
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(session->endedAt(), secondsIn(30.0));
}

// Deletion

TEST_F(PowerSessionRecorderTest, DeletingTheActiveSessionClearsActiveSessionAndActiveSummary) {
  startRecording();
  record(laptopState(2.0));
  // The pointer is the observable's own, which is cleared meanwhile.
  recorder->deleteSession(recorder->activeSession().value());
  EXPECT_EQ(recorder->activeSession().value(), nullptr);
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_THAT(recorder->sessions(), IsEmpty());
  record(laptopState(4.0));
  EXPECT_THAT(recorder->sessions(), IsEmpty());
}

TEST_F(PowerSessionRecorderTest, DeletingAnotherSessionLeavesTheActiveOneBeingRecorded) {
  const auto old = startRecording();
  recorder->stop(secondsIn(1.0));
  const auto session = recorder->start("Now", PowerSessionSource::app, 2.0, secondsIn(2.0));
  record(laptopState(4.0));
  recorder->deleteSession(old);
  EXPECT_THAT(recorder->sessions(), ElementsAre(session));
  EXPECT_EQ(recorder->activeSession().value(), session);
  EXPECT_EQ(live().sampleCount, 1);
  record(laptopState(6.0));
  EXPECT_EQ(live().sampleCount, 2);
}

TEST_F(PowerSessionRecorderTestOnAFaultyDisk, AFailedDeletionSaysWhyAndKeepsTheSession) {
  const auto session = startRecording();
  disk.failAfter(0, SQLITE_FULL);
  recorder->deleteSession(session);
  EXPECT_EQ(lastError(), "The session store cannot be written: the disk is full");
  EXPECT_EQ(recorder->activeSession().value(), session);
}

// What is forwarded to the store

TEST_F(PowerSessionRecorderTest, ListsSessionsNewestFirst) {
  const auto first = startRecording();
  recorder->stop(secondsIn(1.0));
  const auto second = recorder->start("B", PowerSessionSource::app, 2.0, secondsIn(5.0));
  EXPECT_THAT(recorder->sessions(), ElementsAre(second, first));
}

TEST_F(PowerSessionRecorderTest, SummaryAndReportAreTheStores) {
  const auto session = startRecording();
  record(laptopState(2.0));
  record(laptopState(4.0));
  EXPECT_EQ(recorder->summary(*session), store->summary(*session));
  EXPECT_EQ(recorder->report(*session), store->report(*session));
}

TEST_F(PowerSessionRecorderTest, ExportsWithThePresentTime) {
  const auto session = startRecording();
  record(laptopState(2.0));
  machine.time.setNow(secondsIn(500.0));
  const auto text = recorder->exportJSONL(*session);
  ASSERT_TRUE(text);
  EXPECT_EQ(*text, *store->exportJSONL(*session, secondsIn(500.0)));
}

}  // namespace
}  // namespace quorvex
