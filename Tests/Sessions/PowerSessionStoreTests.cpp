#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <thread>

#include "PowerSessionCoders.h"
#include "PowerSessionStore.h"
#include "ProcessActivityDTO.h"
#include "SQLiteDatabase.h"
#include "StoreFixture.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::secondsIn;
using testing::sessionStart;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Kind = StoreError::Kind;

class PowerSessionStoreTests : public testing::StoreTest {
 protected:
  /// Runs SQL beside the store, as another program would.
  void runSQL(const char* sql) {
    auto database = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
    ASSERT_TRUE(database);
    const auto done = database->execute(sql);
    ASSERT_TRUE(done) << done.error().description;
  }
  std::int64_t integerOf(const char* sql) {
    auto database = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
    return database ? *database->integerOf(sql) : -1;
  }
  static ProTelemetrySnapshot telemetry() {
    return {.isAvailable = true, .source = "powermetrics", .sampledAt = secondsIn(0.0)};
  }
};

TEST_F(PowerSessionStoreTests, ANewStoreHasNoSessions) {
  const auto store = openStore();
  EXPECT_THAT(*store->sessions(), IsEmpty());
  EXPECT_THAT(*store->completedSessions(), IsEmpty());
  EXPECT_EQ(*store->activeSession(), nullptr);
  EXPECT_EQ(*store->session(UUID::random()), nullptr);
}

TEST_F(PowerSessionStoreTests, AStartedSessionHasEveryColumn) {
  const auto store = openStore();
  const auto session =
      *store->startSession(" My run\n", PowerSessionSource::app, 0.5, secondsIn(0.25));
  EXPECT_EQ(session->title(), "My run");
  EXPECT_EQ(session->startedAt(), secondsIn(0.25));
  EXPECT_EQ(session->endedAt(), std::nullopt);
  EXPECT_EQ(session->columns().statusRaw, "active");
  EXPECT_EQ(session->columns().sourceRaw, "app");
  EXPECT_EQ(session->appVersion(), "0.14.0");
  EXPECT_EQ(session->schemaVersion(), 6);
  EXPECT_EQ(session->sampleInterval(), 0.5);
  EXPECT_EQ(session->createdAt(), clock.now());
  EXPECT_THAT(store->samples(*session), IsEmpty());
}

