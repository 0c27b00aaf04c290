#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include "ObservationSet.h"
#include "PowerSessionCoders.h"
#include "PowerSessionMetrics.h"
#include "ProcessActivityDTO.h"
#include "RunningSummary.h"
#include "StoreFixture.h"
#include "SystemPowerStateDTO.h"

// The live summary of a session and the one that is drawn from its stored samples: the same plain
// figures, whatever was recorded.

namespace quorvex {
namespace {

using testing::FakeClock;
using testing::secondsIn;
using testing::sessionStart;

/// The live summary that goes with one drawn from the same samples; here stands every difference.
PowerSessionSummary asLive(PowerSessionSummary summary) {
  const PowerSessionSummary& empty = PowerSessionSummary::empty();
  // Analysis is not done live.
  summary.samplingConfidence = empty.samplingConfidence;
  summary.batteryInsights = empty.batteryInsights;
  summary.chargeBehavior = empty.chargeBehavior;
  summary.processFamilies = empty.processFamilies;
  summary.measurementOverhead = empty.measurementOverhead;
  summary.thermalSummary = empty.thermalSummary;
  summary.telemetryConsistencyChecks = empty.telemetryConsistencyChecks;
  // Watt samples that are all of one instant are an interval of 0 Wh live, and none on demand.
  if (summary.wattSampleCount >= 2 && !summary.totalWattHours && !summary.totalWattHoursNote) {
    summary.totalWattHours = 0.0;
    if (summary.durationSeconds > 0.0) {
      summary.averageWatts = 0.0;
    }
  }
  return summary;
}

/// One recorded poll.
struct Poll {
  SystemPowerState state;
  std::vector<ProcessActivityInfo> activities;
  std::optional<ProTelemetrySnapshot> proTelemetry;
};

bool oneIn(int count) {
  return *rc::gen::inRange(0, count) == 0;
}

std::string anyName() {
  return *rc::gen::element<std::string>("Safari", "curl", "ALL_TASKS", "kernel_task", "a.b");
}

double anyRate() {
  return *rc::gen::element(0.0, 0.0, 0.3, 12.5, 1000.0, 1e20);
}

NetworkSnapshot anyNetwork() {
  NetworkSnapshot network;
  const auto attribution =
      rc::gen::element(NetworkAttributionSource::none, NetworkAttributionSource::nettop);
  network.attributionSource = *attribution;
  network.interfaces = {
      {.id = 0, .name = "lo0", .bytesInPerSec = 7.0},
      {.id = 4, .name = "en0", .bytesInPerSec = anyRate(), .bytesOutPerSec = anyRate()},
      {.id = 9, .name = "utun0", .bytesInPerSec = anyRate()}};
  const int rows = *rc::gen::inRange(0, 4);
  for (int i = 0; i < rows; ++i) {
    network.processes.push_back({.id = *rc::gen::inRange(1, 4),
                                 .name = anyName(),
                                 .bytesIn = *rc::gen::inRange<std::uint64_t>(0, 5000),
                                 .bytesOut = *rc::gen::inRange<std::uint64_t>(0, 5000),
                                 .bytesInPerSec = anyRate(),
                                 .bytesOutPerSec = anyRate(),
                                 .attributionSource = *attribution});
  }
  return network;
}

/// Any state of any computer: on battery, on AC, charging, resting, without a battery, without
/// fans, sensors, silicon or network. `mixes`: whether it is on any source or always on battery.
SystemPowerState anyState(bool mixes) {
  SystemPowerState state;
  if (!mixes || !oneIn(4)) {
    state.battery = samples::battery();
    state.battery->chargePercent = *rc::gen::inRange(1, 101);
    state.battery->acConnected = mixes && oneIn(2);
    state.battery->isCharging = mixes && oneIn(2);
    const double watts = *rc::gen::element(3.7, 8.0, 21.25);
    state.battery->wattage = mixes ? *rc::gen::element(-watts, 0.0, watts) : -watts;
  }
  if (oneIn(2)) {
    state.power = samples::silicon(*rc::gen::element(0.0, 2.5, 11.0));
  }
  state.thermal.pressure = *rc::gen::inRange(0, 5);
  for (int fan = *rc::gen::inRange(0, 3); fan > 0; --fan) {
    state.fans.push_back({.id = fan, .currentRPM = *rc::gen::element(0, 1200, 4000)});
  }
  for (int sensor = *rc::gen::inRange(0, 3); sensor > 0; --sensor) {
    state.sensors.push_back({"k", "Sensor", *rc::gen::element(0.5, 40.125, 99.9)});
  }
  if (!oneIn(3)) {
    state.network = anyNetwork();
  }
  return state;
}

std::vector<ProcessActivityInfo> anyActivities() {
  std::vector<ProcessActivityInfo> rows;
  for (int i = *rc::gen::inRange(0, 3); i > 0; --i) {
    rows.emplace_back(i, anyName(), 1.0, 0.0, 0.0, std::nullopt,
                      *rc::gen::element(-1.0, 0.0, 0.3, 12.5, 1e6));
  }
  return rows;
}

std::optional<double> anyFigure() {
  return *rc::gen::element<std::optional<double>>(std::nullopt, 0.0, 0.7, 31.5);
}

/// As the recorder hands it on: good, or none.
std::optional<ProTelemetrySnapshot> anyProTelemetry(double seconds) {
  if (!oneIn(3)) {
    return std::nullopt;
  }
  ProTelemetrySnapshot snapshot;
  snapshot.isAvailable = true;
  snapshot.source = "powermetrics";
  snapshot.sampledAt = secondsIn(seconds);
  for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
    snapshot.processes.push_back({.pid = i,
                                  .name = anyName(),
                                  .energyImpact = anyFigure(),
                                  .cpuTimePercent = anyFigure(),
                                  .wakeupsPerSecond = anyFigure(),
                                  .isAggregate = oneIn(4)});
  }
  return snapshot;
}

/// Polls in ascending order of time: repeated instants, ordinary steps, steps at and above the gap
/// limit.
std::vector<Poll> anyPolls() {
  const bool mixes = !oneIn(3);
  const bool standsStill = oneIn(6);
  std::vector<Poll> polls;
  double seconds = *rc::gen::element(-3.0, 0.0, 0.25, 10.0);
  for (int i = *rc::gen::inRange(0, 14); i > 0; --i) {
    polls.push_back({anyState(mixes), anyActivities(), anyProTelemetry(seconds)});
    polls.back().state.timestamp = secondsIn(seconds);
    seconds +=
        standsStill ? 0.0 : *rc::gen::element(0.0, 0.25, 2.0, 2.0, 2.1, 2.0, 119.5, 120.0, 120.5);
  }
  return polls;
}

std::unique_ptr<PowerSessionStore> memoryStore(Clock& clock) {
  return *PowerSessionStore::open({.appVersion = "0.14.0", .inMemory = true}, clock);
}

double gapLimit(const PowerSession& session) {
  return maxSampleGap(session.sampleInterval());
}

TEST(LiveSummary, OfLiveStatesIsThatOfTheirStoredSamplesButForTheNamedDifferences) {
  FakeClock clock;
  EXPECT_TRUE(rc::check([&] {
    const auto store = memoryStore(clock);
    const double interval = *rc::gen::element(0.5, 2.0, 30.0, 31.0);
    const auto session =
        *store->startSession("Any", PowerSessionSource::app, interval, sessionStart);
    RunningSummary running{gapLimit(*session)};
    for (const Poll& poll : anyPolls()) {
      RC_ASSERT(
          store->appendSample(*session, poll.state, poll.activities, poll.proTelemetry).hasValue());
      running.ingest(poll.state, poll.activities, poll.proTelemetry);
      RC_ASSERT(running.materialize(*session) == asLive(store->summary(*session)));
    }
    RC_ASSERT(store->stopSession(*session, secondsIn(5000.0)).hasValue());
    RC_ASSERT(running.materialize(*session) == asLive(store->summary(*session)));
  }));
}

TEST(LiveSummary, RebuiltFromStoredSamplesIsTheOneThatWasKeptWhileTheyWereRecorded) {
  FakeClock clock;
  EXPECT_TRUE(rc::check([&] {
    const auto store = memoryStore(clock);
    const auto session = *store->startSession("Any", PowerSessionSource::app, 2.0, sessionStart);
    RunningSummary running{gapLimit(*session)};
    for (const Poll& poll : anyPolls()) {
      RC_ASSERT(
          store->appendSample(*session, poll.state, poll.activities, poll.proTelemetry).hasValue());
      running.ingest(poll.state, poll.activities, poll.proTelemetry);
    }
    RunningSummary rebuilt{gapLimit(*session)};
    const ObservationSet decoded = store->decodedSamples(*session);
    for (const Observation& sample : decoded.observations()) {
      rebuilt.ingestStored(sample);
    }
    RC_ASSERT(rebuilt.materialize(*session) == running.materialize(*session));
    RC_ASSERT(rebuilt.firstSampleTimestamp() == running.firstSampleTimestamp());
    RC_ASSERT(rebuilt.lastSampleTimestamp() == running.lastSampleTimestamp());
    // Stored times are in whole seconds.
    const auto exact = running.lastProTelemetrySampledAt();
    const auto stored = rebuilt.lastProTelemetrySampledAt();
    RC_ASSERT(stored.has_value() == exact.has_value());
    RC_ASSERT(!exact || *stored == std::chrono::floor<std::chrono::seconds>(*exact));
  }));
}

/// Blobs of a poll, and what may become of them on a disk.
struct Row {
  SampleColumns columns;
  std::string snapshot;
  std::optional<std::string> activities;
  std::optional<std::string> proTelemetry;

