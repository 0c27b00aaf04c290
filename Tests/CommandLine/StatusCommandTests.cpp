#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeMachine.h"
#include "FakeOutput.h"
#include "PrivilegedSMCHelperService.h"
#include "StatusCommand.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* helperPath = PrivilegedSMCHelperService::defaultHelperPath;
constexpr const char* helperReply = R"([{"key": "TH0x", "name": "Helper", "temperature": 41.5}])";

class StatusCommandTest : public ::testing::Test {
 protected:
  SystemPowerState read() { return StatusCommand{machine, output, {}}.readState(); }

  std::string printed(CommandLineOptions options) {
    StatusCommand{machine, output, options}.run();
    return output.printed();
  }

  void giveSMCTemperature() { machine.smcFake.setFloat("TB1T", 31.5F); }

  void giveHelper(std::string reply, std::int32_t status = 0) {
    machine.files.set(helperPath, {});
    machine.children.answer(helperPath, {"read-temperatures-json"},
                            {.output = std::move(reply), .exitStatus = status});
  }

  void giveHID() {
    machine.hid.setServices(std::vector<HIDTemperatureService>{{"PMU tdie1", 44.0}});
  }

  testing::FakeMachine machine;
  testing::FakeOutput output;
};

TEST_F(StatusCommandTest, AMachineThatAnswersNothingHasAThermalStateAlone) {
  machine.smcFake.setAvailable(false);
  machine.hid.setAvailable(false);
  machine.energy.setFails(testing::FakeEnergyLibrary::Step::open);
  const SystemPowerState state = read();
  EXPECT_FALSE(state.battery);
  EXPECT_FALSE(state.power);
  EXPECT_THAT(state.fans, IsEmpty());
  EXPECT_THAT(state.sensors, IsEmpty());
  ASSERT_TRUE(state.network);
  EXPECT_THAT(state.network->interfaces, IsEmpty());
  EXPECT_EQ(state.timestamp, machine.time.now());
}

TEST_F(StatusCommandTest, PrintsASingleBoxWhenNothingAnswers) {
  machine.smcFake.setAvailable(false);
  EXPECT_EQ(printed({.noColor = true}),
            "╭─ Thermal ─────────────────────────────╮\n"
            "│ State:      Nominal                   │\n"
            "│ Pressure:   Nominal (0/4)             │\n"
            "│ Low Power:  Off                       │\n"
            "╰────────────────────────────────────────╯\n");
  EXPECT_THAT(output.errors(), IsEmpty());
}

TEST_F(StatusCommandTest, SourcesAreAskedInTheirOrder) {
  giveHID();
  static_cast<void>(read());
  // PowerService takes its two ports in one call, whose arguments have no order among themselves.
  std::vector<std::string> order = machine.asked();
  std::erase(order, "clock");
  order.erase(std::unique(order.begin(), order.end()), order.end());
  ASSERT_GE(order.size(), 7U);
  EXPECT_EQ(order[0], "batteryDictionaries");
  EXPECT_EQ(order[1], "thermalReadings");
  EXPECT_EQ(order[2], "energyLibrary");
  EXPECT_EQ(order[3], "smc");
  EXPECT_THAT((std::vector<std::string>{order[4], order[5]}),
              ::testing::UnorderedElementsAre("fileAttributes", "childProcesses"));
  EXPECT_EQ(order[6], "hidTemperatures");
}

TEST_F(StatusCommandTest, FansAreReadBeforeTemperatures) {
  machine.smcFake.set("FNum", "ui8 ", {0});
  giveSMCTemperature();
  static_cast<void>(read());
  const auto& log = machine.smcFake.log();
  const auto fans = std::ranges::find(log, "info FNum");
  const auto temperatures = std::ranges::find(log, "info TB1T");
  ASSERT_NE(fans, log.end());
  ASSERT_NE(temperatures, log.end());
  EXPECT_LT(fans, temperatures);
}