TEST_F(PowerSessionStoreTests, EveryColumnIsThereAfterReopening) {
  PowerSessionColumns columns;
  {
    const auto store = openStore();
    const auto session = *store->startSession("Run", PowerSessionSource::cli, 2.0,
                                              sessionStart + std::chrono::nanoseconds{123456789});
    ASSERT_TRUE(store->stopSession(*session, sessionStart + std::chrono::nanoseconds{987654321}));
    columns = session->columns();
  }
  const auto sessions = *openStore()->sessions();
  ASSERT_THAT(sessions, SizeIs(1));
  EXPECT_EQ(sessions[0]->columns(), columns);
  EXPECT_EQ(sessions[0]->startedAt().time_since_epoch().count() % 1'000'000'000, 123456789);
}

TEST_F(PowerSessionStoreTests, StartingWhileASessionIsActiveJoinsItAndWritesNothing) {
  const auto store = openStore();
  const auto first = start(*store);
  const auto before = first->columns();
  const auto second =
      *store->startSession("Other", PowerSessionSource::app, 60.0, secondsIn(500.0));
  EXPECT_EQ(second, first);
  EXPECT_EQ(second->columns(), before);
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSession"), 1);
}

TEST_F(PowerSessionStoreTests, TheNewestActiveSessionIsTheActiveOne) {
  const auto store = openStore();
  const auto older = start(*store);
  runSQL(
      "INSERT INTO PowerSession (id, title, startedAt, statusRaw, appVersion, schemaVersion, "
      "sampleInterval, createdAt) SELECT x'00112233445566778899AABBCCDDEEFF', 'Newer', "
      "startedAt + 1, 'active', appVersion, 6, 1.0, createdAt FROM PowerSession");
  EXPECT_EQ((*store->activeSession())->title(), "Newer");
  EXPECT_EQ((*store->activeSession())->id().text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
}

TEST_F(PowerSessionStoreTests, SessionsAreListedNewestFirst) {
  const auto store = openStore();
  for (const double at : {10.0, 30.0, 20.0}) {
    ASSERT_TRUE(store->stopSession(*start(*store, at), secondsIn(40.0)));
  }
  const auto sessions = *store->sessions();
  ASSERT_THAT(sessions, SizeIs(3));
  EXPECT_EQ(sessions[0]->startedAt(), secondsIn(30.0));
  EXPECT_EQ(sessions[1]->startedAt(), secondsIn(20.0));
  EXPECT_EQ(sessions[2]->startedAt(), secondsIn(10.0));
}

TEST_F(PowerSessionStoreTests, CompletedSessionsAreAllButTheActiveOnes) {
  const auto store = openStore();
  ASSERT_TRUE(store->stopSession(*start(*store, 1.0), secondsIn(2.0)));
  ASSERT_TRUE(store->interruptSession(*start(*store, 3.0), secondsIn(4.0)));
  const auto active = start(*store, 5.0);
  const auto completed = *store->completedSessions();
  ASSERT_THAT(completed, SizeIs(2));
  EXPECT_EQ(completed[0]->status(), PowerSessionStatus::interrupted);
  EXPECT_EQ(completed[1]->status(), PowerSessionStatus::completed);
}

TEST_F(PowerSessionStoreTests, ASessionWithoutAStatusReadsAsActiveAndIsListedAsCompleted) {
  const auto store = openStore();
  start(*store);
  for (const char* sql : {"UPDATE PowerSession SET statusRaw = NULL, sourceRaw = NULL",
                          "UPDATE PowerSession SET statusRaw = 'odd', sourceRaw = 'odd'"}) {
    runSQL(sql);
    EXPECT_EQ(*store->activeSession(), nullptr);
    const auto completed = *store->completedSessions();
    ASSERT_THAT(completed, SizeIs(1));
    EXPECT_EQ(completed[0]->status(), PowerSessionStatus::active);
    EXPECT_EQ(completed[0]->source(), PowerSessionSource::app);
  }
}

TEST_F(PowerSessionStoreTests, ASessionIsFoundByItsId) {
  const auto store = openStore();
  const auto session = start(*store);
  EXPECT_EQ(*store->session(session->id()), session);
  EXPECT_EQ(*store->session(UUID::random()), nullptr);
}

TEST_F(PowerSessionStoreTests, StoppingAndInterruptingSetTheStatusAndTheEnd) {
  const auto store = openStore();
  const auto stopped = start(*store);
  ASSERT_TRUE(store->stopSession(*stopped, secondsIn(60.0)));
  EXPECT_EQ(stopped->status(), PowerSessionStatus::completed);
  EXPECT_EQ(stopped->endedAt(), secondsIn(60.0));
  const auto interrupted = start(*store, 70.0);
  EXPECT_NE(interrupted, stopped);
  ASSERT_TRUE(store->interruptSession(*interrupted, secondsIn(80.0)));
  EXPECT_EQ(interrupted->columns().statusRaw, "interrupted");
  EXPECT_EQ(interrupted->endedAt(), secondsIn(80.0));
  EXPECT_EQ(*store->activeSession(), nullptr);
}

TEST_F(PowerSessionStoreTests, ASampleCarriesTheColumnsOfItsState) {
  const auto store = openStore();
  const auto session = start(*store);
  const auto sample = *store->appendSample(*session, laptopState(2.5), {}, std::nullopt);
  EXPECT_EQ(sample->timestamp(), secondsIn(2.5));
  EXPECT_EQ(sample->elapsedSeconds(), 2.5);
  EXPECT_EQ(sample->totalWatts(), 8.0);
  EXPECT_EQ(sample->batteryPercent(), 80);
  EXPECT_EQ(sample->acConnected(), false);
  EXPECT_EQ(sample->thermalPressure(), 1);
  EXPECT_EQ(sample->maxFanRPM(), 2100);
  EXPECT_EQ(sample->maxTemperature(), 61.5);
  EXPECT_EQ(sample->createdAt(), clock.now());
  EXPECT_EQ(sample->session(), session);
}

TEST_F(PowerSessionStoreTests, AMachineWithoutABatteryHasSiliconWattsAndNoBatteryColumns) {
  const auto store = openStore();
  const auto session = start(*store);
  SystemPowerState state = laptopState();
  state.battery.reset();
  const auto sample = *store->appendSample(*session, state, {}, std::nullopt);
  EXPECT_EQ(sample->batteryPercent(), std::nullopt);
  EXPECT_EQ(sample->acConnected(), std::nullopt);
  EXPECT_EQ(sample->totalWatts(), 3.0);
}

TEST_F(PowerSessionStoreTests, WithoutAPrimaryReadingThereAreNoWatts) {
  const auto store = openStore();
  const auto session = start(*store);
  SystemPowerState state = laptopState();
  state.battery.reset();
  state.power.reset();
  EXPECT_EQ((*store->appendSample(*session, state, {}, std::nullopt))->totalWatts(), std::nullopt);
}

TEST_F(PowerSessionStoreTests, WithoutFansOrSensorsTheMaximaAreAbsentAndNotZero) {
  const auto store = openStore();
  const auto session = start(*store);
  SystemPowerState state = laptopState();
  state.fans.clear();
  state.sensors.clear();
  const auto sample = *store->appendSample(*session, state, {}, std::nullopt);
  EXPECT_EQ(sample->maxFanRPM(), std::nullopt);
  EXPECT_EQ(sample->maxTemperature(), std::nullopt);
}

TEST_F(PowerSessionStoreTests, TheLargestOfNegativeTemperaturesIsNotZero) {
  const auto store = openStore();
  const auto session = start(*store);
  SystemPowerState state = laptopState();
  state.sensors = {{"a", "A", -40.0}, {"b", "B", -20.5}};
  EXPECT_EQ((*store->appendSample(*session, state, {}, std::nullopt))->maxTemperature(), -20.5);
}

TEST_F(PowerSessionStoreTests, ATimeBeforeTheStartKeepsItsTimeAndHasZeroElapsedSeconds) {
  const auto store = openStore();
  const auto session = start(*store);
  const auto sample =
      *store->appendSample(*session, laptopState(5.0), {}, std::nullopt, secondsIn(-3.0));
  EXPECT_EQ(sample->timestamp(), secondsIn(-3.0));
  EXPECT_EQ(sample->elapsedSeconds(), 0.0);
}

TEST_F(PowerSessionStoreTests, BlobsHoldTheRecordsThatWereGiven) {
  const auto store = openStore();
  const auto session = start(*store);
  const std::vector<ProcessActivityInfo> activities{{77, "Xcode", 120.0, 30.0, 4096.0, 1.5, 140.0}};
  const auto sample = *store->appendSample(*session, laptopState(), activities, telemetry());
  auto decoder = PowerSessionCoders::decoder();
  const auto blobs = sample->blobs();
  EXPECT_EQ(*decoder.decode<SystemPowerStateDTO>(blobs.snapshotData),
            SystemPowerStateDTO{laptopState()});
  EXPECT_THAT(*decoder.decode<std::vector<ProcessActivityDTO>>(*blobs.processActivityData),
              ElementsAre(ProcessActivityDTO{activities[0]}));
  EXPECT_EQ(*decoder.decode<ProTelemetrySnapshot>(*blobs.proTelemetryData), telemetry());
}

TEST_F(PowerSessionStoreTests, WithoutProcessRowsOrTelemetryTheirBlobsAreAbsent) {
  const auto store = openStore();
  const auto session = start(*store);
  const auto sample = *store->appendSample(*session, laptopState(), {}, std::nullopt);
  EXPECT_EQ(sample->blobs().processActivityData, std::nullopt);
  EXPECT_EQ(sample->blobs().proTelemetryData, std::nullopt);
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSessionSampleBlobs WHERE processActivityData IS "
                      "NULL AND proTelemetryData IS NULL"),
            1);
}

