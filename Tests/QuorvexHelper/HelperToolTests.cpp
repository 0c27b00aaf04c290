// The tool itself, run from outside as its client runs it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "HelperReplies.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct ToolRun {
  int status = -1;
  std::string output;  ///< standard output, with standard error where the words say so
};

/// Runs the tool by way of the shell, which sets up what surrounds it.
ToolRun runTool(const std::string& words) {
  const std::string command = "TOOL='" QUORVEX_HELPER_TOOL "'; " + words;
  FILE* const pipe = popen(command.c_str(), "r");  // NOLINT(cert-env33-c): a test's own words
  if (pipe == nullptr) {
    return {};
  }
  ToolRun run;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    run.output.append(buffer.data(), count);
  }
  const int status = pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

constexpr const char* usage =
    "usage: QuorvexHelper status-json | read-pro-telemetry-json | read-temperatures-json\n";

TEST(HelperTool, StatusIsOneJSONDocumentThatTheClientReads) {
  const ToolRun run = runTool("\"$TOOL\" status-json 2>&1");
  EXPECT_EQ(run.status, 0);
  const auto status = decodeHelperStatus(run.output);
  ASSERT_TRUE(status) << status.error().description;
  EXPECT_TRUE(status->supportsProTelemetry);
  EXPECT_EQ(status->installedVersion, "0.14.0");
}

TEST(HelperTool, WithoutExactlyOneKnownWordItTellsTheWordsAndExitsWith64) {
  for (const char* arguments :
       {"", "''", "status", "status-json status-json", "status-json ''", "--help", "/etc/passwd"}) {
    const ToolRun run = runTool(std::string{"\"$TOOL\" "} + arguments + " 2>&1");
    EXPECT_EQ(run.status, 64) << arguments;
    EXPECT_EQ(run.output, usage) << arguments;
  }
}

TEST(HelperTool, FailureLeavesStandardOutputEmpty) {
  EXPECT_EQ(runTool("\"$TOOL\" other 2>/dev/null").output, "");
  EXPECT_EQ(runTool("\"$TOOL\" read-temperatures-json 2>/dev/null").output, "");
}

TEST(HelperTool, MachineWithoutAControllerFailsInWords) {
  const ToolRun run = runTool("\"$TOOL\" read-temperatures-json 2>&1");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, "no system management controller\n");
}

TEST(HelperTool, MachineWithoutPowermetricsOrRootFailsInWords) {
  const ToolRun run = runTool("\"$TOOL\" read-pro-telemetry-json 2>&1");
  EXPECT_EQ(run.status, 1);
  if (geteuid() == 0) {
    EXPECT_EQ(run.output, "/usr/bin/powermetrics cannot be started: No such file or directory\n");
  } else {
    EXPECT_EQ(run.output,
              "not running as root: the tool must be installed with owner root and mode 4755\n");
  }
}

TEST(HelperTool, EnvironmentHasNoEffect) {
  const ToolRun run = runTool(
      "QUORVEX_MACHINE=/no/such/file PATH=/nowhere LC_ALL=de_DE.UTF-8 \"$TOOL\" status-json 2>&1");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(decodeHelperStatus(run.output));
}

TEST(HelperTool, ClosedStandardErrorAndInputAreNoHarm) {
  const ToolRun run = runTool("\"$TOOL\" status-json <&- 2>&-");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(decodeHelperStatus(run.output));
}

TEST(HelperTool, LoadsNoLibraryThatSomebodyElseMayReplace) {
  const ToolRun run = runTool("readelf --dynamic \"$TOOL\"");
  ASSERT_EQ(run.status, 0);
  EXPECT_THAT(run.output, HasSubstr("libexpat"));
  // Libraries of a package manager lie in folders that belong to an ordinary user on some systems.
  for (const char* part : {"libfmt", "libicu", "libsimdjson", "libsqlite", "RPATH", "RUNPATH"}) {
    EXPECT_THAT(run.output, Not(HasSubstr(part)));
  }
}

}  // namespace
}  // namespace quorvex
