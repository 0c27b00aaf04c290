#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "BoundedCommand.h"

namespace quorvex {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

/// What the shell does with a script, without any limit that it could reach.
Result<std::string, CommandFailure> run(const std::string& script,
                                        milliseconds timeLimit = hours{1},
                                        std::size_t outputLimit = 1'000'000) {
  return runBounded({"/bin/sh", {"-c", script}, timeLimit, outputLimit});
}

std::string output(const std::string& script) {
  const auto result = run(script);
  return result ? *result : result.error().description;
}

std::string failure(const Result<std::string, CommandFailure>& result) {
  return result ? "succeeded" : result.error().description;
}

TEST(BoundedCommand, GivesStandardOutputOfACommandThatSucceeds) {
  EXPECT_EQ(output("printf 'a\\nb\\0c'"), (std::string{"a\nb\0c", 5}));
  EXPECT_EQ(output("echo words >&2"), "");
}

TEST(BoundedCommand, GivesOutputThatIsLongerThanAPipe) {
  const std::string text =
      output("i=0; while [ $i -lt 20000 ]; do echo 0123456789; i=$((i+1)); done");
  EXPECT_EQ(text.size(), 20000U * 11U);
}

TEST(BoundedCommand, ArgumentsArriveAsTheyAre) {
  const auto result =
      runBounded({"/bin/sh", {"-c", "printf '%s|' \"$@\"", "sh", "a b", "", "$x"}, hours{1}, 1000});
  EXPECT_EQ(*result, "a b||$x|");
}

TEST(BoundedCommand, EnvironmentIsFixed) {
  ASSERT_EQ(setenv("QUORVEX_MACHINE", "/tmp/x", 1), 0);
  const auto result = runBounded({"/usr/bin/env", {}, hours{1}, 1000});
  EXPECT_EQ(*result, "PATH=/usr/bin:/bin:/usr/sbin:/sbin\nLC_ALL=C\n");
  unsetenv("QUORVEX_MACHINE");
}

TEST(BoundedCommand, StandardInputIsEmpty) {
  EXPECT_EQ(output("cat"), "");
}

TEST(BoundedCommand, FailedExitGivesItsStatusAndTheFirstLineOfItsError) {
  EXPECT_EQ(
      failure(run("echo out; echo 'unrecognized sampler'; echo why >&2; echo more >&2; exit 3")),
      "/bin/sh exited with status 3: why");
  EXPECT_EQ(failure(run("exit 1")), "/bin/sh exited with status 1");
}

TEST(BoundedCommand, EndlessErrorTextIsCut) {
  const std::string words = failure(
      run("i=0; while [ $i -lt 3000 ]; do printf 0123456789 >&2; i=$((i+1)); done; exit 1"));
  EXPECT_EQ(words.size(), std::string{"/bin/sh exited with status 1: "}.size() + 2048);
}

TEST(BoundedCommand, SignalIsTold) {
  EXPECT_EQ(failure(run("kill -9 $$")), "/bin/sh was ended by signal 9");
}

TEST(BoundedCommand, MissingFileCannotBeStarted) {
  EXPECT_EQ(failure(runBounded({"/no/such/file", {}, hours{1}, 10})),
            "/no/such/file cannot be started: No such file or directory");
}

TEST(BoundedCommand, FileWithoutPermissionCannotBeStarted) {
  EXPECT_EQ(failure(runBounded({"/etc/passwd", {}, hours{1}, 10})),
            "/etc/passwd cannot be started: Permission denied");
}

TEST(BoundedCommand, SearchPathIsNotUsed) {
  EXPECT_EQ(failure(runBounded({"sh", {}, hours{1}, 10})),
            "sh cannot be started: No such file or directory");
}

TEST(BoundedCommand, CommandThatNeverEndsIsKilledAtTheLimit) {
  EXPECT_EQ(failure(run("exec sleep 86400", milliseconds{0})), "/bin/sh did not end within 0 ms");
}

TEST(BoundedCommand, CommandThatClosesItsStreamsAndNeverEndsIsKilledToo) {
  EXPECT_EQ(failure(run("exec sleep 86400 >/dev/null 2>/dev/null", milliseconds{20})),
            "/bin/sh did not end within 20 ms");
}

TEST(BoundedCommand, CommandThatWritesForEverIsKilledAtTheLimit) {
  EXPECT_EQ(failure(run("while :; do echo y; done", hours{1}, 100'000)),
            "/bin/sh wrote more than 100000 bytes");
}

TEST(BoundedCommand, OutputOfExactlyTheLimitIsGiven) {
  EXPECT_TRUE(run("printf 12345", hours{1}, 5));
  EXPECT_FALSE(run("printf 123456", hours{1}, 5));
}

}  // namespace
}  // namespace quorvex
