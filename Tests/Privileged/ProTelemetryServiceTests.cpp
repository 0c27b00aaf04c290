#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "FakeChildProcesses.h"
#include "FakeClock.h"
#include "FakeFileAttributes.h"
#include "InstallScript.h"
#include "ProTelemetryService.h"

namespace quorvex {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using testing::FakeChild;
using testing::FakeChildProcesses;
using testing::FakeClock;
using testing::FakeFile;
using testing::FakeFileAttributes;
using testing::FakeLaunch;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* path = ProTelemetryService::defaultHelperPath;
constexpr const char* goodStatus =
    R"({"isInstalled":true,"isExecutable":true,"isSetuidRoot":true,"ownerUserID":0,"groupID":0,)"
    R"("installedVersion":"0.14.0","supportsProTelemetry":true,"path":"/x"})";
constexpr const char* goodSnapshot =
    R"({"isAvailable":true,"source":"powermetrics","sampledAt":"2026-01-31T09:30:05Z",)"
    R"("sampleIntervalMilliseconds":1000,"processes":[],"cpuPowerWatts":3.0})";

class ProTelemetryServiceTests : public ::testing::Test {
 protected:
  [[nodiscard]] ProTelemetryService service() { return {files_, children_, clock_}; }

  /// What the tool does on one command word.
  void toolAnswers(const std::string& command, FakeChild child) {
    children_.answer(path, {command}, std::move(child));
  }
  void toolIsUsable() {
    files_.set(path, FakeFile{});
    toolAnswers("status-json", {.output = goodStatus});
  }
  ProcessRunResult run(FakeChild child, double timeout = 2.0) {
    children_.answer("/bin/tool", {"a"}, std::move(child));
    return service().runProcess("/bin/tool", std::array<std::string, 1>{"a"}, timeout);
  }
  [[nodiscard]] ProTelemetrySnapshot failure(std::optional<std::string> summary,
                                             std::string error) {
    return {.isAvailable = false,
            .source = "powermetrics",
            .sampledAt = clock_.now(),
            .sampleIntervalMilliseconds = 1000,
            .rawSampleSummary = std::move(summary),
            .error = std::move(error)};
  }

