#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "FakeTree.h"
#include "FileDescriptor.h"
#include "PosixChildProcesses.h"

namespace quorvex {
namespace {

using Words = std::vector<std::string>;

const std::string testChild = QUORVEX_TEST_CHILD;

class PosixChildProcessesTests : public ::testing::Test {
 protected:
  /// Children that closed their streams may end only after their test did.
  void TearDown() override {
    while (waitpid(-1, nullptr, 0) > 0) {
    }
  }

  std::unique_ptr<ChildProcess> start(const Words& arguments) {
    LaunchResult result = children.launch(testChild, arguments);
    if (const auto* failure = std::get_if<LaunchFailure>(&result)) {
      ADD_FAILURE() << failure->description;
      return nullptr;
    }
    return std::get<std::unique_ptr<ChildProcess>>(std::move(result));
  }

  std::string failureOf(const std::string& path, const Words& arguments = {}) {
    LaunchResult result = children.launch(path, arguments);
    const auto* failure = std::get_if<LaunchFailure>(&result);
    return failure != nullptr ? failure->description : "started";
  }

  PosixChildProcesses children;
};

/// Sets a signal's disposition for the life of the object.
class Disposition {
 public:
  Disposition(int number, void (*handler)(int)) : number_(number) {
    old_ = std::signal(number, handler);
  }
  Disposition(const Disposition&) = delete;
  Disposition& operator=(const Disposition&) = delete;
  ~Disposition() { static_cast<void>(std::signal(number_, old_)); }

 private:
  int number_;
  void (*old_)(int);
};

TEST_F(PosixChildProcessesTests, ArgumentsArriveAsTheyAreWithTheExecutableFirst) {
  const auto child = start({"arguments", "a b", "$HOME", "*", "", "';'"});
  EXPECT_EQ(child->readOutputToEnd(), "[" + testChild + "][arguments][a b][$HOME][*][][';']");
  EXPECT_EQ(child->exitStatus(), 0);
}

TEST_F(PosixChildProcessesTests, EachStreamArrivesOnItsOwnPipe) {
  const auto child = start({"streams"});
  EXPECT_EQ(child->readOutputToEnd(), "to output");
  EXPECT_EQ(child->readErrorToEnd(), "to error");
}

TEST_F(PosixChildProcessesTests, StreamsMayBeReadInEitherOrderAndAfterTheExit) {
  const auto child = start({"streams"});
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(child->readErrorToEnd(), "to error");
  EXPECT_EQ(child->readOutputToEnd(), "to output");
}

TEST_F(PosixChildProcessesTests, AStreamThatWasReadToItsEndIsEmptyAfterwards) {
  const auto child = start({"streams"});
  EXPECT_EQ(child->readOutputToEnd(), "to output");
  EXPECT_EQ(child->readOutputToEnd(), "");
}

TEST_F(PosixChildProcessesTests, AChildThatFillsBothPipesDoesNotStallTheReaderOfOne) {
  // 64 blocks of 4096 bytes a stream are four times what a pipe holds.
  const std::string flood(std::size_t{64} * 4096, 'x');
  const auto child = start({"flood", "64"});
  EXPECT_EQ(child->readOutputToEnd(), flood);
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(child->readErrorToEnd(), flood);
  EXPECT_EQ(child->exitStatus(), 0);
}

TEST_F(PosixChildProcessesTests,
       OutputBeyondAPipeKeepsTheChildFromEndingWhileOnlyItsExitIsAwaited) {
  const auto child = start({"flood", "64"});
  EXPECT_FALSE(child->waitForExit(0.05));
  child->terminate();
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_EQ(child->exitStatus(), SIGTERM);
}

TEST_F(PosixChildProcessesTests, AnExtraDescriptorIsNotInheritedAlthoughItIsNotCloseOnExec) {
  const FileDescriptor first{open("/dev/null", O_RDONLY)};
  const FileDescriptor far{fcntl(first.get(), F_DUPFD, 100)};
  ASSERT_TRUE(first);
  ASSERT_TRUE(far);
  ASSERT_EQ(fcntl(far.get(), F_GETFD) & FD_CLOEXEC, 0);
  const auto child = start({"descriptors"});
  EXPECT_EQ(child->readOutputToEnd(), "0 1 2 ");
}

TEST_F(PosixChildProcessesTests, TwoChildrenAtATimeDoNotHoldEachOthersPipes) {
  const auto waiting = start({"wait"});
  const auto quick = start({"streams"});
  EXPECT_EQ(quick->readOutputToEnd(), "to output");
  waiting->terminate();
  EXPECT_TRUE(waiting->waitForExit(std::nullopt));
}

TEST_F(PosixChildProcessesTests, TheChildReadsThisProcessesStandardInput) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const FileDescriptor oldInput{fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)};
  ASSERT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
  FileDescriptor readEnd{ends[0]};
  FileDescriptor writeEnd{ends[1]};
  ASSERT_EQ(write(writeEnd.get(), "hello", 5), 5);
  writeEnd.reset();
  readEnd.reset();
  const auto child = start({"input"});
  EXPECT_EQ(child->readOutputToEnd(), "hello");
  if (oldInput) {
    dup2(oldInput.get(), STDIN_FILENO);
  } else {
    close(STDIN_FILENO);
  }
}