  [[nodiscard]] StoredSample sample() const {
    return {.columns = columns,
            .snapshotData = snapshot,
            .processActivityData = activities,
            .proTelemetryData = proTelemetry};
  }
};

std::string damaged(std::string json) {
  return oneIn(5) ? *rc::gen::element<std::string>("", "{", "[]", "null", json + "x") : json;
}

Row rowOf(Poll poll) {
  const RecordEncoder encoder = PowerSessionCoders::encoder();
  if (poll.proTelemetry && oneIn(3)) {
    // Others than the recorder may have stored one that is not good: its rows count all the same.
    poll.proTelemetry->isAvailable = false;
  }
  Row row{.columns = PowerSessionMetrics::liveColumns(poll.state),
          .snapshot = damaged(*encoder.encode(SystemPowerStateDTO{poll.state}))};
  if (!poll.activities.empty()) {
    const std::vector<ProcessActivityDTO> rows(poll.activities.begin(), poll.activities.end());
    row.activities = damaged(*encoder.encode(rows));
  }
  if (poll.proTelemetry) {
    row.proTelemetry = damaged(*encoder.encode(*poll.proTelemetry));
  }
  return row;
}

TEST(LiveSummary, OfDamagedSamplesIsTheirsButForTheNamedDifferences) {
  EXPECT_TRUE(rc::check([] {
    std::vector<Row> rows;
    for (const Poll& poll : anyPolls()) {
      rows.push_back(rowOf(poll));
    }
    std::vector<StoredSample> samples;
    for (const Row& row : rows) {
      samples.push_back(row.sample());
    }
    const std::optional<Date> endedAt = oneIn(2) ? std::optional{secondsIn(5000.0)} : std::nullopt;
    const PowerSession session{
        {.startedAt = sessionStart, .endedAt = endedAt, .sampleInterval = 2.0}};
    const ObservationSet decoded = ObservationSet::decoding(samples);
    RunningSummary running{gapLimit(session)};
    for (const Observation& sample : decoded.observations()) {
      running.ingestStored(sample);
    }
    const auto summary = PowerSessionMetrics::summary(
        {.startedAt = sessionStart, .endedAt = endedAt, .sampleInterval = 2.0}, decoded);
    RC_ASSERT(running.materialize(session) == asLive(summary));
  }));
}

TEST(LiveSummary, ASessionThatEndedBeforeItsLastSampleLastsLessLive) {
  FakeClock clock;
  const auto store = memoryStore(clock);
  const auto session = *store->startSession("Any", PowerSessionSource::app, 2.0, sessionStart);
  RunningSummary running{gapLimit(*session)};
  const SystemPowerState state = testing::laptopState(10.0);
  ASSERT_TRUE(store->appendSample(*session, state, {}, std::nullopt));
  running.ingest(state, {}, std::nullopt);
  ASSERT_TRUE(store->stopSession(*session, secondsIn(6.0)));
  EXPECT_DOUBLE_EQ(running.materialize(*session).durationSeconds, 6.0);
  EXPECT_DOUBLE_EQ(store->summary(*session).durationSeconds, 10.0);
}

TEST(LiveSummary, SamplesThatComeOutOfOrderCountLiveInTheOrderInWhichTheyCome) {
  FakeClock clock;
  const auto store = memoryStore(clock);
  const auto session = *store->startSession("Any", PowerSessionSource::app, 2.0, sessionStart);
  RunningSummary running{gapLimit(*session)};
  for (const double seconds : {0.0, 36.0, 18.0}) {
    const SystemPowerState state = testing::laptopState(seconds);
    ASSERT_TRUE(store->appendSample(*session, state, {}, std::nullopt));
    running.ingest(state, {}, std::nullopt);
  }
  // 8 W for 36 s either way; live the step back is an interval of 0 s and the last sample is the
  // one of 18 s.
  const auto live = running.materialize(*session);
  const auto stored = store->summary(*session);
  EXPECT_DOUBLE_EQ(*live.totalWattHours, 8.0 * 36.0 / 3600.0);
  EXPECT_DOUBLE_EQ(*stored.totalWattHours, 8.0 * 36.0 / 3600.0);
  EXPECT_DOUBLE_EQ(live.durationSeconds, 18.0);
  EXPECT_DOUBLE_EQ(stored.durationSeconds, 36.0);
}

TEST(LiveSummary, AGapIsJudgedLiveAsSamplesArriveAndOnDemandInTheOrderOfTime) {
  FakeClock clock;
  const auto store = memoryStore(clock);
  const auto session = *store->startSession("Any", PowerSessionSource::app, 2.0, sessionStart);
  RunningSummary running{gapLimit(*session)};
  for (const double seconds : {0.0, 200.0, 100.0}) {
    const SystemPowerState state = testing::laptopState(seconds);
    ASSERT_TRUE(store->appendSample(*session, state, {}, std::nullopt));
    running.ingest(state, {}, std::nullopt);
  }
  // 200 s between two samples are a gap, until the one between them is seen.
  EXPECT_EQ(running.materialize(*session).totalWattHoursNote,
            "Large sampling gaps; energy totals unavailable.");
  EXPECT_EQ(store->summary(*session).totalWattHoursNote, std::nullopt);
  EXPECT_DOUBLE_EQ(*store->summary(*session).totalWattHours, 8.0 * 200.0 / 3600.0);
}

}  // namespace
}  // namespace quorvex
