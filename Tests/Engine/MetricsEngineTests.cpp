#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>

#include "MetricsEngineFixture.h"

namespace quorvex {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::FakeMachine;
using ::testing::IsEmpty;
using testing::MetricsEngineTest;
using testing::siliconReadTime;
using ::testing::SizeIs;
using testing::SteppedContext;

TEST_F(MetricsEngineTest, BeginsStoppedWithAnEmptyStateOfTheMomentOfItsConstruction) {
  machine.time.advance(5.0);
  makeEngine(3.5, 7);
  SystemPowerState empty;
  empty.timestamp = machine.time.now();
  EXPECT_EQ(current(), empty);
  EXPECT_EQ(current().thermal, (ThermalInfo{ThermalState::nominal, 0, false}));
  EXPECT_THAT(history(), IsEmpty());
  EXPECT_FALSE(engine->isRunning().value());
  EXPECT_EQ(engine->lastPollDuration().value(), std::nullopt);
  EXPECT_EQ(engine->interval().value(), 3.5);
  EXPECT_FALSE(engine->lowImpactMode().value());
  EXPECT_EQ(engine->historyLimit(), 7);
  EXPECT_EQ(engine->networkCounterAccumulator().value(), NetworkCounterAccumulator{});
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 0U);
  EXPECT_EQ(engine->totalBytesOutSinceStart().value(), 0U);
}

TEST_F(MetricsEngineTest, ConstructionReadsNothing) {
  makeEngine();
  stepped.advance(100.0);
  EXPECT_THAT(machine.battery.log(), IsEmpty());
  EXPECT_THAT(history(), IsEmpty());
}

TEST_F(MetricsEngineTest, StartPollsAtOnceAndThenAfterEachInterval) {
  makeEngine(2.0);
  engine->start();
  EXPECT_TRUE(engine->isRunning().value());
  stepped.settle();
  EXPECT_EQ(pollCount(), 1U);
  stepped.advance(1.75);
  EXPECT_EQ(pollCount(), 1U);
  stepped.advance(0.25);
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(2.0, 2.0));
}

TEST_F(MetricsEngineTest, TheFirstPollBelongsToTheTurnAfterStart) {
  makeEngine();
  engine->start();
  EXPECT_THAT(machine.battery.log(), IsEmpty());
  EXPECT_FALSE(stepped.stepWorkers());
  // What the same turn still sets counts for the first poll.
  engine->setLowImpactMode(true);
  stepped.settle();
  EXPECT_EQ(current().power, std::nullopt);
}

TEST_F(MetricsEngineTest, TheIntervalLiesBetweenTheEndOfAPollAndTheStartOfTheNext) {
  makeEngine(2.0);
  engine->start();
  stepped.advance(3 * (2.0 + siliconReadTime));
  ASSERT_GE(pollCount(), 3U);
  // A timestamp is taken at the end of its read, so two of them are an interval and a read apart.
  EXPECT_DOUBLE_EQ(secondsBetween(history()[0].timestamp, history()[1].timestamp),
                   2.0 + siliconReadTime);
  EXPECT_DOUBLE_EQ(secondsBetween(history()[1].timestamp, history()[2].timestamp),
                   2.0 + siliconReadTime);
}

TEST_F(MetricsEngineTest, StartTwiceStartsOneLoop) {
  makeEngine(2.0);
  engine->start();
  engine->start();
  stepped.settle();
  engine->start();
  stepped.settle();
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
  stepped.advance(2.0);
  EXPECT_EQ(pollCount(), 2U);
}

TEST_F(MetricsEngineTest, StopEndsTheLoopAndItsSleep) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  engine->stop();
  EXPECT_FALSE(engine->isRunning().value());
  EXPECT_EQ(stepped.sleeper().pendingCount(), 0U);
  stepped.advance(100.0);
  EXPECT_EQ(pollCount(), 1U);
}

