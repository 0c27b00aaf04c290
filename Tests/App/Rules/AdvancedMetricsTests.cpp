#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "AdvancedMetrics.h"
#include "RulesSamples.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using samples::at;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A battery's state `seconds` after the start of the day; negative watts leave the battery.
SystemPowerState battery(double watts, double seconds) {
  SystemPowerState state;
  state.battery = samples::batteryAt(watts);
  state.timestamp = at(seconds);
  return state;
}

SystemPowerState charging(double watts, double seconds) {
  SystemPowerState state = battery(watts, seconds);
  state.battery->isCharging = true;
  state.battery->acConnected = true;
  return state;
}

std::string unchanged(const std::vector<SystemPowerState>& history, const SystemPowerState& state,
                      double now) {
  return valueUnchangedDescription(state, history, std::nullopt, at(now));
}

std::vector<std::string> labels(const std::vector<LabelledValue>& rows) {
  std::vector<std::string> result;
  for (const LabelledValue& row : rows) {
    result.push_back(row.label);
  }
  return result;
}

TEST(AdvancedDuration, BelowASecondIsLessThanOne) {
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(0.4), "<1s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(0.99), "<1s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(-3.0), "<1s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(1.0), "1s");
}

TEST(AdvancedDuration, BelowAMinuteSecondsAreRounded) {
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(14.5), "15s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(2.5), "3s") << "halves are rounded up";
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(59.6), "60s");
}

TEST(AdvancedDuration, FromAMinuteSecondsAreCut) {
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(60.0), "1m 0s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(75.9), "1m 15s");
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(7200.0), "120m 0s");
}

TEST(AdvancedDuration, NumbersThatAreNotFiniteAreWorded) {
  EXPECT_EQ(AdvancedMetricsFormat::formatDuration(nan), "<1s");
  EXPECT_THAT(AdvancedMetricsFormat::formatDuration(infinity), testing::HasSubstr("m "));
}

TEST(ValueUnchanged, WithoutAReadingIsNotApplicable) {
  EXPECT_EQ(unchanged({battery(-10.0, 0)}, SystemPowerState{}, 10), "N/A");
}

TEST(ValueUnchanged, CountsFromWhereTheValueBegan) {
  EXPECT_EQ(
      unchanged({battery(-8.0, 0), battery(-10.0, 10), battery(-10.0, 20)}, battery(-10.0, 30), 35),
      "25s");
}

TEST(ValueUnchanged, DifferencesUpToAFewHundredthsOfAWattContinueIt) {
  EXPECT_EQ(unchanged({battery(-10.0, 10)}, battery(-10.04, 20), 30), "20s");
  EXPECT_EQ(unchanged({battery(-10.0, 10)}, battery(-10.06, 20), 30), "10s");
}

TEST(ValueUnchanged, ASlowDriftRestartsItInTheEnd) {
  EXPECT_EQ(unchanged({battery(-10.0, 0), battery(-10.04, 10)}, battery(-10.08, 20), 25), "5s")
      << "0.08 W away from where the stretch began";
}

TEST(ValueUnchanged, AnotherKindAtEqualWattsRestartsIt) {
  EXPECT_EQ(unchanged({battery(-10.0, 0), charging(10.0, 20)}, charging(10.0, 30), 32), "12s");
}

TEST(ValueUnchanged, EntriesWithoutAReadingArePassedOver) {
  EXPECT_EQ(unchanged({battery(-10.0, 0), SystemPowerState{}}, battery(-10.0, 10), 12), "12s");
}

TEST(ValueUnchanged, WithoutHistoryTheStatesOwnTimeServes) {
  EXPECT_EQ(unchanged({}, battery(-10.0, 10), 13), "3s");
}

TEST(ValueUnchanged, APrivilegedTotalDoesNotContinueTheHistory) {
  SystemPowerState desktop;
  desktop.timestamp = at(20);
  const ProTelemetrySnapshot sample{
      .isAvailable = true, .sampledAt = at(18), .cpuPowerWatts = 10.0};
  const std::vector<SystemPowerState> history{battery(-10.0, 0)};
  EXPECT_EQ(valueUnchangedDescription(desktop, history, sample, at(24)), "4s");
}

TEST(ValueUnchanged, NaNNeverContinues) {
  EXPECT_EQ(unchanged({charging(infinity, 0)}, charging(infinity, 10), 12), "2s");
}

TEST(AdvancedMetrics, TellsSourceAndTrustOfALaptop) {
  SystemPowerState state = battery(-18.0, 0);  // 12 V * -1.5 A = -18 W
  state.power = PowerMetrics{.cpuPower = 5.0, .gpuPower = 2.5, .ramPower = 1.25};
  const AdvancedMetrics metrics = advancedMetrics(state, {}, std::nullopt, {}, at(14));
  EXPECT_EQ(metrics.heading, "Source & Trust");
  EXPECT_THAT(
      metrics.rows,
      ElementsAre(LabelledValue{"Source", "Battery draw"}, LabelledValue{"Sample age", "14s"},
                  LabelledValue{"Value unchanged", "14s"},
                  LabelledValue{"Raw battery", "12.000V x -1.500A = -18.0W"},
                  LabelledValue{"IOReport", "CPU 5.0W, GPU 2.5W, ANE 0.0W, DRAM 1.2W"}));
}

TEST(AdvancedMetrics, ADesktopWithoutChannelsSaysSo) {
  const AdvancedMetrics metrics = advancedMetrics({}, {}, std::nullopt, {}, at(0));
  EXPECT_THAT(labels(metrics.rows),
              ElementsAre("Source", "Sample age", "Value unchanged", "IOReport"));
  EXPECT_EQ(metrics.rows[0].value, "Unavailable");
  EXPECT_EQ(metrics.rows[2].value, "N/A");
  EXPECT_EQ(metrics.rows[3].value, "No CPU/GPU/ANE/DRAM energy channels returned");
}

