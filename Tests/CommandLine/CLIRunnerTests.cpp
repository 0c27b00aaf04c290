#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CLIRunner.h"
#include "FakeMachine.h"
#include "FakeOutput.h"
#include "ImmediateAnswers.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// A laptop with nothing but a battery: enough to tell the commands' outputs apart.
class CLIRunnerTest : public ::testing::Test {
 protected:
  CLIRunnerTest() { machine.battery.registryAnswer = Dictionary{{"CurrentCapacity", 80}}; }

  void run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "quorvex");
    CLIRunner{std::move(arguments), machine, output}.run();
  }

  void expectStatusTable() const {
    EXPECT_THAT(output.printed(), StartsWith("╭─ Battery ─"));
    EXPECT_THAT(output.printed(), HasSubstr("╭─ Thermal ─"));
    EXPECT_THAT(output.errors(), IsEmpty());
  }

  testing::FakeMachine machine;
  testing::FakeOutput output;
};

TEST_F(CLIRunnerTest, StatusPrintsTheTable) {
  run({"status"});
  expectStatusTable();
}

TEST_F(CLIRunnerTest, JSONAloneIsStatusWithJSON) {
  run({"--json"});
  EXPECT_THAT(output.printed(), StartsWith("{\n  \"battery\" : {\n"));
  EXPECT_THAT(output.printed(), HasSubstr("\"thermal\""));
}

TEST_F(CLIRunnerTest, NoColorAloneIsStatusWithoutColour) {
  run({"--no-color"});
  expectStatusTable();
  EXPECT_THAT(output.printed(), Not(HasSubstr("\x1b")));
}

TEST_F(CLIRunnerTest, AnUnknownOptionIsStatus) {
  run({"-x"});
  expectStatusTable();
  EXPECT_THAT(output.printed(), HasSubstr("\x1b[32m80%\x1b[0m"));
}

TEST_F(CLIRunnerTest, StatusIgnoresFurtherWords) {
  run({"status", "extra"});
  expectStatusTable();
}

TEST_F(CLIRunnerTest, BatteryPrintsTheDetails) {
  run({"battery"});
  EXPECT_THAT(output.printed(), StartsWith("╭─ Battery Detail ─"));
}

TEST_F(CLIRunnerTest, MonitorDraws) {
  output.closeAtText(2);
  run({"monitor"});
  EXPECT_THAT(output.printed(), HasSubstr("Quorvex Monitor"));
}

TEST_F(CLIRunnerTest, TheIntervalReachesTheMonitor) {
  output.closeAtText(2);
  run({"monitor", "--json", "--interval", "7"});
  // The read's own 0.1 s is not slept for: there is no energy library to sample.
  EXPECT_THAT(machine.time.sleeps(), ::testing::Contains(7.0));
}

TEST_F(CLIRunnerTest, HelpWinsOverAnUnknownCommand) {
  run({"foo", "--help"});
  EXPECT_EQ(output.printed(), usageText());
  EXPECT_THAT(output.errors(), IsEmpty());
}

TEST_F(CLIRunnerTest, VersionWinsOverHelp) {
  run({"--version", "--help"});
  EXPECT_EQ(output.printed(), "Quorvex 0.14.0\n");
}

TEST_F(CLIRunnerTest, AnUnknownCommandIsAnErrorAndTheUsage) {
  run({"foo"});
  EXPECT_THAT(output.errors(), ElementsAre("Unknown command: foo"));
  EXPECT_EQ(output.printed(), usageText());
}

TEST_F(CLIRunnerTest, TheValueOfIntervalIsAnUnknownCommand) {
  run({"--interval", "5"});
  EXPECT_THAT(output.errors(), ElementsAre("Unknown command: 5"));
  EXPECT_EQ(output.printed(), usageText());
}

TEST_F(CLIRunnerTest, CommandsAreMatchedByExactText) {
  run({"Status"});
  EXPECT_THAT(output.errors(), ElementsAre("Unknown command: Status"));
}

TEST_F(CLIRunnerTest, VersionReadsNothingOfTheMachine) {
  run({"status", "--version"});
  EXPECT_THAT(machine.asked(), IsEmpty());
}

TEST_F(CLIRunnerTest, WithoutEvenAProgramNameItIsStatus) {
  CLIRunner{{}, machine, output}.run();
  expectStatusTable();
}

}  // namespace
}  // namespace quorvex
