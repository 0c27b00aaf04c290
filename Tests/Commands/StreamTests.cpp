#include <gmock/gmock.h>

#include "CommandTesting.h"

namespace quorvex::testing {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* farewell = "\x1b[?25h\x1b[0m\nStopped.\n";
constexpr const char* endOfDocument = "\n}\n";

TEST(Streams, ATerminalChangesNothing) {
  const ProcessRunner runner = programOn("unplugged");
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"status"}, {"status", "--no-color"}, {"status", "--json"}, {"battery"}, {"monitor"}}) {
    EXPECT_EQ(runner.run(arguments, OutputKind::terminal).output, runner.run(arguments).output);
  }
}

TEST(Streams, NoVariableOfTheEnvironmentChangesColours) {
  const std::string expected = programOn("unplugged").run({"status"}).output;
  EXPECT_THAT(expected, HasSubstr("\x1b[32m"));
  EXPECT_EQ(programOn("unplugged")
                .environment("NO_COLOR", "1")
                .environment("TERM", "dumb")
                .environment("CLICOLOR", "0")
                .run({"status"})
                .output,
            expected);
}

TEST(Streams, NoLanguageOfTheEnvironmentChangesNumbers) {
  const std::string expected = programOn("unplugged").run({"status"}).output;
  EXPECT_EQ(programOn("unplugged").environment("LC_ALL", "de_DE.UTF-8").run({"status"}).output,
            expected);
}

TEST(Streams, AReaderThatHasGoneEndsTheProgramQuietly) {
  for (const char* command : {"status", "battery", "monitor", "foo", "--version"}) {
    const ProcessResult result = programOn("unplugged").run({command}, OutputKind::nobody);
    EXPECT_EQ(result.error,
              std::string_view{command} == "foo" ? "Error: Unknown command: foo\n" : "")
        << command;
    EXPECT_EQ(result.exitStatus, 0) << command;
  }
}

TEST(Streams, VersionWithoutAMachineEndsQuietlyToo) {
  const ProcessResult result = program().run({"--version"}, OutputKind::nobody);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Streams, AFullDeviceIsToldOnceAndEndsTheMonitor) {
  const ProcessResult result =
      programOn("waiting").run({"monitor", "--json", "--interval", "0"}, OutputKind::full);
  EXPECT_EQ(result.error, "Error: standard output: No space left on device\n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Streams, AClosedStreamIsTold) {
  const ProcessResult result = programOn("nothing").run({"status"}, OutputKind::closed);
  EXPECT_EQ(result.error, "Error: standard output: Bad file descriptor\n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Monitor, AnInterruptDuringTheSleepStopsIt) {
  RunningProcess process =
      programOn("waiting").start({"monitor", "--no-color", "--interval", "1e6"});
  process.readUntil("\x1b[2K\n");
  process.sendSignal(SIGINT);
  const ProcessResult result = process.finish();
  EXPECT_THAT(result.output, AllOf(StartsWith("\x1b[?25h\x1b[2J\x1b[H\x1b[?25l  Quorvex Monitor  "),
                                   EndsWith(std::string{"\x1b[2K\n"} + farewell)));
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Monitor, AnInterruptStopsJSONInTheSameWords) {
  RunningProcess process = programOn("waiting").start({"monitor", "--json", "--interval", "1e6"});
  process.readUntil(endOfDocument);
  process.sendSignal(SIGINT);
  const ProcessResult result = process.finish();
  EXPECT_THAT(result.output,
              AllOf(StartsWith("{\n"), EndsWith(std::string{endOfDocument} + farewell)));
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Monitor, EachDocumentIsFlushedAtOnce) {
  // The document arrives although the program has not ended and its pipe is far from full.
  RunningProcess process = programOn("waiting").start({"monitor", "--json", "--interval", "1e999"});
  process.readUntil(endOfDocument);
  process.sendSignal(SIGINT);
  EXPECT_THAT(process.finish().output, EndsWith(farewell));
}

TEST(Monitor, AnInterruptNeverCutsADocument) {
  // The program writes as fast as it can into a pipe that is full most of the time.
  RunningProcess process = programOn("waiting").start({"monitor", "--json", "--interval", "0"});
  process.readUntil(endOfDocument);
  process.sendSignal(SIGINT);
  const std::string output = process.finish().output;
  ASSERT_THAT(output, EndsWith(std::string{endOfDocument} + farewell));
  const std::string documents = output.substr(0, output.size() - std::string{farewell}.size());
  const std::string first = documents.substr(0, documents.find(endOfDocument) + 3);
  EXPECT_EQ(documents.size() % first.size(), 0U);
  EXPECT_EQ(documents.substr(documents.size() - first.size()).substr(0, 2), "{\n");
}

TEST(Monitor, AReaderThatGoesAwayEndsIt) {
  RunningProcess process = programOn("waiting").start({"monitor", "--json", "--interval", "0"});
  process.readUntil(endOfDocument);
  process.stopReading();
  const ProcessResult result = process.finish();
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(Monitor, ANegativeIntervalTicksWithoutSleeping) {
  RunningProcess process = programOn("waiting").start({"monitor", "--json", "--interval", "-5"});
  process.readUntil(std::string{endOfDocument} + "{\n");
  process.sendSignal(SIGINT);
  EXPECT_EQ(process.finish().exitStatus, 0);
}

TEST(Monitor, OtherSignalsAreNotHandled) {
  RunningProcess process = programOn("waiting").start({"monitor", "--interval", "1e6"});
  process.readUntil("\x1b[2K\n");
  process.sendSignal(SIGTERM);
  const ProcessResult result = process.finish();
  EXPECT_THAT(result.output, Not(HasSubstr("Stopped.")));
  EXPECT_EQ(result.exitStatus, 128 + SIGTERM);
}

TEST(Monitor, CtrlCOnATerminalStopsIt) {
  RunningProcess process =
      programOn("waiting").start({"monitor", "--interval", "1e6"}, OutputKind::terminal);
  process.readUntil("\x1b[2K\n");
  process.type("\x03");
  const ProcessResult result = process.finish();
  EXPECT_THAT(result.output, EndsWith(farewell));
  EXPECT_EQ(result.exitStatus, 0);
}

}  // namespace
}  // namespace quorvex::testing