TEST_F(MetricsEngineTest, StopOfAStoppedEngineLeavesItStopped) {
  makeEngine();
  engine->stop();
  EXPECT_FALSE(engine->isRunning().value());
  engine->start();
  stepped.settle();
  EXPECT_EQ(pollCount(), 1U);
}

TEST_F(MetricsEngineTest, StopDuringAReadStillPublishesItOnceAndThenNothing) {
  makeEngine(2.0);
  engine->start();
  stepped.runMainThread();  // The read waits for a worker.
  engine->stop();
  EXPECT_EQ(pollCount(), 0U);
  stepped.settle();
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_EQ(cpuWatts(), 4.0);
  stepped.advance(100.0);
  EXPECT_EQ(pollCount(), 1U);
}

TEST_F(MetricsEngineTest, ALoopThatIsStoppedBeforeItsFirstTurnStillPollsOnce) {
  makeEngine(2.0);
  engine->start();
  engine->stop();
  stepped.advance(100.0);
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_THAT(stepped.sleeper().sleeps(), IsEmpty());
}

TEST_F(MetricsEngineTest, AStoppedEngineCanBeStartedAgainWithAPollAtOnce) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  engine->stop();
  stepped.advance(10.0);
  engine->start();
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  stepped.advance(2.0);
  EXPECT_EQ(pollCount(), 3U);
}

TEST_F(MetricsEngineTest, HistoryAndTotalsSurviveStopAndStart) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  engine->stop();
  setCounters(1600, 540);
  engine->start();
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 1600U - 1000U);
  EXPECT_EQ(engine->totalBytesOutSinceStart().value(), 540U - 500U);
  engine->stop();
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 600U);
}

TEST_F(MetricsEngineTest, SettingTheIntervalToItsOwnValueWhileRunningPollsAtOnce) {
  makeEngine(2.0);
  engine->start();
  stepped.advance(1.0);
  ASSERT_EQ(pollCount(), 1U);
  engine->setInterval(2.0);
  EXPECT_TRUE(engine->isRunning().value());
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
  stepped.advance(1.75);
  EXPECT_EQ(pollCount(), 2U);
  stepped.advance(0.25);
  EXPECT_EQ(pollCount(), 3U);
}

TEST_F(MetricsEngineTest, SettingTheIntervalWhileStoppedStartsNothing) {
  makeEngine(2.0);
  engine->setInterval(5.0);
  stepped.advance(100.0);
  EXPECT_EQ(engine->interval().value(), 5.0);
  EXPECT_FALSE(engine->isRunning().value());
  EXPECT_THAT(history(), IsEmpty());
}

TEST_F(MetricsEngineTest, ANewIntervalIsSlept) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  engine->setInterval(7.0);
  stepped.settle();
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(2.0, 7.0));
}

TEST_F(MetricsEngineTest, AnIntervalSetDuringAReadRestartsTheLoopAndBothReadsArePublished) {
  makeEngine(2.0);
  engine->start();
  stepped.runMainThread();
  engine->setInterval(3.0);
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_THAT(stepped.sleeper().sleeps(), ElementsAre(3.0));
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
}

TEST_F(MetricsEngineTest, EveryAssignmentOfTheIntervalNotifies) {
  makeEngine(2.0);
  std::vector<double> heard;
  const Subscription subscription =
      engine->interval().subscribe([&](double value) { heard.push_back(value); });
  engine->setInterval(2.0);
  engine->setInterval(3.0);
  EXPECT_THAT(heard, ElementsAre(2.0, 3.0));
}

TEST_F(MetricsEngineTest, WithALimitOf60The61stPollLeaves60ReadingsAndTheOldestIsGone) {
  makeEngine(1.0, 60);
  std::vector<SystemPowerState> published;
  for (int poll = 1; poll <= 60; ++poll) {
    published.push_back(stepped.run(engine->sampleAndPublish()));
  }
  EXPECT_EQ(history(), published);
  published.push_back(stepped.run(engine->sampleAndPublish()));
  published.erase(published.begin());
  ASSERT_THAT(history(), SizeIs(60));
  EXPECT_EQ(history(), published);
}