TEST_F(PosixChildProcessesTests, ClosedStandardStreamsOfThisProcessDoNotMixUpThePipes) {
  const FileDescriptor oldInput{fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 10)};
  const FileDescriptor oldOutput{fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10)};
  const FileDescriptor oldError{fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 10)};
  close(STDIN_FILENO);
  close(STDOUT_FILENO);
  close(STDERR_FILENO);
  const Words arguments{"streams"};
  LaunchResult result = children.launch(testChild, arguments);
  dup2(oldInput.get(), STDIN_FILENO);
  dup2(oldOutput.get(), STDOUT_FILENO);
  dup2(oldError.get(), STDERR_FILENO);
  ASSERT_TRUE(std::holds_alternative<std::unique_ptr<ChildProcess>>(result));
  const auto& child = std::get<std::unique_ptr<ChildProcess>>(result);
  EXPECT_EQ(child->readOutputToEnd(), "to output");
  EXPECT_EQ(child->readErrorToEnd(), "to error");
}

TEST_F(PosixChildProcessesTests, SignalsAreNeitherIgnoredNorBlockedInTheChild) {
  const Disposition pipeSignal{SIGPIPE, SIG_IGN};
  const Disposition interrupt{SIGINT, SIG_IGN};
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGINT);
  sigaddset(&blocked, SIGTERM);
  sigset_t old;
  ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &blocked, &old), 0);
  const auto child = start({"signals"});
  ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &old, nullptr), 0);
  EXPECT_EQ(child->readOutputToEnd(), "end");
}

TEST_F(PosixChildProcessesTests, ExitStatusIsTheChildsOwn) {
  EXPECT_EQ(start({"exit", "0"})->exitStatus(), 0);
  EXPECT_EQ(start({"exit", "1"})->exitStatus(), 1);
  EXPECT_EQ(start({"exit", "255"})->exitStatus(), 255);
}

TEST_F(PosixChildProcessesTests, ExitStatusOfASignalledChildIsTheSignalsNumber) {
  EXPECT_EQ(start({"kill", std::to_string(SIGKILL)})->exitStatus(), SIGKILL);
  EXPECT_EQ(start({"kill", std::to_string(SIGUSR1)})->exitStatus(), SIGUSR1);
}

TEST_F(PosixChildProcessesTests, TerminateEndsAWaitingChildWithItsSignal) {
  const auto child = start({"wait"});
  EXPECT_TRUE(child->isRunning());
  EXPECT_FALSE(child->waitForExit(0.0));
  child->terminate();
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_FALSE(child->isRunning());
  EXPECT_EQ(child->exitStatus(), SIGTERM);
}

