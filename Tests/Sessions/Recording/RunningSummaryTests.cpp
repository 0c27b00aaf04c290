#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "ObservationBuilder.h"
#include "PowerSessionMetrics.h"
#include "RunningSummary.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

namespace obs = observations;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double maxGap = 120.0;
constexpr const char* mixedNote = "Mixed power sources; use powerSegments for per-source averages.";
constexpr const char* gapNote = "Large sampling gaps; energy totals unavailable.";

PowerSession session(std::optional<double> endedAfter = std::nullopt) {
  return PowerSession{{.startedAt = obs::start,
                       .endedAt = endedAfter ? std::optional{obs::at(*endedAfter)} : std::nullopt,
                       .sampleInterval = 2.0}};
}

SystemPowerState discharging(double seconds, double watts) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-watts);
  state.timestamp = obs::at(seconds);
  return state;
}

SystemPowerState bare(double seconds) {
  SystemPowerState state;
  state.timestamp = obs::at(seconds);
  return state;
}

/// A summary of live states, without processes.
struct Live {
  Live& add(const SystemPowerState& state) {
    running.ingest(state, {}, std::nullopt);
    return *this;
  }
  [[nodiscard]] PowerSessionSummary summary(std::optional<double> endedAfter = {}) const {
    return running.materialize(session(endedAfter));
  }

  RunningSummary running{maxGap};
};

TEST(RunningSummary, WithoutSamplesItIsTheEmptySummary) {
  EXPECT_EQ(Live{}.summary(), PowerSessionSummary::empty());
  EXPECT_EQ(Live{}.summary(3600.0), PowerSessionSummary::empty());
  EXPECT_EQ(RunningSummary{}.maxPowerSampleGap(), std::nullopt);
  EXPECT_EQ(RunningSummary{}.sampleCount(), 0);
  EXPECT_EQ(RunningSummary{}.firstSampleTimestamp(), std::nullopt);
  EXPECT_EQ(RunningSummary{}.lastSampleTimestamp(), std::nullopt);
  EXPECT_EQ(RunningSummary{}.lastProTelemetrySampledAt(), std::nullopt);
}

TEST(RunningSummary, KeepsTheTimesOfTheFirstAndTheLastSample) {
  Live live;
  live.add(bare(1.0)).add(bare(3.0)).add(bare(5.0));
  EXPECT_EQ(live.running.firstSampleTimestamp(), obs::at(1.0));
  EXPECT_EQ(live.running.lastSampleTimestamp(), obs::at(5.0));
  EXPECT_EQ(live.running.sampleCount(), 3);
  EXPECT_EQ(live.running.maxPowerSampleGap(), maxGap);
}

TEST(RunningSummary, LastsUntilTheLastSampleWhileTheSessionGoesOn) {
  EXPECT_DOUBLE_EQ(Live{}.add(bare(1.0)).add(bare(7.0)).summary().durationSeconds, 7.0);
}

TEST(RunningSummary, LastsUntilTheSessionsEndOnceItHasOne) {
  EXPECT_DOUBLE_EQ(Live{}.add(bare(7.0)).summary(9.0).durationSeconds, 9.0);
  EXPECT_DOUBLE_EQ(Live{}.add(bare(7.0)).summary(5.0).durationSeconds, 5.0);
}

TEST(RunningSummary, NeverLastsLessThanNothing) {
  EXPECT_DOUBLE_EQ(Live{}.add(bare(-7.0)).summary().durationSeconds, 0.0);
}

TEST(RunningSummary, WithoutWattsAverageAndTotalAreAbsent) {
  const auto summary = Live{}.add(bare(0.0)).add(bare(2.0)).summary();
  EXPECT_EQ(summary.sampleCount, 2);
  EXPECT_EQ(summary.wattSampleCount, 0);
  EXPECT_EQ(summary.averageWatts, std::nullopt);
  EXPECT_EQ(summary.totalWattHours, std::nullopt);
  EXPECT_EQ(summary.averageWattsNote, std::nullopt);
}

