#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "ObservationBuilder.h"
#include "PowerSessionAnalysis.h"
#include "PowerSessionMetrics.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using namespace observations;  // NOLINT(google-build-using-namespace): the words of these tests
using PowerSessionMetrics::storedPowerPoint;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* mixedNote = "Mixed power sources; use powerSegments for per-source averages.";
constexpr const char* gapNote = "Large sampling gaps; energy totals unavailable.";

SessionFacts session(double sampleInterval = 2.0, std::optional<double> endedAfter = std::nullopt) {
  return {.startedAt = start,
          .endedAt = endedAfter ? std::optional{at(*endedAfter)} : std::nullopt,
          .sampleInterval = sampleInterval};
}

PowerSessionSummary summary(const std::vector<Observation>& samples,
                            const SessionFacts& facts = session()) {
  return PowerSessionMetrics::summary(facts, samples);
}

Observation withNetwork(Observation observation, double inPerSec, double outPerSec,
                        std::span<const ObservedNetworkProcess> rows = {}) {
  observation.snapshot->network = ObservedNetwork{.totalBytesInPerSec = inPerSec,
                                                  .totalBytesOutPerSec = outPerSec,
                                                  .attributionSource = "nettop",
                                                  .processes = rows};
  return observation;
}

// The point of a live state

TEST(LivePowerPoint, TellsThePrimaryReading) {
  SystemPowerState state;
  state.timestamp = at(5);
  state.battery = samples::batteryAt(-12.5);
  EXPECT_EQ(PowerSessionMetrics::livePowerPoint(state),
            (PowerSamplePoint{.timestamp = at(5),
                              .watts = 12.5,
                              .sourceKind = "batteryDischarge",
                              .sourceLabel = "Battery draw",
                              .acConnected = false,
                              .batteryPercent = 80}));
}

TEST(LivePowerPoint, AnIdleBatteryOnACIsUnavailableByItsOwnLabel) {
  SystemPowerState state;
  state.battery = samples::battery();
  state.battery->acConnected = true;
  const auto point = PowerSessionMetrics::livePowerPoint(state);
  EXPECT_EQ(point.watts, std::nullopt);
  EXPECT_EQ(point.sourceKind, "unavailable");
  EXPECT_EQ(point.sourceLabel, "On AC, battery idle");
  EXPECT_EQ(point.acConnected, true);
}

TEST(LivePowerPoint, WithoutABatteryACAndPercentageAreAbsent) {
  SystemPowerState state;
  state.power = samples::silicon(4.0);
  const auto point = PowerSessionMetrics::livePowerPoint(state);
  EXPECT_EQ(point.watts, 4.0);
  EXPECT_EQ(point.sourceKind, "ioReportSiliconPower");
  EXPECT_EQ(point.acConnected, std::nullopt);
  EXPECT_EQ(point.batteryPercent, std::nullopt);
}

// The point of a stored sample

TEST(StoredPowerPoint, TakesTheSourceAsItWasRecorded) {
  auto sample = discharging(5, 80, 12.5);
  sample.snapshot->powerSourceKind = "someKind";
  sample.snapshot->powerSourceLabel = "Some label";
  const auto point = storedPowerPoint(sample);
  EXPECT_EQ(point.sourceKind, "someKind");
  EXPECT_EQ(point.sourceLabel, "Some label");
}

TEST(StoredPowerPoint, TimeAndWattsAlwaysComeFromTheColumns) {
  auto sample = discharging(5, 80, 12.5);
  sample.snapshot->totalWatts = 99.0;
  EXPECT_EQ(storedPowerPoint(sample).watts, 12.5);
  EXPECT_EQ(storedPowerPoint(sample).timestamp, at(5));
  sample.columns.totalWatts.reset();
  EXPECT_EQ(storedPowerPoint(sample).watts, std::nullopt);
}

TEST(StoredPowerPoint, BatteryStateComesFromTheSnapshotAndElseFromTheColumns) {
  auto sample = discharging(0, 80, 10.0);
  sample.columns.batteryPercent = 11;
  sample.columns.acConnected = true;
  EXPECT_EQ(storedPowerPoint(sample).batteryPercent, 80);
  EXPECT_EQ(storedPowerPoint(sample).acConnected, false);
  sample.snapshot->battery.reset();
  EXPECT_EQ(storedPowerPoint(sample).batteryPercent, 11);
  EXPECT_EQ(storedPowerPoint(sample).acConnected, true);
}