TEST_F(MetricsEngineTest, ObserversNeverSeeMoreReadingsThanTheLimit) {
  makeEngine(1.0, 2);
  std::vector<std::size_t> sizes;
  const Subscription subscription = engine->history().subscribe(
      [&](const std::vector<SystemPowerState>& readings) { sizes.push_back(readings.size()); });
  for (int i = 0; i < 4; ++i) {
    (void)stepped.run(engine->sampleAndPublish());
  }
  EXPECT_THAT(sizes, ElementsAre(1U, 2U, 2U, 2U));
}

TEST_F(MetricsEngineTest, ALimitOfZeroOrLessKeepsNoReading) {
  for (const std::int64_t limit : {std::int64_t{0}, std::int64_t{-3}}) {
    makeEngine(1.0, limit);
    (void)stepped.run(engine->sampleAndPublish());
    EXPECT_THAT(history(), IsEmpty());
    EXPECT_EQ(cpuWatts(), 4.0);
  }
}

TEST_F(MetricsEngineTest, TheFirstPollHasNoRatesAndTheSecondHasRealOnes) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  const NetworkInterfaceStats first{
      .id = 4, .name = "en0", .bytesIn = 1000, .bytesOut = 500, .bytesInPerSec = 0};
  ASSERT_TRUE(current().network.has_value());
  EXPECT_THAT(current().network->interfaces, ElementsAre(first));

  machine.time.advance(1.9);
  setCounters(5000, 1500);
  (void)stepped.run(engine->sampleAndPublish());
  // The read itself takes a tenth of a second, so the two snapshots are 2 s apart.
  const NetworkInterfaceStats second{.id = 4,
                                     .name = "en0",
                                     .bytesIn = 5000,
                                     .bytesOut = 1500,
                                     .bytesInPerSec = (5000.0 - 1000.0) / 2.0,
                                     .bytesOutPerSec = (1500.0 - 500.0) / 2.0};
  EXPECT_THAT(current().network->interfaces, ElementsAre(second));
}

TEST_F(MetricsEngineTest, APreviousSnapshotWithoutInterfacesLeavesTheNextRatesAtZero) {
  machine.interfaces.buffer = std::nullopt;
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  ASSERT_TRUE(current().network.has_value());
  EXPECT_THAT(current().network->interfaces, IsEmpty());

  machine.time.advance(2.0);
  setCounters(5000, 1500);
  (void)stepped.run(engine->sampleAndPublish());
  ASSERT_THAT(current().network->interfaces, SizeIs(1));
  EXPECT_EQ(current().network->interfaces[0].bytesInPerSec, 0.0);
  EXPECT_EQ(current().network->interfaces[0].bytesOutPerSec, 0.0);
}

TEST_F(MetricsEngineTest, AWallClockThatStepsBackLeavesTheRatesAtZero) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  machine.time.setNow(current().timestamp - 3600s);
  setCounters(5000, 1500);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(current().network->interfaces[0].bytesInPerSec, 0.0);
}

TEST_F(MetricsEngineTest, SnapshotsNeverCarryAttribution) {
  machine.children.answerAll({.output = "Safari.4242,100,200\n"});
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(current().network->attributionSource, NetworkAttributionSource::none);
  EXPECT_THAT(current().network->processes, IsEmpty());
  EXPECT_EQ(current().network->attributionUnavailableReason, std::nullopt);
  EXPECT_EQ(current().network->timestamp, current().timestamp);
  EXPECT_THAT(machine.children.launches(), IsEmpty());
}