TEST(RunningSummary, OneWattSampleIsItsOwnAverageWithoutATotal) {
  const auto summary = Live{}.add(discharging(10.0, 8.0)).summary();
  EXPECT_EQ(summary.averageWatts, 8.0);
  EXPECT_EQ(summary.totalWattHours, std::nullopt);
}

TEST(RunningSummary, TheAverageIsWeightedByTimeOverTheWholeSession) {
  const auto summary = Live{}.add(discharging(36.0, 10.0)).add(discharging(72.0, 20.0)).summary();
  // (10 W + 20 W) / 2 for 36 s, a hundredth of an hour; over the 72 s since the start.
  EXPECT_DOUBLE_EQ(*summary.totalWattHours, 15.0 * 0.01);
  EXPECT_DOUBLE_EQ(*summary.averageWatts, 15.0 * 36.0 / 72.0);
  EXPECT_EQ(summary.minWatts, 10.0);
  EXPECT_EQ(summary.maxWatts, 20.0);
}

TEST(RunningSummary, WithoutADurationTheAverageIsThePlainMean) {
  const auto summary = Live{}.add(discharging(0.0, 10.0)).add(discharging(0.0, 20.0)).summary();
  EXPECT_EQ(summary.totalWattHours, 0.0);
  EXPECT_EQ(summary.averageWatts, 15.0);
}

TEST(RunningSummary, TwoWattSamplesOfOneInstantAreAnIntervalOfNoEnergy) {
  const auto summary = Live{}.add(discharging(10.0, 10.0)).add(discharging(10.0, 20.0)).summary();
  EXPECT_EQ(summary.totalWattHours, 0.0);
  EXPECT_EQ(summary.averageWatts, 0.0);
}

TEST(RunningSummary, ATimeThatGoesBackAddsNoEnergy) {
  const auto summary = Live{}.add(discharging(10.0, 10.0)).add(discharging(4.0, 10.0)).summary();
  EXPECT_EQ(summary.totalWattHours, 0.0);
  EXPECT_EQ(summary.totalWattHoursNote, std::nullopt);
}

TEST(RunningSummary, ASampleWithoutWattsTakesNoPartInTheEnergy) {
  const auto summary = Live{}
                           .add(discharging(0.0, 10.0))
                           .add([] {
                             SystemPowerState state = discharging(18.0, 0.0);
                             state.battery->wattage = 0.0;
                             return state;
                           }())
                           .summary();
  EXPECT_EQ(summary.sampleCount, 2);
  EXPECT_EQ(summary.wattSampleCount, 1);
}

TEST(RunningSummary, AnIntervalAtTheLimitIsUsedAndOneAboveItIsAGap) {
  const auto atLimit = Live{}.add(discharging(0.0, 9.0)).add(discharging(120.0, 9.0)).summary();
  EXPECT_DOUBLE_EQ(*atLimit.totalWattHours, 9.0 * 120.0 / 3600.0);
  const auto above = Live{}.add(discharging(0.0, 9.0)).add(discharging(120.5, 9.0)).summary();
  EXPECT_EQ(above.totalWattHours, std::nullopt);
  EXPECT_EQ(above.averageWatts, std::nullopt);
  EXPECT_EQ(above.averageWattsNote, gapNote);
  EXPECT_EQ(above.totalWattHoursNote, gapNote);
}

TEST(RunningSummary, WithoutALimitNothingIsAGap) {
  Live live;
  live.running = RunningSummary{};
  const auto summary = live.add(discharging(0.0, 9.0)).add(discharging(3600.0, 9.0)).summary();
  EXPECT_DOUBLE_EQ(*summary.totalWattHours, 9.0);
}

