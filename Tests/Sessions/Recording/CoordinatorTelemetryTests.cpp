#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CoordinatorFixture.h"

// Privileged reads: those that go with the samples, and the dashboard's own.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::Heard;
using testing::laptopState;
using testing::privileged;
using testing::secondsIn;
using testing::sessionStart;
using ::testing::SizeIs;

using CoordinatorTelemetryTest = testing::CoordinatorTest;

// Privileged telemetry with the samples

TEST_F(CoordinatorTelemetryTest, APrivilegedReadGoesToALaterSampleAndIntoOneOnly) {
  isEnabled = true;
  makeCoordinator();
  start();
  stepped.settle();
  EXPECT_EQ(telemetryReads, 1);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), sessionStart);
  EXPECT_EQ(coordinator->latestProTelemetry().value(), privileged(0.0));
  stepped.advance(4.0);
  EXPECT_THAT(privilegedSamples(), ElementsAre(false, true, false));
  EXPECT_EQ(telemetryReads, 1);
}

TEST_F(CoordinatorTelemetryTest, ASampleDoesNotWaitForTheHelper) {
  isEnabled = true;
  makeCoordinator();
  start();
  stepped.runMainThread();
  // Two pieces of work wait: the extras of the sample and the privileged read.
  ASSERT_TRUE(stepped.stepWorkers());
  stepped.runMainThread();
  EXPECT_THAT(recordedTimes(), SizeIs(1));
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
}

TEST_F(CoordinatorTelemetryTest, ReadsAreTheirIntervalApart) {
  isEnabled = true;
  telemetry = {privileged(0.0), privileged(10.0), privileged(20.0)};
  makeCoordinator();
  start(5.0);
  stepped.advance(4.0);
  EXPECT_EQ(telemetryReads, 1);
  // Samples at 0 s, 5 s and 10 s, and the extras of the first last 0.35 s.
  stepped.advance(6.35);
  EXPECT_EQ(telemetryReads, 2);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), secondsIn(10.35));
  EXPECT_EQ(coordinator->latestProTelemetry().value(), privileged(10.0));
}

TEST_F(CoordinatorTelemetryTest, WithTheSettingOffNothingIsRead) {
  makeCoordinator();
  start();
  stepped.advance(30.0);
  EXPECT_EQ(telemetryReads, 0);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), std::nullopt);
}

TEST_F(CoordinatorTelemetryTest,
       TurningTheSettingOffClearsTheLatestReadingAndRowsGoOnWithoutPrivilegedData) {
  isEnabled = true;
  telemetry = {privileged(0.0), privileged(3.0)};
  makeCoordinator();
  start();
  stepped.advance(3.0);
  ASSERT_THAT(privilegedSamples(), ElementsAre(false, true));
  isEnabled = false;
  stepped.advance(4.0);
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), std::nullopt);
  EXPECT_THAT(privilegedSamples(), ElementsAre(false, true, false, false));
  // On again: it is read at once.
  isEnabled = true;
  stepped.advance(2.0);
  EXPECT_EQ(telemetryReads, 2);
}

TEST_F(CoordinatorTelemetryTest, TurningTheSettingOffCancelsAReadInFlight) {
  isEnabled = true;
  makeCoordinator();
  start();
  stepped.runMainThread();
  stepped.stepWorkers();  // The extras; the read still waits.
  stepped.runMainThread();
  ASSERT_EQ(telemetryReads, 1);
  isEnabled = false;
  machine.time.advance(1.0);
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.settle();
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
}

TEST_F(CoordinatorTelemetryTest,
       AReadThatOutlastsItsIntervalIsNotJoinedByASecondAndItsTimeMovesOn) {
  isEnabled = true;
  makeCoordinator();
  // No loop here: it would wait for the workers, which the read keeps busy.
  ASSERT_NE(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  record(laptopState(-1.0));  // Takes the extras.
  const auto sampleNow = [&] {
    (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
    stepped.runMainThread();
  };
  machine.time.setNow(secondsIn(1.0));
  sampleNow();
  ASSERT_EQ(telemetryReads, 1);
  machine.time.setNow(secondsIn(8.0));
  sampleNow();
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), secondsIn(1.0));
  machine.time.setNow(secondsIn(11.0));
  sampleNow();
  EXPECT_EQ(telemetryReads, 1);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), secondsIn(11.0));
  stepped.settle();
  EXPECT_NE(coordinator->latestProTelemetry().value(), std::nullopt);
  machine.time.setNow(secondsIn(21.0));
  sampleNow();
  EXPECT_EQ(telemetryReads, 2);
}

TEST_F(CoordinatorTelemetryTest, AnErrorOfTheHelperIsKeptAndALaterSuccessDoesNotClearIt) {
  isEnabled = true;
  ProTelemetrySnapshot failed = privileged(0.0);
  failed.isAvailable = false;
  failed.error = "Helper is not installed";
  telemetry = {failed, privileged(10.0)};
  makeCoordinator();
  start(10.0);
  stepped.settle();
  EXPECT_EQ(coordinator->lastMessage().value(), "Helper is not installed");
  stepped.advance(11.0);
  ASSERT_EQ(coordinator->latestProTelemetry().value(), privileged(10.0));
  EXPECT_EQ(coordinator->lastMessage().value(), "Helper is not installed");
}

