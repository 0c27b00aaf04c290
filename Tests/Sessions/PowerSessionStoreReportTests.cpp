#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "PowerSessionMetrics.h"
#include "PowerSessionStore.h"
#include "RunningEnergy.h"
#include "SQLiteDatabase.h"
#include "StoreFixture.h"

// What the store concludes from stored samples: summary, report and export.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::laptopState;
using ::testing::Not;
using ::testing::Pair;
using testing::secondsIn;
using ::testing::StartsWith;
using Kind = StoreError::Kind;

class PowerSessionStoreReportTests : public testing::StoreTest {
 protected:
  void runSQL(const std::string& sql) {
    auto database = SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::existing, {});
    ASSERT_TRUE(database);
    const auto done = database->execute(sql.c_str());
    ASSERT_TRUE(done) << done.error().description;
  }
  static void append(PowerSessionStore& store, PowerSession& session, double seconds) {
    const auto added = store.appendSample(session, laptopState(seconds), {}, std::nullopt);
    ASSERT_TRUE(added) << added.error().description;
  }
  static std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
  }
  static std::string exported(PowerSessionStore& store, const PowerSession& session) {
    const auto text = store.exportJSONL(session, secondsIn(5000.0));
    EXPECT_TRUE(text) << text.error().description;
    return text ? *text : "";
  }
};

TEST_F(PowerSessionStoreReportTests, TheSummaryOfASessionWithoutSamplesIsTheEmptyOne) {
  const auto store = openStore();
  EXPECT_EQ(store->summary(*start(*store)), PowerSessionSummary::empty());
}

TEST_F(PowerSessionStoreReportTests, ReadingIsToldToItsObserverUpToTheEnd) {
  const auto store = openStore();
  const auto session = start(*store);
  for (int i = 0; i < 300; ++i) {
    append(*store, *session, i);
  }
  std::vector<std::pair<std::size_t, std::size_t>> told;
  store->observeReading(
      [&](std::size_t done, std::size_t total) { told.emplace_back(done, total); });
  static_cast<void>(store->summary(*session));
  EXPECT_THAT(told, ElementsAre(Pair(256, 300), Pair(300, 300)));
  told.clear();
  static_cast<void>(store->summary(*session));
  EXPECT_THAT(told, IsEmpty()) << "what is known is not read again";
  static_cast<void>(exported(*store, *session));
  EXPECT_THAT(told, ElementsAre(Pair(256, 300), Pair(300, 300)));
}

TEST_F(PowerSessionStoreReportTests, TheSummaryIsThatOfTheStoredSamples) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 2.0);
  append(*store, *session, 38.0);
  const PowerSessionSummary summary = store->summary(*session);
  EXPECT_EQ(summary.sampleCount, 2);
  EXPECT_EQ(summary.durationSeconds, 38.0);
  // 8 W for 36 s, which is a hundredth of an hour.
  EXPECT_DOUBLE_EQ(*summary.totalWattHours, 8.0 * 0.01);
  EXPECT_EQ(summary.maxTemperature, 61.5);
}

TEST_F(PowerSessionStoreReportTests, ASummaryIsTheSameFromTheFileAlone) {
  PowerSessionSummary summary;
  UUID id;
  {
    const auto store = openStore();
    const auto session = start(*store);
    for (int i = 0; i < 500; ++i) {
      append(*store, *session, 2.0 * i);
    }
    id = session->id();
    summary = store->summary(*session);
  }
  const auto store = openStore();
  EXPECT_EQ(store->summary(**store->session(id)), summary);
  EXPECT_EQ(summary.sampleCount, 500);
}

TEST_F(PowerSessionStoreReportTests, StopFollowedBySummaryRecomputesFromTheRowsAndTheEnd) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  append(*store, *session, 10.0);
  EXPECT_EQ(store->summary(*session).durationSeconds, 10.0);
  ASSERT_TRUE(store->stopSession(*session, secondsIn(25.0)));
  EXPECT_EQ(store->summary(*session).durationSeconds, 25.0);
  EXPECT_EQ(store->summary(*session).sampleCount, 2);
}

TEST_F(PowerSessionStoreReportTests, InterruptingASessionForgetsItsSummaryToo) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 10.0);
  static_cast<void>(store->report(*session));
  ASSERT_TRUE(store->interruptSession(*session, secondsIn(25.0)));
  EXPECT_EQ(store->summary(*session).durationSeconds, 25.0);
  EXPECT_EQ(store->report(*session).status, "interrupted");
}