TEST(RunningSummary, AMixOfSourcesGoesBeforeAGap) {
  SystemPowerState charging = discharging(200.0, 9.0);
  charging.battery = samples::batteryAt(30.0);
  charging.battery->acConnected = true;
  charging.battery->isCharging = true;
  const auto summary = Live{}.add(discharging(0.0, 9.0)).add(charging).summary();
  EXPECT_EQ(summary.averageWattsNote, mixedNote);
  EXPECT_EQ(summary.totalWattHoursNote, mixedNote);
  EXPECT_EQ(summary.averageWatts, std::nullopt);
  ASSERT_THAT(summary.powerSegments, SizeIs(2));
  EXPECT_EQ(summary.powerSegments[0].sourceKind, "batteryDischarge");
  EXPECT_EQ(summary.powerSegments[1].sourceKind, "batteryChargeInput");
  EXPECT_EQ(summary.powerSegments[1].index, 1);
}

TEST(RunningSummary, KeepsFirstAndLastBatteryPercent) {
  SystemPowerState first = discharging(0.0, 9.0);
  SystemPowerState last = discharging(2.0, 9.0);
  last.battery->chargePercent = 77;
  const auto summary = Live{}.add(bare(-1.0)).add(first).add(last).add(bare(4.0)).summary();
  EXPECT_EQ(summary.batteryPercentStart, 80);
  EXPECT_EQ(summary.batteryPercentEnd, 77);
  EXPECT_EQ(summary.batteryPercentDelta, -3);
}

TEST(RunningSummary, RaisesThePeaksOfPressureFansAndTemperature) {
  SystemPowerState hot = bare(0.0);
  hot.thermal.pressure = 3;
  hot.fans = {{.id = 0, .currentRPM = 2000}, {.id = 1, .currentRPM = 4100}};
  hot.sensors = {{"a", "A", 61.5}, {"b", "B", 90.25}};
  SystemPowerState cool = bare(2.0);
  cool.fans = {{.id = 0, .currentRPM = 1500}};
  cool.sensors = {{"a", "A", 40.0}};
  const auto summary = Live{}.add(hot).add(cool).summary();
  EXPECT_EQ(summary.maxThermalPressure, 3);
  EXPECT_EQ(summary.maxFanRPM, 4100);
  EXPECT_EQ(summary.maxTemperature, 90.25);
}

TEST(RunningSummary, PeaksThatDidNotRiseAboveZeroAreAbsent) {
  SystemPowerState still = bare(0.0);
  still.fans = {{.id = 0, .currentRPM = 0}};
  still.network.emplace();
  const auto summary = Live{}.add(still).add(bare(2.0)).summary();
  EXPECT_EQ(summary.maxFanRPM, std::nullopt);
  EXPECT_EQ(summary.maxTemperature, std::nullopt);
  EXPECT_EQ(summary.peakBytesInPerSec, std::nullopt);
  EXPECT_EQ(summary.peakBytesOutPerSec, std::nullopt);
}

SystemPowerState networked(double seconds, double inPerSec, double outPerSec) {
  SystemPowerState state = bare(seconds);
  state.network.emplace().interfaces = {
      samples::interface(4, "en0", 1000, 500, inPerSec, outPerSec)};
  return state;
}

TEST(RunningSummary, IntegratesTheInterfacesRatesInWholeBytes) {
  const auto summary = Live{}
                           .add(networked(0.0, 500.0, 0.0))
                           .add(networked(3.0, 100.25, 0.25))
                           .add(bare(4.0))
                           .add(networked(5.0, 50.0, 10.0))
                           .summary();
  // 100.25 B/s for 3 s and 50 B/s for the 2 s since that snapshot; fractions are cut.
  EXPECT_EQ(summary.totalBytesIn, 300U + 100U);
  EXPECT_EQ(summary.totalBytesOut, 0U + 20U);
  EXPECT_EQ(summary.peakBytesInPerSec, 500.0);
  EXPECT_EQ(summary.peakBytesOutPerSec, 10.0);
  EXPECT_EQ(summary.networkSummary.totalBytesIn, 400U);
  EXPECT_EQ(summary.networkSummary.totalBytesOut, 20U);
  EXPECT_EQ(summary.networkSummary.note,
            "Network totals and per-process rows are observed counter deltas/maxes; this report "
            "does not infer network power causality.");
}