TEST_F(CoordinatorTelemetryTest, AReadThatGivesNothingClearsTheLatest) {
  isEnabled = true;
  telemetry = {privileged(0.0), std::nullopt};
  makeCoordinator();
  start(10.0);
  stepped.settle();
  ASSERT_NE(coordinator->latestProTelemetry().value(), std::nullopt);
  stepped.advance(11.0);
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
}

TEST_F(CoordinatorTelemetryTest, ObserversOfTheLatestReadingHearOfChangesOnly) {
  isEnabled = true;
  telemetry = {privileged(0.0), privileged(0.0), privileged(7.0)};
  makeCoordinator();
  Heard latest{coordinator->latestProTelemetry()};
  start(10.0);
  stepped.settle();
  EXPECT_EQ(latest.times(), 1);
  stepped.advance(10.35);
  EXPECT_EQ(telemetryReads, 2);
  EXPECT_EQ(latest.times(), 0);
  stepped.advance(10.35);
  EXPECT_EQ(latest.times(), 1);
  isEnabled = false;
  stepped.advance(20.7);
  EXPECT_EQ(latest.times(), 1);
}

// The dashboard's own read

TEST_F(CoordinatorTelemetryTest, ReadingNowGivesAndKeepsTheReading) {
  isEnabled = true;
  telemetry = {privileged(3.0)};
  makeCoordinator();
  machine.time.setNow(secondsIn(5.0));
  EXPECT_EQ(stepped.run(coordinator->sampleProTelemetryNow()), privileged(3.0));
  EXPECT_EQ(coordinator->latestProTelemetry().value(), privileged(3.0));
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), secondsIn(5.0));
  EXPECT_EQ(coordinator->lastMessage().value(), std::nullopt);
}

TEST_F(CoordinatorTelemetryTest, TheTimeOfAReadingNowIsThatOfItsEnd) {
  isEnabled = true;
  makeCoordinator();
  const auto result = stepped.spawn(coordinator->sampleProTelemetryNow());
  stepped.runMainThread();
  machine.time.setNow(secondsIn(12.0));
  stepped.settle();
  ASSERT_TRUE(result->has_value());
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), secondsIn(12.0));
}

TEST_F(CoordinatorTelemetryTest, ReadingNowKeepsTheErrorText) {
  isEnabled = true;
  ProTelemetrySnapshot failed;
  failed.error = "broken";
  telemetry = {failed};
  makeCoordinator();
  EXPECT_EQ(stepped.run(coordinator->sampleProTelemetryNow()), failed);
  EXPECT_EQ(coordinator->lastMessage().value(), "broken");
}

TEST_F(CoordinatorTelemetryTest, ReadingNowWithTheSettingOffForgetsAllAndGivesNothing) {
  isEnabled = true;
  makeCoordinator();
  (void)stepped.run(coordinator->sampleProTelemetryNow());
  isEnabled = false;
  EXPECT_EQ(stepped.run(coordinator->sampleProTelemetryNow()), std::nullopt);
  EXPECT_EQ(coordinator->latestProTelemetry().value(), std::nullopt);
  EXPECT_EQ(coordinator->lastProTelemetryRefreshAt(), std::nullopt);
  EXPECT_EQ(telemetryReads, 1);
}

TEST_F(CoordinatorTelemetryTest, ReadingNowCancelsARefreshInFlightWhichWritesNothing) {
  isEnabled = true;
  telemetry = {privileged(1.0), privileged(2.0)};
  makeCoordinator();
  ASSERT_NE(recorder->start("A", PowerSessionSource::app, 2.0, sessionStart), nullptr);
  record(laptopState(-1.0));
  (void)stepped.spawn(toTheEnd(coordinator->recordSampleNow()));
  stepped.runMainThread();
  ASSERT_EQ(telemetryReads, 1);
  Heard latest{coordinator->latestProTelemetry()};
  const auto result = stepped.spawn(coordinator->sampleProTelemetryNow());
  stepped.settle();
  EXPECT_EQ(**result, privileged(2.0));
  EXPECT_EQ(coordinator->latestProTelemetry().value(), privileged(2.0));
  EXPECT_EQ(latest.times(), 1);
}

TEST_F(CoordinatorTelemetryTest, AfterAReadingNowSamplesWaitTheirIntervalForTheNext) {
  isEnabled = true;
  makeCoordinator();
  (void)stepped.run(coordinator->sampleProTelemetryNow());
  start();
  stepped.advance(8.0);
  EXPECT_EQ(telemetryReads, 1);
  // It is in the first sample already.
  EXPECT_TRUE(privilegedSamples().at(0));
}

}  // namespace
}  // namespace quorvex
