#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <variant>

#include "ChildSystem.h"
#include "ContinuousClock.h"
#include "DarwinTest.h"
#include "PosixChildProcesses.h"
#include "SystemClock.h"
#include "UserFolders.h"

namespace quorvex::darwin {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;
using ::testing::Contains;
using ::testing::ElementsAre;

class DarwinClockTests : public DarwinTest {
 protected:
  SystemClock clock;
};

TEST_F(DarwinClockTests, WallClockCountsNanoseconds) {
  EXPECT_EQ(clock.now().time_since_epoch(), nanoseconds{1'769'851'805'000'000'123});
}

TEST_F(DarwinClockTests, MonotonicClockIsTheContinuousOne) {
  EXPECT_EQ(clock.monotonic(), seconds{5});
  fake().elapsed = 1;
  EXPECT_EQ(clock.monotonic(), seconds{5} + nanoseconds{1});
}

TEST_F(DarwinClockTests, SleepIsATimerThatCountsTheMachinesSleep) {
  clock.sleep(0.1);
  EXPECT_THAT(calls(), ElementsAre("kqueue", "kevent timer 100000000", "kevent wait"));
  EXPECT_EQ(clock.monotonic(), seconds{5} + milliseconds{100});
}

TEST_F(DarwinClockTests, SignalDoesNotShortenASleep) {
  fake().interruptedWaits = 1;
  clock.sleep(0.1);
  EXPECT_THAT(calls(), ElementsAre("kqueue", "kevent timer 100000000", "kevent wait", "kqueue",
                                   "kevent timer 50000000", "kevent wait"));
  EXPECT_EQ(clock.monotonic(), seconds{5} + milliseconds{100});
}

TEST_F(DarwinClockTests, WithoutAQueueTheSleepGoesInShortSteps) {
  fake().hasQueues = false;
  clock.sleep(1.5);
  EXPECT_THAT(calls(),
              ElementsAre("kqueue", "nanosleep 999999999", "kqueue", "nanosleep 500000001"));
  EXPECT_EQ(clock.monotonic(), seconds{5} + milliseconds{1500});
}

TEST_F(DarwinClockTests, SleepOfNothingAsksForNothing) {
  clock.sleep(0);
  clock.sleep(-1);
  EXPECT_THAT(calls(), ::testing::IsEmpty());
}

class DarwinChildTests : public DarwinTest {
 protected:
  /// Launches a shell command that must start.
  std::unique_ptr<ChildProcess> shell(const std::string& command) {
    const std::vector<std::string> arguments{"-c", command};
    auto launched = children.launch("/bin/sh", arguments);
    if (auto* failure = std::get_if<LaunchFailure>(&launched)) {
      ADD_FAILURE() << failure->description;
      return nullptr;
    }
    return std::get<std::unique_ptr<ChildProcess>>(std::move(launched));
  }

  PosixChildProcesses children;
};

TEST_F(DarwinChildTests, ChildsStreamsAndStatusComeBack) {
  const auto child = shell("echo out; echo err >&2; exit 3");
  EXPECT_EQ(child->readOutputToEnd(), "out\n");
  EXPECT_EQ(child->readErrorToEnd(), "err\n");
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(child->exitStatus(), 3);
}

TEST_F(DarwinChildTests, NothingButStandardInputIsInherited) {
  static_cast<void>(shell("true")->exitStatus());
  const auto made = calls();
  EXPECT_THAT(made, Contains("posix_spawn closes by default"));
  EXPECT_THAT(made, Contains("posix_spawn inherits 0"));
}

TEST_F(DarwinChildTests, ClosedStandardInputIsNotInherited) {
  const FileDescriptor kept{fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)};
  close(STDIN_FILENO);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  short flags = POSIX_SPAWN_SETSIGDEF;
  EXPECT_EQ(child_system::inheritStandardStreamsOnly(actions, flags), 0);
  posix_spawn_file_actions_destroy(&actions);
  if (kept) {
    dup2(kept.get(), STDIN_FILENO);
  }
  EXPECT_EQ(flags, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_CLOEXEC_DEFAULT);
  EXPECT_THAT(calls(), ::testing::IsEmpty());
}

TEST_F(DarwinChildTests, TimeOutEndsTheWaitAndTerminationTheChild) {
  const auto child = shell("exec sleep 600");
  EXPECT_FALSE(child->waitForExit(0.0));
  EXPECT_TRUE(child->isRunning());
  child->terminate();
  EXPECT_EQ(child->exitStatus(), SIGTERM);
}

TEST_F(DarwinChildTests, ChildThatEndedBeforeItCouldBeWatchedIsStillReaped) {
  fake().processEventError = ESRCH;
  const auto child = shell("exit 4");
  ASSERT_NE(child, nullptr);
  EXPECT_TRUE(child->waitForExit(8.0));
  EXPECT_EQ(child->exitStatus(), 4);
}

TEST_F(DarwinChildTests, ChildThatCannotBeWatchedIsNotGivenOut) {
  fake().processEventError = ENOMEM;
  const std::vector<std::string> arguments{"-c", "exec sleep 600"};
  const auto launched = children.launch("/bin/sh", arguments);
  ASSERT_TRUE(std::holds_alternative<LaunchFailure>(launched));
  EXPECT_EQ(std::get<LaunchFailure>(launched).description, "Cannot allocate memory");
}

TEST_F(DarwinChildTests, WithoutAQueueNoChildIsGivenOut) {
  fake().hasQueues = false;
  const std::vector<std::string> arguments{"-c", "exec sleep 600"};
  const auto launched = children.launch("/bin/sh", arguments);
  ASSERT_TRUE(std::holds_alternative<LaunchFailure>(launched));
  EXPECT_EQ(std::get<LaunchFailure>(launched).description, "Too many open files");
}

using DarwinFoldersTests = DarwinTest;

TEST_F(DarwinFoldersTests, ApplicationSupportIsTheUsersOwnFirst) {
  fake().applicationSupport = {"~/Library/Application Support", "/Library/Application Support"};
  ASSERT_EQ(setenv("HOME", "/Users/ada", 1), 0);
  EXPECT_EQ(applicationSupportFolder(), "/Users/ada/Library/Application Support");
  EXPECT_THAT(calls(), ElementsAre("sysdir 14 1"));
}

TEST_F(DarwinFoldersTests, FolderWithoutATildeStandsAsItIs) {
  fake().applicationSupport = {"/Volumes/Home/Application Support"};
  EXPECT_EQ(applicationSupportFolder(), "/Volumes/Home/Application Support");
}

TEST_F(DarwinFoldersTests, SystemThatNamesNoFolderHasNone) {
  EXPECT_EQ(applicationSupportFolder(), std::nullopt);
}

}  // namespace
}  // namespace quorvex::darwin
