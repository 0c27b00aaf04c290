#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RecordingFixture.h"

// How one offered state becomes a sample: repeats, extras and privileged telemetry.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::laptopState;
using testing::networkedState;
using testing::privileged;
using testing::secondsIn;
using ::testing::SizeIs;

class RecorderSamplingTest : public testing::RecordingTest {
 protected:
  /// The stored process rows of a sample, by name.
  [[nodiscard]] static std::vector<std::string> activityNames(const PowerSessionSample& sample) {
    const auto data = sample.blobs().processActivityData;
    if (!data) {
      return {};
    }
    std::vector<std::string> names;
    const auto rows =
        PowerSessionCoders::decoder().decode<std::vector<ProcessActivityDTO>>(std::string{*data});
    for (const ProcessActivityDTO& row : *rows) {
      names.push_back(row.name);
    }
    return names;
  }
  [[nodiscard]] static bool hasPrivileged(const PowerSessionSample& sample) {
    return sample.blobs().proTelemetryData.has_value();
  }
};

// Which states are recorded

TEST_F(RecorderSamplingTest, WithoutAnActiveSessionAStateIsDropped) {
  makeRecorder();
  record(networkedState(2.0), privileged(1.0));
  EXPECT_THAT(recorder->sessions(), IsEmpty());
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), std::nullopt);
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), std::nullopt);
  EXPECT_THAT(machine.asked(), IsEmpty());
}

TEST_F(RecorderSamplingTest, TheSameStateOfferedTwiceGivesOneRow) {
  startRecording();
  record(laptopState(2.0));
  record(laptopState(2.0));
  EXPECT_THAT(recordedTimes(), ElementsAre(2.0));
  EXPECT_EQ(live().sampleCount, 1);
}

TEST_F(RecorderSamplingTest, AStateOlderThanTheLastRecordedOneIsDropped) {
  startRecording();
  record(laptopState(4.0));
  record(laptopState(3.999));
  EXPECT_THAT(recordedTimes(), ElementsAre(4.0));
  EXPECT_EQ(recorder->lastRecordedStateTimestamp().value(), secondsIn(4.0));
}

TEST_F(RecorderSamplingTest, ASampleCarriesTheStatesOwnTime) {
  startRecording();
  machine.time.setNow(secondsIn(99.0));
  record(laptopState(2.25));
  ASSERT_THAT(samples(), SizeIs(1));
  EXPECT_EQ(samples()[0]->timestamp(), secondsIn(2.25));
  EXPECT_DOUBLE_EQ(samples()[0]->elapsedSeconds(), 2.25);
  EXPECT_EQ(samples()[0]->totalWatts(), 8.0);
}

// Process activity

TEST_F(RecorderSamplingTest, TheFirstSampleTakesTheExtras) {
  startRecording();
  record(laptopState(2.0));
  EXPECT_THAT(activityNames(*samples()[0]), ElementsAre("worker"));
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), secondsIn(2.0));
  EXPECT_THAT(machine.time.sleeps(), ElementsAre(0.35));
  ASSERT_THAT(live().topContributors, SizeIs(1));
  EXPECT_DOUBLE_EQ(live().topContributors[0].score, workerScore);
}

TEST_F(RecorderSamplingTest, ExtrasAreTakenAgainOnceTheCadenceHasPassed) {
  startRecording();
  record(laptopState(2.0));
  record(laptopState(11.999));
  EXPECT_THAT(activityNames(*samples()[1]), IsEmpty());
  EXPECT_EQ(samples()[1]->blobs().processActivityData, std::nullopt);
  record(laptopState(12.0));
  EXPECT_THAT(activityNames(*samples()[2]), ElementsAre("worker"));
  EXPECT_EQ(recorder->lastProcessSampleAt().value(), secondsIn(12.0));
  EXPECT_DOUBLE_EQ(live().topContributors[0].score, 2 * workerScore);
}

TEST_F(RecorderSamplingTest, AtMostFiveProcessesAreKept) {
  for (std::int32_t pid = 100; pid < 110; ++pid) {
    machine.processes.setProcess(pid, std::to_string(pid), {});
    machine.processes.queueResources(
        pid, {ProcessResources{}, ProcessResources{.userTime = 1'000'000U * std::uint64_t(pid)}});
  }
  startRecording();
  record(laptopState(2.0));
  EXPECT_THAT(activityNames(*samples()[0]), SizeIs(5));
}

