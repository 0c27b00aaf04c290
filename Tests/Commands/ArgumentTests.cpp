#include <gmock/gmock.h>

#include <filesystem>

#include "CommandTesting.h"
#include "TemporaryFolder.h"

namespace quorvex::testing {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* version = "Quorvex 0.14.0\n";

std::string usage() {
  return program().run({"--help"}).output;
}

void expectSame(const ProcessResult& actual, const ProcessResult& expected) {
  EXPECT_EQ(actual.output, expected.output);
  EXPECT_EQ(actual.error, expected.error);
  EXPECT_EQ(actual.exitStatus, expected.exitStatus);
}

TEST(Arguments, JSONAloneIsStatusWithJSON) {
  expectSame(programOn("unplugged").run({"--json"}),
             programOn("unplugged").run({"status", "--json"}));
}

TEST(Arguments, NoColorAloneIsStatusWithoutColour) {
  const ProcessResult result = programOn("unplugged").run({"--no-color"});
  expectSame(result, programOn("unplugged").run({"status", "--no-color"}));
  EXPECT_THAT(result.output, AllOf(StartsWith("╭─ Battery"), Not(HasSubstr("\x1b"))));
}

TEST(Arguments, AnUnknownOptionIsStatus) {
  expectSame(programOn("unplugged").run({"-x"}), programOn("unplugged").run({"status"}));
}

TEST(Arguments, HelpWinsOverAnUnknownCommand) {
  const ProcessResult result = programOn("nothing").run({"foo", "--help"});
  EXPECT_EQ(result.output, usage());
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Arguments, VersionWinsOverHelp) {
  for (const ProcessRunner& runner : {program(), programOn("nothing")}) {
    const ProcessResult result = runner.run({"--help", "--version"});
    EXPECT_EQ(result.output, version);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.exitStatus, 0);
  }
}

TEST(Arguments, VersionCountsAnywhere) {
  EXPECT_EQ(program().run({"session", "record", "--version"}).output, version);
}

TEST(Arguments, HelpHasTwoSpellingsAndIsTheSameForEveryCommand) {
  EXPECT_EQ(program().run({"-h"}).output, usage());
  EXPECT_EQ(programOn("nothing").run({"session", "--help"}).output, usage());
}

TEST(Arguments, AnIntervalWithoutAValueIsTwoSeconds) {
  expectSame(programOn("nothing").run({"monitor", "--json", "--interval"}),
             programOn("nothing").run({"monitor", "--json", "--interval", "2"}));
}

TEST(Arguments, AnIntervalWithABadValueIsTwoSeconds) {
  expectSame(programOn("nothing").run({"monitor", "--json", "--interval", "abc"}),
             programOn("nothing").run({"monitor", "--json", "--interval", "2"}));
}

TEST(Arguments, OfRepeatedIntervalsTheFirstCounts) {
  expectSame(programOn("nothing").run({"monitor", "--json", "--interval", "1", "--interval", "3"}),
             programOn("nothing").run({"monitor", "--json", "--interval", "1"}));
}

TEST(Arguments, TheValueOfIntervalIsMistakenForTheCommand) {
  const ProcessResult result = programOn("nothing").run({"--interval", "5"});
  EXPECT_EQ(result.error, "Error: Unknown command: 5\n");
  EXPECT_EQ(result.output, usage());
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Arguments, AnEmptyArgumentIsAnUnknownCommand) {
  const ProcessResult result = programOn("nothing").run({""});
  EXPECT_EQ(result.error, "Error: Unknown command: \n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Arguments, ACommandThatIsNoUTF8IsToldAsUTF8) {
  EXPECT_EQ(programOn("nothing").run({"f\xff"}).error, "Error: Unknown command: f\xEF\xBF\xBD\n");
}

TEST(Arguments, StatusIgnoresFurtherWords) {
  expectSame(programOn("unplugged").run({"status", "extra"}),
             programOn("unplugged").run({"status"}));
}

TEST(Arguments, BatteryJSONWithoutABatteryPrintsNothing) {
  const ProcessResult result = programOn("desktop").run({"battery", "--json"});
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.error, "Error: No battery found.\n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(MachineSelection, AFileThatCannotBeReadEndsTheProgramFirst) {
  for (const char* argument : {"--version", "--help", "status", "foo"}) {
    const ProcessResult result = programOn("missing").run({argument});
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, StartsWith("Error: " + machineFile("missing") + ": "));
    EXPECT_EQ(result.exitStatus, 1);
  }
}

TEST(MachineSelection, AMisspeltKeyIsToldWithItsPlace) {
  const ProcessResult result = programOn("misspelt").run({"--version"});
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.error, AllOf(StartsWith("Error: " + machineFile("misspelt") + ": "),
                                  HasSubstr("$.frames[0].registery"), EndsWith("\n")));
  EXPECT_EQ(result.exitStatus, 1);
}

TEST(MachineSelection, AnEmptyNameSelectsNone) {
  EXPECT_EQ(program().environment("QUORVEX_MACHINE", "").run({"--version"}).output, version);
}

TEST(MachineSelection, APaceThatIsNoneIsRefused) {
  const ProcessResult result =
      programOn("waiting").environment("QUORVEX_PACE", "slow").run({"status"});
  EXPECT_EQ(result.error, "Error: QUORVEX_PACE: must be \"real\" or \"instant\", not \"slow\"\n");
  EXPECT_EQ(result.exitStatus, 1);
}

/// A copy of the executable alone, without the modules that lie beside it.
class LonelyExecutable : public ::testing::Test {
 protected:
  LonelyExecutable() { std::filesystem::copy_file(QUORVEX_EXECUTABLE, folder_.path() / "quorvex"); }

  [[nodiscard]] ProcessRunner runner() const {
    return ProcessRunner{(folder_.path() / "quorvex").string()};
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(LonelyExecutable, AnswersVersionAndHelpByItself) {
  EXPECT_EQ(runner().run({"--version"}).output, version);
  EXPECT_EQ(runner().run({"--help"}).output, usage());
}

TEST_F(LonelyExecutable, TellsThatTheRestIsMissing) {
  const ProcessResult result = runner().run({"status"});
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.error, MatchesRegex("Error: this installation is incomplete: .*\n"));
  EXPECT_EQ(result.exitStatus, 1);
}

}  // namespace
}  // namespace quorvex::testing
