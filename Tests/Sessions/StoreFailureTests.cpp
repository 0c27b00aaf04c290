#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "FaultyVFS.h"
#include "SQLiteDatabase.h"
#include "StoreFixture.h"

// Disks that fill up or break, and another process that does not let go.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FaultyVFS;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::secondsIn;
using ::testing::SizeIs;
using Kind = StoreError::Kind;

class StoreFailureTests : public testing::StoreTest {
 protected:
  /// The times of all samples that a fresh store finds in the newest session, in seconds.
  std::vector<double> storedTimes() {
    const auto store = openStore();
    const auto sessions = *store->sessions();
    std::vector<double> times;
    if (!sessions.empty()) {
      for (const auto& sample : store->samples(*sessions[0])) {
        times.push_back(secondsBetween(testing::sessionStart, sample->timestamp()));
      }
    }
    return times;
  }
  static bool append(PowerSessionStore& store, PowerSession& session, double seconds) {
    return store.appendSample(session, laptopState(seconds), {}, std::nullopt).hasValue();
  }
};

TEST_F(StoreFailureTests, AFullDiskIsSaidInWords) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  disk.failAfter(0, SQLITE_FULL);
  const auto failed = store->appendSample(*session, laptopState(1.0), {}, std::nullopt);
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error(),
            (StoreError{Kind::diskFull, "The session store cannot be written: the disk is full"}));
}

TEST_F(StoreFailureTests, ASampleThatCouldNotBeSavedIsCommittedByTheNextSave) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  ASSERT_TRUE(append(*store, *session, 1.0));
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_FALSE(append(*store, *session, 2.0));
  EXPECT_FALSE(append(*store, *session, 3.0));
  // The context has them, with their blobs; the disk does not.
  const auto samples = store->samples(*session);
  ASSERT_THAT(samples, SizeIs(3));
  EXPECT_NE(samples[2]->blobs().snapshotData, "");
  disk.repair();
  EXPECT_THAT(storedTimes(), ElementsAre(1.0));
  ASSERT_TRUE(append(*store, *session, 4.0));
  EXPECT_THAT(storedTimes(), ElementsAre(1.0, 2.0, 3.0, 4.0));
  EXPECT_EQ(store->samples(*session)[1], samples[1]);
  // Views of blobs end with the next look at any of them.
  const std::string kept{samples[1]->blobs().snapshotData};
  EXPECT_EQ(store->samples(*session)[1]->blobs().snapshotData, kept);
}

TEST_F(StoreFailureTests, TheSamePollOfferedAgainTakesThePendingOnesPlace) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_FALSE(append(*store, *session, 1.0));
  disk.repair();
  ASSERT_TRUE(append(*store, *session, 1.0));
  EXPECT_THAT(store->samples(*session), SizeIs(1));
  EXPECT_THAT(storedTimes(), ElementsAre(1.0));
}

TEST_F(StoreFailureTests, PendingSamplesAreNotKeptWithoutLimit) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  disk.failAfter(0, SQLITE_FULL);
  for (int i = 0; i < 1005; ++i) {
    EXPECT_FALSE(append(*store, *session, i));
  }
  disk.repair();
  const auto samples = store->samples(*session);
  ASSERT_THAT(samples, SizeIs(1000));
  EXPECT_EQ(samples[0]->timestamp(), secondsIn(5.0));
}

TEST_F(StoreFailureTests, AFailedStartStaysPendingAndComesWithTheNextSave) {
  FaultyVFS disk;
  const auto store = openStore();
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_FALSE(store->startSession("A", PowerSessionSource::app, 2.0, secondsIn(0.0)));
  const auto pending = *store->activeSession();
  ASSERT_NE(pending, nullptr);
  disk.repair();
  EXPECT_THAT(*openStore()->sessions(), IsEmpty());
  ASSERT_TRUE(append(*store, *pending, 1.0));
  EXPECT_THAT(storedTimes(), ElementsAre(1.0));
  EXPECT_THAT(*store->sessions(), ElementsAre(pending));
}

TEST_F(StoreFailureTests, AFailedStopStaysPendingAndComesWithTheNextSave) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_FALSE(store->stopSession(*session, secondsIn(5.0)));
  EXPECT_EQ(session->status(), PowerSessionStatus::completed);
  EXPECT_EQ(*store->activeSession(), nullptr);
  EXPECT_THAT(*store->completedSessions(), ElementsAre(session));
  disk.repair();
  EXPECT_NE(*openStore()->activeSession(), nullptr);
  start(*store, 6.0);
  EXPECT_THAT(*openStore()->completedSessions(), SizeIs(1));
}

TEST_F(StoreFailureTests, AFailedDeletionLeavesNothingHalf) {
  FaultyVFS disk;
  const auto store = openStore();
  const auto session = start(*store);
  ASSERT_TRUE(append(*store, *session, 1.0));
  disk.failAfter(0, SQLITE_FULL);
  EXPECT_FALSE(store->deleteSession(*session));
  EXPECT_THAT(*store->sessions(), IsEmpty());
  EXPECT_THAT(store->samples(*session), IsEmpty());
  disk.repair();
  EXPECT_THAT(storedTimes(), ElementsAre(1.0));
  // The deletion is pending; the next save makes it.
  start(*store, 10.0);
  EXPECT_THAT(*openStore()->sessions(), SizeIs(1));
  EXPECT_THAT(storedTimes(), IsEmpty());
}