TEST(StoredPowerPoint, WithoutAStoredKindItIsInferred) {
  struct Case {
    bool acConnected;
    bool isCharging;
    double wattage;
    bool hasSilicon;
    const char* kind;
    const char* label;
  };
  for (const Case& one :
       {Case{true, false, -0.5, true, "batterySupplement", "Battery supplement"},
        Case{false, false, -0.5, true, "batteryDischarge", "Battery draw"},
        Case{false, true, -0.5, true, "batteryDischarge", "Battery draw"},
        Case{true, true, 0.5, true, "batteryChargeInput", "Battery charge input"},
        Case{false, true, 0.5, true, "batteryChargeInput", "Battery charge input"},
        Case{true, false, 0.5, true, "ioReportSiliconPower", "IOReport silicon power"},
        Case{true, false, 0.0, true, "ioReportSiliconPower", "IOReport silicon power"},
        Case{true, true, 0.0, false, "unavailable", "On AC, battery idle"},
        Case{false, false, 0.0, false, "unavailable", "Unavailable"}}) {
    auto sample = laptop(0, 80, one.acConnected);
    sample.snapshot->battery->isCharging = one.isCharging;
    sample.snapshot->battery->wattage = one.wattage;
    if (one.hasSilicon) {
      sample.snapshot->systemPower = 4.0;
    }
    EXPECT_EQ(storedPowerPoint(sample).sourceKind, one.kind);
    EXPECT_EQ(storedPowerPoint(sample).sourceLabel, one.label);
  }
}

TEST(StoredPowerPoint, ADesktopIsInferredFromItsSiliconAlone) {
  auto sample = desktop(0);
  EXPECT_EQ(storedPowerPoint(sample).sourceKind, "unavailable");
  EXPECT_EQ(storedPowerPoint(sample).sourceLabel, "Unavailable");
  sample.snapshot->systemPower = 4.0;
  EXPECT_EQ(storedPowerPoint(sample).sourceKind, "ioReportSiliconPower");
}

TEST(StoredPowerPoint, AStoredKindWithoutLabelTakesTheInferredLabel) {
  auto sample = discharging(0, 80, 10.0);
  sample.snapshot->powerSourceKind = "someKind";
  EXPECT_EQ(storedPowerPoint(sample).sourceKind, "someKind");
  EXPECT_EQ(storedPowerPoint(sample).sourceLabel, "Battery draw");
}

TEST(StoredPowerPoint, ASnapshotThatDoesNotDecodeLeavesTheColumns) {
  auto sample = undecodable(discharging(0, 80, 10.0));
  EXPECT_EQ(storedPowerPoint(sample), (PowerSamplePoint{.timestamp = at(0),
                                                        .watts = 10.0,
                                                        .sourceKind = "batteryDischarge",
                                                        .sourceLabel = "Battery draw",
                                                        .acConnected = false,
                                                        .batteryPercent = 80}));
  for (const std::optional<bool> ac : {std::optional{true}, std::optional<bool>{}}) {
    sample.columns.acConnected = ac;
    EXPECT_EQ(storedPowerPoint(sample).sourceKind, "unavailable");
    EXPECT_EQ(storedPowerPoint(sample).sourceLabel, "Unavailable");
    EXPECT_EQ(storedPowerPoint(sample).acConnected, ac);
  }
}

// Time and energy

TEST(PowerSessionMetrics, NoSamplesGiveExactlyTheEmptySummaryHoweverLongTheSessionRan) {
  EXPECT_EQ(summary({}, session(2.0, 7200.0)), PowerSessionSummary::empty());
  EXPECT_EQ(summary({}).durationSeconds, 0.0);
}

TEST(PowerSessionMetrics, TwoSamples130SecondsApartAreAGapAtTwoSeconds) {
  const auto result = summary({discharging(0, 80, 10.0), discharging(130, 79, 20.0)});
  EXPECT_EQ(result.averageWatts, std::nullopt);
  EXPECT_EQ(result.totalWattHours, std::nullopt);
  EXPECT_EQ(result.averageWattsNote, gapNote);
  EXPECT_EQ(result.totalWattHoursNote, gapNote);
  EXPECT_EQ(result.minWatts, 10.0);
  EXPECT_EQ(result.maxWatts, 20.0);
  ASSERT_THAT(result.powerSegments, SizeIs(1));
  EXPECT_EQ(result.powerSegments[0].averageWatts, (10.0 + 20.0) / 2.0);
  EXPECT_EQ(result.powerSegments[0].totalWattHours, std::nullopt);
}