TEST(RunningSummary, IntegratesNoTrafficAcrossAGap) {
  EXPECT_EQ(
      Live{}.add(networked(0.0, 10.0, 0.0)).add(networked(121.0, 10.0, 0.0)).summary().totalBytesIn,
      0U);
}

TEST(RunningSummary, AddsUpAppsByTheirNameAndSource) {
  SystemPowerState first = networked(0.0, 0.0, 0.0);
  first.network->attributionSource = NetworkAttributionSource::nettop;
  first.network->processes = {{.id = 9, .name = "curl", .bytesIn = 100, .bytesOut = 10}};
  SystemPowerState second = first;
  second.timestamp = obs::at(2.0);
  second.network->processes[0].bytesIn = 400;
  second.network->processes[0].bytesInPerSec = 150.0;
  const auto summary = Live{}.add(first).add(second).summary();
  ASSERT_THAT(summary.topNetworkApps, SizeIs(1));
  EXPECT_EQ(summary.topNetworkApps[0], (PowerSessionNetworkAppUsage{.name = "curl",
                                                                    .source = "nettop",
                                                                    .totalBytesIn = 400 - 100,
                                                                    .peakBytesInPerSec = 150.0,
                                                                    .sampleCount = 2}));
  EXPECT_EQ(summary.networkSummary.topMovers, summary.topNetworkApps);
}

std::vector<ProcessActivityInfo> activity(const std::string& name, double score) {
  return {ProcessActivityInfo{5, name, 1.0, 0.0, 0.0, std::nullopt, score}};
}

ProTelemetrySnapshot privilegedRows(std::vector<ProProcessEnergy> rows, bool isAvailable = true) {
  ProTelemetrySnapshot snapshot;
  snapshot.isAvailable = isAvailable;
  snapshot.sampledAt = obs::at(1.0);
  snapshot.processes = std::move(rows);
  return snapshot;
}

TEST(RunningSummary, ScoresTheProcessActivityAsEstimated) {
  RunningSummary running{maxGap};
  running.ingest(bare(0.0), activity("worker", 4.0), std::nullopt);
  running.ingest(bare(2.0), activity("worker", 3.0), std::nullopt);
  running.ingest(bare(4.0), activity("idle", 0.0), std::nullopt);
  const auto summary = running.materialize(session());
  ASSERT_THAT(summary.topContributors, SizeIs(1));
  EXPECT_EQ(summary.topContributors[0], (PowerSessionContributor{.name = "worker",
                                                                 .source = "proc_pid_rusage",
                                                                 .score = 4.0 + 3.0,
                                                                 .confidence = "estimated",
                                                                 .isAggregate = false}));
}

TEST(RunningSummary, ScoresPrivilegedRowsByTheirFirstPresentFigureInPlaceOfTheActivity) {
  RunningSummary running{maxGap};
  running.ingest(
      bare(0.0), activity("worker", 4.0),
      privilegedRows({{.pid = 1, .name = "impact", .energyImpact = 9.0},
                      {.pid = 2, .name = "cpu", .cpuTimePercent = 8.0},
                      {.pid = 3, .name = "wakeups", .wakeupsPerSecond = 7.0},
                      {.pid = 4, .name = "none"},
                      {.pid = 5, .name = "zero", .energyImpact = 0.0, .cpuTimePercent = 50.0},
                      {.pid = 6, .name = "ALL_TASKS", .energyImpact = 6.0}}));
  const auto rows = running.materialize(session()).topContributors;
  ASSERT_THAT(rows, SizeIs(4));
  EXPECT_EQ(rows[0], (PowerSessionContributor{"impact", "powermetrics", 9.0, "derived", false}));
  EXPECT_EQ(rows[1].name, "cpu");
  EXPECT_EQ(rows[2].name, "wakeups");
  EXPECT_EQ(rows[3], (PowerSessionContributor{"ALL_TASKS", "powermetrics", 6.0, "derived", true}));
  EXPECT_EQ(running.lastProTelemetrySampledAt(), obs::at(1.0));
}