/// One run on a disk whose operation `failing`, and all after it, fail until it is repaired.
class StoreFailureEverywhereTests : public StoreFailureTests,
                                    public ::testing::WithParamInterface<int> {
 protected:
  /// Whether the disk came to fail.
  bool runWithFailureAt(int failing) {
    removeStore();
    FaultyVFS disk;
    disk.failAfter(failing, GetParam());
    std::vector<double> promised;
    if (const auto store = tryOpen()) {
      static_cast<void>((*store)->startSession("A", PowerSessionSource::app, 2.0, secondsIn(0.0)));
      const auto session = *(*store)->activeSession();
      for (const double at : {1.0, 2.0, 3.0}) {
        static_cast<void>(append(**store, *session, at));
      }
      disk.repair();
      // What failed is pending, and this save takes all of it along.
      EXPECT_TRUE(append(**store, *session, 4.0)) << failing;
      promised = {1.0, 2.0, 3.0, 4.0};
    }
    disk.repair();
    EXPECT_EQ(storedTimes(), promised) << failing;
    return disk.hasFailed();
  }
  void removeStore() {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
      std::filesystem::remove(folder.store().string() + suffix);
    }
  }
};

TEST_P(StoreFailureEverywhereTests, EverySampleIsThereOnceWhateverOperationFails) {
  int failing = 0;
  while (runWithFailureAt(failing)) {
    ++failing;
  }
  // Making the store, starting the session and three samples are more writes than these.
  EXPECT_GT(failing, 20);
}

INSTANTIATE_TEST_SUITE_P(EveryKindOfFailure, StoreFailureEverywhereTests,
                         ::testing::Values(SQLITE_FULL, SQLITE_IOERR_WRITE, SQLITE_IOERR_FSYNC));

TEST_F(StoreFailureTests, AStoreThatAnotherProcessKeepsIsBusy) {
  const auto store = openStore();
  const auto session = start(*store);
  auto other = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  const auto busy = store->appendSample(*session, laptopState(1.0), {}, std::nullopt);
  ASSERT_FALSE(busy);
  EXPECT_EQ(busy.error(),
            (StoreError{Kind::busy, "The session store is in use by another process"}));
  // Reading goes on meanwhile.
  EXPECT_THAT(*store->sessions(), SizeIs(1));
  ASSERT_TRUE(other->execute("COMMIT"));
  ASSERT_TRUE(append(*store, *session, 2.0));
  EXPECT_THAT(storedTimes(), ElementsAre(1.0, 2.0));
}

TEST_F(StoreFailureTests, AStoreThatIsMovedAwaySaysSoAndSavesAllOnceItIsBack) {
  const auto store = openStore();
  const auto session = start(*store);
  ASSERT_TRUE(append(*store, *session, 1.0));
  const auto away = folder.path() / "away";
  std::filesystem::rename(folder.store(), away);
  const auto failed = store->appendSample(*session, laptopState(2.0), {}, std::nullopt);
  ASSERT_FALSE(failed);
  EXPECT_EQ(failed.error(),
            (StoreError{Kind::gone, "The session store was moved or deleted while it was open"}));
  // Reading goes on meanwhile.
  EXPECT_THAT(store->samples(*session), SizeIs(2));
  std::filesystem::rename(away, folder.store());
  ASSERT_TRUE(append(*store, *session, 3.0));
  EXPECT_THAT(storedTimes(), ElementsAre(1.0, 2.0, 3.0));
}

TEST_F(StoreFailureTests, AStoreThatWasDeletedIsGoneAndLeavesTheOneThatTookItsPlaceAlone) {
  auto store = openStore();
  const auto session = start(*store);
  for (const char* suffix : {"", "-wal", "-shm"}) {
    std::filesystem::remove(folder.store().string() + suffix);
  }
  EXPECT_FALSE(append(*store, *session, 1.0));
  const auto other = openStore();
  EXPECT_THAT(*other->sessions(), IsEmpty());
  EXPECT_FALSE(append(*store, *session, 2.0));
  EXPECT_EQ(store->stopSession(*session, secondsIn(3.0)).error().kind, Kind::gone);
  EXPECT_EQ(store->deleteSession(*session).error().kind, Kind::gone);
  EXPECT_EQ(store->startSession("B", PowerSessionSource::app, 2.0, secondsIn(4.0)).error().kind,
            Kind::gone);
  EXPECT_THAT(*other->sessions(), IsEmpty());
  const auto newSession = start(*other, 5.0);
  ASSERT_TRUE(append(*other, *newSession, 6.0));
  // Whoever closes the gone store must not take the other's log along.
  store.reset();
  EXPECT_TRUE(std::filesystem::exists(folder.store().string() + "-wal"));
  EXPECT_THAT(storedTimes(), ElementsAre(6.0));
}

}  // namespace
}  // namespace quorvex