TEST_F(MetricsEngineTest, TotalsCountFromTheFirstReading) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 0U);
  setCounters(1100, 550);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 100U);
  EXPECT_EQ(engine->totalBytesOutSinceStart().value(), 50U);
  EXPECT_EQ(engine->networkCounterAccumulator().value().totalBytesIn, 100U);
}

TEST_F(MetricsEngineTest, TotalsNeverFallWhenCountersWrapOrReset) {
  constexpr std::uint64_t wrapAt = std::uint64_t{1} << 32U;
  setCounters(wrapAt - 6, 5'000'000'000);
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  // The received counter wraps at 32 bits, the sent one is reset.
  setCounters(10, 7);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 6U + 10U);
  EXPECT_EQ(engine->totalBytesOutSinceStart().value(), 0U);
  setCounters(20, 9);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 16U + 10U);
  EXPECT_EQ(engine->totalBytesOutSinceStart().value(), 2U);
}

TEST_F(MetricsEngineTest, ObserversOfTheTotalsHearOfChangesOnly) {
  makeEngine();
  std::vector<std::uint64_t> in;
  std::vector<std::uint64_t> out;
  const Subscription inbound =
      engine->totalBytesInSinceStart().subscribe([&](std::uint64_t total) { in.push_back(total); });
  const Subscription outbound = engine->totalBytesOutSinceStart().subscribe(
      [&](std::uint64_t total) { out.push_back(total); });
  (void)stepped.run(engine->sampleAndPublish());
  setCounters(1100, 500);
  (void)stepped.run(engine->sampleAndPublish());
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_THAT(in, ElementsAre(100U));
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(MetricsEngineTest, ObserversSeeStateTotalsAndHistoryInThisOrderWithinOneTurn) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  std::vector<std::string> order;
  const Subscription state = engine->currentState().subscribe([&](const SystemPowerState&) {
    EXPECT_THAT(history(), SizeIs(1));
    order.emplace_back("currentState");
  });
  const Subscription total = engine->totalBytesInSinceStart().subscribe(
      [&](std::uint64_t) { order.emplace_back("totalBytesInSinceStart"); });
  const Subscription readings =
      engine->history().subscribe([&](const std::vector<SystemPowerState>& newest) {
        EXPECT_EQ(newest.back(), current());
        order.emplace_back("history");
      });
  setCounters(1100, 500);
  const auto result = stepped.spawn(engine->sampleAndPublish());
  stepped.runMainThread();
  ASSERT_TRUE(stepped.stepWorkers());
  EXPECT_THAT(order, IsEmpty());
  EXPECT_TRUE(stepped.stepMainThread());
  EXPECT_THAT(order, ElementsAre("currentState", "totalBytesInSinceStart", "history"));
}

TEST_F(MetricsEngineTest, TheDurationIsTheTimeThatTheReadTook) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->lastPollDuration().value(), siliconReadTime);
  engine->setLowImpactMode(true);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(engine->lastPollDuration().value(), 0.0);
}

TEST_F(MetricsEngineTest, TheUtilizationIsAbsentBeforeTheFirstRead) {
  makeEngine();
  EXPECT_EQ(engine->pollUtilizationFraction(), std::nullopt);
}

TEST_F(MetricsEngineTest, TheUtilizationIsTheShareOfTheIntervalThatReadingTakes) {
  makeEngine(2.0);
  (void)stepped.run(engine->snapshot());
  ASSERT_TRUE(engine->pollUtilizationFraction().has_value());
  EXPECT_DOUBLE_EQ(*engine->pollUtilizationFraction(), siliconReadTime / 2.0);
}

TEST_F(MetricsEngineTest, TheUtilizationOfAnIntervalOfZeroDividesByAThousandth) {
  makeEngine(0.0);
  (void)stepped.run(engine->snapshot());
  ASSERT_TRUE(engine->pollUtilizationFraction().has_value());
  EXPECT_DOUBLE_EQ(*engine->pollUtilizationFraction(), siliconReadTime / 0.001);
}