TEST_F(PowerSessionStoreTests, AStateThatCannotBeEncodedLeavesNothingBehind) {
  const auto store = openStore();
  const auto session = start(*store);
  SystemPowerState state = laptopState();
  state.battery->temperature = std::nan("");
  const auto refused = store->appendSample(*session, state, {}, std::nullopt);
  ASSERT_FALSE(refused);
  EXPECT_EQ(
      refused.error(),
      (StoreError{Kind::notEncodable,
                  "The sample cannot be stored: $.battery.temperature: not a finite number"}));
  const std::vector<ProcessActivityInfo> activities{
      {77, "Xcode", std::nan(""), 30.0, 4096.0, 1.5, 140.0}};
  EXPECT_FALSE(store->appendSample(*session, laptopState(), activities, std::nullopt));
  EXPECT_THAT(store->samples(*session), IsEmpty());
  ASSERT_TRUE(store->stopSession(*session, secondsIn(1.0)));
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSessionSample"), 0);
}

TEST_F(PowerSessionStoreTests, TelemetryThatCannotBeEncodedIsLeftOut) {
  const auto store = openStore();
  const auto session = start(*store);
  ProTelemetrySnapshot broken = telemetry();
  broken.cpuPowerWatts = std::numeric_limits<double>::infinity();
  const auto sample = *store->appendSample(*session, laptopState(), {}, broken);
  EXPECT_EQ(sample->blobs().proTelemetryData, std::nullopt);
  EXPECT_NE(sample->blobs().snapshotData, "");
}

