#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>

#include "FakeMachine.h"
#include "FakeOutput.h"
#include "MonitorCommand.h"

namespace quorvex {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* home = "\x1b[H";

class MonitorCommandTest : public ::testing::Test {
 protected:
  MonitorCommandTest() {
    machine.energy.setFails(testing::FakeEnergyLibrary::Step::open);
    sigaction(SIGINT, nullptr, &previous_);
  }

  void TearDown() override { sigaction(SIGINT, &previous_, nullptr); }

  /// Runs until the reader goes away at the n-th text.
  void run(std::size_t texts, CommandLineOptions options = {}) {
    output.closeAtText(texts);
    MonitorCommand{machine, output, options}.run();
  }

  void setCounters(std::uint64_t bytesIn, std::uint64_t bytesOut) {
    machine.interfaces.names[4] = "en0";
    machine.interfaces.set({{.index = 4, .bytesIn = bytesIn, .bytesOut = bytesOut}});
  }

  testing::FakeMachine machine;
  testing::FakeOutput output;

 private:
  struct sigaction previous_ {};
};

TEST_F(MonitorCommandTest, StartsByShowingTheCursorClearingTheScreenAndHidingTheCursor) {
  run(1);
  EXPECT_THAT(output.texts(), ElementsAre("\x1b[?25h\x1b[2J\x1b[H\x1b[?25l"));
}

TEST_F(MonitorCommandTest, OnlyLaterFramesGoHomeFirst) {
  run(4);
  ASSERT_EQ(output.texts().size(), 4U);
  EXPECT_THAT(output.texts()[1], StartsWith("\x1b[32m  Quorvex Monitor  "));
  EXPECT_THAT(output.texts()[2], StartsWith(std::string{home} + "\x1b[32m  Quorvex Monitor  "));
  EXPECT_THAT(output.texts()[3], StartsWith(std::string{home} + "\x1b[32m  Quorvex Monitor  "));
}

TEST_F(MonitorCommandTest, EveryFrameEndsWithANewline) {
  run(3);
  EXPECT_THAT(output.texts()[1], EndsWith("\x1b[2K\n"));
  EXPECT_THAT(output.texts()[2], EndsWith("\x1b[2K\n"));
}

TEST_F(MonitorCommandTest, JSONHasNoCursorAndNoHomeSequences) {
  run(3, {.json = true});
  ASSERT_EQ(output.texts().size(), 3U);
  for (const std::string& text : output.texts()) {
    EXPECT_THAT(text, AllOf(StartsWith("{\n"), EndsWith("}\n"), Not(HasSubstr("\x1b"))));
  }
}

TEST_F(MonitorCommandTest, NoColorLeavesColoursOutAndKeepsTheOtherSequences) {
  run(3, {.noColor = true});
  EXPECT_THAT(output.texts()[0], HasSubstr("\x1b[?25l"));
  EXPECT_THAT(output.texts()[1], StartsWith("  Quorvex Monitor  "));
  EXPECT_THAT(output.texts()[2], StartsWith(std::string{home} + "  Quorvex Monitor  "));
  EXPECT_THAT(output.texts()[2], HasSubstr("\x1b[2K"));
  EXPECT_THAT(output.printed(), Not(HasSubstr("\x1b[32m")));
  EXPECT_THAT(output.printed(), Not(HasSubstr("\x1b[0m")));
}

TEST_F(MonitorCommandTest, EveryTickSleepsForTheIntervalAsGiven) {
  run(4, {.json = true, .interval = 7.5});
  EXPECT_THAT(machine.time.sleeps(), ElementsAre(7.5, 7.5, 7.5));
}

TEST_F(MonitorCommandTest, ZeroAndNegativeIntervalsTickAsFastAsTheReadsAllow) {
  const Date start = machine.time.now();
  run(4, {.json = true, .interval = 0.0});
  EXPECT_EQ(machine.time.now(), start);
}

TEST_F(MonitorCommandTest, ANegativeIntervalBehavesAsZero) {
  const Date start = machine.time.now();
  run(4, {.json = true, .interval = -3.0});
  EXPECT_EQ(output.texts().size(), 4U);
  EXPECT_EQ(machine.time.now(), start);
}

TEST_F(MonitorCommandTest, AnInfiniteIntervalIsHandedToTheClock) {
  run(2, {.json = true, .interval = std::numeric_limits<double>::infinity()});
  ASSERT_THAT(machine.time.sleeps(), Not(IsEmpty()));
  EXPECT_TRUE(std::isinf(machine.time.sleeps().front()));
}

TEST_F(MonitorCommandTest, ThePeriodIsTheReadAndTheInterval) {
  machine.energy.setFails(testing::FakeEnergyLibrary::Step::open, false);
  machine.energy.setChannels({{.name = "CPU Energy", .value = 320'000'000}});
  const Date start = machine.time.now();
  run(3, {.json = true, .interval = 2.0});
  // Three reads of 0.1 s and the two intervals between them.
  EXPECT_NEAR(secondsBetween(start, machine.time.now()), 3 * 0.1 + 2 * 2.0, 1e-9);
}

TEST_F(MonitorCommandTest, TheFirstTickHasNoRates) {
  setCounters(1000, 500);
  MonitorCommand monitor{machine, output, {}};
  const SystemPowerState state = monitor.readState();
  ASSERT_TRUE(state.network);
  EXPECT_EQ(state.network->totalBytesInPerSec(), 0.0);
  EXPECT_EQ(state.network->totalBytesOutPerSec(), 0.0);
}

TEST_F(MonitorCommandTest, FromTheSecondTickRatesAreReal) {
  setCounters(1000, 500);
  MonitorCommand monitor{machine, output, {}};
  static_cast<void>(monitor.readState());
  machine.time.advance(2.0);
  setCounters(5000, 1500);
  const SystemPowerState state = monitor.readState();
  ASSERT_TRUE(state.network);
  EXPECT_EQ(state.network->totalBytesInPerSec(), (5000 - 1000) / 2.0);
  EXPECT_EQ(state.network->totalBytesOutPerSec(), (1500 - 500) / 2.0);
}

TEST_F(MonitorCommandTest, AnInterfaceThatGoesAwayLeavesTheNextReading) {
  setCounters(1000, 500);
  MonitorCommand monitor{machine, output, {}};
  static_cast<void>(monitor.readState());
  machine.time.advance(2.0);
  machine.interfaces.set({});
  const SystemPowerState state = monitor.readState();
  ASSERT_TRUE(state.network);
  EXPECT_THAT(state.network->interfaces, IsEmpty());
}

TEST_F(MonitorCommandTest, TheTimestampIsTheMomentAfterTheReads) {
  MonitorCommand monitor{machine, output, {}};
  machine.time.advance(5.0);
  const SystemPowerState state = monitor.readState();
  EXPECT_EQ(state.timestamp, machine.time.now());
  ASSERT_TRUE(state.network);
  EXPECT_EQ(state.network->timestamp, state.timestamp);
}

TEST_F(MonitorCommandTest, NeverStartsNettop) {
  setCounters(1000, 500);
  run(4, {.json = true});
  EXPECT_THAT(machine.children.launches(), IsEmpty());
}

TEST_F(MonitorCommandTest, WithoutSMCTemperaturesThereAreNoneFromElsewhere) {
  machine.hid.setServices(std::vector<HIDTemperatureService>{{"PMU tdie1", 44.0}});
  MonitorCommand monitor{machine, output, {}};
  EXPECT_THAT(monitor.readState().sensors, IsEmpty());
  EXPECT_EQ(machine.hid.opens(), 0);
  EXPECT_THAT(machine.asked(), Not(Contains("fileAttributes")));
}

TEST_F(MonitorCommandTest, ConnectionsLiveForTheWholeRun) {
  machine.smcFake.set("FNum", "ui8 ", {0});
  machine.smcFake.setFloat("TB1T", 31.5F);
  machine.energy.setFails(testing::FakeEnergyLibrary::Step::open, false);
  machine.energy.setChannels({{.name = "CPU Energy", .value = 320'000'000}});
  run(4, {.json = true});
  const auto energyLog = machine.energy.log();
  EXPECT_EQ(std::ranges::count(energyLog, "open"), 1);
  EXPECT_EQ(std::ranges::count(energyLog, "createSubscription"), 1);
  EXPECT_EQ(machine.smcFake.openConnections(), 0U);
}

TEST_F(MonitorCommandTest, AMachineThatAnswersNothingStillHasItsFrame) {
  machine.smcFake.setAvailable(false);
  run(2, {.noColor = true});
  EXPECT_THAT(output.texts()[1], HasSubstr("╭─ Thermal ─"));
  EXPECT_THAT(output.texts()[1], Not(HasSubstr("╭─ Battery")));
  EXPECT_THAT(output.errors(), IsEmpty());
}

TEST_F(MonitorCommandTest, EndsWhenNobodyReadsAnyMore) {
  run(1);
  EXPECT_EQ(output.texts().size(), 1U);
  EXPECT_THAT(machine.time.sleeps(), IsEmpty());
}

}  // namespace
}  // namespace quorvex
