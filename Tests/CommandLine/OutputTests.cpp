#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "Output.h"

namespace quorvex {
namespace {

// Each of these runs in a child of its own, since the standard streams are the process's. The
// child's standard error is what the death test compares; its exit status tells the rest.

constexpr int told = 7;

[[noreturn]] void printTwice() {
  dup2(STDERR_FILENO, STDOUT_FILENO);
  StandardOutput output;
  const bool first = output.print("one\n");
  const bool second = output.print("two\n");
  std::_Exit(first && second ? told : EXIT_FAILURE);
}

TEST(StandardOutputDeathTest, PrintsAtOnceWithoutABuffer) {
  EXPECT_EXIT(printTwice(), ::testing::ExitedWithCode(told), "^one\ntwo\n$");
}

[[noreturn]] void printAnError() {
  StandardOutput{}.printError("No battery found.");
  std::_Exit(told);
}

TEST(StandardOutputDeathTest, AnErrorIsOneLineOnStandardError) {
  EXPECT_EXIT(printAnError(), ::testing::ExitedWithCode(told), "^Error: No battery found\\.\n$");
}

[[noreturn]] void printToNobody() {
  prepareStandardStreams();
  int ends[2];
  if (pipe(ends) != 0) {
    std::_Exit(EXIT_FAILURE);
  }
  close(ends[0]);
  dup2(ends[1], STDOUT_FILENO);
  StandardOutput output;
  const bool first = output.print("lost");
  const bool second = output.print("lost");
  std::_Exit(!first && !second ? told : EXIT_FAILURE);
}

TEST(StandardOutputDeathTest, AClosedReaderEndsTheOutputQuietly) {
  EXPECT_EXIT(printToNobody(), ::testing::ExitedWithCode(told), "^$");
}

[[noreturn]] void printToAClosedStream() {
  close(STDOUT_FILENO);
  StandardOutput output;
  const bool first = output.print("lost");
  const bool second = output.print("lost");
  std::_Exit(!first && !second ? told : EXIT_FAILURE);
}

TEST(StandardOutputDeathTest, AnotherFailureIsToldOnce) {
  EXPECT_EXIT(printToAClosedStream(), ::testing::ExitedWithCode(told),
              "^Error: standard output: Bad file descriptor\n$");
}

[[noreturn]] void printWithClosedStreams() {
  close(STDIN_FILENO);
  close(STDOUT_FILENO);
  prepareStandardStreams();
  const int file = open("/dev/null", O_WRONLY);
  StandardOutput output;
  std::_Exit(file > STDERR_FILENO && !output.print("lost") ? told : EXIT_FAILURE);
}

TEST(StandardOutputDeathTest, AStreamThatWasClosedAtTheStartIsNotTakenByAFile) {
  EXPECT_EXIT(printWithClosedStreams(), ::testing::ExitedWithCode(told),
              "^Error: standard output: Bad file descriptor\n$");
}

[[noreturn]] void printMuchIntoANonBlockingPipe() {
  int ends[2];
  if (pipe2(ends, O_NONBLOCK) != 0) {
    std::_Exit(EXIT_FAILURE);
  }
  // More than any pipe holds, read by a child until the pipe is closed.
  constexpr std::size_t size = 4U << 20U;
  const pid_t reader = fork();
  if (reader == 0) {
    close(ends[1]);
    fcntl(ends[0], F_SETFL, 0);
    std::size_t total = 0;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(ends[0], buffer, sizeof buffer)) > 0) {
      total += static_cast<std::size_t>(count);
    }
    const std::string_view verdict = total == size ? "whole" : "part";
    static_cast<void>(!write(STDERR_FILENO, verdict.data(), verdict.size()));
    std::_Exit(0);
  }
  close(ends[0]);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[1]);
  StandardOutput output;
  const bool printed = output.print(std::string(size, 'x'));
  close(STDOUT_FILENO);
  int status = 0;
  waitpid(reader, &status, 0);
  std::_Exit(printed ? told : EXIT_FAILURE);
}

[[noreturn]] void showProgressWithoutATerminal() {
  StandardOutput output;
  output.showProgress("half");
  output.showProgress("");
  std::_Exit(told);
}

TEST(StandardOutputDeathTest, ProgressIsShownOnTerminalsOnly) {
  EXPECT_EXIT(showProgressWithoutATerminal(), ::testing::ExitedWithCode(told), "^$");
}

/// Makes a terminal of standard error, and passes on what was written there with each escape
/// character as "^".
[[noreturn]] void showProgressOnATerminal() {
  const int realError = dup(STDERR_FILENO);
  int terminal = -1;
  int program = -1;
  termios mode{};
  cfmakeraw(&mode);
  if (openpty(&terminal, &program, nullptr, &mode, nullptr) != 0) {
    std::_Exit(EXIT_FAILURE);
  }
  dup2(program, STDERR_FILENO);
  StandardOutput output;
  output.showProgress("");
  output.showProgress("half");
  output.printError("No battery found.");
  output.showProgress("whole");
  output.showProgress("");
  output.showProgress("");
  // With its last end closed, the terminal gives all that is left and then an error.
  close(STDERR_FILENO);
  close(program);
  std::string written;
  char buffer[256];
  ssize_t count = 0;
  while ((count = read(terminal, buffer, sizeof buffer)) > 0) {
    written.append(buffer, static_cast<std::size_t>(count));
  }
  std::ranges::replace(written, '\x1b', '^');
  std::ranges::replace(written, '\r', '<');
  static_cast<void>(!write(realError, written.data(), written.size()));
  std::_Exit(told);
}

TEST(StandardOutputDeathTest, ProgressReplacesItselfAndGivesWayToOtherTexts) {
  EXPECT_EXIT(showProgressOnATerminal(), ::testing::ExitedWithCode(told),
              "^<\\^\\[2Khalf<\\^\\[2KError: No battery found\\.\n<\\^\\[2Kwhole<\\^\\[2K$");
}

TEST(StandardOutputDeathTest, ALongTextGoesWholeThroughASlowPipe) {
  EXPECT_EXIT(printMuchIntoANonBlockingPipe(), ::testing::ExitedWithCode(told), "^whole$");
}

}  // namespace
}  // namespace quorvex