  FakeFileAttributes files_;
  FakeChildProcesses children_;
  FakeClock clock_;
};

using RunProcess = ProTelemetryServiceTests;
using InvokeHelper = ProTelemetryServiceTests;
using HelperStatusCheck = ProTelemetryServiceTests;
using ReadSnapshot = ProTelemetryServiceTests;
using InstallBundledHelper = ProTelemetryServiceTests;

TEST_F(ProTelemetryServiceTests, NamesAndDefaultPath) {
  EXPECT_STREQ(path, "/Library/PrivilegedHelperTools/com.quorvex.helper");
  EXPECT_STREQ(ProTelemetryService::bundledHelperName, "QuorvexHelper");
}

TEST_F(RunProcess, FillsTheRecordOfAChildThatEnds) {
  EXPECT_EQ(run({.output = " out \n", .error = "\n err\t", .exitStatus = 3}),
            (ProcessRunResult{.terminationStatus = 3,
                              .outputData = " out \n",
                              .errorData = "\n err\t",
                              .output = "out",
                              .error = "err"}));
}

TEST_F(RunProcess, EmptyStreamsHaveNoDataYetATextThatIsEmpty) {
  EXPECT_EQ(run({}), (ProcessRunResult{.terminationStatus = 0,
                                       .outputData = std::nullopt,
                                       .errorData = std::nullopt,
                                       .output = "",
                                       .error = ""}));
}

TEST_F(RunProcess, StreamOfBlanksHasDataAndAnEmptyText) {
  const auto result = run({.output = "\n"});
  EXPECT_EQ(result.outputData, "\n");
  EXPECT_EQ(result.output, "");
}

TEST_F(RunProcess, StreamsThatAreNotUTF8HaveDataAndNoText) {
  EXPECT_EQ(run({.output = "a\xff", .error = "\xc3"}), (ProcessRunResult{.terminationStatus = 0,
                                                                         .outputData = "a\xff",
                                                                         .errorData = "\xc3",
                                                                         .output = std::nullopt,
                                                                         .error = std::nullopt}));
}

TEST_F(RunProcess, FailedLaunchGivesItsDescriptionAndNothingElse) {
  children_.fail("/bin/tool", {}, "The file does not exist.");
  EXPECT_EQ(service().runProcess("/bin/tool", {}, 2.0),
            (ProcessRunResult{.terminationStatus = -1,
                              .outputData = std::nullopt,
                              .errorData = std::nullopt,
                              .output = std::nullopt,
                              .error = "The file does not exist."}));
  EXPECT_THAT(clock_.sleeps(), IsEmpty());
}

TEST_F(RunProcess, ChildThatHasEndedIsNotWaitedFor) {
  run({});
  EXPECT_THAT(clock_.sleeps(), IsEmpty());
  EXPECT_THAT(children_.log(),
              ElementsAre("launch /bin/tool a", "isRunning", "isRunning", "readOutputToEnd",
                          "readErrorToEnd", "waitForExit", "exitStatus", "destroyed"));
}

TEST_F(RunProcess, PollsEveryFiftyMilliseconds) {
  run({.runningAnswers = 3});
  EXPECT_THAT(clock_.sleeps(), ElementsAre(0.05, 0.05, 0.05));
}

TEST_F(RunProcess, ChildThatNeverEndsIsTerminatedAtTheDeadlineAndThenWaitedFor) {
  const auto result = run({.output = "partial", .error = "too slow", .seconds = std::nullopt}, 2.0);
  // 2.0 s / 0.05 s between two looks
  EXPECT_THAT(clock_.sleeps(), SizeIs(40));
  EXPECT_THAT(clock_.sleeps(), Each(0.05));
  EXPECT_EQ(result.terminationStatus, 15);
  EXPECT_EQ(result.outputData, "partial");
  EXPECT_EQ(result.error, "too slow");
  const auto log = children_.log();
  const std::vector<std::string> end(log.end() - 7, log.end());
  EXPECT_THAT(end, ElementsAre("terminate", "waitForExit", "readOutputToEnd", "readErrorToEnd",
                               "waitForExit", "exitStatus", "destroyed"));
}

TEST_F(RunProcess, ChildThatIgnoresTerminationIsWaitedForWithoutLimit) {
  // Only the unlimited wait ends this child, an hour after it was asked to end.
  const auto result = run({.output = "late", .seconds = 3600.0, .ignoresTerminate = true}, 2.0);
  EXPECT_EQ(result.terminationStatus, 0);
  EXPECT_EQ(result.outputData, "late");
}

TEST_F(RunProcess, TimeoutOfZeroTerminatesARunningChildAtOnce) {
  EXPECT_EQ(run({.seconds = std::nullopt}, 0.0).terminationStatus, 15);
  EXPECT_EQ(run({.seconds = std::nullopt}, -1.0).terminationStatus, 15);
  EXPECT_THAT(clock_.sleeps(), IsEmpty());
}

TEST_F(RunProcess, ChildThatEndsAtTheDeadlineIsNotTerminated) {
  // Running at 0.00 and 0.05 s, ended when looked at after the deadline of 0.1 s.
  const auto result = run({.exitStatus = 7, .runningAnswers = 3}, 0.1);
  EXPECT_EQ(result.terminationStatus, 7);
  EXPECT_THAT(clock_.sleeps(), SizeIs(2));
  EXPECT_THAT(children_.log(), ::testing::Not(::testing::Contains("terminate")));
}

TEST_F(RunProcess, SettingTheWallClockBackDoesNotMoveTheDeadline) {
  clock_.duringSleep([this] { clock_.setNow(Date{}); });
  EXPECT_EQ(run({.seconds = std::nullopt}, 2.0).terminationStatus, 15);
  EXPECT_THAT(clock_.sleeps(), SizeIs(40));
}

TEST_F(InvokeHelper, BytesOfASuccessfulRunComeWithoutText) {
  toolAnswers("word", {.output = " bytes ", .error = "warning"});
  EXPECT_EQ(service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0),
            (std::pair{std::optional<std::string>{" bytes "}, std::optional<std::string>{}}));
  EXPECT_THAT(children_.launches(), ElementsAre(FakeLaunch{path, {"word"}}));
}

