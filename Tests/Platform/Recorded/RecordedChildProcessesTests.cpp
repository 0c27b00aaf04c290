#include <csignal>
#include <vector>

#include "RecordedChildProcesses.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const std::string nettop{RecordedChildProcesses::nettopPath};
const std::string osascript{RecordedChildProcesses::osascriptPath};
const std::string helper{RecordedHelperFile::helperPath};

std::unique_ptr<ChildProcess> started(RecordedMachine& machine, const std::string& path,
                                      const std::vector<std::string>& arguments = {}) {
  auto result = machine.childProcesses().launch(path, arguments);
  if (auto* failure = std::get_if<LaunchFailure>(&result)) {
    ADD_FAILURE() << failure->description;
    return nullptr;
  }
  return std::get<std::unique_ptr<ChildProcess>>(std::move(result));
}

std::string failureOf(RecordedMachine& machine, const std::string& path) {
  auto result = machine.childProcesses().launch(path, std::vector<std::string>{"status-json"});
  const auto* failure = std::get_if<LaunchFailure>(&result);
  return failure != nullptr ? failure->description : "(started)";
}

TEST(RecordedChildProcesses, ToolThatIsNullFailsToLaunch) {
  const auto machine = machineWithFrame(R"("nettop": null, "osascript": null, "helper": null)");
  for (const auto& path : {nettop, osascript, helper}) {
    EXPECT_EQ(failureOf(*machine, path), "No such file or directory") << path;
  }
}

TEST(RecordedChildProcesses, NothingElseCanBeLaunched) {
  EXPECT_EQ(failureOf(*machineWithFrame(R"("nettop": {"status": 0})"), "/bin/sh"),
            "No such file or directory");
}

TEST(RecordedChildProcesses, HelperThatIsNotExecutableFailsToLaunch) {
  const auto machine = machineWithFrame(
      R"("helper": {"executable": false, "replies": {"status-json": {"status": 0}}})");
  EXPECT_EQ(failureOf(*machine, helper), "Permission denied");
}

TEST(RecordedChildProcesses, ToolWithoutDurationHasEndedAtOnce) {
  const auto machine =
      machineWithFrame(R"("nettop": {"status": 3, "output": "Safari.4242,100,200\n"})");
  const auto child = started(*machine, nettop);
  EXPECT_FALSE(child->isRunning());
  EXPECT_TRUE(child->waitForExit(8.0));
  EXPECT_EQ(child->exitStatus(), 3);
  EXPECT_EQ(child->readOutputToEnd(), "Safari.4242,100,200\n");
  EXPECT_EQ(child->readErrorToEnd(), "");
  EXPECT_EQ(machine->clock().monotonic(), seconds{0}) << "nothing was waited for";
}

TEST(RecordedChildProcesses, StreamThatWasReadToItsEndIsEmpty) {
  const auto machine = machineWithFrame(R"("nettop": {"status": 0, "output": "x"})");
  const auto child = started(*machine, nettop);
  EXPECT_EQ(child->readOutputToEnd(), "x");
  EXPECT_EQ(child->readOutputToEnd(), "");
}

TEST(RecordedChildProcesses, ToolRunsForItsDuration) {
  const auto machine = machineWithFrame(R"("nettop": {"status": 0, "seconds": 1.5})");
  const auto child = started(*machine, nettop);
  EXPECT_TRUE(child->isRunning());
  machine->clock().sleep(1.4);
  EXPECT_TRUE(child->isRunning());
  machine->clock().sleep(0.1);
  EXPECT_FALSE(child->isRunning());
}

TEST(RecordedChildProcesses, WaitEndsWithTheChild) {
  const auto machine = machineWithFrame(R"("nettop": {"status": 0, "seconds": 1.5})");
  const auto child = started(*machine, nettop);
  EXPECT_TRUE(child->waitForExit(8.0));
  EXPECT_EQ(machine->clock().monotonic(), milliseconds{1500});
}

TEST(RecordedChildProcesses, WaitEndsWithItsTimeOut) {
  const auto machine = machineWithFrame(R"("nettop": {"status": 0, "seconds": 9})");
  const auto child = started(*machine, nettop);
  EXPECT_FALSE(child->waitForExit(8.0));
  EXPECT_EQ(machine->clock().monotonic(), seconds{8});
  EXPECT_FALSE(child->waitForExit(0.0));
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(machine->clock().monotonic(), seconds{9});
}

