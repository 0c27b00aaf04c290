#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "PowermetricsParser.h"
#include "Samples.h"

namespace quorvex {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using testing::powermetricsSample;
using ::testing::SizeIs;

constexpr Date now{std::chrono::seconds{1'800'000'000}};

ProTelemetrySnapshot sample(const std::string& name) {
  auto result = parsePowermetrics(powermetricsSample(name), now);
  EXPECT_TRUE(result) << result.error().description;
  return result ? *std::move(result) : ProTelemetrySnapshot{};
}

ProTelemetrySnapshot parsed(const std::string& dictionary) {
  auto result = parsePowermetrics("<plist><dict>" + dictionary + "</dict></plist>", now);
  EXPECT_TRUE(result) << result.error().description;
  return result ? *std::move(result) : ProTelemetrySnapshot{};
}

std::string problem(const std::string& output) {
  const auto result = parsePowermetrics(output, now);
  return result ? "parsed" : result.error().description;
}

TEST(PowermetricsParser, LaptopSampleGivesItsHead) {
  const auto snapshot = sample("laptop.plist");
  EXPECT_TRUE(snapshot.isAvailable);
  EXPECT_EQ(snapshot.source, "powermetrics");
  EXPECT_EQ(snapshot.sampledAt, parseISO8601("2026-01-31T09:30:05Z"));
  EXPECT_EQ(snapshot.sampleIntervalMilliseconds, 1004);
  EXPECT_EQ(snapshot.error, std::nullopt);
}

TEST(PowermetricsParser, PowersInMilliwattsBecomeWatts) {
  const auto snapshot = sample("laptop.plist");
  EXPECT_THAT(snapshot.cpuPowerWatts, Optional(3.0));   // 3000 mW
  EXPECT_THAT(snapshot.gpuPowerWatts, Optional(0.25));  // 250 mW
  EXPECT_THAT(snapshot.anePowerWatts, Optional(0.0));   // told as 0: an answer
  EXPECT_EQ(snapshot.rawSampleSummary,
            "processor.cpu_power, processor.gpu_power, processor.ane_power");
}

TEST(PowermetricsParser, RowsStandForTasksAndGroups) {
  EXPECT_THAT(
      sample("laptop.plist").processes,
      ElementsAre(
          // 180.5 ms/s of 1000 ms/s; 465 + 36.5 wakeups/s; 8704 + 20480 bytes/s
          ProProcessEnergy{-2, "ALL_TASKS", 75.0, 18.05, 465.0 + 36.5, 8704.0 + 20480.0, true},
          ProProcessEnergy{412, "WindowServer", 41.25, 8.45, 120.0 + 30.5, 4096.0, false},
          ProProcessEnergy{0, "kernel_task", 9.5, 6.2, 300.0, 8192.0 + 16384.0, false},
          ProProcessEnergy{977, "Browser Helper (Renderer) <1> & Söhne", 22.5, 3.1, 44.0 + 6.0, 0.0,
                           false},
          ProProcessEnergy{-1, "DEAD_TASKS", 1.75, 0.3, 1.0, 512.0, true}));
}

TEST(PowermetricsParser, EnergiesOverTheSampleBecomeWatts) {
  const auto snapshot = sample("energies-only.plist");
  EXPECT_EQ(snapshot.sampleIntervalMilliseconds, 2000);
  EXPECT_THAT(snapshot.cpuPowerWatts, Optional(DoubleEq(4.0 / 2.0)));  // 4000 mJ in 2 s
  EXPECT_THAT(snapshot.gpuPowerWatts, Optional(DoubleEq(0.6 / 2.0)));  // 600 mJ in 2 s
  EXPECT_THAT(snapshot.anePowerWatts, Optional(DoubleEq(0.1 / 2.0)));  // 100 mJ in 2 s
  EXPECT_EQ(snapshot.rawSampleSummary,
            "processor.cpu_energy, gpu.gpu_energy, processor.ane_energy");
}

TEST(PowermetricsParser, TotalsOverTheIntervalBecomeRates) {
  EXPECT_THAT(sample("energies-only.plist").processes,
              ElementsAre(ProProcessEnergy{
                  .pid = 55,
                  .name = "indexer",
                  .energyImpact = 7.5,
                  .cpuTimePercent = 0.5 / 2.0 * 100.0,               // 0.5 s of processor in 2 s
                  .wakeupsPerSecond = 10.0 / 2.0 + 4.0 / 2.0,        // in 2 s
                  .diskBytesPerSecond = 1e6 / 2.0 + 500e3 / 2.0}));  // bytes in 2 s
}

TEST(PowermetricsParser, PowersOfClustersAddUp) {
  const auto snapshot = sample("cluster-power.plist");
  EXPECT_THAT(snapshot.cpuPowerWatts, Optional(0.4 + 1.6));  // 400 mW + 1600 mW
  EXPECT_THAT(snapshot.gpuPowerWatts, Optional(0.0755));     // 75.5 mW in the other section
  EXPECT_EQ(snapshot.anePowerWatts, std::nullopt);
  EXPECT_EQ(snapshot.rawSampleSummary, "processor.clusters.power, gpu.gpu_power");
}

TEST(PowermetricsParser, CoalitionsAreAggregatesAndTheirTasksAreRows) {
  const auto snapshot = sample("coalitions.plist");
  EXPECT_THAT(snapshot.processes,
              ElementsAre(
                  // A total without name and pid of its own still is ALL_TASKS.
                  ProProcessEnergy{-2, "ALL_TASKS", 33.0, 5.0, 15.0, 300.0, true},
                  ProProcessEnergy{-2 - 1, "com.apple.system", 3.0, 5.0, 15.0, 300.0, true},
                  ProProcessEnergy{-2 - 512, "com.example.editor", 30.0, 5.0, 15.0, 300.0, true},
                  ProProcessEnergy{1, "launchd", 2.0, 1.0, 5.0, 0.0, false},
                  ProProcessEnergy{88, "logd", 1.0, 0.5, 10.0, 300.0, false},
                  ProProcessEnergy{900, "Editor", 30.0, 3.5, 0.0, 0.0, false}));
}

TEST(PowermetricsParser, TasksOfCoalitionsAreNotCountedTwice) {
  const std::string task = "<dict><key>pid</key><integer>5</integer></dict>";
  const auto snapshot =
      parsed("<key>tasks</key><array>" + task +
             "</array><key>coalitions</key><array><dict><key>id</key><integer>3</integer>"
             "<key>tasks</key><array>" +
             task + "</array></dict></array>");
  EXPECT_THAT(snapshot.processes,
              ElementsAre(ProProcessEnergy{.pid = -5, .name = "coalition 3", .isAggregate = true},
                          ProProcessEnergy{.pid = 5, .name = "pid 5"}));
}

TEST(PowermetricsParser, MissingKeysAreAbsentFields) {
  const auto snapshot = sample("missing-keys.plist");
  EXPECT_EQ(snapshot.sampledAt, now);
  EXPECT_EQ(snapshot.sampleIntervalMilliseconds, 1000);
  EXPECT_THAT(snapshot.cpuPowerWatts, Optional(0.9));
  EXPECT_EQ(snapshot.gpuPowerWatts, std::nullopt);
  EXPECT_EQ(snapshot.anePowerWatts, std::nullopt);
  EXPECT_THAT(
      snapshot.processes,
      ElementsAre(
          ProProcessEnergy{.pid = 7, .name = "only a name"},
          ProProcessEnergy{.pid = 8, .name = "pid 8", .cpuTimePercent = 25.0},
          ProProcessEnergy{.pid = 9, .name = "one wakeup kind", .wakeupsPerSecond = 3.5},
          ProProcessEnergy{.pid = 10, .name = "one disk way", .diskBytesPerSecond = 2048.0}));
}

TEST(PowermetricsParser, NumbersThatCannotBeAreAbsent) {
  const auto snapshot = sample("odd-numbers.plist");
  EXPECT_EQ(snapshot.sampledAt, now);
  EXPECT_EQ(snapshot.sampleIntervalMilliseconds, 1000);
  EXPECT_EQ(snapshot.cpuPowerWatts, std::nullopt);  // below 0, and an energy over no time
  EXPECT_THAT(snapshot.gpuPowerWatts, Optional(1.0));
  EXPECT_EQ(snapshot.anePowerWatts, std::nullopt);
  EXPECT_THAT(snapshot.processes, ElementsAre(ProProcessEnergy{.pid = 3, .name = "pid 3"}));
}

TEST(PowermetricsParser, ZeroPowerIsAnAnswer) {
  const auto snapshot = sample("idle.plist");
  EXPECT_THAT(snapshot.cpuPowerWatts, Optional(0.0));
  EXPECT_THAT(snapshot.gpuPowerWatts, Optional(0.0));
  EXPECT_THAT(snapshot.anePowerWatts, Optional(0.0));
  EXPECT_THAT(snapshot.processes, IsEmpty());
}

TEST(PowermetricsParser, OnlyTheFirstOfSeveralSamplesIsRead) {
  EXPECT_EQ(sample("two-samples.plist"), sample("idle.plist"));
}

TEST(PowermetricsParser, NULsAndBlankLinesBeforeTheSampleAreSkipped) {
  const std::string output = powermetricsSample("idle.plist");
  EXPECT_EQ(problem(std::string{"\0\n \0", 4} + output), "parsed");
}

TEST(PowermetricsParser, LongNamesAreCutBetweenCharacters) {
  const auto snapshot = parsed(
      "<key>tasks</key><array><dict><key>pid</key><integer>5</integer>"
      "<key>name</key><string>x" +
      [] {
        std::string name;
        for (int i = 0; i < 200; ++i) {
          name += "ü";
        }
        return name;
      }() +
      "</string></dict></array>");
  ASSERT_THAT(snapshot.processes, SizeIs(1));
  // x and 127 characters of two bytes are 255 bytes.
  EXPECT_EQ(snapshot.processes[0].name.size(), 255U);
  EXPECT_TRUE(snapshot.processes[0].name.ends_with("ü"));
}

TEST(PowermetricsParser, SampleWithNothingInItIsAProblem) {
  EXPECT_EQ(problem("<plist><dict/></plist>"), "neither power nor processes in the sample");
  EXPECT_EQ(problem("<plist><array/></plist>"), "neither power nor processes in the sample");
  EXPECT_EQ(problem("<plist><string>tasks</string></plist>"),
            "neither power nor processes in the sample");
}

TEST(PowermetricsParser, SectionsOfOtherTypesAreAbsent) {
  EXPECT_EQ(
      problem("<plist><dict><key>tasks</key><string>a</string><key>processor</key><array/>"
              "<key>coalitions</key><true/><key>gpu</key><integer>1</integer></dict></plist>"),
      "neither power nor processes in the sample");
}

TEST(PowermetricsParser, OutputThatIsNoPropertyListIsAProblem) {
  EXPECT_THAT(problem(""), HasSubstr("no property list: line 1: "));
  EXPECT_THAT(problem("Machine model: Mac14,2\n*** Sampled system activity ***\n"),
              HasSubstr("no property list: line 1: "));
  EXPECT_THAT(problem(std::string(3, '\0')), HasSubstr("no property list: line 1: "));
}

TEST(PowermetricsParser, SampleThatIsCutAnywhereIsAProblem) {
  for (const char* name : {"laptop.plist", "energies-only.plist", "cluster-power.plist",
                           "coalitions.plist", "missing-keys.plist", "odd-numbers.plist"}) {
    const std::string output = powermetricsSample(name);
    const std::size_t whole = output.rfind("</plist>") + std::string_view{"</plist>"}.size();
    // Every byte of the short samples, every seventh or so of the long ones.
    const std::size_t step = whole < 2000 ? 1 : 7;
    for (std::size_t length = 0; length < whole; length += step) {
      ASSERT_THAT(problem(output.substr(0, length)), HasSubstr("no property list"))
          << name << length;
    }
    EXPECT_THAT(problem(output.substr(0, whole - 1)), HasSubstr("no property list")) << name;
    EXPECT_EQ(problem(output.substr(0, whole)), "parsed") << name;
  }
}

}  // namespace
}  // namespace quorvex