TEST_F(InvokeHelper, FailedRunGivesItsErrorText) {
  toolAnswers("word", {.output = "bytes", .error = "no sample\n", .exitStatus = 1});
  const auto [bytes, text] = service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0);
  EXPECT_EQ(bytes, std::nullopt);
  EXPECT_EQ(text, "no sample");
}

TEST_F(InvokeHelper, EmptyErrorTextCountsAsAText) {
  toolAnswers("word", {.output = "said on the wrong stream", .exitStatus = 1});
  EXPECT_EQ(service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0).second, "");
}

TEST_F(InvokeHelper, OutputStandsInForAnErrorThatIsNotUTF8) {
  toolAnswers("word", {.output = "words", .error = "\xff", .exitStatus = 1});
  EXPECT_EQ(service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0).second, "words");
}

TEST_F(InvokeHelper, StatusIsToldOnlyWhenNeitherStreamIsUTF8) {
  toolAnswers("word", {.output = "\xff", .error = "\xff", .exitStatus = 77});
  EXPECT_EQ(service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0).second,
            "Helper exited with status 77");
}

TEST_F(InvokeHelper, FailedLaunchGivesItsDescription) {
  children_.failAll("Permission denied");
  const auto [bytes, text] = service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0);
  EXPECT_EQ(bytes, std::nullopt);
  EXPECT_EQ(text, "Permission denied");
}

TEST_F(InvokeHelper, BytesOfATerminatedRunAreDropped) {
  toolAnswers("word", {.output = "partial", .seconds = std::nullopt});
  const auto [bytes, text] = service().invokeHelper(std::array<std::string, 1>{"word"}, 2.0);
  EXPECT_EQ(bytes, std::nullopt);
  EXPECT_EQ(text, "");
}

TEST_F(HelperStatusCheck, MissingFileIsNotInstalledAndNeverRun) {
  EXPECT_EQ(service().helperStatus(), (HelperStatus{.isInstalled = false,
                                                    .isExecutable = false,
                                                    .isSetuidRoot = false,
                                                    .ownerUserID = -1,
                                                    .groupID = -1,
                                                    .installedVersion = std::nullopt,
                                                    .supportsProTelemetry = false,
                                                    .path = path,
                                                    .error = "Helper is not installed"}));
  EXPECT_THAT(children_.launches(), IsEmpty());
}

TEST_F(HelperStatusCheck, InstalledToolThatAnswersIsUsable) {
  toolIsUsable();
  const HelperStatus status = service().helperStatus();
  EXPECT_EQ(status, (HelperStatus{.isInstalled = true,
                                  .isExecutable = true,
                                  .isSetuidRoot = true,
                                  .ownerUserID = 0,
                                  .groupID = 0,
                                  .installedVersion = "0.14.0",
                                  .supportsProTelemetry = true,
                                  .path = path,
                                  .error = std::nullopt}));
  EXPECT_TRUE(status.isUsable());
  EXPECT_THAT(children_.launches(), ElementsAre(FakeLaunch{path, {"status-json"}}));
}

TEST_F(HelperStatusCheck, FileOwnedByAnotherUserIsNotSetuidRoot) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{04755, 501, 0}});
  const HelperStatus status = service().helperStatus();
  EXPECT_FALSE(status.isSetuidRoot);
  EXPECT_EQ(status.ownerUserID, 501);
  EXPECT_TRUE(status.supportsProTelemetry);
  EXPECT_FALSE(status.isUsable());
}

TEST_F(HelperStatusCheck, FileWithoutTheSetuidBitIsNotSetuidRoot) {
  toolIsUsable();
  for (const std::uint32_t mode : {0755U, 02755U, 01755U, 0U}) {
    files_.set(path, FakeFile{.attributes = FileAttributeRecord{mode, 0, 0}});
    EXPECT_FALSE(service().helperStatus().isSetuidRoot) << mode;
    EXPECT_FALSE(service().helperStatus().isUsable()) << mode;
  }
}

TEST_F(HelperStatusCheck, GroupHasNoEffectOnBeingUsable) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{04755, 0, 20}});
  const HelperStatus status = service().helperStatus();
  EXPECT_EQ(status.groupID, 20);
  EXPECT_TRUE(status.isUsable());
}

