#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "JSONFormatter.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

/// 2026-01-31T09:30:05.9Z: the fraction must vanish from every text.
constexpr Date sampleTime{std::chrono::milliseconds{1'769'851'805'900}};

SystemPowerState bareState() {
  return SystemPowerState{.timestamp = sampleTime};
}

NetworkProcessInfo process(std::int32_t pid, double inPerSec) {
  return NetworkProcessInfo{.id = pid,
                            .name = "app" + std::to_string(pid),
                            .bytesIn = 1000,
                            .bytesOut = 200,
                            .bytesInPerSec = inPerSec,
                            .bytesOutPerSec = 0.25,
                            .attributionSource = NetworkAttributionSource::nettop};
}

NetworkSnapshot activeNetwork() {
  return NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 5000, 0, 1.25, 0.0)},
                         .timestamp = sampleTime};
}

std::size_t occurrences(const std::string& text, std::string_view piece) {
  std::size_t count = 0;
  for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
    ++count;
  }
  return count;
}

TEST(JSONFormatterBattery, HasItsKeysSortedAndTheSerialNumberLeftOut) {
  BatteryInfo info = samples::battery();
  info.voltage = 12.3456;
  info.amperage = -1.5;
  info.wattage = -18.5184;  // 12.3456 V * -1.5 A
  info.temperature = 30.505;
  info.adapterWatts = 96;
  info.timeRemaining = 125;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  info.serialNumber = "SERIAL";
  EXPECT_EQ(JSONFormatter::batteryDict(info),
            "{\n"
            "  \"acConnected\" : false,\n"
            "  \"adapterWatts\" : 96,\n"
            "  \"amperage\" : -1.5,\n"
            "  \"chargePercent\" : 80,\n"
            "  \"currentCapacity\" : 4800,\n"
            "  \"cycleCount\" : 120,\n"
            "  \"designCapacity\" : 6250,\n"
            "  \"health\" : \"Good\",\n"
            "  \"healthPercent\" : 96,\n"
            "  \"isCharging\" : false,\n"
            "  \"isFullyCharged\" : false,\n"
            "  \"isInsufficientCharger\" : false,\n"
            "  \"isPluggedInAndDraining\" : false,\n"
            "  \"maxCapacity\" : 6000,\n"
            "  \"temperature\" : 30.5,\n"  // 30.505 in binary is just below: "30.50" of "%.2f"
            "  \"timeRemaining\" : 125,\n"
            "  \"timeRemainingKind\" : \"untilEmpty\",\n"
            "  \"voltage\" : 12.346,\n"
            "  \"wattage\" : -18.52\n"
            "}");
}

TEST(JSONFormatterBattery, LeavesAbsentValuesOutInsteadOfWritingNull) {
  const std::string text = JSONFormatter::batteryDict(samples::battery());
  EXPECT_THAT(text, Not(HasSubstr("adapterWatts")));
  EXPECT_THAT(text, Not(HasSubstr("timeRemaining")));
  EXPECT_THAT(text, Not(HasSubstr("null")));
}

TEST(JSONFormatterBattery, KeepsAZeroThatIsPresent) {
  BatteryInfo info = samples::battery();
  info.adapterWatts = 0;
  info.timeRemaining = 0;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  const std::string text = JSONFormatter::batteryDict(info);
  EXPECT_THAT(text, HasSubstr("\"adapterWatts\" : 0,"));
  EXPECT_THAT(text, HasSubstr("\"timeRemaining\" : 0,"));
  EXPECT_THAT(text, HasSubstr("\"timeRemainingKind\" : \"untilFull\","));
}

TEST(JSONFormatterBattery, TellsDrainingOnACUnderBothNames) {
  BatteryInfo info = samples::batteryAt(-1.01);
  info.acConnected = true;
  const std::string text = JSONFormatter::batteryDict(info);
  EXPECT_THAT(text, HasSubstr("\"isInsufficientCharger\" : true,"));
  EXPECT_THAT(text, HasSubstr("\"isPluggedInAndDraining\" : true,"));
}

