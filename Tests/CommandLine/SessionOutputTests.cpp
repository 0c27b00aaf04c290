#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PowerSessionMetrics.h"
#include "SessionOutput.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string sparse{PowerSessionMetrics::sparsePowerCoverageNote};
const std::string mixed{PowerSessionMetrics::mixedPowerSourcesNote};

/// 2026-01-31T09:30:05.75Z
constexpr Date startedAt{std::chrono::milliseconds{1'769'851'805'750}};

PowerSessionReport report(std::int64_t sampleCount) {
  PowerSessionReport report{.title = "Run",
                            .status = "completed",
                            .source = "cli",
                            .startedAt = startedAt,
                            .sampleInterval = 2.0};
  report.summary.sampleCount = sampleCount;
  report.summary.durationSeconds = sampleCount > 1 ? 9.0 : 0.0;
  return report;
}

std::string shown(const PowerSessionReport& report) {
  return formatSession(report, nullptr);
}

TEST(SessionOutput, TheSmallestSessionHasItsTenLines) {
  PowerSessionReport small = report(1);
  small.endedAt = startedAt + std::chrono::seconds{60};
  EXPECT_EQ(shown(small),
            "Run\n"
            "ID: 00000000-0000-0000-0000-000000000000\n"
            "Status: completed\n"
            "Started: 2026-01-31 09:30:05 +0000\n"
            "Ended: 2026-01-31 09:31:05 +0000\n"
            "0s, avg unavailable, Wh unavailable, battery delta unavailable, 1 samples\n"
            "Sample interval: 2.0s\n"
            "Sampling: wall 0s · active 0s · 0 samples\n"
            "Thermal: peak --, Cool\n"
            "Thermal detail: median -- · p95 -- · fan -- · cool\n");
}

TEST(SessionOutput, ASessionThatHasNotEndedHasNoEndLine) {
  EXPECT_THAT(shown(report(1)), Not(HasSubstr("Ended")));
}

TEST(SessionOutput, OneSamplePrintsTheConfiguredInterval) {
  EXPECT_THAT(shown(report(1)), HasSubstr("\nSample interval: 2.0s\n"));
}

TEST(SessionOutput, SeveralSamplesPrintTheEffectiveIntervalToo) {
  // 4 samples in 9 s have 3 intervals of 3 s.
  EXPECT_THAT(shown(report(4)),
              HasSubstr("\nSample interval: configured 2.0s · effective 3.00s avg\n"));
}

TEST(SessionOutput, SeveralSamplesOfOneInstantPrintTheConfiguredInterval) {
  PowerSessionReport instant = report(4);
  instant.summary.durationSeconds = 0.0;
  EXPECT_THAT(shown(instant), HasSubstr("\nSample interval: 2.0s\n"));
}

TEST(SessionOutput, TheSummaryNamesItsFiveFigures) {
  PowerSessionSummary summary;
  summary.durationSeconds = 59.5;
  summary.averageWatts = 12.34;
  summary.totalWattHours = 0.20565;
  summary.batteryPercentDelta = -3;
  summary.sampleCount = 30;
  EXPECT_EQ(formatSummary(summary), "60s, 12.3W avg, 0.206Wh, -3% battery, 30 samples");
}

TEST(SessionOutput, AFallOfThreePercentReadsMinusThree) {
  PowerSessionSummary summary;
  summary.batteryPercentDelta = -3;
  EXPECT_THAT(formatSummary(summary), HasSubstr(", -3% battery, "));
}

TEST(SessionOutput, WhatSparseSamplingWithholdsIsSparse) {
  PowerSessionSummary summary;
  summary.averageWattsNote = sparse;
  summary.totalWattHoursNote = sparse;
  summary.powerSegments.resize(2);
  EXPECT_THAT(formatSummary(summary), HasSubstr("sparse avg, sparse Wh"));
}

TEST(SessionOutput, WhatMixedSourcesWithholdIsSegmented) {
  PowerSessionSummary summary;
  summary.averageWattsNote = mixed;
  summary.totalWattHoursNote = mixed;
  summary.powerSegments.resize(2);
  EXPECT_THAT(formatSummary(summary), HasSubstr("segmented avg, segmented Wh"));
  summary.powerSegments.resize(1);
  EXPECT_THAT(formatSummary(summary), HasSubstr("avg unavailable, Wh unavailable"));
}