TEST_F(PowerSessionStoreTests, SamplesStandInOrderOfTimeAndEqualTimesInOrderOfArrival) {
  const auto store = openStore();
  const auto session = start(*store);
  std::vector<UUID> ids;
  for (const double at : {4.0, 2.0, 4.0, 1.0}) {
    ids.push_back((*store->appendSample(*session, laptopState(at), {}, std::nullopt))->id());
  }
  const auto idsOf = [](const PowerSessionSamples& samples) {
    std::vector<UUID> result;
    for (const auto& sample : samples) {
      result.push_back(sample->id());
    }
    return result;
  };
  const auto inOrder = ElementsAre(ids[3], ids[1], ids[0], ids[2]);
  EXPECT_THAT(idsOf(store->samples(*session)), inOrder);
  const auto other = openStore();
  EXPECT_THAT(idsOf(other->samples(**other->session(session->id()))), inOrder);
}

TEST_F(PowerSessionStoreTests, SampleColumnsAreThereAfterReopening) {
  PowerSessionSampleColumns columns;
  UUID id;
  {
    const auto store = openStore();
    const auto session = start(*store);
    id = session->id();
    SystemPowerState state = laptopState();
    state.timestamp = sessionStart + std::chrono::nanoseconds{123456789};
    columns = (*store->appendSample(*session, state, {}, std::nullopt))->columns();
  }
  const auto store = openStore();
  const auto session = *store->session(id);
  const auto samples = store->samples(*session);
  ASSERT_THAT(samples, SizeIs(1));
  EXPECT_EQ(samples[0]->columns(), columns);
  EXPECT_EQ(samples[0]->session(), session);
  EXPECT_EQ(samples[0]->elapsedSeconds(), 0.123456789);
}

TEST_F(PowerSessionStoreTests, AbsentColumnsAreAbsentAfterReopening) {
  UUID id;
  {
    const auto store = openStore();
    const auto session = start(*store);
    id = session->id();
    ASSERT_TRUE(store->appendSample(*session, SystemPowerState{}, {}, std::nullopt));
  }
  const auto store = openStore();
  const auto samples = store->samples(**store->session(id));
  ASSERT_THAT(samples, SizeIs(1));
  EXPECT_EQ(samples[0]->totalWatts(), std::nullopt);
  EXPECT_EQ(samples[0]->batteryPercent(), std::nullopt);
  EXPECT_EQ(samples[0]->acConnected(), std::nullopt);
  EXPECT_EQ(samples[0]->maxFanRPM(), std::nullopt);
  EXPECT_EQ(samples[0]->maxTemperature(), std::nullopt);
}