TEST_F(PosixChildProcessesTests, TerminateAfterTheEndChangesNothing) {
  const auto child = start({"exit", "3"});
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  child->terminate();
  EXPECT_EQ(child->exitStatus(), 3);
}

TEST_F(PosixChildProcessesTests, WaitWithATimeoutThatPassesTellsThatTheChildStillRuns) {
  const auto child = start({"wait"});
  EXPECT_FALSE(child->waitForExit(0.001));
  EXPECT_FALSE(child->waitForExit(-1.0));
  EXPECT_TRUE(child->isRunning());
  child->terminate();
  EXPECT_TRUE(child->waitForExit(1e300));
}

TEST_F(PosixChildProcessesTests, WaitWithATimeoutEndsWithTheChild) {
  const auto child = start({"exit", "4"});
  EXPECT_TRUE(child->waitForExit(3600.0));
  EXPECT_TRUE(child->waitForExit(0.0));
  EXPECT_EQ(child->exitStatus(), 4);
}

TEST_F(PosixChildProcessesTests, ALostStatusIsNoSuccess) {
  // With SIGCHLD ignored, the system itself reaps children and throws their status away.
  const Disposition childSignal{SIGCHLD, SIG_IGN};
  const auto child = start({"exit", "0"});
  EXPECT_TRUE(child->waitForExit(std::nullopt));
  EXPECT_FALSE(child->isRunning());
  EXPECT_EQ(child->exitStatus(), -1);
}