TEST_F(HelperStatusCheck, MissingPermissionsCountAsAClearBit) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{std::nullopt, 0, 0}});
  const HelperStatus status = service().helperStatus();
  EXPECT_FALSE(status.isSetuidRoot);
  EXPECT_EQ(status.ownerUserID, 0);
}

TEST_F(HelperStatusCheck, MissingOwnerIsUnknownAndNotRoot) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{04755, std::nullopt, 0}});
  const HelperStatus status = service().helperStatus();
  EXPECT_EQ(status.ownerUserID, -1);
  EXPECT_FALSE(status.isSetuidRoot);
  EXPECT_EQ(status.groupID, 0);
}

TEST_F(HelperStatusCheck, MissingGroupIsUnknownAndHarmless) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{04755, 0, std::nullopt}});
  const HelperStatus status = service().helperStatus();
  EXPECT_EQ(status.groupID, -1);
  EXPECT_TRUE(status.isUsable());
}

TEST_F(HelperStatusCheck, UnreadableAttributesCountAsNone) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = std::nullopt});
  const HelperStatus status = service().helperStatus();
  EXPECT_TRUE(status.isInstalled);
  EXPECT_FALSE(status.isSetuidRoot);
  EXPECT_EQ(status.ownerUserID, -1);
  EXPECT_EQ(status.groupID, -1);
  EXPECT_EQ(status.installedVersion, "0.14.0");
  EXPECT_FALSE(status.isUsable());
}

TEST_F(HelperStatusCheck, FileThatIsNotExecutableIsStillAskedAndTellsWhy) {
  files_.set(path, FakeFile{.executable = false});
  children_.failAll("Permission denied");
  const HelperStatus status = service().helperStatus();
  EXPECT_FALSE(status.isExecutable);
  EXPECT_FALSE(status.supportsProTelemetry);
  EXPECT_EQ(status.error, "Permission denied");
}

TEST_F(HelperStatusCheck, ReplyThatOmitsPathFailsToDecodeAsAWhole) {
  files_.set(path, FakeFile{});
  toolAnswers("status-json",
              {.output = R"({"isInstalled":true,"isExecutable":true,"isSetuidRoot":true,)"
                         R"("ownerUserID":0,"groupID":0,"installedVersion":"0.14.0",)"
                         R"("supportsProTelemetry":true})"});
  const HelperStatus status = service().helperStatus();
  EXPECT_FALSE(status.supportsProTelemetry);
  EXPECT_EQ(status.installedVersion, std::nullopt);
  EXPECT_EQ(status.error, std::nullopt);
}

TEST_F(HelperStatusCheck, UndecodableRepliesLeaveNoVersionAndNoError) {
  files_.set(path, FakeFile{});
  for (const char* output : {"garbage", "[]", "{", "\xff", "{\"path\":1}"}) {
    FakeChildProcesses children;
    children.answerAll({.output = output});
    const HelperStatus status = ProTelemetryService(files_, children, clock_).helperStatus();
    EXPECT_FALSE(status.supportsProTelemetry) << output;
    EXPECT_EQ(status.installedVersion, std::nullopt) << output;
    EXPECT_EQ(status.error, std::nullopt) << output;
  }
}

TEST_F(HelperStatusCheck, OnlyVersionAndSupportAreTakenFromTheReply) {
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{0755, 501, 20}});
  toolAnswers("status-json",
              {.output = R"({"isInstalled":false,"isExecutable":false,"isSetuidRoot":true,)"
                         R"("ownerUserID":0,"groupID":99,"supportsProTelemetry":true,)"
                         R"("path":"/elsewhere","error":"ignored"})"});
  EXPECT_EQ(service().helperStatus(), (HelperStatus{.isInstalled = true,
                                                    .isExecutable = true,
                                                    .isSetuidRoot = false,
                                                    .ownerUserID = 501,
                                                    .groupID = 20,
                                                    .installedVersion = std::nullopt,
                                                    .supportsProTelemetry = true,
                                                    .path = path,
                                                    .error = std::nullopt}));
}