TEST(SessionOutput, SamplingConfidenceNamesGapsAndFlagsWhenThereAreAny) {
  PowerSessionSamplingConfidence confidence{.wallClockDurationSeconds = 600.0,
                                            .activeSampledDurationSeconds = 499.6,
                                            .sampleCount = 5,
                                            .medianIntervalSeconds = 2.04,
                                            .gapsOver60Seconds = 1,
                                            .totalGapSeconds = 100.0,
                                            .flags = {"long-gaps", "low-active-coverage"}};
  EXPECT_EQ(formatSamplingConfidence(confidence),
            "Sampling: wall 600s · active 500s · 5 samples · median 2.0s · 1 gaps >60s (100s) · "
            "flags long-gaps,low-active-coverage");
  confidence.gapsOver60Seconds = 0;
  confidence.flags.clear();
  confidence.medianIntervalSeconds.reset();
  EXPECT_EQ(formatSamplingConfidence(confidence), "Sampling: wall 600s · active 500s · 5 samples");
}

TEST(SessionOutput, ANetChangeOfZeroReadsPlusZero) {
  PowerSessionBatteryCycleInsights insights{.totalPercentGained = 4, .totalPercentDischarged = 4};
  EXPECT_EQ(formatBatteryInsights(insights), "Battery cycle: 4% discharged · 4% gained · net +0%");
}

TEST(SessionOutput, BatteryInsightsNameWhatTheyHave) {
  const PowerSessionBatteryCycleInsights insights{.totalPercentDischarged = 7,
                                                  .netPercent = -7,
                                                  .estimatedUsableFullBatteryWattHours = 68.25,
                                                  .reportedHealthPercent = 96};
  EXPECT_EQ(formatBatteryInsights(insights),
            "Battery cycle: 7% discharged · 0% gained · net -7% · usable 68.2Wh · reported health "
            "96%");
}

TEST(SessionOutput, ChargeRunsAndMilestonesNameWhatIsUnknown) {
  const std::vector<PowerSessionChargeRun> runs{
      {.batteryPercentStart = 38, .batteryPercentEnd = 98, .averageChargeInputWatts = 44.1},
      {.batteryPercentStart = 20}};
  const std::vector<PowerSessionChargeMilestone> milestones{{.percent = 70, .inputWatts = 55.6},
                                                            {.percent = 80}};
  EXPECT_EQ(formatChargeBehavior(runs, milestones),
            "Charge behavior: 38%→98%, 44.1W avg input; unknown %, input unavailable · taper 70% "
            "55.6W, 80% --");
}

TEST(SessionOutput, AMilestoneWithoutInputReadsTwoDashes) {
  const std::vector<PowerSessionChargeMilestone> milestones{{.percent = 80}};
  EXPECT_EQ(formatChargeBehavior({}, milestones), "Charge behavior:  · taper 80% --");
}

TEST(SessionOutput, WithoutMilestonesThereIsNoTaper) {
  const std::vector<PowerSessionChargeRun> runs(1);
  EXPECT_EQ(formatChargeBehavior(runs, {}), "Charge behavior: unknown %, input unavailable");
}

TEST(SessionOutput, AThermalDigestWithoutTemperatureReadsTwoDashes) {
  EXPECT_EQ(formatThermalDigest({}), "Thermal: peak --, Cool");
}

TEST(SessionOutput, AThermalDigestNamesHeatAndPressure) {
  using Verdict = PowerSessionThermalDigest::Verdict;
  PowerSessionThermalDigest digest{.peakTemperatureCelsius = 96.4,
                                   .timeAbove80C = 150.0,
                                   .maxThermalPressure = 2,
                                   .thermalPressureWasTriggered = true,
                                   .verdict = Verdict::throttled};
  // 150 s are 2.5 minutes; halves go to the even number.
  EXPECT_EQ(formatThermalDigest(digest),
            "Thermal: peak 96°C, Throttling · 2 min >80°C · pressure level 2");
  EXPECT_EQ(formatThermalDigest({.verdict = Verdict::warm}), "Thermal: peak --, Warm");
  EXPECT_EQ(formatThermalDigest({.verdict = Verdict::hotControlled}),
            "Thermal: peak --, Hot (controlled)");
}

TEST(SessionOutput, TheThermalSummaryNamesWhatItHas) {
  const PowerSessionThermalSummary summary{.medianMaxSensorTemperatureCelsius = 37.4,
                                           .p95MaxSensorTemperatureCelsius = 58.0,
                                           .maxFanRPM = 3100,
                                           .verdict = "warm-not-constrained"};
  EXPECT_EQ(formatThermalSummary(summary),
            "Thermal detail: 37°C median · 58°C p95 · 3100 RPM max fan · warm-not-constrained");
}