TEST(JSONFormatterNumbers, TheTextOfTheFormatDecidesAndIsTrimmed) {
  BatteryInfo info = samples::battery();
  // 12.345 is stored just above itself, 0.125 exactly: ties go to even.
  info.wattage = 12.345;
  EXPECT_THAT(JSONFormatter::batteryDict(info), HasSubstr("\"wattage\" : 12.35\n"));
  info.wattage = 0.125;
  EXPECT_THAT(JSONFormatter::batteryDict(info), HasSubstr("\"wattage\" : 0.12\n"));
  info.wattage = 12.30;
  EXPECT_THAT(JSONFormatter::batteryDict(info), HasSubstr("\"wattage\" : 12.3\n"));
  info.wattage = 5.001;
  EXPECT_THAT(JSONFormatter::batteryDict(info), HasSubstr("\"wattage\" : 5\n"));
  info.wattage = -0.001;
  EXPECT_THAT(JSONFormatter::batteryDict(info), HasSubstr("\"wattage\" : 0\n"));
}

TEST(JSONFormatterNumbers, ANumberThatIsNotFiniteMakesTheWholeTextEmpty) {
  SystemPowerState state = bareState();
  state.sensors = {{"TB1T", "Battery 1", std::numeric_limits<double>::quiet_NaN()}};
  EXPECT_EQ(JSONFormatter::systemStateDict(state), "{}");
  state.sensors.front().temperature = std::numeric_limits<double>::infinity();
  EXPECT_EQ(JSONFormatter::systemStateDict(state), "{}");
}

TEST(JSONFormatterTexts, ATextThatIsNoUTF8MakesTheWholeTextEmpty) {
  SystemPowerState state = bareState();
  state.fans = {{.id = 0, .name = "Fan\xff"}};
  EXPECT_EQ(JSONFormatter::systemStateDict(state), "{}");
}

TEST(JSONFormatterTexts, SlashesAreEscaped) {
  SystemPowerState state = bareState();
  state.fans = {{.id = 0, .name = "Left/Right \"fan\""}};
  EXPECT_THAT(JSONFormatter::systemStateDict(state),
              HasSubstr("\"name\" : \"Left\\/Right \\\"fan\\\"\""));
}

TEST(JSONFormatterState, ADesktopWithoutSiliconKeepsAnEmptyObjectOfReadings) {
  EXPECT_EQ(JSONFormatter::systemStateDict(bareState()),
            "{\n"
            "  \"powerReadings\" : {},\n"
            "  \"thermal\" : {\n"
            "    \"isLowPowerMode\" : false,\n"
            "    \"pressure\" : 0,\n"
            "    \"state\" : \"nominal\"\n"
            "  },\n"
            "  \"timestamp\" : \"2026-01-31T09:30:05Z\"\n"
            "}");
}

TEST(JSONFormatterState, EmptyListsOfFansAndSensorsLeaveTheirKeysOut) {
  const std::string text = JSONFormatter::systemStateDict(bareState());
  EXPECT_THAT(text, Not(HasSubstr("fans")));
  EXPECT_THAT(text, Not(HasSubstr("sensors")));
}

TEST(JSONFormatterState, WithoutActiveInterfacesThereIsNoNetwork) {
  SystemPowerState state = bareState();
  state.network = NetworkSnapshot{
      .interfaces = {samples::interface(4, "en0"), samples::interface(1, "lo0", 100, 100)},
      .processes = {process(1, 5.0)}};
  EXPECT_THAT(JSONFormatter::systemStateDict(state), Not(HasSubstr("network")));
}

TEST(JSONFormatterState, WithoutANetworkReadingThereIsNoNetwork) {
  EXPECT_THAT(JSONFormatter::systemStateDict(bareState()), Not(HasSubstr("network")));
}