TEST_F(MetricsEngineTest, LowImpactModeBeforeTheFirstPollLeavesSiliconAbsentForAsLongAsItIsOn) {
  makeEngine(2.0);
  engine->setLowImpactMode(true);
  engine->start();
  for (int i = 0; i < 3; ++i) {
    stepped.advance(2.0);
    EXPECT_EQ(current().power, std::nullopt);
  }
  engine->setLowImpactMode(false);
  stepped.advance(2.0);
  EXPECT_EQ(cpuWatts(), 4.0);
}

TEST_F(MetricsEngineTest, LowImpactModeFreezesTheLastSiliconReading) {
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  ASSERT_EQ(cpuWatts(), 4.0);
  setCPUWatts(9.0);
  engine->setLowImpactMode(true);
  stepped.advance(2.0);
  stepped.advance(2.0);
  EXPECT_EQ(cpuWatts(), 4.0);
  EXPECT_THAT(machine.time.sleeps(), SizeIs(1));
  engine->setLowImpactMode(false);
  stepped.advance(2.0);
  EXPECT_EQ(cpuWatts(), 9.0);
}

TEST_F(MetricsEngineTest, LowImpactModeTakesEffectAtTheNextReadAndDoesNotRestartTheLoop) {
  makeEngine(2.0);
  engine->start();
  stepped.runMainThread();
  // This read has begun with the mode off.
  engine->setLowImpactMode(true);
  stepped.settle();
  EXPECT_EQ(cpuWatts(), 4.0);
  EXPECT_EQ(pollCount(), 1U);
  EXPECT_EQ(stepped.sleeper().pendingCount(), 1U);
}

TEST_F(MetricsEngineTest,
       LowImpactModeWithoutSMCTemperaturesHasNoSensorsThoughTheHelperWouldAnswer) {
  setHelperSensor("Tp01", 55.0);
  machine.hid.setServices({{{"tdie", 44.0}}});
  makeEngine();
  engine->setLowImpactMode(true);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_THAT(current().sensors, IsEmpty());
  EXPECT_THAT(machine.children.launches(), IsEmpty());
  EXPECT_EQ(machine.hid.opens(), 0);
  engine->setLowImpactMode(false);
  (void)stepped.run(engine->sampleAndPublish());
  EXPECT_THAT(current().sensors, ElementsAre(TemperatureSensor{"Tp01", "N", 55.0}));
}