TEST_F(PowerSessionStoreTests, OneRowIsOneObject) {
  const auto store = openStore();
  const auto session = start(*store);
  const auto sample = *store->appendSample(*session, laptopState(1.0), {}, std::nullopt);
  EXPECT_EQ((*store->sessions())[0], session);
  EXPECT_EQ(*store->activeSession(), session);
  const auto listed = store->samples(*session);
  ASSERT_THAT(listed, SizeIs(1));
  EXPECT_EQ(listed[0], sample);
  const auto next = *store->appendSample(*session, laptopState(2.0), {}, std::nullopt);
  EXPECT_THAT(store->samples(*session), ElementsAre(sample, next));
}

TEST_F(PowerSessionStoreTests, AnAppendedSampleAndAListingOfEarlierOnesGiveEachRowOnce) {
  UUID id;
  {
    const auto store = openStore();
    const auto session = start(*store);
    id = session->id();
    ASSERT_TRUE(store->appendSample(*session, laptopState(1.0), {}, std::nullopt));
  }
  const auto store = openStore();
  const auto session = *store->session(id);
  const auto added = *store->appendSample(*session, laptopState(2.0), {}, std::nullopt);
  const auto samples = store->samples(*session);
  ASSERT_THAT(samples, SizeIs(2));
  EXPECT_EQ(samples[1], added);
  EXPECT_EQ(samples[0]->timestamp(), secondsIn(1.0));
}

TEST_F(PowerSessionStoreTests, AnotherConnectionsCommitsAreSeenOnTheNextFetch) {
  const auto here = openStore();
  const auto there = openStore();
  const auto session = start(*here);
  const auto same = *there->activeSession();
  ASSERT_NE(same, nullptr);
  EXPECT_EQ(same->columns(), session->columns());
  int told = 0;
  const auto subscription = session->subscribe([&](const PowerSessionColumns&) { ++told; });

  ASSERT_TRUE(here->appendSample(*session, laptopState(1.0), {}, std::nullopt));
  EXPECT_THAT(there->samples(*same), SizeIs(1));
  ASSERT_TRUE(there->appendSample(*same, laptopState(2.0), {}, std::nullopt));
  const auto kept = here->samples(*session);
  EXPECT_THAT(kept, SizeIs(2));
  ASSERT_TRUE(there->appendSample(*same, laptopState(3.0), {}, std::nullopt));
  ASSERT_TRUE(here->appendSample(*session, laptopState(4.0), {}, std::nullopt));
  const auto all = here->samples(*session);
  ASSERT_THAT(all, SizeIs(4));
  EXPECT_EQ(all[0], kept[0]);
  EXPECT_EQ(all[2]->timestamp(), secondsIn(3.0));

  ASSERT_TRUE(there->stopSession(*same, secondsIn(5.0)));
  EXPECT_EQ(*here->activeSession(), nullptr);
  EXPECT_EQ(session->status(), PowerSessionStatus::completed);
  EXPECT_EQ(told, 1);
}

TEST_F(PowerSessionStoreTests, BlobsCanBeReadInAnyOrder) {
  const auto store = openStore();
  const auto session = start(*store);
  for (int i = 0; i < 50; ++i) {
    SystemPowerState state = laptopState(i);
    state.battery->cycleCount = i;
    ASSERT_TRUE(store->appendSample(*session, state, {}, std::nullopt));
  }
  const auto samples = store->samples(*session);
  auto decoder = PowerSessionCoders::decoder();
  const auto cycleCount = [&](std::size_t index) {
    return decoder.decode<SystemPowerStateDTO>(samples[index]->blobs().snapshotData)
        ->battery->cycleCount;
  };
  for (std::size_t i = 0; i < 50; ++i) {
    EXPECT_EQ(cycleCount(i), static_cast<std::int64_t>(i));
  }
  for (const std::size_t i : {49U, 0U, 48U, 2U, 2U, 3U, 40U, 39U}) {
    EXPECT_EQ(cycleCount(i), static_cast<std::int64_t>(i));
  }
}