TEST(AdvancedMetrics, ASampleAgeBelowASecondIsLessThanOne) {
  const AdvancedMetrics metrics = advancedMetrics(battery(-10.0, 0), {}, std::nullopt, {}, at(0.4));
  EXPECT_EQ(metrics.rows[1].value, "<1s");
}

TEST(ActivityEstimate, SaysWhatItIs) {
  const AdvancedMetrics metrics = advancedMetrics({}, {}, std::nullopt, {}, at(0));
  EXPECT_EQ(metrics.activityHeading, "Top Activity Estimate");
  EXPECT_EQ(metrics.activityCaption,
            "Ranked by process CPU time, wakeups, I/O, and any macOS energy counter available "
            "without sudo. This is a contributor hint, not exact watts.");
}

TEST(ActivityEstimate, RowsLeaveOutWhatWasNotMeasured) {
  const ProcessSamplerState sampler{
      .activities = {{10, "Xcode", 99.6, 1.0, 0.0, 1.254, 120.0},
                     {11, "bash", 0.4, 0.99, 0.0, std::nullopt, 0.5}}};
  const AdvancedMetrics metrics = advancedMetrics({}, {}, std::nullopt, sampler, at(0));
  ASSERT_EQ(metrics.activities.size(), 2U);
  EXPECT_EQ(metrics.activities[0].name, "Xcode");
  EXPECT_THAT(metrics.activities[0].figures, ElementsAre("1.25W est", "100% CPU", "1 wake/s"));
  EXPECT_EQ(metrics.activities[0].accessibilityText, "Xcode: 1.25W est, 100% CPU, 1 wake/s");
  EXPECT_THAT(metrics.activities[1].figures, ElementsAre("0% CPU"));
  EXPECT_EQ(metrics.activityEmptyText, "");
}

TEST(ActivityEstimate, AnEmptyListTellsTheSamplersStatus) {
  EXPECT_EQ(advancedMetrics({}, {}, std::nullopt, {}, at(0)).activityEmptyText,
            "No process activity sample yet");
  const ProcessSamplerState sampling{.status = std::string{ProcessSampler::samplingStatus}};
  EXPECT_EQ(advancedMetrics({}, {}, std::nullopt, sampling, at(0)).activityEmptyText,
            "Sampling process activity...");
}

TEST(ProTelemetrySection, IsAbsentWithoutASnapshot) {
  EXPECT_FALSE(advancedMetrics({}, {}, std::nullopt, {}, at(0)).proTelemetry);
}

TEST(ProTelemetrySection, TellsTheSampleAndItsProcesses) {
  const ProTelemetrySnapshot snapshot{.source = "powermetrics",
                                      .sampledAt = at(0),
                                      .processes = {{.pid = 7,
                                                     .name = "WindowServer",
                                                     .energyImpact = 12.34,
                                                     .cpuTimePercent = 45.6},
                                                    {.pid = 8, .name = "mds"}},
                                      .rawSampleSummary = "cpu_power gpu_power",
                                      .error = "partial"};
  const auto section = advancedMetrics({}, {}, snapshot, {}, at(75.9)).proTelemetry;
  ASSERT_TRUE(section);
  EXPECT_EQ(section->heading, "Pro Telemetry");
  EXPECT_THAT(section->rows, ElementsAre(LabelledValue{"Source", "powermetrics"},
                                         LabelledValue{"Sample age", "1m 15s"},
                                         LabelledValue{"Power keys", "cpu_power gpu_power"}));
  EXPECT_EQ(section->error, (ColoredText{"partial", ColorName::orange}));
  ASSERT_EQ(section->processes.size(), 2U);
  EXPECT_EQ(section->processes[0].name, "WindowServer");
  EXPECT_THAT(section->processes[0].figures, ElementsAre("pid 7", "EI 12.3", "46% CPU"));
  EXPECT_THAT(section->processes[1].figures, ElementsAre("pid 8"));
  EXPECT_EQ(section->emptyText, "");
}

TEST(ProTelemetrySection, WithoutDetailsShowsWhatThereIs) {
  const auto section =
      advancedMetrics({}, {}, ProTelemetrySnapshot{.source = "powermetrics"}, {}, at(0))
          .proTelemetry;
  ASSERT_TRUE(section);
  EXPECT_THAT(labels(section->rows), ElementsAre("Source", "Sample age"));
  EXPECT_FALSE(section->error);
  EXPECT_THAT(section->processes, IsEmpty());
  EXPECT_EQ(section->emptyText, "No privileged process energy rows returned");
}

TEST(ProcessSampler, SleepsForTheRefreshIntervalAndAtLeastTwoSeconds) {
  EXPECT_DOUBLE_EQ(ProcessSampler::sleepSeconds(0.5), 2.0);
  EXPECT_DOUBLE_EQ(ProcessSampler::sleepSeconds(2.0), 2.0);
  EXPECT_DOUBLE_EQ(ProcessSampler::sleepSeconds(10.0), 10.0);
  EXPECT_DOUBLE_EQ(ProcessSampler::sleepSeconds(nan), 2.0);
}

TEST(ProcessSampler, AnEmptySampleIsTold) {
  EXPECT_EQ(ProcessSampler::statusAfterSampling({}), "No accessible process activity counters");
  const std::vector<ProcessActivityInfo> some(1);
  EXPECT_EQ(ProcessSampler::statusAfterSampling(some), std::nullopt);
}

}  // namespace
}  // namespace quorvex