TEST(JSONFormatterState, HasEveryPartInOrder) {
  SystemPowerState state = bareState();
  state.battery = samples::batteryAt(-12.0);
  state.power = PowerMetrics{.cpuPower = 3.2,
                             .gpuPower = 0.456,
                             .anePower = 0.0,
                             .ramPower = 0.38,
                             .systemPower = 4.036,
                             .cpuUsagePercent = 12.5,
                             .gpuUsagePercent = 7.0,
                             .siliconChannelsComplete = true};
  state.thermal = {.state = ThermalState::serious, .pressure = 2, .isLowPowerMode = true};
  state.fans = {{.id = 0, .name = "Left Fan", .currentRPM = 2500, .minRPM = 1200, .maxRPM = 6000},
                {.id = 1, .name = "Right Fan", .currentRPM = 0, .minRPM = 1200, .maxRPM = 6000}};
  state.sensors = {{"TB1T", "Battery 1", 31.456}};
  state.network = NetworkSnapshot{
      .interfaces = {samples::interface(4, "en0", 5000, 700, 1.26, 0.0),
                     samples::interface(9, "utun3"), samples::interface(5, "en1", 0, 1, 0.5, 2.0)},
      .processes = {process(7, 10.0)},
      .attributionSource = NetworkAttributionSource::nettop,
      .attributionUnavailableReason = "why",
      .timestamp = sampleTime};
  // Totals: 1.26 + 0.5 = 1.76 and 0 + 2 bytes a second.
  const std::string text = JSONFormatter::systemStateDict(state);
  const std::string rest = text.substr(text.find("  \"fans\""));
  EXPECT_EQ(rest,
            "  \"fans\" : [\n"
            "    {\n"
            "      \"currentRPM\" : 2500,\n"
            "      \"id\" : 0,\n"
            "      \"maxRPM\" : 6000,\n"
            "      \"minRPM\" : 1200,\n"
            "      \"name\" : \"Left Fan\"\n"
            "    },\n"
            "    {\n"
            "      \"currentRPM\" : 0,\n"
            "      \"id\" : 1,\n"
            "      \"maxRPM\" : 6000,\n"
            "      \"minRPM\" : 1200,\n"
            "      \"name\" : \"Right Fan\"\n"
            "    }\n"
            "  ],\n"
            "  \"network\" : {\n"
            "    \"attributionSource\" : \"nettop\",\n"
            "    \"attributionUnavailableReason\" : \"why\",\n"
            "    \"interfaces\" : [\n"
            "      {\n"
            "        \"bytesInPerSec\" : 1.3,\n"
            "        \"bytesInTotal\" : 5000,\n"
            "        \"bytesOutPerSec\" : 0,\n"
            "        \"bytesOutTotal\" : 700,\n"
            "        \"name\" : \"en0\"\n"
            "      },\n"
            "      {\n"
            "        \"bytesInPerSec\" : 0.5,\n"
            "        \"bytesInTotal\" : 0,\n"
            "        \"bytesOutPerSec\" : 2,\n"
            "        \"bytesOutTotal\" : 1,\n"
            "        \"name\" : \"en1\"\n"
            "      }\n"
            "    ],\n"
            "    \"topProcesses\" : [\n"
            "      {\n"
            "        \"attributionSource\" : \"nettop\",\n"
            "        \"bytesInPerSec\" : 10,\n"
            "        \"bytesInTotal\" : 1000,\n"
            "        \"bytesOutPerSec\" : 0.2,\n"  // 0.25 is a tie and goes to even
            "        \"bytesOutTotal\" : 200,\n"
            "        \"name\" : \"app7\",\n"
            "        \"pid\" : 7\n"
            "      }\n"
            "    ],\n"
            "    \"totalBytesInPerSec\" : 1.8,\n"
            "    \"totalBytesOutPerSec\" : 2\n"
            "  },\n"
            "  \"power\" : {\n"
            "    \"anePower\" : 0,\n"
            "    \"cpuPower\" : 3.2,\n"
            "    \"cpuUsagePercent\" : 12.5,\n"
            "    \"gpuPower\" : 0.46,\n"
            "    \"gpuUsagePercent\" : 7,\n"
            "    \"ramPower\" : 0.38,\n"
            "    \"siliconChannelsComplete\" : true,\n"
            "    \"systemPower\" : 4.04\n"
            "  },\n"
            "  \"powerReadings\" : {\n"
            "    \"batteryDischargeWatts\" : 12,\n"
            "    \"batteryTerminalWatts\" : -12,\n"
            "    \"primary\" : {\n"
            "      \"confidence\" : \"batteryTerminal\",\n"
            "      \"kind\" : \"batteryDischarge\",\n"
            "      \"label\" : \"Battery draw\",\n"
            "      \"summary\" : \"SmartBattery whole-system draw while unplugged\",\n"
            "      \"watts\" : 12\n"
            "    },\n"
            "    \"siliconWatts\" : 4.04\n"
            "  },\n"
            "  \"sensors\" : [\n"
            "    {\n"
            "      \"key\" : \"TB1T\",\n"
            "      \"name\" : \"Battery 1\",\n"
            "      \"temperature\" : 31.46\n"
            "    }\n"
            "  ],\n"
            "  \"thermal\" : {\n"
            "    \"isLowPowerMode\" : true,\n"
            "    \"pressure\" : 2,\n"
            "    \"state\" : \"serious\"\n"
            "  },\n"
            "  \"timestamp\" : \"2026-01-31T09:30:05Z\"\n"
            "}");
  EXPECT_THAT(text, ::testing::StartsWith("{\n  \"battery\" : {\n    \"acConnected\" : false,\n"));
}