TEST_F(PowerSessionStoreTests, AnUnfinishedPassOverBlobsDoesNotKeepOthersFromWriting) {
  const auto store = openStore();
  const auto session = start(*store);
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(store->appendSample(*session, laptopState(i), {}, std::nullopt));
  }
  EXPECT_NE(store->samples(*session)[1]->blobs().snapshotData, "");
  const auto other = openStore();
  ASSERT_TRUE(other->appendSample(**other->activeSession(), laptopState(9.0), {}, std::nullopt));
  // The scan above began before that commit; this write must not rest on what it saw.
  ASSERT_TRUE(store->appendSample(*session, laptopState(10.0), {}, std::nullopt));
  EXPECT_THAT(store->samples(*session), SizeIs(7));
}

TEST_F(PowerSessionStoreTests, AFinishedPassOverBlobsLetsTheLogBeEmptied) {
  const auto store = openStore();
  const auto session = start(*store);
  const std::vector<ProcessActivityInfo> activities{{77, "Xcode", 120.0, 30.0, 4096.0, 1.5, 140.0}};
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(store->appendSample(*session, laptopState(i), activities, telemetry()));
  }
  PowerSessionBlobViews last;
  const auto samples = store->samples(*session);
  for (const auto& sample : samples) {
    last = sample->blobs();
  }
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_EQ(*decoder.decode<SystemPowerStateDTO>(last.snapshotData),
            SystemPowerStateDTO{laptopState(4.0)});
  EXPECT_EQ(*decoder.decode<ProTelemetrySnapshot>(*last.proTelemetryData), telemetry());
  EXPECT_THAT(*decoder.decode<std::vector<ProcessActivityDTO>>(*last.processActivityData),
              ElementsAre(ProcessActivityDTO{activities[0]}));
  auto other = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
  // A reader that still held its place would make this busy.
  EXPECT_EQ(*other->integerOf("PRAGMA wal_checkpoint(TRUNCATE)"), 0);
  EXPECT_EQ(folder.contentOf(folder.store().string() + "-wal"), "");
}

TEST_F(PowerSessionStoreTests, ABlobThatIsMissingIsEmpty) {
  const auto store = openStore();
  const auto session = start(*store);
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(store->appendSample(*session, laptopState(i), {}, std::nullopt));
  }
  runSQL("DELETE FROM PowerSessionSampleBlobs WHERE sample = 2");
  const auto samples = store->samples(*session);
  ASSERT_THAT(samples, SizeIs(3));
  EXPECT_NE(samples[0]->blobs().snapshotData, "");
  EXPECT_EQ(samples[1]->blobs().snapshotData, "");
  EXPECT_NE(samples[2]->blobs().snapshotData, "");
}

TEST_F(PowerSessionStoreTests, DeletingASessionLeavesNothingOfItAndAllOfTheOthers) {
  const auto store = openStore();
  const auto kept = start(*store, 0.0);
  ASSERT_TRUE(store->appendSample(*kept, laptopState(1.0), {}, std::nullopt));
  ASSERT_TRUE(store->stopSession(*kept, secondsIn(2.0)));
  const auto deleted = start(*store, 3.0);
  ASSERT_TRUE(store->appendSample(*deleted, laptopState(4.0), {}, std::nullopt));
  ASSERT_TRUE(store->appendSample(*deleted, laptopState(5.0), {}, std::nullopt));
  ASSERT_TRUE(store->deleteSession(*deleted));
  EXPECT_THAT(*store->sessions(), ElementsAre(kept));
  EXPECT_THAT(store->samples(*deleted), IsEmpty());
  EXPECT_THAT(store->samples(*kept), SizeIs(1));
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSession"), 1);
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSessionSample"), 1);
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSessionSampleBlobs"), 1);
}