TEST(RecordedChildProcesses, ReadingToTheEndWaitsForTheChild) {
  const auto machine =
      machineWithFrame(R"("nettop": {"status": 0, "output": "late", "seconds": 2})");
  const auto child = started(*machine, nettop);
  EXPECT_EQ(child->readOutputToEnd(), "late");
  EXPECT_EQ(machine->clock().monotonic(), seconds{2});
}

TEST(RecordedChildProcesses, TerminatedChildEndsWithTheSignal) {
  const auto machine = machineWithFrame(
      R"("helper": {"executable": true, "replies":
          {"status-json": {"status": 0, "output": "o", "error": "e", "seconds": 60}}})");
  const auto child = started(*machine, helper, {"status-json"});
  machine->clock().sleep(2);
  child->terminate();
  EXPECT_FALSE(child->isRunning());
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(child->exitStatus(), SIGTERM);
  EXPECT_EQ(child->readOutputToEnd(), "o");
  EXPECT_EQ(child->readErrorToEnd(), "e");
  EXPECT_EQ(machine->clock().monotonic(), seconds{2});
}

TEST(RecordedChildProcesses, TerminatingAChildThatHasEndedChangesNothing) {
  const auto machine = machineWithFrame(R"("nettop": {"status": 3})");
  const auto child = started(*machine, nettop);
  child->terminate();
  EXPECT_EQ(child->exitStatus(), 3);
}

TEST(RecordedChildProcesses, HelperAnswersByCommand) {
  const auto machine = machineWithFrame(
      R"("helper": {"executable": true, "replies": {"a": {"status": 0, "output": "A"},
                                                    "b": {"status": 5, "error": "B"}}})");
  const auto first = started(*machine, helper, {"a"});
  EXPECT_EQ(first->exitStatus(), 0);
  EXPECT_EQ(first->readOutputToEnd(), "A");
  const auto second = started(*machine, helper, {"b"});
  EXPECT_EQ(second->exitStatus(), 5);
  EXPECT_EQ(second->readOutputToEnd(), "");
  EXPECT_EQ(second->readErrorToEnd(), "B");
}

TEST(RecordedChildProcesses, CommandWithoutAReplyExitsWith64) {
  const auto machine = machineWithFrame(
      R"("helper": {"executable": true, "replies": {"a": {"status": 0, "output": "A"}}})");
  for (const auto& arguments :
       {std::vector<std::string>{"b"}, std::vector<std::string>{}, {"a", "a"}}) {
    const auto child = started(*machine, helper, arguments);
    EXPECT_FALSE(child->isRunning());
    EXPECT_EQ(child->exitStatus(), 64);
    EXPECT_EQ(child->readOutputToEnd(), "");
    EXPECT_EQ(child->readErrorToEnd(), "");
  }
}

TEST(RecordedChildProcesses, InstalledHelperAnswersFromThenOn) {
  const auto machine = machineWithFrame(
      R"("osascript": {"status": 0, "output": "done", "installs":
          {"executable": true, "replies": {"status-json": {"status": 0, "output": "new"}}}})");
  EXPECT_EQ(started(*machine, osascript, {"-e", "…"})->readOutputToEnd(), "done");
  EXPECT_EQ(started(*machine, helper, {"status-json"})->readOutputToEnd(), "new");
}

TEST(RecordedChildProcesses, FailedScriptTellsItsError) {
  const auto machine = machineWithFrame(R"("osascript": {"status": 1, "error": "User canceled"})");
  const auto child = started(*machine, osascript);
  EXPECT_EQ(child->exitStatus(), 1);
  EXPECT_EQ(child->readErrorToEnd(), "User canceled");
}

TEST(RecordedChildProcesses, ChildKeepsTheAnswerOfTheFrameThatItStartedIn) {
  const auto machine = machineOf(
      R"({"pace": "instant", "frames": [
          {"at": 0, "nettop": {"status": 0, "output": "old", "seconds": 2}},
          {"at": 1, "nettop": {"status": 0, "output": "new"}}]})");
  const auto child = started(*machine, nettop);
  EXPECT_EQ(child->readOutputToEnd(), "old");
  EXPECT_EQ(started(*machine, nettop)->readOutputToEnd(), "new");
}

}  // namespace
}  // namespace quorvex