TEST(JSONFormatterState, GPUUsageIsThereOnlyWhenMeasured) {
  SystemPowerState state = bareState();
  state.power = samples::silicon(4.0);
  EXPECT_THAT(JSONFormatter::systemStateDict(state), Not(HasSubstr("gpuUsagePercent")));
  state.power->gpuUsagePercent = 0.0;
  EXPECT_THAT(JSONFormatter::systemStateDict(state), HasSubstr("\"gpuUsagePercent\" : 0,"));
}

TEST(JSONFormatterState, EachReadingIsThereOnlyWhenItsRuleHolds) {
  SystemPowerState state = bareState();
  state.battery = samples::batteryAt(-3.0);
  state.battery->acConnected = true;
  std::string text = JSONFormatter::systemStateDict(state);
  EXPECT_THAT(text, HasSubstr("\"batterySupplementWatts\" : 3,"));
  EXPECT_THAT(text, Not(HasSubstr("batteryDischargeWatts")));
  EXPECT_THAT(text, Not(HasSubstr("batteryChargeInputWatts")));
  EXPECT_THAT(text, Not(HasSubstr("siliconWatts")));
  state.battery = samples::batteryAt(20.0);
  state.battery->isCharging = true;
  text = JSONFormatter::systemStateDict(state);
  EXPECT_THAT(text, HasSubstr("\"batteryChargeInputWatts\" : 20,"));
  EXPECT_THAT(text, Not(HasSubstr("batterySupplementWatts")));
}

TEST(JSONFormatterState, OfSevenTopProcessesFiveAreListed) {
  SystemPowerState state = bareState();
  state.network = activeNetwork();
  for (std::int32_t pid = 1; pid <= 7; ++pid) {
    state.network->processes.push_back(process(pid, 10.0 * pid));
  }
  const std::string text = JSONFormatter::systemStateDict(state);
  EXPECT_EQ(occurrences(text, "\"pid\""), 5U);
  EXPECT_THAT(text, HasSubstr("\"app7\""));
  EXPECT_THAT(text, HasSubstr("\"app3\""));
  EXPECT_THAT(text, Not(HasSubstr("\"app2\"")));
  EXPECT_LT(text.find("\"app7\""), text.find("\"app6\""));
}

TEST(JSONFormatterState, WithoutTopProcessesTheKeyIsLeftOut) {
  SystemPowerState state = bareState();
  state.network = activeNetwork();
  const std::string text = JSONFormatter::systemStateDict(state);
  EXPECT_THAT(text, Not(HasSubstr("topProcesses")));
  EXPECT_THAT(text, Not(HasSubstr("attributionUnavailableReason")));
  EXPECT_THAT(text, HasSubstr("\"attributionSource\" : \"none\""));
}