TEST_F(PowerSessionStoreTests, ASampleForASessionThatAnotherProcessDeletedIsRefused) {
  const auto here = openStore();
  const auto there = openStore();
  const auto session = start(*here);
  ASSERT_TRUE(there->deleteSession(**there->activeSession()));
  const auto refused = here->appendSample(*session, laptopState(1.0), {}, std::nullopt);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error(),
            (StoreError{Kind::sessionDeleted, "The session is no longer in the store"}));
  EXPECT_EQ(here->stopSession(*session, secondsIn(2.0)).error().kind, Kind::sessionDeleted);
  EXPECT_THAT(here->samples(*session), IsEmpty());
  // Nothing of it stays pending: the store goes on with the next session.
  const auto next = start(*here, 3.0);
  ASSERT_TRUE(here->appendSample(*next, laptopState(4.0), {}, std::nullopt));
  EXPECT_EQ(integerOf("SELECT count(*) FROM PowerSessionSample"), 1);
}

TEST_F(PowerSessionStoreTests, AStoreInMemoryWritesNoFile) {
  auto store = PowerSessionStore::open(
      {.appVersion = "1", .storeURL = folder.store(), .inMemory = true}, clock);
  ASSERT_TRUE(store);
  const auto session = start(**store);
  ASSERT_TRUE((*store)->appendSample(*session, laptopState(), {}, std::nullopt));
  EXPECT_NE((*store)->samples(*session)[0]->blobs().snapshotData, "");
  EXPECT_EQ(folder.listing(), "");
}

TEST_F(PowerSessionStoreTests, ABlankTitleIsReplacedByTheDateInTheUsersForm) {
  setenv("LC_ALL", "en_US.UTF-8", 1);
  setenv("TZ", "UTC", 1);
  const Date at = *parseISO8601("2026-01-31T09:30:05Z");
  for (const std::optional<std::string>& title :
       {std::optional<std::string>{}, std::optional<std::string>{""},
        std::optional<std::string>{" \t\n\u00A0"}}) {
    EXPECT_THAT(PowerSessionStore::normalizedTitle(title, at),
                StartsWith("Power Session Jan 31, 2026"));
  }
  EXPECT_EQ(PowerSessionStore::normalizedTitle(" A b ", at), "A b");
  unsetenv("LC_ALL");
  unsetenv("TZ");
}

TEST_F(PowerSessionStoreTests, TheDefaultStoreLiesInTheUsersApplicationSupportFolder) {
  const char* const home = std::getenv("HOME");
  const std::string oldHome = home == nullptr ? "" : home;
  setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
  EXPECT_EQ(PowerSessionStore::defaultStoreURL(), folder.path() / "Quorvex/QuorvexSessions.store");
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "Quorvex"));
  // By the rules of that variable a relative folder counts as none.
  setenv("XDG_DATA_HOME", "relative", 1);
  setenv("HOME", (folder.path() / "home").c_str(), 1);
  EXPECT_EQ(PowerSessionStore::defaultStoreURL(),
            folder.path() / "home/.local/share/Quorvex/QuorvexSessions.store");
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "home/.local/share/Quorvex"));
  unsetenv("XDG_DATA_HOME");
  setenv("HOME", oldHome.c_str(), 1);
}

TEST_F(PowerSessionStoreTests, AFolderThatCannotBeMadeShowsWhenTheStoreIsOpened) {
  folder.write(folder.path() / "file", "no folder");
  setenv("XDG_DATA_HOME", (folder.path() / "file").c_str(), 1);
  const auto store = PowerSessionStore::open({.appVersion = "1"}, clock);
  unsetenv("XDG_DATA_HOME");
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error().kind, Kind::cannotOpen);
}

using PowerSessionStoreDeathTests = PowerSessionStoreTests;

TEST_F(PowerSessionStoreDeathTests, UseOutsideItsThreadIsFatal) {
  EXPECT_DEATH(
      {
        const auto store = openStore();
        std::thread{[&] { static_cast<void>(store->sessions()); }}.join();
      },
      "Fatal error: the session store was used outside its thread");
}

}  // namespace
}  // namespace quorvex