TEST_F(HelperStatusCheck, FailingToolGivesItsErrorText) {
  files_.set(path, FakeFile{});
  toolAnswers("status-json", {.error = "not today\n", .exitStatus = 1});
  EXPECT_EQ(service().helperStatus().error, "not today");
}

TEST_F(HelperStatusCheck, ToolThatNeverAnswersIsGivenTwoSeconds) {
  files_.set(path, FakeFile{});
  toolAnswers("status-json", {.seconds = std::nullopt});
  const Date before = clock_.now();
  const HelperStatus status = service().helperStatus();
  EXPECT_EQ(secondsBetween(before, clock_.now()), 2.0);
  EXPECT_FALSE(status.supportsProTelemetry);
  EXPECT_EQ(status.error, "");
}

TEST_F(ReadSnapshot, DecodedReplyIsReturnedAsItStands) {
  toolAnswers("read-pro-telemetry-json", {.output = goodSnapshot});
  EXPECT_EQ(service().readSnapshot(),
            (ProTelemetrySnapshot{.isAvailable = true,
                                  .source = "powermetrics",
                                  .sampledAt = *parseISO8601("2026-01-31T09:30:05Z"),
                                  .sampleIntervalMilliseconds = 1000,
                                  .cpuPowerWatts = 3.0}));
  EXPECT_THAT(children_.launches(), ElementsAre(FakeLaunch{path, {"read-pro-telemetry-json"}}));
}

TEST_F(ReadSnapshot, ReplyThatSaysItFailedIsReturnedAsItStands) {
  toolAnswers(
      "read-pro-telemetry-json",
      {.output = R"({"isAvailable":false,"source":"other","sampledAt":"2026-01-31T09:30:05Z",)"
                 R"("sampleIntervalMilliseconds":5,"processes":[],"error":"why"})"});
  const auto snapshot = service().readSnapshot();
  EXPECT_FALSE(snapshot.isAvailable);
  EXPECT_EQ(snapshot.source, "other");
  EXPECT_EQ(snapshot.error, "why");
}

TEST_F(ReadSnapshot, UndecodableReplyIsKeptAsTheSummary) {
  toolAnswers("read-pro-telemetry-json", {.output = " garbage \n"});
  EXPECT_EQ(service().readSnapshot(),
            failure(" garbage \n", "Failed to decode helper telemetry: $: not an object"));
}

TEST_F(ReadSnapshot, UndecodableReplyThatIsNotUTF8LeavesNoSummary) {
  toolAnswers("read-pro-telemetry-json", {.output = "\xff"});
  EXPECT_EQ(service().readSnapshot(),
            failure(std::nullopt, "Failed to decode helper telemetry: $: not valid JSON"));
}

TEST_F(ReadSnapshot, SampleTimeThatIsNotISO8601IsADecodingError) {
  const std::string reply =
      R"({"isAvailable":true,"source":"s","sampledAt":"31.01.2026","sampleIntervalMilliseconds":1,)"
      R"("processes":[]})";
  toolAnswers("read-pro-telemetry-json", {.output = reply});
  EXPECT_EQ(service().readSnapshot(),
            failure(reply, "Failed to decode helper telemetry: $.sampledAt: not an ISO 8601 date"));
}

TEST_F(ReadSnapshot, EmptyOutputTakesThePathWithoutBytes) {
  toolAnswers("read-pro-telemetry-json", {});
  EXPECT_EQ(service().readSnapshot(), failure(std::nullopt, ""));
}

TEST_F(ReadSnapshot, FailingToolGivesItsErrorText) {
  toolAnswers("read-pro-telemetry-json",
              {.output = goodSnapshot, .error = "powermetrics failed\n", .exitStatus = 1});
  EXPECT_EQ(service().readSnapshot(), failure(std::nullopt, "powermetrics failed"));
}

TEST_F(ReadSnapshot, MissingToolGivesTheLaunchFailure) {
  children_.failAll("No such file or directory");
  EXPECT_EQ(service().readSnapshot(), failure(std::nullopt, "No such file or directory"));
}