TEST(JSONFormatterState, NoNewlineBelongsToTheText) {
  EXPECT_THAT(JSONFormatter::systemStateDict(bareState()), EndsWith("\n}"));
}

TEST(JSONFormatterReport, HasItsOwnKeysAmongThoseOfTheState) {
  const std::string text = JSONFormatter::formatSystemReport(
      bareState(), {.refreshInterval = 2.5, .generatedAt = dateByAdding(sampleTime, 2.0)});
  EXPECT_EQ(
      text,
      "{\n"
      "  \"configuredRefreshInterval\" : 2.5,\n"
      "  \"powerDiagnostics\" : {\n"
      "    \"configuredRefreshInterval\" : 2.5,\n"
      "    \"historySampleCount\" : 0,\n"
      "    \"ioReport\" : {\n"
      "      \"available\" : false,\n"
      "      \"unavailableReason\" : \"No CPU\\/GPU\\/ANE\\/DRAM energy channels returned for "
      "this sample\"\n"
      "    },\n"
      "    \"sampleAgeSeconds\" : 2,\n"
      "    \"sourceKind\" : \"unavailable\",\n"
      "    \"sourceLabel\" : \"Unavailable\",\n"
      "    \"sourceSummary\" : \"No usable power source\"\n"
      "  },\n"
      "  \"powerReadings\" : {},\n"
      "  \"processActivity\" : {\n"
      "    \"items\" : [],\n"
      "    \"method\" : \"proc_pid_rusage\",\n"
      "    \"note\" : \"Best-effort contributor estimate from CPU time, wakeups, disk I\\/O, "
      "and any macOS energy counter available without sudo. Not exact per-process watts.\"\n"
      "  },\n"
      "  \"reportGeneratedAt\" : \"2026-01-31T09:30:07Z\",\n"
      "  \"thermal\" : {\n"
      "    \"isLowPowerMode\" : false,\n"
      "    \"pressure\" : 0,\n"
      "    \"state\" : \"nominal\"\n"
      "  },\n"
      "  \"timestamp\" : \"2026-01-31T09:30:05Z\"\n"
      "}");
}

TEST(JSONFormatterReport, TheRefreshIntervalIsNotRounded) {
  const std::string text =
      JSONFormatter::formatSystemReport(bareState(), {.refreshInterval = 0.123456789});
  EXPECT_EQ(occurrences(text, "\"configuredRefreshInterval\" : 0.123456789"), 2U);
}

TEST(JSONFormatterReport, ListsProcessActivityInTheGivenOrder) {
  const std::vector<ProcessActivityInfo> activities{
      {612, "Safari", 12.345, 80.0, 1500.5, 0.12345, 3.0}, {1, "launchd", 0.0, 0.0, 0.4, {}, 9.0}};
  const std::string text =
      JSONFormatter::formatSystemReport(bareState(), {.processActivities = activities});
  EXPECT_THAT(text, HasSubstr("    \"items\" : [\n"
                              "      {\n"
                              "        \"cpuPercent\" : 12.35,\n"
                              "        \"diskBytesPerSecond\" : 1501,\n"
                              "        \"energyWattsEstimate\" : 0.123,\n"
                              "        \"impactScore\" : 3,\n"
                              "        \"name\" : \"Safari\",\n"
                              "        \"pid\" : 612,\n"
                              "        \"wakeupsPerSecond\" : 80\n"
                              "      },\n"
                              "      {\n"
                              "        \"cpuPercent\" : 0,\n"
                              "        \"diskBytesPerSecond\" : 0,\n"
                              "        \"impactScore\" : 9,\n"
                              "        \"name\" : \"launchd\",\n"
                              "        \"pid\" : 1,\n"
                              "        \"wakeupsPerSecond\" : 0\n"
                              "      }\n"
                              "    ],\n"));
}

TEST(JSONFormatterReport, DiskRatesAreRoundedHalfAwayFromZero) {
  const std::vector<ProcessActivityInfo> activities{{1, "a", 0.0, 0.0, 2.5, {}, 0.0}};
  EXPECT_THAT(JSONFormatter::formatSystemReport(bareState(), {.processActivities = activities}),
              HasSubstr("\"diskBytesPerSecond\" : 3,"));
}