TEST_F(PowerSessionStoreReportTests, AnAppendedSampleIsInTheNextSummaryAndReport) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  EXPECT_EQ(store->summary(*session).sampleCount, 1);
  EXPECT_EQ(store->report(*session).timeline.size(), 1U);
  append(*store, *session, 2.0);
  EXPECT_EQ(store->summary(*session).sampleCount, 2);
  EXPECT_EQ(store->report(*session).timeline.size(), 2U);
}

TEST_F(PowerSessionStoreReportTests, SummaryAndReportAreKeptUntilThisStoreChangesTheSession) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  const PowerSessionSummary summary = store->summary(*session);
  const PowerSessionReport report = store->report(*session);
  const auto other = openStore();
  append(*other, **other->session(session->id()), 2.0);
  EXPECT_EQ(store->samples(*session).size(), 2U);
  EXPECT_EQ(store->summary(*session), summary);
  EXPECT_EQ(store->report(*session), report);
  EXPECT_EQ(other->summary(**other->session(session->id())).sampleCount, 2);
}

TEST_F(PowerSessionStoreReportTests, EachSessionHasItsOwnConclusions) {
  const auto store = openStore();
  const auto first = start(*store);
  append(*store, *first, 0.0);
  ASSERT_TRUE(store->stopSession(*first, secondsIn(1.0)));
  const auto second = start(*store, 100.0);
  append(*store, *second, 100.0);
  append(*store, *second, 102.0);
  EXPECT_EQ(store->summary(*first).sampleCount, 1);
  EXPECT_EQ(store->summary(*second).sampleCount, 2);
  EXPECT_EQ(store->report(*first).sessionID, first->id());
}

TEST_F(PowerSessionStoreReportTests, TheReportCarriesTheSummaryAndAtMost240Points) {
  const auto store = openStore();
  const auto session = start(*store);
  for (int i = 0; i < 300; ++i) {
    append(*store, *session, 2.0 * i);
  }
  const PowerSessionReport report = store->report(*session);
  EXPECT_EQ(report.summary, store->summary(*session));
  EXPECT_EQ(report.timeline.size(), 240U);
  EXPECT_EQ(report.title, "Test");
}

TEST_F(PowerSessionStoreReportTests, AReportIsTheSameWhetherTheSummaryWasAskedForBeforeOrNot) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  append(*store, *session, 30.0);
  const PowerSessionReport report = store->report(*session);
  const auto other = openStore();
  const auto same = *other->session(session->id());
  static_cast<void>(other->summary(*same));
  EXPECT_EQ(other->report(*same), report);
}

TEST_F(PowerSessionStoreReportTests, AReportWithoutSamplesIsFatal) {
  const auto store = openStore();
  const auto session = start(*store);
  EXPECT_DEATH(static_cast<void>(store->report(*session)),
               "a thermal digest needs at least one sample");
}

TEST_F(PowerSessionStoreReportTests, ADeletedSessionsConclusionsAreGone) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  static_cast<void>(store->report(*session));
  ASSERT_TRUE(store->deleteSession(*session));
  EXPECT_EQ(store->summary(*session), PowerSessionSummary::empty());
}

TEST_F(PowerSessionStoreReportTests, ConclusionsStayWhenASessionCannotBeDeleted) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  const PowerSessionSummary summary = store->summary(*session);
  const auto other = openStore();
  append(*other, **other->session(session->id()), 2.0);
  runSQL(
      "CREATE TRIGGER refuse BEFORE DELETE ON PowerSessionSample BEGIN SELECT RAISE(ABORT, "
      "'no'); END");
  ASSERT_FALSE(store->deleteSession(*session));
  EXPECT_EQ(store->summary(*session), summary);
}

TEST_F(PowerSessionStoreReportTests, TheExportOfASessionWithoutSamplesIsTheEnvelopeAlone) {
  const auto store = openStore();
  const std::string text = exported(*store, *start(*store));
  EXPECT_EQ(lineCount(text), 1U);
  EXPECT_THAT(text, StartsWith(R"({"appVersion":"0.14.0","exportedAt":"2023-11-14T23:36:40Z",)"
                               R"("recordType":"session","schemaVersion":6,"session":{)"));
  EXPECT_THAT(text, EndsWith("}\n"));
}

TEST_F(PowerSessionStoreReportTests, AnExportHasALineForEachSampleInTimeOrder) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 4.0);
  append(*store, *session, 2.0);
  const std::string text = exported(*store, *session);
  EXPECT_EQ(lineCount(text), 3U);
  EXPECT_LT(text.find(R"({"recordType":"sample","sample":{"elapsedSeconds":2,)"),
            text.find(R"({"recordType":"sample","sample":{"elapsedSeconds":4,)"));
  EXPECT_THAT(text, Not(HasSubstr("\n\n")));
  EXPECT_THAT(text, EndsWith("}}\n"));
}