TEST(PowerSessionMetrics, TheGapLimitIsFourIntervalsButAtLeast120Seconds) {
  const auto hasGap = [](double sampleInterval, double seconds) {
    return summary({discharging(0, 80, 10.0), discharging(seconds, 80, 10.0)},
                   session(sampleInterval))
        .averageWattsNote.has_value();
  };
  EXPECT_FALSE(hasGap(60.0, 240.0));
  EXPECT_TRUE(hasGap(60.0, 240.5));
  EXPECT_FALSE(hasGap(0.5, 120.0));
  EXPECT_TRUE(hasGap(0.5, 120.5));
}

TEST(PowerSessionMetrics, ASessionThatMovesToACTellsItsEnergyBySegment) {
  const auto result = summary({discharging(0, 80, 10.0), discharging(60, 80, 10.0),
                               charging(120, 80, 40.0), charging(180, 81, 40.0)});
  EXPECT_EQ(result.averageWattsNote, mixedNote);
  EXPECT_EQ(result.totalWattHoursNote, mixedNote);
  EXPECT_EQ(result.averageWatts, std::nullopt);
  EXPECT_EQ(result.totalWattHours, std::nullopt);
  ASSERT_THAT(result.powerSegments, SizeIs(2));
  EXPECT_DOUBLE_EQ(*result.powerSegments[0].totalWattHours, 10.0 * 60.0 / 3600.0);
  EXPECT_DOUBLE_EQ(*result.powerSegments[1].totalWattHours, 40.0 * 60.0 / 3600.0);
}

TEST(PowerSessionMetrics, MixedSourcesAreToldBeforeAGap) {
  const auto result = summary({discharging(0, 80, 10.0), charging(500, 80, 40.0)});
  EXPECT_EQ(result.averageWattsNote, mixedNote);
}

TEST(PowerSessionMetrics, AGapBetweenTwoSegmentsOfOneKindWithholdsTheTotal) {
  // The machine was plugged in between two samples, on the same kind.
  auto second = discharging(200, 80, 10.0);
  second.snapshot->battery->acConnected = true;
  auto third = second;
  third.columns.timestamp = at(210);
  const auto result = summary({discharging(0, 80, 10.0), discharging(10, 80, 10.0), second, third});
  ASSERT_THAT(result.powerSegments, SizeIs(2));
  EXPECT_EQ(result.averageWattsNote, gapNote);
}

TEST(PowerSessionMetrics, TwoWattSamplesOfOneInstantHaveNoTotalNoGapAndTheirMean) {
  const auto result = summary({discharging(10, 80, 10.0), discharging(10, 80, 20.0)});
  EXPECT_EQ(result.totalWattHours, std::nullopt);
  EXPECT_EQ(result.averageWattsNote, std::nullopt);
  EXPECT_EQ(result.averageWatts, 15.0);
}

TEST(PowerSessionMetrics, OneWattSampleIsTheAverage) {
  const auto result = summary({discharging(10, 80, 12.5)});
  EXPECT_EQ(result.averageWatts, 12.5);
  EXPECT_EQ(result.totalWattHours, std::nullopt);
  EXPECT_EQ(result.averageWattsNote, std::nullopt);
  EXPECT_EQ(result.totalWattHoursNote, std::nullopt);
}

TEST(PowerSessionMetrics, WithoutWattSamplesThereIsNoAverageAndNoNote) {
  const auto result = summary({idleOnAC(0, 80), idleOnAC(10, 80)});
  EXPECT_EQ(result.sampleCount, 2);
  EXPECT_EQ(result.wattSampleCount, 0);
  EXPECT_EQ(result.averageWatts, std::nullopt);
  EXPECT_EQ(result.minWatts, std::nullopt);
  EXPECT_EQ(result.averageWattsNote, std::nullopt);
}

TEST(PowerSessionMetrics, AStoppedSessionLastsUntilItsStopWhichLowersTheAverage) {
  const std::vector<Observation> samples{discharging(0, 80, 10.0), discharging(60, 80, 10.0)};
  const auto running = summary(samples);
  EXPECT_EQ(running.durationSeconds, 60.0);
  EXPECT_DOUBLE_EQ(*running.averageWatts, 10.0);
  const auto stopped = summary(samples, session(2.0, 120.0));
  EXPECT_EQ(stopped.durationSeconds, 120.0);
  EXPECT_DOUBLE_EQ(*stopped.totalWattHours, 10.0 * 60.0 / 3600.0);
  EXPECT_DOUBLE_EQ(*stopped.averageWatts, 10.0 * 60.0 / 120.0);
}