TEST(JSONFormatterReport, HasPrivilegedTelemetryOnlyWhenASampleWasGiven) {
  EXPECT_THAT(JSONFormatter::formatSystemReport(bareState(), {}), Not(HasSubstr("proTelemetry")));
}

TEST(JSONFormatterReport, TellsAFailedPrivilegedSample) {
  const ProTelemetrySnapshot snapshot{.isAvailable = false,
                                      .source = "helper",
                                      .sampledAt = sampleTime,
                                      .sampleIntervalMilliseconds = 1000,
                                      .error = "no permission"};
  EXPECT_THAT(JSONFormatter::formatSystemReport(bareState(), {.proTelemetry = snapshot}),
              HasSubstr("  \"proTelemetry\" : {\n"
                        "    \"available\" : false,\n"
                        "    \"error\" : \"no permission\",\n"
                        "    \"processes\" : [],\n"
                        "    \"sampleIntervalMilliseconds\" : 1000,\n"
                        "    \"sampledAt\" : \"2026-01-31T09:30:05Z\",\n"
                        "    \"source\" : \"helper\"\n"
                        "  },\n"
                        "  \"processActivity\" : {\n"));
}

TEST(JSONFormatterReport, TellsAFullPrivilegedSample) {
  const ProTelemetrySnapshot snapshot{.isAvailable = true,
                                      .source = "powermetrics",
                                      .sampledAt = sampleTime,
                                      .sampleIntervalMilliseconds = 500,
                                      .processes = {{.pid = 99,
                                                     .name = "kernel_task",
                                                     .energyImpact = 1.005,
                                                     .cpuTimePercent = 2.0,
                                                     .wakeupsPerSecond = 3.25,
                                                     .diskBytesPerSecond = 10.5,
                                                     .isAggregate = true},
                                                    {.pid = 100, .name = "idle"}},
                                      .cpuPowerWatts = 1.234,
                                      .gpuPowerWatts = 0.0,
                                      .anePowerWatts = 0.5,
                                      .rawSampleSummary = "raw"};
  EXPECT_THAT(JSONFormatter::formatSystemReport(bareState(), {.proTelemetry = snapshot}),
              HasSubstr("  \"proTelemetry\" : {\n"
                        "    \"anePowerWatts\" : 0.5,\n"
                        "    \"available\" : true,\n"
                        "    \"cpuPowerWatts\" : 1.23,\n"
                        "    \"gpuPowerWatts\" : 0,\n"
                        "    \"processes\" : [\n"
                        "      {\n"
                        "        \"cpuTimePercent\" : 2,\n"
                        "        \"diskBytesPerSecond\" : 11,\n"
                        "        \"energyImpact\" : 1,\n"  // 1.005 is stored just below
                        "        \"isAggregate\" : true,\n"
                        "        \"name\" : \"kernel_task\",\n"
                        "        \"pid\" : 99,\n"
                        "        \"wakeupsPerSecond\" : 3.25\n"
                        "      },\n"
                        "      {\n"
                        "        \"isAggregate\" : false,\n"
                        "        \"name\" : \"idle\",\n"
                        "        \"pid\" : 100\n"
                        "      }\n"
                        "    ],\n"
                        "    \"rawSampleSummary\" : \"raw\",\n"
                        "    \"sampleIntervalMilliseconds\" : 500,\n"
                        "    \"sampledAt\" : \"2026-01-31T09:30:05Z\",\n"
                        "    \"source\" : \"powermetrics\"\n"
                        "  },\n"));
}

TEST(JSONFormatterReportDeathTest, ADiskRateThatIsNotFiniteIsAProgrammingError) {
  const std::vector<ProcessActivityInfo> activities{
      {1, "a", 0.0, 0.0, std::numeric_limits<double>::infinity(), {}, 0.0}};
  EXPECT_DEATH(static_cast<void>(JSONFormatter::formatSystemReport(
                   bareState(), {.processActivities = activities})),
               "Fatal error");
}

}  // namespace
}  // namespace quorvex