TEST_F(MetricsEngineTest, LowImpactModeKeepsBatteryThermalFansSMCTemperaturesAndInterfaces) {
  machine.battery.registryAnswer = Dictionary{{"Voltage", 12'000}, {"Amperage", -1500}};
  machine.thermal.state = 2;
  machine.smcFake.set("FNum", "ui8 ", {1});
  machine.smcFake.setFloat("F0Ac", 2300.0F);
  machine.smcFake.setFloat("TC0P", 45.0F);
  makeEngine();
  engine->setLowImpactMode(true);
  (void)stepped.run(engine->sampleAndPublish());
  ASSERT_TRUE(current().battery.has_value());
  EXPECT_DOUBLE_EQ(current().battery->wattage, 12.0 * -1.5);
  EXPECT_EQ(current().thermal.state, ThermalState::serious);
  EXPECT_THAT(current().fans, ElementsAre(FanInfo{0, "Fan 0", 2300, 0, 0}));
  EXPECT_THAT(current().sensors, ElementsAre(TemperatureSensor{"TC0P", "CPU Proximity", 45.0}));
  EXPECT_THAT(current().network->interfaces, SizeIs(1));
}

TEST_F(MetricsEngineTest, AFailedSourceIsAbsentInItsStateAndStaysInTheHistoryOfTheOneBefore) {
  machine.battery.registryAnswer = Dictionary{{"Voltage", 12'000}, {"Amperage", -1500}};
  makeEngine(2.0);
  engine->start();
  stepped.settle();
  machine.battery.registryAnswer = std::nullopt;
  machine.energy.setFails(testing::FakeEnergyLibrary::Step::delta);
  machine.interfaces.buffer = std::nullopt;
  stepped.advance(2.0);
  ASSERT_EQ(pollCount(), 2U);
  EXPECT_EQ(current().battery, std::nullopt);
  EXPECT_EQ(current().power, std::nullopt);
  EXPECT_THAT(current().network->interfaces, IsEmpty());
  EXPECT_TRUE(history()[0].battery.has_value());
  EXPECT_TRUE(history()[0].power.has_value());
  stepped.advance(2.0);
  EXPECT_EQ(pollCount(), 3U);
}

TEST_F(MetricsEngineTest, ASnapshotPublishesNothingButItsDuration) {
  makeEngine();
  (void)stepped.run(engine->sampleAndPublish());
  const SystemPowerState published = current();
  const NetworkCounterAccumulator accumulated = engine->networkCounterAccumulator().value();
  machine.time.advance(1.9);
  setCounters(5000, 1500);
  setCPUWatts(9.0);
  machine.time.duringSleep([this] { machine.time.advance(0.4); });

  const SystemPowerState snapshot = stepped.run(engine->snapshot());
  EXPECT_EQ(snapshot.power->cpuPower, 9.0);
  // 1.9 s, then a read of 0.4 + 0.1 s.
  EXPECT_DOUBLE_EQ(snapshot.network->interfaces[0].bytesInPerSec,
                   (5000.0 - 1000.0) / (1.9 + 0.4 + 0.1));
  EXPECT_EQ(current(), published);
  EXPECT_THAT(history(), SizeIs(1));
  EXPECT_EQ(engine->networkCounterAccumulator().value(), accumulated);
  EXPECT_EQ(engine->totalBytesInSinceStart().value(), 0U);
  EXPECT_EQ(engine->lastPollDuration().value(), 0.4 + 0.1);
}

TEST_F(MetricsEngineTest, SampleAndPublishWorksInAStoppedEngineAndGivesTheCurrentState) {
  makeEngine();
  const SystemPowerState state = stepped.run(engine->sampleAndPublish());
  EXPECT_EQ(state, current());
  EXPECT_EQ(state.timestamp, machine.time.now());
  EXPECT_FALSE(engine->isRunning().value());
  EXPECT_EQ(pollCount(), 1U);
}

TEST_F(MetricsEngineTest, AnOverlapWithTheLoopIsAReadOfItsOwn) {
  makeEngine(2.0);
  engine->start();
  stepped.runMainThread();
  const auto sample = stepped.spawn(engine->sampleAndPublish());
  const auto snapshot = stepped.spawn(engine->snapshot());
  stepped.runMainThread();
  EXPECT_TRUE(stepped.stepWorkers());
  EXPECT_TRUE(stepped.stepWorkers());
  EXPECT_TRUE(stepped.stepWorkers());
  stepped.settle();
  EXPECT_EQ(pollCount(), 2U);
  EXPECT_TRUE(sample->has_value());
  EXPECT_TRUE(snapshot->has_value());
}

TEST_F(MetricsEngineTest, RatesAreAgainstTheStateThatIsCurrentWhenTheReadEnds) {
  makeEngine();
  const auto first = stepped.spawn(engine->sampleAndPublish());
  const auto second = stepped.spawn(engine->sampleAndPublish());
  stepped.runMainThread();
  ASSERT_TRUE(stepped.stepWorkers());
  setCounters(1100, 500);
  ASSERT_TRUE(stepped.stepWorkers());
  stepped.settle();
  // Both reads began before any state was published; the second ended a tenth of a second later.
  ASSERT_EQ(pollCount(), 2U);
  EXPECT_DOUBLE_EQ(current().network->interfaces[0].bytesInPerSec, 100.0 / siliconReadTime);
}

}  // namespace
}  // namespace quorvex
