#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>

#include "InterruptHandler.h"

namespace quorvex {
namespace {

/// Interrupts itself with standard output joined to standard error, where death tests look.
[[noreturn]] void interruptMyself() {
  dup2(STDERR_FILENO, STDOUT_FILENO);
  installInterruptHandler();
  static_cast<void>(raise(SIGINT));
  std::_Exit(EXIT_FAILURE);
}

TEST(InterruptHandlerDeathTest, RestoresTheTerminalSaysStoppedAndSucceeds) {
  EXPECT_EXIT(interruptMyself(), ::testing::ExitedWithCode(0),
              "^\x1b\\[\\?25h\x1b\\[0m\nStopped\\.\n$");
}

[[noreturn]] void interruptMyselfWithTheSignalHeldBackBefore() {
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, nullptr);
  interruptMyself();
}

TEST(InterruptHandlerDeathTest, WorksInAProcessThatWasStartedWithTheSignalHeldBack) {
  EXPECT_EXIT(interruptMyselfWithTheSignalHeldBackBefore(), ::testing::ExitedWithCode(0),
              "Stopped");
}

[[noreturn]] void interruptMyselfWithOutputClosed() {
  close(STDOUT_FILENO);
  installInterruptHandler();
  static_cast<void>(raise(SIGINT));
  std::_Exit(EXIT_FAILURE);
}

TEST(InterruptHandlerDeathTest, SucceedsAlsoWhenNothingCanBeWritten) {
  EXPECT_EXIT(interruptMyselfWithOutputClosed(), ::testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace quorvex