TEST_F(ReadSnapshot, ToolThatNeverAnswersIsGivenTwentySeconds) {
  toolAnswers("read-pro-telemetry-json", {.output = goodSnapshot, .seconds = std::nullopt});
  const Date before = clock_.now();
  const auto snapshot = service().readSnapshot();
  // 20 s / 0.05 s between two looks
  EXPECT_THAT(clock_.sleeps(), SizeIs(400));
  EXPECT_EQ(secondsBetween(before, clock_.now()), 20.0);
  EXPECT_EQ(snapshot, failure(std::nullopt, ""));
}

TEST_F(ReadSnapshot, EnormousReplyIsRefused) {
  toolAnswers("read-pro-telemetry-json",
              {.output = std::string(std::size_t{16} * 1024 * 1024 + 1, '[')});
  EXPECT_EQ(service().readSnapshot().error,
            "Failed to decode helper telemetry: $: longer than 16777216 bytes");
}

TEST_F(InstallBundledHelper, RunsTheScriptAndChecksTheResult) {
  toolIsUsable();
  const std::string script = helperInstallScript("/it's/QuorvexHelper", path);
  children_.answer("/usr/bin/osascript", {"-e", script}, {});
  EXPECT_EQ(service().installBundledHelper("/it's/QuorvexHelper"),
            (HelperInstallResult{true, "Pro Telemetry helper installed"}));
  EXPECT_THAT(children_.launches(), ElementsAre(FakeLaunch{"/usr/bin/osascript", {"-e", script}},
                                                FakeLaunch{path, {"status-json"}}));
}

TEST_F(InstallBundledHelper, RefusedPasswordGivesTheScriptsErrorAndNoStatusCheck) {
  toolIsUsable();
  children_.answer(
      "/usr/bin/osascript", {"-e", helperInstallScript("/s", path)},
      {.output = "out", .error = "execution error: User canceled. (-128)\n", .exitStatus = 1});
  EXPECT_EQ(service().installBundledHelper("/s"),
            (HelperInstallResult{false, "execution error: User canceled. (-128)"}));
  EXPECT_THAT(children_.launches(), SizeIs(1));
}

TEST_F(InstallBundledHelper, FailureWordsFallBackFromErrorToOutputToTheFixedText) {
  const std::string script = helperInstallScript("/s", path);
  children_.answer("/usr/bin/osascript", {"-e", script}, {.output = "out", .exitStatus = 1});
  children_.answer("/usr/bin/osascript", {"-e", script},
                   {.output = " out ", .error = "\xff", .exitStatus = 1});
  children_.answer("/usr/bin/osascript", {"-e", script},
                   {.output = "\xff", .error = "\xff", .exitStatus = 1});
  EXPECT_EQ(service().installBundledHelper("/s").message, "");
  EXPECT_EQ(service().installBundledHelper("/s").message, "out");
  EXPECT_EQ(service().installBundledHelper("/s").message, "Helper installation failed");
}

TEST_F(InstallBundledHelper, FailedLaunchGivesItsDescription) {
  children_.failAll("No such file or directory");
  EXPECT_EQ(service().installBundledHelper("/s"),
            (HelperInstallResult{false, "No such file or directory"}));
}

TEST_F(InstallBundledHelper, PasswordDialogIsGivenTwoMinutes) {
  children_.answerAll({.seconds = std::nullopt});
  const Date before = clock_.now();
  EXPECT_EQ(service().installBundledHelper("/s"), (HelperInstallResult{false, ""}));
  // 2400 steps of exactly 0.05 s
  EXPECT_EQ(secondsBetween(before, clock_.now()), 120.0);
}

TEST_F(InstallBundledHelper, CopiedToolThatIsMissingTellsTheStatusError) {
  children_.answer("/usr/bin/osascript", {"-e", helperInstallScript("/s", path)}, {});
  EXPECT_EQ(service().installBundledHelper("/s"),
            (HelperInstallResult{
                false, "Helper copied, but status check failed: Helper is not installed"}));
}

TEST_F(InstallBundledHelper, CopiedToolThatIsUnusableWithoutErrorIsAnUnknownError) {
  toolIsUsable();
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{0755, 0, 0}});
  children_.answer("/usr/bin/osascript", {"-e", helperInstallScript("/s", path)}, {});
  EXPECT_EQ(service().installBundledHelper("/s"),
            (HelperInstallResult{false, "Helper copied, but status check failed: unknown error"}));
}

}  // namespace
}  // namespace quorvex