TEST_F(RecorderSamplingTest,
       WithAvailablePrivilegedTelemetryNoProcessesAreSampledButNettopStillRunsAtItsCadence) {
  setNettop("Safari.9,100,200,\n");
  startRecording();
  record(networkedState(2.0), privileged(1.0));
  record(networkedState(4.0), privileged(1.0));
  record(networkedState(12.0), privileged(11.0));
  EXPECT_EQ(processWalks(), 0);
  EXPECT_EQ(launchCount(nettop), 2U);
  EXPECT_EQ(samples()[0]->blobs().processActivityData, std::nullopt);
  EXPECT_THAT(storedState(*samples()[0]).network->processes, SizeIs(1));
  EXPECT_THAT(storedState(*samples()[1]).network->processes, IsEmpty());
  EXPECT_THAT(storedState(*samples()[2]).network->processes, SizeIs(1));
}

TEST_F(RecorderSamplingTest, UnavailablePrivilegedTelemetryDoesNotReplaceTheProcessSample) {
  startRecording();
  ProTelemetrySnapshot failed = privileged(1.0);
  failed.isAvailable = false;
  record(laptopState(2.0), failed);
  EXPECT_THAT(activityNames(*samples()[0]), ElementsAre("worker"));
  EXPECT_FALSE(hasPrivileged(*samples()[0]));
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), std::nullopt);
}

TEST_F(RecorderSamplingTest, AStalePrivilegedReadingStillStandsInPlaceOfTheProcessSample) {
  startRecording();
  record(laptopState(2.0), privileged(1.0));
  record(laptopState(12.0), privileged(1.0));
  EXPECT_EQ(processWalks(), 0);
  EXPECT_FALSE(hasPrivileged(*samples()[1]));
  EXPECT_EQ(samples()[1]->blobs().processActivityData, std::nullopt);
}

// Network attribution

TEST_F(RecorderSamplingTest, AttributionPutsRowsIntoTheStoredNetworkAndKeepsTheRest) {
  setNettop(",bytes_in,bytes_out,\nSafari.9,100,200,\nlaunchd.1,0,0,\n");
  startRecording();
  SystemPowerState state = networkedState(2.0, 500.0);
  state.network->attributionUnavailableReason = "off";
  record(state);
  const auto network = *storedState(*samples()[0]).network;
  ASSERT_THAT(network.processes, SizeIs(1));
  EXPECT_EQ(network.processes[0].name, "Safari");
  EXPECT_EQ(network.processes[0].pid, 9);
  EXPECT_EQ(network.processes[0].attributionSource, "nettop");
  // There is no reading before it to take rates from.
  EXPECT_EQ(network.processes[0].bytesInPerSec, 0.0);
  EXPECT_EQ(network.attributionSource, "nettop");
  EXPECT_EQ(network.attributionUnavailableReason, std::nullopt);
  ASSERT_THAT(network.interfaces, SizeIs(1));
  EXPECT_EQ(network.interfaces[0].name, "en0");
  EXPECT_EQ(network.totalBytesInPerSec, 500.0);
}

TEST_F(RecorderSamplingTest, AttributionRunsTheToolWithItsTimeOut) {
  setNettop("Safari.9,100,200,\n");
  startRecording();
  record(networkedState(2.0));
  EXPECT_THAT(machine.children.log(), ::testing::Contains("waitForExit 8"));
}

TEST_F(RecorderSamplingTest, RatesAreOverTheTimeSinceTheLastAttributionFromItsRawCounters) {
  setNettop("Safari.9,1000,200,\n");
  setNettop("Safari.9,6000,200,\n");
  setNettop("Safari.9,7000,1200,\n");
  startRecording();
  record(networkedState(2.0));
  record(networkedState(12.0));
  auto row = storedState(*samples()[1]).network->processes.at(0);
  // 5000 bytes in 10 s.
  EXPECT_DOUBLE_EQ(row.bytesInPerSec, (6000.0 - 1000.0) / 10.0);
  EXPECT_DOUBLE_EQ(row.bytesOutPerSec, 0.0);
  const auto& remembered = recorder->lastNetworkProcessCounters().value();
  ASSERT_THAT(*remembered, SizeIs(1));
  EXPECT_EQ(remembered->at(0).bytesIn, 6000U);
  EXPECT_EQ(remembered->at(0).bytesInPerSec, 0.0);
  EXPECT_EQ(recorder->lastNetworkProcessSampleAt().value(), secondsIn(12.0));
  record(networkedState(32.0));
  row = storedState(*samples()[2]).network->processes.at(0);
  EXPECT_DOUBLE_EQ(row.bytesInPerSec, (7000.0 - 6000.0) / 20.0);
  EXPECT_DOUBLE_EQ(row.bytesOutPerSec, (1200.0 - 200.0) / 20.0);
}