TEST(RunningSummary, AnUnavailableSnapshotDoesNotStandInPlaceOfTheActivity) {
  RunningSummary running{maxGap};
  running.ingest(bare(0.0), activity("worker", 4.0),
                 privilegedRows({{.pid = 1, .name = "bad", .energyImpact = 9.0}}, false));
  const auto rows = running.materialize(session()).topContributors;
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0].name, "worker");
  EXPECT_EQ(running.lastProTelemetrySampledAt(), std::nullopt);
}

TEST(RunningSummary, ShowsTheFiveGreatestContributors) {
  RunningSummary running{maxGap};
  for (int i = 1; i <= 7; ++i) {
    running.ingest(bare(i), activity(std::to_string(i), i), std::nullopt);
  }
  const auto rows = running.materialize(session()).topContributors;
  ASSERT_THAT(rows, SizeIs(5));
  EXPECT_EQ(rows.front().name, "7");
  EXPECT_EQ(rows.back().name, "3");
}

TEST(RunningSummary, LeavesTheAnalysisEmpty) {
  const auto summary = Live{}.add(discharging(0.0, 9.0)).add(discharging(60.0, 9.0)).summary();
  const PowerSessionSummary& empty = PowerSessionSummary::empty();
  EXPECT_EQ(summary.telemetryChannelNotes, PowerSessionAnalysis::telemetryChannelNotes());
  EXPECT_EQ(summary.samplingConfidence, empty.samplingConfidence);
  EXPECT_EQ(summary.batteryInsights, std::nullopt);
  EXPECT_EQ(summary.chargeBehavior, empty.chargeBehavior);
  EXPECT_THAT(summary.processFamilies, IsEmpty());
  EXPECT_EQ(summary.measurementOverhead.note, "No process impact samples were captured.");
  EXPECT_EQ(summary.measurementOverhead, empty.measurementOverhead);
  EXPECT_EQ(summary.thermalSummary, empty.thermalSummary);
  EXPECT_THAT(summary.telemetryConsistencyChecks, IsEmpty());
}

TEST(RunningSummary, AStoredSampleBringsTheTimeOfItsPrivilegedSnapshot) {
  const ObservedProcess row{.name = "measured", .score = 3.0};
  Observation sample = obs::withProRows(obs::desktop(5.0), {&row, 1});
  sample.proTelemetrySampledAt = obs::at(4.0);
  RunningSummary running{maxGap};
  running.ingestStored(sample);
  running.ingestStored(obs::desktop(7.0));
  EXPECT_EQ(running.lastProTelemetrySampledAt(), obs::at(4.0));
  EXPECT_EQ(running.materialize(session()).topContributors[0].source, "powermetrics");
}

TEST(RunningSummary, AStoredSampleWhoseSnapshotDoesNotDecodeCountsByItsColumns) {
  Observation sample = obs::undecodable(obs::discharging(5.0, 80, 9.0));
  sample.columns.maxFanRPM = 2000;
  sample.columns.thermalPressure = 2;
  RunningSummary running{maxGap};
  running.ingestStored(sample);
  const auto summary = running.materialize(session());
  EXPECT_EQ(summary.sampleCount, 1);
  EXPECT_EQ(summary.averageWatts, 9.0);
  EXPECT_EQ(summary.maxFanRPM, 2000);
  EXPECT_EQ(summary.maxThermalPressure, 2);
  EXPECT_EQ(summary.batteryPercentEnd, 80);
  EXPECT_EQ(summary.powerSegments[0].sourceKind, "batteryDischarge");
}

}  // namespace
}  // namespace quorvex