TEST(PowerSessionMetrics, ASampleBehindTheStopCountsAsTheEnd) {
  EXPECT_EQ(summary({discharging(90, 80, 10.0)}, session(2.0, 60.0)).durationSeconds, 90.0);
}

TEST(PowerSessionMetrics, TheDurationIsNeverNegative) {
  const auto result = summary({discharging(-90, 80, 10.0), discharging(-30, 80, 20.0)});
  EXPECT_EQ(result.durationSeconds, 0.0);
  EXPECT_EQ(result.averageWatts, 15.0);
  EXPECT_DOUBLE_EQ(*result.totalWattHours, 15.0 * 60.0 / 3600.0);
}

TEST(PowerSessionMetrics, ASnapshotThatDoesNotDecodeStillCounts) {
  const auto result = summary({discharging(0, 80, 10.0), undecodable(discharging(60, 70, 30.0))});
  EXPECT_EQ(result.sampleCount, 2);
  EXPECT_EQ(result.maxWatts, 30.0);
  EXPECT_EQ(result.batteryPercentEnd, 70);
  ASSERT_THAT(result.powerSegments, SizeIs(1));
  EXPECT_EQ(result.powerSegments[0].sampleCount, 2);
}

TEST(PowerSessionMetrics, AChangeOfSourceLabelAloneDoesNotCutASegment) {
  auto renamed = discharging(10, 80, 10.0);
  renamed.snapshot->powerSourceLabel = "Other";
  EXPECT_THAT(summary({discharging(0, 80, 10.0), renamed}).powerSegments, SizeIs(1));
}

// Battery, heat and fans, from the columns

TEST(PowerSessionMetrics, PercentagesAreTheFirstAndLastPresentColumns) {
  auto first = discharging(0, 80, 10.0);
  removePercent(first);
  auto last = discharging(30, 70, 10.0);
  removePercent(last);
  const auto result = summary({first, discharging(10, 79, 10.0), discharging(20, 77, 10.0), last});
  EXPECT_EQ(result.batteryPercentStart, 79);
  EXPECT_EQ(result.batteryPercentEnd, 77);
  EXPECT_EQ(result.batteryPercentDelta, -2);
}

TEST(PowerSessionMetrics, WithoutAnyPercentageAllThreeAreAbsent) {
  const auto result = summary({desktop(0), desktop(10)});
  EXPECT_EQ(result.batteryPercentStart, std::nullopt);
  EXPECT_EQ(result.batteryPercentEnd, std::nullopt);
  EXPECT_EQ(result.batteryPercentDelta, std::nullopt);
}

TEST(PowerSessionMetrics, PeaksOfHeatAndFansComeFromTheColumns) {
  auto cool = desktop(0);
  cool.columns.maxTemperature = 50.5;
  cool.columns.maxFanRPM = 2000;
  cool.columns.thermalPressure = 2;
  cool.snapshot->maxSensorTemperature = 99.0;
  auto warm = desktop(10);
  warm.columns.maxTemperature = 71.5;
  warm.columns.maxFanRPM = 1500;
  const auto result = summary({cool, warm});
  EXPECT_EQ(result.maxTemperature, 71.5);
  EXPECT_EQ(result.maxFanRPM, 2000);
  EXPECT_EQ(result.maxThermalPressure, 2);
}

TEST(PowerSessionMetrics, APeakThatDidNotRiseAboveZeroIsAbsent) {
  auto sample = desktop(0);
  sample.columns.maxTemperature = 0.0;
  sample.columns.maxFanRPM = 0;
  EXPECT_EQ(summary({sample}).maxTemperature, std::nullopt);
  EXPECT_EQ(summary({sample}).maxFanRPM, std::nullopt);
  EXPECT_EQ(summary({desktop(0)}).maxTemperature, std::nullopt);
}

// Network