TEST_F(RecorderSamplingTest, AToolThatGivesNothingLeavesTheStateAsItIsAndTheMemoryToo) {
  setNettop("Safari.9,1000,200,\n");
  setNettop("", 1);
  setNettop("Safari.9,5000,200,\n");
  startRecording();
  record(networkedState(2.0));
  SystemPowerState state = networkedState(12.0);
  state.network->attributionUnavailableReason = "off";
  record(state);
  const auto network = *storedState(*samples()[1]).network;
  EXPECT_THAT(network.processes, IsEmpty());
  EXPECT_EQ(network.attributionSource, "none");
  EXPECT_EQ(network.attributionUnavailableReason, "off");
  EXPECT_EQ(recorder->lastNetworkProcessSampleAt().value(), secondsIn(2.0));
  record(networkedState(22.0));
  // Since the last rows that there were, 20 s before.
  EXPECT_DOUBLE_EQ(storedState(*samples()[2]).network->processes.at(0).bytesInPerSec,
                   (5000.0 - 1000.0) / 20.0);
}

TEST_F(RecorderSamplingTest, WithoutANetworkTheToolIsNotRun) {
  setNettop("Safari.9,100,200,\n");
  startRecording();
  record(laptopState(2.0));
  EXPECT_EQ(launchCount(nettop), 0U);
  EXPECT_FALSE(storedState(*samples()[0]).network);
}

TEST_F(RecorderSamplingTest, BetweenAttributionsASampleCarriesWhatThePollHad) {
  setNettop("Safari.9,100,200,\n");
  startRecording();
  record(networkedState(2.0));
  SystemPowerState state = networkedState(4.0);
  state.network->processes = {{.id = 5, .name = "polled", .bytesIn = 3}};
  record(state);
  EXPECT_EQ(launchCount(nettop), 1U);
  EXPECT_EQ(storedState(*samples()[1]).network->processes.at(0).name, "polled");
}

TEST_F(RecorderSamplingTest, TheLiveSummaryCountsTheAttributedRows) {
  setNettop("Safari.9,1000,200,\n");
  setNettop("Safari.9,6000,200,\n");
  startRecording();
  record(networkedState(2.0));
  record(networkedState(12.0));
  ASSERT_THAT(live().topNetworkApps, SizeIs(1));
  EXPECT_EQ(live().topNetworkApps[0].name, "Safari");
  EXPECT_EQ(live().topNetworkApps[0].source, "nettop");
  EXPECT_EQ(live().topNetworkApps[0].totalBytesIn, 6000U - 1000U);
  EXPECT_EQ(live().topNetworkApps[0].peakBytesInPerSec, 500.0);
}

// Privileged telemetry

TEST_F(RecorderSamplingTest,
       AnAvailableSnapshotOfTheLastAcceptedTimeIsStoredInNoFurtherSampleAndScoredOnce) {
  startRecording();
  record(laptopState(2.0), privileged(1.0, 3.0));
  record(laptopState(4.0), privileged(1.0, 3.0));
  record(laptopState(6.0), privileged(0.5, 3.0));
  EXPECT_TRUE(hasPrivileged(*samples()[0]));
  EXPECT_FALSE(hasPrivileged(*samples()[1]));
  EXPECT_FALSE(hasPrivileged(*samples()[2]));
  ASSERT_THAT(live().topContributors, SizeIs(1));
  EXPECT_EQ(live().topContributors[0].score, 3.0);
  record(laptopState(8.0), privileged(7.0, 3.0));
  EXPECT_TRUE(hasPrivileged(*samples()[3]));
  EXPECT_EQ(live().topContributors[0].score, 2 * 3.0);
  EXPECT_EQ(recorder->lastProTelemetrySampledAt().value(), secondsIn(7.0));
}

TEST_F(RecorderSamplingTest, AReadingThatWasStoredBeforeARestartIsNotStoredAgain) {
  startRecording();
  record(laptopState(2.0), privileged(1.0));
  recorder.reset();
  makeRecorder();
  record(laptopState(4.0), privileged(1.0));
  EXPECT_FALSE(hasPrivileged(*samples()[1]));
  EXPECT_EQ(live().topContributors[0].score, 2.0);
}

}  // namespace
}  // namespace quorvex
