#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ObservationBuilder.h"
#include "PowerSessionMetrics.h"
#include "SampleRecords.h"
#include "SummaryAccumulator.h"

// What the figures themselves come to is tested where summaries are: PowerSessionMetricsTests,
// RunningSummaryTests.

namespace quorvex {
namespace {

namespace obs = observations;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(SummaryAccumulator, BeginsEmpty) {
  const SummaryAccumulator figures{120.0};
  EXPECT_EQ(figures.maxSampleGap(), 120.0);
  EXPECT_EQ(figures.sampleCount(), 0);
  EXPECT_EQ(figures.wattSampleCount(), 0);
  EXPECT_EQ(figures.energy().coveredWattHours(), std::nullopt);
}

TEST(SummaryAccumulator, TakesDurationAndTotalFromItsCaller) {
  SummaryAccumulator figures{120.0};
  figures.ingest(obs::discharging(0.0, 80, 10.0));
  figures.ingest(obs::discharging(36.0, 79, 10.0));
  const auto told = figures.materialize(72.0, figures.energy().coveredWattHours());
  EXPECT_EQ(told.durationSeconds, 72.0);
  EXPECT_DOUBLE_EQ(*told.totalWattHours, 0.1);
  EXPECT_DOUBLE_EQ(*told.averageWatts, 5.0);
  const auto untold = figures.materialize(72.0, std::nullopt);
  EXPECT_EQ(untold.totalWattHours, std::nullopt);
  EXPECT_DOUBLE_EQ(*untold.averageWatts, 10.0);
}

TEST(SummaryAccumulator, MaterializingChangesNothing) {
  SummaryAccumulator figures{120.0};
  figures.ingest(obs::discharging(0.0, 80, 10.0));
  const auto first = figures.materialize(1.0, std::nullopt);
  EXPECT_EQ(figures.materialize(1.0, std::nullopt), first);
  figures.ingest(obs::discharging(2.0, 80, 10.0));
  EXPECT_THAT(figures.materialize(1.0, std::nullopt).powerSegments, SizeIs(1));
}

TEST(SummaryAccumulator, ALiveNetworkCountsAsItsStoredForm) {
  SummaryAccumulator live{120.0};
  SummaryAccumulator stored{120.0};
  for (const double seconds : {0.0, 2.0}) {
    NetworkSnapshot network;
    network.attributionSource = NetworkAttributionSource::nettop;
    network.interfaces = {samples::interface(4, "en0", 0, 0, 100.0, 10.0)};
    network.processes = {{.id = 9, .name = "curl", .bytesIn = 500, .bytesInPerSec = 7.0}};
    network.processes[0].bytesIn += static_cast<std::uint64_t>(seconds * 50.0);
    live.ingestNetwork(network, obs::at(seconds));

    const ObservedNetworkProcess row{
        .pid = 9, .name = "curl", .bytesIn = network.processes[0].bytesIn, .bytesInPerSec = 7.0};
    Observation sample = obs::desktop(seconds);
    sample.snapshot->network = ObservedNetwork{.totalBytesInPerSec = 100.0,
                                               .totalBytesOutPerSec = 10.0,
                                               .attributionSource = "nettop",
                                               .processes = {&row, 1}};
    stored.ingest(sample);
  }
  const auto summary = live.materialize(2.0, std::nullopt);
  EXPECT_EQ(summary.networkSummary, stored.materialize(2.0, std::nullopt).networkSummary);
  EXPECT_EQ(summary.totalBytesIn, 200U);
  EXPECT_EQ(summary.topNetworkApps.at(0).totalBytesIn, 100U);
  EXPECT_EQ(summary.sampleCount, 0);
}

TEST(SummaryAccumulator, RowsWithoutAScoreAboveZeroAreNoContributors) {
  SummaryAccumulator figures;
  figures.ingestContributors(std::vector<ProProcessEnergy>{
      {.pid = 1, .name = "none"}, {.pid = 2, .name = "zero", .energyImpact = 0.0}});
  figures.ingestActivities(std::vector<ProcessActivityInfo>{
      ProcessActivityInfo{3, "negative", 0.0, 0.0, 0.0, std::nullopt, -1.0}});
  EXPECT_THAT(figures.materialize(1.0, std::nullopt).topContributors, IsEmpty());
}

TEST(LiveColumns, AreTakenFromTheState) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-12.0);
  state.thermal.pressure = 2;
  state.fans = {{.id = 0, .currentRPM = 2000}, {.id = 1, .currentRPM = 2100}};
  state.sensors = {{"a", "A", 61.5}, {"b", "B", 58.25}};
  state.timestamp = obs::at(5.0);
  EXPECT_EQ(PowerSessionMetrics::liveColumns(state), (SampleColumns{.timestamp = obs::at(5.0),
                                                                    .totalWatts = 12.0,
                                                                    .batteryPercent = 80,
                                                                    .acConnected = false,
                                                                    .thermalPressure = 2,
                                                                    .maxFanRPM = 2100,
                                                                    .maxTemperature = 61.5}));
}

TEST(LiveColumns, AreAbsentWhereTheStateHasNothing) {
  EXPECT_EQ(PowerSessionMetrics::liveColumns(SystemPowerState{}), SampleColumns{});
}

}  // namespace
}  // namespace quorvex
