#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "FakeSMC.h"
#include "HelperCommands.h"
#include "HelperReplies.h"
#include "Samples.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeSMC;
using ::testing::IsEmpty;
using ::testing::Lt;
using ::testing::Optional;
using testing::powermetricsSample;

constexpr Date now{std::chrono::seconds{1'800'000'000}};

template <std::size_t count>
std::optional<HelperCommand> command(const std::array<const char*, count>& words) {
  return helperCommand(static_cast<int>(count - 1), words.data());
}

HelperAnswer telemetry(std::string output) {
  return answerTelemetry(std::move(output), now);
}

/// A sample of `count` tasks with pids from 1 and an energy impact equal to the pid.
std::string sampleOfTasks(int count, const std::string& name) {
  std::string rows;
  for (int pid = 1; pid <= count; ++pid) {
    rows += "<dict><key>pid</key><integer>" + std::to_string(pid) +
            "</integer><key>name</key><string>" + name +
            "</string><key>energy_impact</key><integer>" + std::to_string(pid) +
            "</integer></dict>";
  }
  return "<plist><dict><key>all_tasks</key><dict/><key>tasks</key><array>" + rows +
         "</array><key>processor</key><dict><key>cpu_power</key><integer>1000</integer></dict>"
         "</dict></plist>";
}

TEST(HelperCommands, ThreeWordsAreCommands) {
  EXPECT_EQ(command<3>({"tool", "status-json", nullptr}), HelperCommand::status);
  EXPECT_EQ(command<3>({"tool", "read-pro-telemetry-json", nullptr}), HelperCommand::telemetry);
  EXPECT_EQ(command<3>({"tool", "read-temperatures-json", nullptr}), HelperCommand::temperatures);
}

TEST(HelperCommands, AnythingElseIsNoCommand) {
  EXPECT_EQ(command<1>({nullptr}), std::nullopt);
  EXPECT_EQ(command<2>({"tool", nullptr}), std::nullopt);
  EXPECT_EQ(command<2>({"status-json", nullptr}), std::nullopt);
  EXPECT_EQ(command<4>({"tool", "status-json", "status-json", nullptr}), std::nullopt);
  EXPECT_EQ(command<4>({"tool", "status-json", "", nullptr}), std::nullopt);
  for (const char* word :
       {"", "status", "status-json ", "STATUS-JSON", "status-jso", "status-json2", "--help", "-h",
        "/etc/passwd", "read-temperatures-json\n"}) {
    EXPECT_EQ(command<3>({"tool", word, nullptr}), std::nullopt) << word;
  }
}

TEST(HelperCommands, UsageNamesTheThreeWordsAndExitsWith64) {
  EXPECT_EQ(answerUsage(),
            (HelperAnswer{64, "",
                          "usage: QuorvexHelper status-json | read-pro-telemetry-json | "
                          "read-temperatures-json\n"}));
}

TEST(HelperCommands, StatusOfAnInstalledFileIsWhatTheClientReads) {
  const auto answer =
      answerStatus({.attributes = FileAttributeRecord{04755, 0, 0}, .isExecutable = true});
  EXPECT_EQ(answer.exitStatus, 0);
  EXPECT_EQ(answer.error, "");
  const auto status = decodeHelperStatus(answer.output);
  ASSERT_TRUE(status);
  EXPECT_EQ(*status, (HelperStatus{.isInstalled = true,
                                   .isExecutable = true,
                                   .isSetuidRoot = true,
                                   .ownerUserID = 0,
                                   .groupID = 0,
                                   .installedVersion = "0.14.0",
                                   .supportsProTelemetry = true,
                                   .path = "/Library/PrivilegedHelperTools/com.quorvex.helper",
                                   .error = std::nullopt}));
}

TEST(HelperCommands, StatusOfAToolThatIsNotInstalledTellsSo) {
  const auto status = decodeHelperStatus(answerStatus({}).output);
  ASSERT_TRUE(status);
  EXPECT_FALSE(status->isInstalled);
  EXPECT_FALSE(status->isSetuidRoot);
  EXPECT_EQ(status->ownerUserID, -1);
  EXPECT_EQ(status->installedVersion, "0.14.0");
  EXPECT_TRUE(status->supportsProTelemetry);
}

TEST(HelperCommands, StatusWithAnotherOwnerOrModeIsNotSetuidRoot) {
  for (const auto& attributes :
       {FileAttributeRecord{04755, 501, 0}, FileAttributeRecord{0755, 0, 0},
        FileAttributeRecord{std::nullopt, 0, 0}, FileAttributeRecord{04755, std::nullopt, 0}}) {
    const auto status = decodeHelperStatus(answerStatus({.attributes = attributes}).output);
    ASSERT_TRUE(status);
    EXPECT_FALSE(status->isSetuidRoot);
  }
}

TEST(HelperCommands, PowermetricsRunsWithFixedArgumentsWithinTheClientsTime) {
  const BoundedCommand powermetrics = powermetricsCommand();
  EXPECT_EQ(powermetrics.path, "/usr/bin/powermetrics");
  EXPECT_THAT(powermetrics.arguments,
              ElementsAre("--format", "plist", "--sample-count", "1", "--sample-rate", "1000",
                          "--samplers", "tasks,cpu_power,gpu_power,ane_power",
                          "--show-process-energy", "--show-process-io"));
  EXPECT_THAT(powermetrics.timeLimit, Lt(std::chrono::seconds{20}));
}

TEST(HelperCommands, TelemetryIsWhatTheClientReads) {
  const auto answer = telemetry(powermetricsSample("laptop.plist"));
  EXPECT_EQ(answer.exitStatus, 0);
  EXPECT_EQ(answer.error, "");
  const auto snapshot = decodeProTelemetrySnapshot(answer.output);
  ASSERT_TRUE(snapshot);
  EXPECT_TRUE(snapshot->isAvailable);
  EXPECT_THAT(snapshot->cpuPowerWatts, Optional(3.0));
  EXPECT_EQ(snapshot->sampledAt, parseISO8601("2026-01-31T09:30:05Z"));
}

TEST(HelperCommands, TelemetryRowsComeWithAggregatesFirstThenTheMostActive) {
  const auto snapshot =
      decodeProTelemetrySnapshot(telemetry(powermetricsSample("laptop.plist")).output);
  ASSERT_TRUE(snapshot);
  std::vector<std::string> names;
  for (const auto& row : snapshot->processes) {
    names.push_back(row.name);
  }
  EXPECT_THAT(names, ElementsAre("ALL_TASKS", "DEAD_TASKS", "WindowServer",
                                 "Browser Helper (Renderer) <1> & Söhne", "kernel_task"));
}

TEST(HelperCommands, TelemetryOfEverySampleDecodes) {
  for (const char* name :
       {"laptop.plist", "energies-only.plist", "cluster-power.plist", "coalitions.plist",
        "missing-keys.plist", "odd-numbers.plist", "idle.plist", "two-samples.plist"}) {
    const auto answer = telemetry(powermetricsSample(name));
    EXPECT_EQ(answer.exitStatus, 0) << name;
    EXPECT_TRUE(decodeProTelemetrySnapshot(answer.output)) << name;
  }
}

TEST(HelperCommands, TelemetryReplyFitsIntoAPipeByLeavingOutTheLeastActive) {
  const auto answer = telemetry(sampleOfTasks(2000, "some process"));
  EXPECT_LE(answer.output.size(), longestTelemetryReply);
  const auto snapshot = decodeProTelemetrySnapshot(answer.output);
  ASSERT_TRUE(snapshot);
  const auto& rows = snapshot->processes;
  ASSERT_GT(rows.size(), 100U);
  EXPECT_EQ(rows[0].name, "ALL_TASKS");
  EXPECT_EQ(rows[1].pid, 2000);
  EXPECT_EQ(rows.back().pid, 2000 - static_cast<std::int32_t>(rows.size()) + 2);
  EXPECT_EQ(snapshot->rawSampleSummary,
            "processor.cpu_power; " + std::to_string(rows.size()) + " of 2001 process rows");
}

TEST(HelperCommands, TelemetryReplyOfTheLongestNamesStillFits) {
  std::string name;
  for (int i = 0; i < 1000; ++i) {
    name += "&quot;";
  }
  const auto answer = telemetry(sampleOfTasks(200, name));
  EXPECT_LE(answer.output.size(), longestTelemetryReply);
  const auto snapshot = decodeProTelemetrySnapshot(answer.output);
  ASSERT_TRUE(snapshot);
  EXPECT_THAT(snapshot->processes, Not(IsEmpty()));
}

TEST(HelperCommands, TelemetryWithoutASampleFailsInWords) {
  EXPECT_EQ(answerTelemetry(CommandFailure{"/usr/bin/powermetrics exited with status 1: no"}, now),
            (HelperAnswer{1, "", "/usr/bin/powermetrics exited with status 1: no\n"}));
  EXPECT_EQ(telemetry("<plist><dict/></plist>"),
            (HelperAnswer{1, "", "powermetrics: neither power nor processes in the sample\n"}));
  EXPECT_EQ(telemetry("garbage").exitStatus, 1);
  EXPECT_EQ(telemetry("garbage").output, "");
  EXPECT_EQ(telemetry("").exitStatus, 1);
}

TEST(HelperCommands, TemperaturesAreWhatTheClientReads) {
  FakeSMC smc;
  smc.setFloat("Tp01", 47.5F);
  smc.set("TA0P", "sp78", {0x32, 0x80});
  smc.setFloat("TC0P", 150.0F);
  const auto answer = answerTemperatures(&smc);
  EXPECT_EQ(answer.exitStatus, 0);
  EXPECT_THAT(decodeTemperatureReply(answer.output),
              Optional(ElementsAre(TemperatureSensor{"TA0P", "Ambient", 50.5},
                                   TemperatureSensor{"Tp01", "CPU Performance Core 1", 47.5})));
  EXPECT_EQ(smc.openConnections(), 0U);
}

TEST(HelperCommands, ControllerWithoutKnownKeysIsAnEmptyList) {
  FakeSMC smc;
  EXPECT_EQ(answerTemperatures(&smc), (HelperAnswer{0, "[]\n", ""}));
}

TEST(HelperCommands, MissingOrRefusingControllerFailsInWords) {
  const HelperAnswer none{1, "", "no system management controller\n"};
  EXPECT_EQ(answerTemperatures(nullptr), none);
  FakeSMC smc;
  smc.setAvailable(false);
  EXPECT_EQ(answerTemperatures(&smc), none);
}

}  // namespace
}  // namespace quorvex