TEST(PowerSessionMetrics, NetworkTotalsAreIntegratedFromInterfaceRates) {
  const auto result =
      summary({withNetwork(desktop(0), 500.0, 50.0), withNetwork(desktop(10), 100.0, 20.0),
               desktop(15), withNetwork(desktop(20), 300.0, 0.0)});
  EXPECT_EQ(result.totalBytesIn, 100U * 10U + 300U * 10U);
  EXPECT_EQ(result.totalBytesOut, 20U * 10U);
  EXPECT_EQ(result.peakBytesInPerSec, 500.0);
  EXPECT_EQ(result.peakBytesOutPerSec, 50.0);
}

TEST(PowerSessionMetrics, AFractionalByteTotalIsLostPerInterval) {
  const auto result =
      summary({withNetwork(desktop(0), 0.9, 0.0), withNetwork(desktop(1), 0.9, 0.0)});
  EXPECT_EQ(result.totalBytesIn, 0U);
  EXPECT_EQ(result.peakBytesInPerSec, 0.9);
  EXPECT_EQ(result.peakBytesOutPerSec, std::nullopt);
}

TEST(PowerSessionMetrics, NetworkTotalsAreNotIntegratedAcrossAGap) {
  EXPECT_EQ(summary({withNetwork(desktop(0), 10.0, 0.0), withNetwork(desktop(121), 10.0, 0.0)})
                .totalBytesIn,
            0U);
}

TEST(PowerSessionMetrics, TheNetworkSummaryTellsTotalsAndMovers) {
  const std::vector<ObservedNetworkProcess> before{
      {.pid = 1, .name = "curl", .isFromNettop = true, .bytesIn = 1000}};
  const std::vector<ObservedNetworkProcess> after{
      {.pid = 1, .name = "curl", .isFromNettop = true, .bytesIn = 1700}};
  const auto result = summary(
      {withNetwork(desktop(0), 0.0, 0.0, before), withNetwork(desktop(10), 80.0, 0.0, after)});
  EXPECT_THAT(result.topNetworkApps,
              ElementsAre(PowerSessionNetworkAppUsage{
                  .name = "curl", .source = "nettop", .totalBytesIn = 700, .sampleCount = 2}));
  EXPECT_EQ(result.networkSummary,
            (PowerSessionNetworkSummary{
                .totalBytesIn = 800,
                .topMovers = result.topNetworkApps,
                .note = "Network totals and per-process rows are observed counter deltas/maxes; "
                        "this report does not infer network power causality."}));
}

TEST(PowerSessionMetrics, AProcessWhoseCounterFellAddsNothingAndIsTheNewBaseline) {
  const auto rows = [](std::uint64_t bytes) {
    return std::vector<ObservedNetworkProcess>{
        {.pid = 1, .name = "curl", .isFromNettop = true, .bytesIn = bytes}};
  };
  const auto high = rows(1000);
  const auto low = rows(10);
  const auto later = rows(25);
  const auto result =
      summary({withNetwork(desktop(0), 0.0, 0.0, high), withNetwork(desktop(10), 0.0, 0.0, low),
               withNetwork(desktop(20), 0.0, 0.0, later)});
  ASSERT_THAT(result.topNetworkApps, SizeIs(1));
  EXPECT_EQ(result.topNetworkApps[0].totalBytesIn, 15U);
}

TEST(PowerSessionMetrics, AtMostFiveAppsAndFiveContributors) {
  std::vector<ObservedNetworkProcess> apps;
  std::vector<ObservedProcess> processes;
  const std::vector<std::string> names{"a", "b", "c", "d", "e", "f", "g"};
  for (const std::string& name : names) {
    apps.push_back({.pid = 1, .name = name, .bytesInPerSec = 1.0});
    processes.push_back({.name = name, .score = 1.0});
  }
  const auto result =
      summary({withActivityRows(withNetwork(desktop(0), 0.0, 0.0, apps), processes)});
  EXPECT_THAT(result.topNetworkApps, SizeIs(5));
  EXPECT_THAT(result.topContributors, SizeIs(5));
}

// Contributors and conclusions

TEST(PowerSessionMetrics, AllTasksRanksAmongContributorsAsAnAggregate) {
  const std::vector<ObservedProcess> rows{
      {.name = "ALL_TASKS", .score = 100.0, .isAggregate = true},
      {.name = "Safari", .score = 10.0}};
  const auto result = summary({withProRows(desktop(0), rows)});
  ASSERT_THAT(result.topContributors, SizeIs(2));
  EXPECT_EQ(result.topContributors[0].name, "ALL_TASKS");
  EXPECT_TRUE(result.topContributors[0].isAggregate);
  EXPECT_FALSE(result.topContributors[1].isAggregate);
  // The families, in contrast, leave groups out.
  ASSERT_THAT(result.processFamilies, SizeIs(1));
  EXPECT_EQ(result.processFamilies[0].score, 10.0);
}