TEST(SessionOutput, AStorysColumnsArePaddedAndCut) {
  const PowerSessionStory story{
      .headline = "1h session",
      .episodes = {{.timeRange = "7:00 – 8:00",
                    .phase = "Battery draw",
                    .narrative = "Idle",
                    .highlights = {"Peak ~27W", "Used 1.0 Wh"}},
                   {.timeRange = "07:00:00.000 – 12:00:00.000",
                    .phase = "A label of more than twenty-eight characters",
                    .narrative = "Busy"}}};
  EXPECT_EQ(formatStory(story),
            "Story: 1h session\n"
            "  7:00 – 8:00             Battery draw                  Idle\n"
            "    Peak ~27W\n"
            "    Used 1.0 Wh\n"
            "  07:00:00.000 – 12:00:0  A label of more than twenty-  Busy\n");
}

TEST(SessionOutput, OptionalLinesStandInTheirOrder) {
  PowerSessionReport full = report(4);
  full.summary.telemetryConsistencyChecks = {
      {.code = "c", .severity = "warning", .message = "They disagree", .sampleCount = 3}};
  full.summary.batteryInsights.emplace();
  full.summary.chargeBehavior.chargeRuns.resize(1);
  full.summary.topContributors = {
      {.name = "ALL_TASKS", .isAggregate = true},
      {.name = "clang", .source = "powermetrics", .score = 12.34, .confidence = "derived"},
      {.name = "DEAD_TASKS", .isAggregate = true}};
  for (const char* family : {"a", "b", "c", "d", "e", "f"}) {
    full.summary.processFamilies.push_back({.family = family, .score = 1.0});
  }
  full.summary.measurementOverhead = {
      .observed = true, .overheadFraction = 0.254, .processNames = {"Quorvex", "nettop"}};
  full.summary.topNetworkApps = {
      {.name = "Mail", .source = "nettop", .totalBytesIn = 372'300'000, .totalBytesOut = 999}};
  const PowerSessionStory story{.headline = "H"};
  const std::string text = formatSession(full, &story);
  EXPECT_THAT(text, HasSubstr("0 samples\n"
                              "Telemetry consistency:\n"
                              "  warning: They disagree (3 samples)\n"
                              "Battery cycle: 0% discharged · 0% gained · net +0%\n"
                              "Charge behavior: unknown %, input unavailable\n"
                              "Thermal: peak --, Cool\n"
                              "Thermal detail: median -- · p95 -- · fan -- · cool\n"
                              "Story: H\n"
                              "Top contributors:\n"
                              "  clang (powermetrics, derived): 12.3\n"
                              "  Aggregate rows: ALL_TASKS, DEAD_TASKS\n"
                              "Process families (relative observed impact):\n"
                              "  a: 1.0\n  b: 1.0\n  c: 1.0\n  d: 1.0\n  e: 1.0\n"
                              "Measurement overhead observed: 25% of process impact (Quorvex, "
                              "nettop)\n"
                              "Peak network activity (observed counters, not power causality):\n"
                              "  Mail (nettop): ↓372.3 MB ↑999 B\n"));
}

TEST(SessionOutput, AnUnknownShareOfOverheadIsNamedSo) {
  PowerSessionReport overhead = report(1);
  overhead.summary.measurementOverhead = {.observed = true, .processNames = {"nettop"}};
  EXPECT_THAT(shown(overhead),
              HasSubstr("Measurement overhead observed: unknown of process impact (nettop)\n"));
}

TEST(SessionOutput, AggregatesAloneHaveNoHeading) {
  PowerSessionReport aggregates = report(1);
  aggregates.summary.topContributors = {{.name = "ALL_TASKS", .isAggregate = true}};
  EXPECT_THAT(shown(aggregates), HasSubstr("cool\n  Aggregate rows: ALL_TASKS\n"));
  EXPECT_THAT(shown(aggregates), Not(HasSubstr("Top contributors")));
}

TEST(SessionOutput, AListLineHasIdStatusTitleAndSummary) {
  const PowerSession session{UUID{},
                             "My run",
                             startedAt,
                             std::nullopt,
                             PowerSessionStatus::active,
                             PowerSessionSource::cli,
                             "0.14.0",
                             6,
                             2.0,
                             startedAt};
  EXPECT_EQ(formatListLine(session, {}),
            "00000000-0000-0000-0000-000000000000  active  My run  0s, avg unavailable, Wh "
            "unavailable, battery delta unavailable, 0 samples\n");
}

}  // namespace
}  // namespace quorvex