TEST_F(StatusCommandTest, SMCTemperaturesGoBeforeHelperAndHID) {
  giveSMCTemperature();
  giveHelper(helperReply);
  giveHID();
  EXPECT_THAT(read().sensors, ElementsAre(TemperatureSensor{"TB1T", "Battery 1", 31.5}));
  EXPECT_THAT(machine.children.launches(), IsEmpty());
  EXPECT_EQ(machine.hid.opens(), 0);
}

TEST_F(StatusCommandTest, WithoutSMCTemperaturesTheHelperIsAsked) {
  giveHelper(helperReply);
  giveHID();
  EXPECT_THAT(read().sensors, ElementsAre(TemperatureSensor{"TH0x", "Helper", 41.5}));
  EXPECT_EQ(machine.hid.opens(), 0);
}

TEST_F(StatusCommandTest, WithoutAHelperHIDIsAsked) {
  giveHID();
  const auto sensors = read().sensors;
  ASSERT_EQ(sensors.size(), 1U);
  EXPECT_EQ(sensors.front().name, "PMU tdie1");
  EXPECT_THAT(machine.children.launches(), IsEmpty());
}

TEST_F(StatusCommandTest, WhenTheHelperFailsHIDIsAsked) {
  giveHelper(helperReply, 1);
  giveHID();
  const auto sensors = read().sensors;
  ASSERT_EQ(sensors.size(), 1U);
  EXPECT_EQ(sensors.front().temperature, 44.0);
  EXPECT_EQ(machine.children.launches().size(), 1U);
}

TEST_F(StatusCommandTest, WhenTheHelperHasNoSensorsHIDIsAsked) {
  giveHelper("[]");
  giveHID();
  EXPECT_EQ(read().sensors.size(), 1U);
}

TEST_F(StatusCommandTest, TheTimestampIsTakenAfterTheSources) {
  machine.energy.setChannels({{.name = "CPU Energy", .value = 320'000'000}});
  const Date before = machine.time.now();
  const SystemPowerState state = read();
  // 0.32 J in the 0.1 s that the read sleeps is 3.2 W.
  ASSERT_TRUE(state.power);
  EXPECT_DOUBLE_EQ(state.power->cpuPower, 3.2);
  EXPECT_EQ(secondsBetween(before, state.timestamp), 0.1);
  ASSERT_TRUE(state.network);
  EXPECT_EQ(state.network->timestamp, state.timestamp);
}

TEST_F(StatusCommandTest, NetworkRatesAreZeroAndNettopIsNotStarted) {
  machine.interfaces.names[4] = "en0";
  machine.interfaces.set({{.index = 4, .bytesIn = 1000, .bytesOut = 500}});
  const SystemPowerState state = read();
  ASSERT_TRUE(state.network);
  ASSERT_EQ(state.network->interfaces.size(), 1U);
  EXPECT_EQ(state.network->interfaces.front().bytesIn, 1000U);
  EXPECT_EQ(state.network->interfaces.front().bytesInPerSec, 0.0);
  EXPECT_EQ(state.network->interfaces.front().bytesOutPerSec, 0.0);
  EXPECT_EQ(state.network->attributionSource, NetworkAttributionSource::none);
  EXPECT_THAT(machine.children.launches(), IsEmpty());
}

TEST_F(StatusCommandTest, JSONIsOneTextWithANewline) {
  const std::string text = printed({.json = true});
  EXPECT_EQ(output.texts().size(), 1U);
  EXPECT_THAT(text, ::testing::StartsWith("{\n  \"powerReadings\" : {},\n"));
  EXPECT_THAT(text, ::testing::EndsWith("}\n"));
}

TEST_F(StatusCommandTest, ColourIsThereUnlessSwitchedOff) {
  EXPECT_THAT(printed({}), HasSubstr("\x1b[32mNominal\x1b[0m"));
}

TEST_F(StatusCommandTest, NoColorLeavesEverySequenceOut) {
  EXPECT_THAT(printed({.noColor = true}), Not(HasSubstr("\x1b")));
}

TEST_F(StatusCommandTest, TheIntervalMeansNothing) {
  static_cast<void>(printed({.interval = 60.0}));
  EXPECT_THAT(machine.time.sleeps(), Not(::testing::Contains(60.0)));
}

}  // namespace
}  // namespace quorvex