TEST_F(PosixChildProcessesTests, DestroyingReapsAChildThatHasEnded) {
  {
    const auto child = start({"exit", "0"});
    // The end of its output tells that it is about to end; a status of its own would reap it.
    EXPECT_EQ(child->readOutputToEnd(), "");
    siginfo_t information{};
    ASSERT_EQ(waitid(P_ALL, 0, &information, WEXITED | WNOWAIT), 0);
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixChildProcessesTests, AChildThatOutlivesItsOwnerIsReapedByALaterLaunch) {
  start({"kill", std::to_string(SIGSTOP)});
  // The stopped child is neither ended nor owned by anyone; let it end now.
  siginfo_t information{};
  ASSERT_EQ(waitid(P_ALL, 0, &information, WSTOPPED | WNOWAIT), 0);
  const pid_t abandoned = information.si_pid;
  ASSERT_EQ(kill(abandoned, SIGKILL), 0);
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(abandoned), &information, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(start({"exit", "0"})->exitStatus(), 0);
  EXPECT_EQ(waitpid(abandoned, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixChildProcessesTests, DestroyingClosesThePipesOfAChildThatStillRuns) {
  // A child that fills its pipe and goes on has not ended yet when it loses its reader.
  start({"flood", "64"});
  // Nobody reads any more, so the broken pipe ends the child.
  siginfo_t information{};
  ASSERT_EQ(waitid(P_ALL, 0, &information, WEXITED), 0);
  EXPECT_EQ(information.si_code, CLD_KILLED);
  EXPECT_EQ(information.si_status, SIGPIPE);
}

TEST_F(PosixChildProcessesTests, AMissingExecutableFailsInTheSystemsWords) {
  EXPECT_EQ(failureOf("/nowhere/tool"), "No such file or directory");
}

TEST_F(PosixChildProcessesTests, AFileThatIsNoExecutableFailsInTheSystemsWords) {
  testing::FakeTree tree;
  tree.file("tool", "echo no shell may run this\n");
  EXPECT_EQ(failureOf(tree.path("tool")), "Permission denied");
  std::filesystem::permissions(tree.path("tool"), std::filesystem::perms::owner_all);
  EXPECT_EQ(failureOf(tree.path("tool")), "Exec format error");
}

TEST_F(PosixChildProcessesTests, APathThatIsNotAbsoluteIsRefused) {
  EXPECT_EQ(failureOf("sh"), "Invalid argument");
  EXPECT_EQ(failureOf(""), "Invalid argument");
}

TEST_F(PosixChildProcessesTests, ATextWithANULIsRefusedAndNotCut) {
  EXPECT_EQ(failureOf(testChild + std::string{"\0x", 2}), "Invalid argument");
  EXPECT_EQ(failureOf(testChild, {std::string{"exit\0x", 6}}), "Invalid argument");
}

/// Leaves this process with `free` descriptors to open, for the life of the object.
class ScarceDescriptors {
 public:
  explicit ScarceDescriptors(rlim_t free) {
    getrlimit(RLIMIT_NOFILE, &old_);
    rlimit scarce = old_;
    scarce.rlim_cur = 0;
    for (rlim_t found = 0; found < free || isOpen(scarce.rlim_cur); ++scarce.rlim_cur) {
      found += isOpen(scarce.rlim_cur) ? 0 : 1;
    }
    setrlimit(RLIMIT_NOFILE, &scarce);
  }
  ScarceDescriptors(const ScarceDescriptors&) = delete;
  ScarceDescriptors& operator=(const ScarceDescriptors&) = delete;
  ~ScarceDescriptors() { setrlimit(RLIMIT_NOFILE, &old_); }

 private:
  static bool isOpen(rlim_t descriptor) {
    return fcntl(static_cast<int>(descriptor), F_GETFD) >= 0;
  }

  rlimit old_{};
};

TEST_F(PosixChildProcessesTests, TooFewDescriptorsFailTheLaunchAndLeaveNoChildBehind) {
  // A sanitizer opens descriptors of its own the first time that it meets a class.
  EXPECT_EQ(start({"exit", "0"})->exitStatus(), 0);
  EXPECT_EQ(failureOf("/nowhere/tool"), "No such file or directory");
  // Two pipes take four descriptors, and watching for the child's end takes a fifth.
  for (rlim_t free = 0; free < 5; ++free) {
    const ScarceDescriptors scarce{free};
    EXPECT_EQ(failureOf(testChild, {"wait"}), "Too many open files") << free;
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
  const ScarceDescriptors justEnough{5};
  EXPECT_EQ(start({"exit", "0"})->exitStatus(), 0);
}

TEST_F(PosixChildProcessesTests, LaunchesFromManyThreadsKeepTheirChildrenApart) {
  std::vector<std::thread> threads;
  std::array<std::string, 8> outputs;
  for (std::size_t index = 0; index < outputs.size(); ++index) {
    threads.emplace_back([this, &outputs, index] {
      outputs[index] = start({"arguments", std::to_string(index)})->readOutputToEnd();
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (std::size_t index = 0; index < outputs.size(); ++index) {
    EXPECT_EQ(outputs[index], "[" + testChild + "][arguments][" + std::to_string(index) + "]");
  }
}

TEST_F(PosixChildProcessesTests, ExecutablesAreLookedUpBelowTheRootWhenThereIsOne) {
  const testing::FakeTree tree;
  tree.folder("usr/bin");
  std::filesystem::create_symlink("/bin/echo", tree.path("usr/bin/tool"));
  PosixChildProcesses below{tree.root()};
  const Words arguments{"said"};
  LaunchResult result = below.launch("/usr/bin/tool", arguments);
  auto& child = std::get<std::unique_ptr<ChildProcess>>(result);
  EXPECT_EQ(child->readOutputToEnd(), "said\n");
  EXPECT_TRUE(std::holds_alternative<LaunchFailure>(below.launch(testChild, arguments)));
  EXPECT_TRUE(std::holds_alternative<LaunchFailure>(below.launch("usr/bin/tool", arguments)))
      << "no path from the root on";
}

}  // namespace
}  // namespace quorvex