TEST_F(PowerSessionStoreReportTests, AnUndecodableSnapshotIsMissingFromTheExportButCounted) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  append(*store, *session, 2.0);
  runSQL(
      "UPDATE PowerSessionSampleBlobs SET snapshotData = x'7B' WHERE sample = (SELECT "
      "min(sample) FROM PowerSessionSampleBlobs)");
  const std::string text = exported(*store, *session);
  EXPECT_EQ(lineCount(text), 2U);
  EXPECT_THAT(text, HasSubstr(R"("sampleCount":2,)"));
  EXPECT_THAT(text, HasSubstr(R"("elapsedSeconds":2,)"));
  EXPECT_THAT(text, Not(HasSubstr(R"("elapsedSeconds":0,)")));
}

TEST_F(PowerSessionStoreReportTests, AnUndecodableProcessListOrTelemetryIsLeftOutAlone) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  runSQL(
      "UPDATE PowerSessionSampleBlobs SET processActivityData = x'5B', proTelemetryData = "
      "x'7B'");
  const std::string text = exported(*store, *session);
  EXPECT_EQ(lineCount(text), 2U);
  EXPECT_THAT(text, HasSubstr(R"("processActivities":[],"snapshot")"));
  EXPECT_THAT(text, Not(HasSubstr("proTelemetry\"")));
}

TEST_F(PowerSessionStoreReportTests, AnExportIsCurrentThoughTheSummaryIsKept) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  EXPECT_EQ(store->summary(*session).sampleCount, 1);
  const auto other = openStore();
  append(*other, **other->session(session->id()), 2.0);
  EXPECT_THAT(exported(*store, *session), HasSubstr(R"("sampleCount":2,)"));
  EXPECT_EQ(store->summary(*session).sampleCount, 1);
}

TEST_F(PowerSessionStoreReportTests, AnExportNamesTheExportingProgramAndNotTheRecordingOne) {
  UUID id;
  {
    const auto older =
        *PowerSessionStore::open({.appVersion = "0.13.0", .storeURL = folder.store()}, clock);
    id = start(*older)->id();
  }
  const auto store = openStore();
  const auto session = *store->session(id);
  EXPECT_EQ(session->appVersion(), "0.13.0");
  EXPECT_THAT(exported(*store, *session), StartsWith(R"({"appVersion":"0.14.0",)"));
}

TEST_F(PowerSessionStoreReportTests, ASummaryThatCannotBeWrittenIsAnError) {
  const auto store = openStore();
  const auto session = start(*store);
  append(*store, *session, 0.0);
  // An infinite watt value, as no version of the program stores it.
  runSQL("UPDATE PowerSessionSample SET totalWatts = 9e999");
  const auto text = openStore()->exportJSONL(*session, secondsIn(1.0));
  ASSERT_FALSE(text);
  EXPECT_EQ(text.error().kind, Kind::notEncodable);
  EXPECT_THAT(text.error().description, StartsWith("The session cannot be exported: $.summary."));
}

TEST_F(PowerSessionStoreReportTests, FiguresKeptWhileRecordingEqualTheSummaryOfTheStoredSamples) {
  const auto store = openStore();
  const auto session = start(*store);
  RunningEnergy running{session->startedAt(), session->sampleInterval()};
  const auto addAndCompare = [&](const SystemPowerState& state) {
    ASSERT_TRUE(store->appendSample(*session, state, {}, std::nullopt));
    running.ingest(PowerSessionMetrics::livePowerPoint(state));
    const PowerSessionSummary summary = store->summary(*session);
    EXPECT_EQ(running.energy().averageWatts, summary.averageWatts);
    EXPECT_EQ(running.energy().totalWattHours, summary.totalWattHours);
    EXPECT_EQ(running.energy().note, summary.averageWattsNote);
    EXPECT_EQ(running.sampleCount(), summary.sampleCount);
  };
  addAndCompare(laptopState(0.0));
  addAndCompare(laptopState(2.25));
  SystemPowerState withoutReading = laptopState(4.0);
  withoutReading.battery.reset();
  withoutReading.power.reset();
  addAndCompare(laptopState(4.0));
  addAndCompare(withoutReading);
  SystemPowerState silicon = laptopState(6.0);
  silicon.battery.reset();
  addAndCompare(silicon);
  addAndCompare(laptopState(500.0));
}

}  // namespace
}  // namespace quorvex
