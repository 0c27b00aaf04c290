#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RulesSamples.h"
#include "SessionReportRules.h"

namespace quorvex {
namespace {

using samples::mixedReport;
using samples::report;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SessionReportRulesTests : public samples::TimedTest {
 protected:
  static SessionReportContent content(const PowerSessionReport& report) {
    return sessionReportContent(report, false, "de_DE");
  }
};

TEST_F(SessionReportRulesTests, TheHeaderTellsTitleStartAndSource) {
  const SessionReportHeader header = sessionReportHeader(report(samples::steadySummary()), "de_DE");
  EXPECT_EQ(header.title, "Idle test");
  EXPECT_EQ(header.startText, "31.01.2026, 09:30");
  EXPECT_EQ(header.detail, "Battery draw");
  EXPECT_THAT(header.strip.bars, SizeIs(1));
  EXPECT_EQ(header.exportButton.title, "Export");
  EXPECT_EQ(header.deleteButton.title, "Delete");
}

TEST_F(SessionReportRulesTests, AMixedSessionCountsItsPhases) {
  EXPECT_EQ(sessionReportHeader(mixedReport(), "de_DE").detail, "2 power phases");
}

TEST_F(SessionReportRulesTests, SeveralPhasesOnOneSourceReadAsTheFirst) {
  PowerSessionReport twice = report(samples::steadySummary());
  twice.phases.push_back(samples::phase("batteryDischarge", "Another label", false, 60));
  EXPECT_EQ(sessionReportHeader(twice, "de_DE").detail, "Battery draw");
}

TEST_F(SessionReportRulesTests, WithoutPhasesThereAreNoPowerSamples) {
  PowerSessionReport silent = report(PowerSessionSummary::empty());
  silent.phases.clear();
  EXPECT_EQ(sessionReportHeader(silent, "de_DE").detail, "No power samples");
}

TEST_F(SessionReportRulesTests, ThePhaseTableHasARowForEachPhase) {
  PowerSessionReport mixed = mixedReport();
  mixed.phases[0].averageWatts = 12.0;
  mixed.phases[0].totalWattHours = 12.0 * 60.0 / 3600.0;
  mixed.phases[0].batteryPercentDelta = -1;
  const auto table = phaseTable(mixed.phases, times());
  ASSERT_TRUE(table);
  EXPECT_EQ(table->heading, "Power Phases");
  ASSERT_THAT(table->rows, SizeIs(2));
  EXPECT_EQ(table->rows[0].dotColor, ColorName::orange);
  EXPECT_EQ(table->rows[0].label, "Battery draw");
  EXPECT_EQ(table->rows[0].timeRange, "00:00 – 00:01");
  EXPECT_EQ(table->rows[0].duration, "1m 0s");
  EXPECT_THAT(table->rows[0].values,
              ElementsAre(LabelledValue{"Power", "12.0W"}, LabelledValue{"Energy", "0.20Wh"},
                          LabelledValue{"Battery", "-1%"}));
  EXPECT_EQ(table->rows[0].accessibilityText,
            "Battery draw, 00:00 – 00:01, 1m 0s, Power 12.0W, Energy 0.20Wh, Battery -1%");
  EXPECT_EQ(table->rows[1].dotColor, ColorName::green);
  EXPECT_THAT(table->rows[1].values,
              ElementsAre(LabelledValue{"Power", "--"}, LabelledValue{"Energy", "--"},
                          LabelledValue{"Battery", "--"}));
  EXPECT_FALSE(phaseTable({}, times()));
}

TEST_F(SessionReportRulesTests, PartsWithoutRowsFallAway) {
  PowerSessionReport bare = report(PowerSessionSummary::empty());
  bare.phases.clear();
  const SessionReportContent shown = content(bare);
  EXPECT_FALSE(shown.flags);
  EXPECT_FALSE(shown.phases);
  EXPECT_FALSE(shown.networkApps);
  EXPECT_FALSE(shown.families);
  EXPECT_EQ(shown.contributors.emptyText, "No process attribution was captured for this session.");
  EXPECT_THAT(shown.notes.notes, SizeIs(5));
  EXPECT_THAT(shown.tiles, SizeIs(9));
  EXPECT_THAT(shown.traces, SizeIs(4));
}

TEST_F(SessionReportRulesTests, EveryPartIsMadeOfItsOwnRecords) {
  PowerSessionReport full = mixedReport();
  full.summary.measurementOverhead.observed = true;
  full.summary.topNetworkApps = {{.name = "Safari"}};
  full.summary.processFamilies = {{.family = "database", .score = 2.0}};
  full.summary.samplingConfidence.flags = {"long-gaps"};
  full.actionableContributors = {{.name = "Xcode", .score = 3.0}};
  full.aggregateContributors = {{.name = "ALL_TASKS", .isAggregate = true}};
  full.thermalDigest.verdict = PowerSessionThermalDigest::Verdict::warm;
  const SessionReportContent shown = content(full);
  EXPECT_EQ(shown.story.headline, "1m 2-phase session: peak 13W");
  EXPECT_THAT(shown.story.episodes, SizeIs(2));
  EXPECT_EQ(shown.thermal.verdict.text, "Warm");
  EXPECT_EQ(shown.sampling.badge.text, "long-gaps");
  ASSERT_TRUE(shown.flags);
  EXPECT_TRUE(shown.flags->overhead);
  EXPECT_THAT(shown.strip.bars, SizeIs(2));
  EXPECT_TRUE(shown.strip.showsLegend);
  EXPECT_FALSE(shown.header.strip.showsLegend);
  ASSERT_TRUE(shown.phases);
  EXPECT_THAT(shown.phases->rows, SizeIs(2));
  ASSERT_TRUE(shown.networkApps);
  EXPECT_EQ(shown.networkApps->rows[0].name, "Safari");
  ASSERT_TRUE(shown.families);
  EXPECT_EQ(shown.families->rows[0].label, "database");
  EXPECT_EQ(shown.contributors.rows[0].label, "Xcode");
  EXPECT_EQ(shown.contributors.aggregateLine, "Aggregate rows: ALL_TASKS");
}

TEST_F(SessionReportRulesTests, ASessionWithoutSamplesIsShownWithoutFigures) {
  const auto session = samples::session(7, "Just begun", PowerSessionStatus::active);
  const PowerSessionReport begun = reportWithoutSamples(*session);
  EXPECT_EQ(begun.sessionID, session->id());
  EXPECT_EQ(begun.status, "active");
  EXPECT_EQ(begun.source, "app");
  EXPECT_EQ(begun.startedAt, session->startedAt());
  EXPECT_EQ(begun.endedAt, session->endedAt());
  EXPECT_DOUBLE_EQ(begun.sampleInterval, 2.0);
  EXPECT_EQ(begun.summary, PowerSessionSummary::empty());
  const SessionReportContent shown = content(begun);
  EXPECT_EQ(shown.header.title, "Just begun");
  EXPECT_EQ(shown.header.detail, "No power samples");
  EXPECT_EQ(shown.story.headline, "0m 0-phase session");
  EXPECT_THAT(shown.strip.bars, IsEmpty());
}

}  // namespace
}  // namespace quorvex
