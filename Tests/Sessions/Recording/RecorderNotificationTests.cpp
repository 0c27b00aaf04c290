#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "FaultyDisk.h"
#include "PowerSessionRecorder.h"
#include "RecordingFixture.h"
#include "SQLiteDatabase.h"

// Failures of the store, and what observers hear.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FaultyDisk;
using testing::Heard;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::privileged;
using testing::secondsIn;
using testing::sessionStart;

using RecorderNotificationTest = testing::RecordingTest;
using RecorderNotificationTestOnAFaultyDisk = FaultyDisk<RecorderNotificationTest>;

TEST_F(RecorderNotificationTestOnAFaultyDisk,
       AFailedAppendLeavesLastErrorSetAndTheNextGoodSampleClearsIt) {
  startRecording();
  record(laptopState(2.0));
  const PowerSessionSummary before = live();
  disk.failAfter(0, SQLITE_FULL);
  record(laptopState(13.0));
  EXPECT_EQ(lastError(), "The session store cannot be written: the disk is full");
  // Nothing was counted, and the next poll is compared with the sample before.
  EXPECT_EQ(live(), before);
  EXPECT_EQ(recorder->running().value().sampleCount(), 1);
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(2.0));
  // The cadence of the extras goes on.
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), secondsIn(13.0));
  disk.repair();
  record(laptopState(13.0));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(live().sampleCount, 2);
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0, 13.0));
}

TEST_F(RecorderNotificationTestOnAFaultyDisk, AStoreThatIsReadOnlySaysSoUntilItCanBeWritten) {
  startRecording();
  disk.failAfter(0, SQLITE_READONLY);
  record(laptopState(2.0));
  EXPECT_EQ(lastError(), "The session store is read-only");
  disk.repair();
  record(laptopState(4.0));
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(RecorderNotificationTest, AStoreThatAnotherProcessKeepsSaysSoUntilItIsFree) {
  startRecording();
  auto other = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  record(laptopState(2.0));
  EXPECT_EQ(lastError(), "The session store is in use by another process");
  EXPECT_EQ(live(), PowerSessionSummary::empty());
  ASSERT_TRUE(other->execute("COMMIT"));
  record(laptopState(4.0));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(live().sampleCount, 1);
}

TEST_F(RecorderNotificationTest, AStateThatCannotBeStoredIsAFailureToo) {
  startRecording();
  SystemPowerState state = laptopState(2.0);
  state.battery->voltage = std::numeric_limits<double>::quiet_NaN();
  record(state);
  EXPECT_NE(lastError(), std::nullopt);
  EXPECT_THAT(recordedTimes(), IsEmpty());
  record(laptopState(2.0));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
}

// What observers hear

TEST_F(RecorderNotificationTest, WritesOfEqualValuesNotifyNobody) {
  startElsewhere(0.0, {2.0, 4.0});
  makeRecorder();
  Heard session{recorder->activeSession()};
  Heard summary{recorder->activeSummary()};
  Heard error{recorder->lastError()};
  Heard privilegedTime{recorder->lastProTelemetrySampledAt()};
  Heard recordedTime{recorder->lastRecordedStateTimestamp()};
  Heard running{recorder->running()};
  recorder->refreshActiveSession();
  recorder->refreshSummary();
  EXPECT_EQ(session.times(), 0);
  EXPECT_EQ(summary.times(), 0);
  EXPECT_EQ(error.times(), 0);
  EXPECT_EQ(privilegedTime.times(), 0);
  EXPECT_EQ(recordedTime.times(), 0);
  EXPECT_EQ(running.times(), 2);
}

TEST_F(RecorderNotificationTest, ASampleNotifiesOfEachChangeOnce) {
  startRecording();
  record(laptopState(2.0), privileged(1.0));
  Heard session{recorder->activeSession()};
  Heard summary{recorder->activeSummary()};
  Heard error{recorder->lastError()};
  Heard processTime{recorder->lastProcessSampleAt()};
  Heard running{recorder->running()};
  Heard privilegedTime{recorder->lastProTelemetrySampledAt()};
  Heard counters{recorder->lastNetworkProcessCounters()};
  Heard recordedTime{recorder->lastRecordedStateTimestamp()};
  record(laptopState(4.0), privileged(1.0));
  EXPECT_EQ(session.times(), 0);
  EXPECT_EQ(summary.times(), 1);
  EXPECT_EQ(error.times(), 0);
  EXPECT_EQ(processTime.times(), 0);
  EXPECT_EQ(running.times(), 1);
  EXPECT_EQ(privilegedTime.times(), 0);
  EXPECT_EQ(counters.times(), 0);
  EXPECT_EQ(recordedTime.times(), 1);
  // A repeat changes nothing at all.
  record(laptopState(4.0), privileged(1.0));
  EXPECT_EQ(summary.times() + running.times() + recordedTime.times(), 0);
}

TEST_F(RecorderNotificationTest, StartAndStopNotifyOfWhatTheyChange) {
  makeRecorder();
  Heard session{recorder->activeSession()};
  Heard summary{recorder->activeSummary()};
  Heard error{recorder->lastError()};
  Heard processTime{recorder->lastProcessSampleAt()};
  recorder->start("A", PowerSessionSource::app, 2.0, sessionStart);
  EXPECT_EQ(session.times(), 1);
  EXPECT_EQ(summary.times(), 0);
  EXPECT_EQ(error.times(), 0);
  EXPECT_EQ(processTime.times(), 0);
  record(laptopState(2.0));
  EXPECT_EQ(summary.times(), 1);
  EXPECT_EQ(processTime.times(), 1);
  recorder->stop(secondsIn(3.0));
  EXPECT_EQ(session.times(), 1);
  EXPECT_EQ(summary.times(), 1);
  EXPECT_EQ(processTime.times(), 1);
  EXPECT_EQ(error.times(), 0);
}

TEST_F(RecorderNotificationTestOnAFaultyDisk, TheSameErrorAgainIsNotToldAgain) {
  startRecording();
  Heard error{recorder->lastError()};
  disk.failAfter(0, SQLITE_FULL);
  record(laptopState(2.0));
  record(laptopState(4.0));
  EXPECT_EQ(error.times(), 1);
  disk.repair();
  record(laptopState(6.0));
  EXPECT_EQ(error.times(), 1);
}

}  // namespace
}  // namespace quorvex