TEST(PowerSessionMetrics, TheFirstPresentFigureScoresAPrivilegedRow) {
  ProProcessEnergy row;
  EXPECT_EQ(PowerSessionMetrics::contributorScore(row), std::nullopt);
  row.wakeupsPerSecond = 3.0;
  EXPECT_EQ(PowerSessionMetrics::contributorScore(row), 3.0);
  row.cpuTimePercent = 2.0;
  EXPECT_EQ(PowerSessionMetrics::contributorScore(row), 2.0);
  row.energyImpact = 0.0;
  EXPECT_EQ(PowerSessionMetrics::contributorScore(row), 0.0);
}

TEST(PowerSessionMetrics, KnowsTheNamesOfGroups) {
  EXPECT_THAT(PowerSessionMetrics::knownAggregateProcessNames,
              ElementsAre("ALL_TASKS", "DEAD_TASKS"));
  EXPECT_FALSE(PowerSessionMetrics::isKnownAggregate("all_tasks"));
}

TEST(PowerSessionMetrics, CarriesTheConclusionsOfTheAnalysis) {
  const std::vector<Observation> samples{discharging(0, 80, 10.0), discharging(60, 79, 10.0)};
  const auto result = summary(samples);
  const auto analysis = PowerSessionAnalysis::analyze(session(), samples);
  EXPECT_EQ(result.samplingConfidence, analysis.samplingConfidence);
  EXPECT_EQ(result.batteryInsights, analysis.batteryInsights);
  EXPECT_EQ(result.chargeBehavior, analysis.chargeBehavior);
  EXPECT_EQ(result.measurementOverhead, analysis.measurementOverhead);
  EXPECT_EQ(result.thermalSummary, analysis.thermalSummary);
  EXPECT_EQ(result.telemetryConsistencyChecks, analysis.telemetryConsistencyChecks);
  EXPECT_EQ(result.telemetryChannelNotes, PowerSessionAnalysis::telemetryChannelNotes());
  EXPECT_EQ(result.samplingConfidence.sampleCount, 2);
}

/// Samples of distinct times, of changing sources, some of them not decodable. Only in a property.
std::vector<Observation> anySession() {
  std::vector<Observation> samples;
  double seconds = 0.0;
  const auto count = *rc::gen::inRange(0, 25);
  for (int i = 0; i < count; ++i) {
    seconds += *rc::gen::inRange(1, 200);
    const auto percent = *rc::gen::inRange<std::int64_t>(0, 101);
    const double watts = *rc::gen::inRange(0, 400) / 8.0;
    auto sample = *rc::gen::weightedElement<bool>({{3, true}, {1, false}})
                      ? discharging(seconds, percent, watts)
                      : charging(seconds, percent, watts);
    sample = withNetwork(sample, watts * 100.0, watts);
    samples.push_back(
        *rc::gen::weightedElement<bool>({{4, true}, {1, false}}) ? sample : undecodable(sample));
  }
  return samples;
}

TEST(PowerSessionMetrics, TheOrderInWhichSamplesAreGivenChangesNothing) {
  EXPECT_TRUE(rc::check([] {
    auto samples = anySession();
    const auto inOrder = summary(samples);
    for (std::size_t i = samples.size(); i > 1; --i) {
      std::swap(samples[i - 1], samples[*rc::gen::inRange<std::size_t>(0, i)]);
    }
    RC_ASSERT(summary(samples) == inOrder);
  }));
}

TEST(PowerSessionMetrics, TheSegmentsOfASummaryPartitionItsSamples) {
  EXPECT_TRUE(rc::check([] {
    const auto result = summary(anySession());
    std::int64_t samples = 0;
    std::int64_t wattSamples = 0;
    for (const PowerSessionPowerSegment& segment : result.powerSegments) {
      samples += segment.sampleCount;
      wattSamples += segment.wattSampleCount;
    }
    RC_ASSERT(samples == result.sampleCount);
    RC_ASSERT(wattSamples == result.wattSampleCount);
    RC_ASSERT(result.averageWattsNote == result.totalWattHoursNote);
    RC_ASSERT(!result.averageWattsNote || (!result.averageWatts && !result.totalWattHours));
  }));
}

}  // namespace
}  // namespace quorvex
