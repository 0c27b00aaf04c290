#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "SampleRecords.h"
#include "TableFormatter.h"

namespace quorvex {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr Date sampleTime{std::chrono::milliseconds{1'769'851'805'900}};

constexpr const char* thermalBox =
    "╭─ Thermal ─────────────────────────────╮\n"
    "│ State:      Nominal                   │\n"
    "│ Pressure:   Nominal (0/4)             │\n"
    "│ Low Power:  Off                       │\n"
    "╰────────────────────────────────────────╯";

std::string plain(const SystemPowerState& state) {
  return TableFormatter::formatStatus(state, false);
}

std::string inColour(const SystemPowerState& state) {
  return TableFormatter::formatStatus(state, true);
}

SystemPowerState withBattery(BatteryInfo info) {
  return SystemPowerState{.battery = std::move(info)};
}

SystemPowerState withFan(FanInfo fan) {
  return SystemPowerState{.fans = {std::move(fan)}};
}

SystemPowerState withSensors(std::size_t count) {
  SystemPowerState state;
  for (std::size_t i = 1; i <= count; ++i) {
    state.sensors.push_back({fmt::format("K{}", i), fmt::format("Sensor {}", i), 40.0});
  }
  return state;
}

// Sections

TEST(TableStatus, OfNothingIsTheThermalBox) {
  EXPECT_EQ(plain({}), thermalBox);
}

TEST(TableStatus, HasEverySectionInOrderJoinedByOneNewline) {
  SystemPowerState state = withSensors(1);
  state.battery = samples::battery();
  state.power = samples::silicon(4.0);
  state.fans = {{.id = 0, .name = "Fan", .currentRPM = 0, .minRPM = 0, .maxRPM = 0}};
  state.network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1)}};
  const std::string text = plain(state);
  std::size_t last = 0;
  for (const char* title : {"╭─ Battery ", "╯\n╭─ Power ", "╯\n╭─ Thermal ", "╯\n╭─ Fans ",
                            "╯\n╭─ Temperature Sensors ", "╯\n╭─ Network "}) {
    const std::size_t at = text.find(title);
    ASSERT_NE(at, std::string::npos) << title;
    EXPECT_GE(at, last) << title;
    last = at;
  }
  EXPECT_THAT(text, EndsWith("╯"));
}

TEST(TableStatus, WithoutActiveInterfacesThereIsNoNetworkBox) {
  SystemPowerState state;
  state.network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0")}};
  EXPECT_EQ(plain(state), thermalBox);
}

TEST(TableStatus, WithoutColourNoSequenceOfAnyKindIsThere) {
  SystemPowerState state = withSensors(13);
  state.battery = samples::battery();
  state.thermal.isLowPowerMode = true;
  state.fans = {{.id = 0, .name = "Fan", .currentRPM = 6000, .minRPM = 0, .maxRPM = 6000}};
  EXPECT_THAT(plain(state), Not(HasSubstr("\x1b")));
}

TEST(TableStatus, ColourChangesNoShape) {
  SystemPowerState state = withSensors(13);
  state.battery = samples::battery();
  state.thermal = {.state = ThermalState::critical, .pressure = 4, .isLowPowerMode = true};
  state.fans = {{.id = 0, .name = "Fan", .currentRPM = 6000, .minRPM = 0, .maxRPM = 6000}};
  std::string text = inColour(state);
  for (const std::string_view sequence : {"\x1b[32m", "\x1b[33m", "\x1b[31m", "\x1b[0m"}) {
    for (auto at = text.find(sequence); at != std::string::npos; at = text.find(sequence)) {
      text.erase(at, sequence.size());
    }
  }
  EXPECT_EQ(text, plain(state));
}

// Battery box

TEST(TableBattery, HasItsFourLines) {
  BatteryInfo info = samples::batteryAt(-12.34);
  info.timeRemaining = 125;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  // 80 * 12 / 100 = 9 cells of 12. The first line has 41 characters, so the box is 43 wide.
  EXPECT_THAT(plain(withBattery(info)),
              StartsWith("╭─ Battery ────────────────────────────────╮\n"
                         "│ Charge:     80%  █████████░░░  2:05 left │\n"
                         "│ Health:     96%  Good  (120 cycles)      │\n"
                         "│ Power:      -12.3W (discharging)         │\n"
                         "│ Temp:       30.5°C                       │\n"
                         "╰───────────────────────────────────────────╯\n"));
}

TEST(TableBattery, ChargeIsRedUpTo20YellowUpTo50GreenAbove) {
  BatteryInfo info = samples::battery();
  const auto colourAt = [&info](std::int64_t percent) {
    info.chargePercent = percent;
    return inColour(withBattery(info));
  };
  EXPECT_THAT(colourAt(0), HasSubstr("\x1b[31m0%\x1b[0m"));
  EXPECT_THAT(colourAt(20), HasSubstr("\x1b[31m20%\x1b[0m"));
  EXPECT_THAT(colourAt(21), HasSubstr("\x1b[33m21%\x1b[0m"));
  EXPECT_THAT(colourAt(50), HasSubstr("\x1b[33m50%\x1b[0m"));
  EXPECT_THAT(colourAt(51), HasSubstr("\x1b[32m51%\x1b[0m"));
}

TEST(TableBattery, TheBarFillsByWholeTwelfths) {
  BatteryInfo info = samples::battery();
  const auto barAt = [&info](std::int64_t percent) {
    info.chargePercent = percent;
    return plain(withBattery(info));
  };
  EXPECT_THAT(barAt(100), HasSubstr("100%  ████████████  "));
  EXPECT_THAT(barAt(99), HasSubstr("99%  ███████████░  "));  // 1188 / 100
  EXPECT_THAT(barAt(9), HasSubstr("9%  █░░░░░░░░░░░  "));    // 108 / 100
  EXPECT_THAT(barAt(8), HasSubstr("8%  ░░░░░░░░░░░░  "));    // 96 / 100
  EXPECT_THAT(barAt(7), HasSubstr("7%  ░░░░░░░░░░░░  "));
}

TEST(TableBattery, AnImpossibleChargeCannotBreakTheBar) {
  BatteryInfo info = samples::battery();
  info.chargePercent = std::numeric_limits<std::int64_t>::max();
  EXPECT_THAT(plain(withBattery(info)), HasSubstr("9223372036854775807%  ████████████  "));
  info.chargePercent = -50;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr("-50%  ░░░░░░░░░░░░  "));
}

TEST(TableBattery, PowerOfAFullBatteryOnACIsZeroWhateverItMeasures) {
  BatteryInfo info = samples::batteryAt(-5.0);
  info.acConnected = true;
  info.isFullyCharged = true;
  info.isCharging = true;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      0.0W (full, on AC) "));
}

TEST(TableBattery, PowerOfADrainOnACKeepsItsSign) {
  BatteryInfo info = samples::batteryAt(-1.06);
  info.acConnected = true;
  info.isCharging = true;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      -1.1W (PLUGGED IN, DRAINING) "));
}

TEST(TableBattery, ADrainOfExactlyOneWattIsNone) {
  BatteryInfo info = samples::batteryAt(-1.0);
  info.acConnected = true;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      -1.0W (discharging) "));
}

TEST(TableBattery, PowerWhileChargingIsAMagnitudeWithAPlus) {
  BatteryInfo info = samples::batteryAt(20.04);
  info.acConnected = true;
  info.isCharging = true;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      +20.0W (charging) "));
  info.wattage = -0.5;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      +0.5W (charging) "));
}

TEST(TableBattery, AnIdleBatteryOnACReadsDischarging) {
  BatteryInfo info = samples::batteryAt(0.0);
  info.acConnected = true;
  EXPECT_THAT(plain(withBattery(info)), HasSubstr(" Power:      0.0W (discharging) "));
}

TEST(TableBattery, WithoutSiliconTheBatterysLineStillShowsTheWattage) {
  const std::string text = plain(withBattery(samples::batteryAt(-12.34)));
  EXPECT_THAT(text, Not(HasSubstr("╭─ Power")));
  EXPECT_THAT(text, HasSubstr(" Power:      -12.3W (discharging) "));
}

// Time text

TEST(TableTime, TellsHoursAndMinutesAndTheWay) {
  BatteryInfo info = samples::battery();
  info.timeRemaining = 125;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilEmpty;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "2:05 left");
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "2:05 to full");
  info.timeRemainingKind = std::nullopt;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "2:05");
}

TEST(TableTime, OfZeroIsATime) {
  BatteryInfo info = samples::battery();
  info.timeRemaining = 0;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "0:00 to full");
}

TEST(TableTime, OfDaysCountsHoursOn) {
  BatteryInfo info = samples::battery();
  info.timeRemaining = 10080;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "168:00");
}

TEST(TableTime, GoesBeforeEveryWord) {
  BatteryInfo info = samples::batteryAt(-5.0);
  info.acConnected = true;
  info.isFullyCharged = true;
  info.isCharging = true;
  info.timeRemaining = 61;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "1:01");
  info.timeRemaining = std::nullopt;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "Full");
  info.isFullyCharged = false;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "Plugged in, draining");
  info.wattage = -1.0;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "Calculating to full...");
  info.isCharging = false;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "On AC");
  info.acConnected = false;
  EXPECT_EQ(TableFormatter::formatBatteryTime(info), "Calculating...");
}

// Power box

TEST(TablePower, SharesOneScaleAmongItsBars) {
  SystemPowerState state;
  state.power = PowerMetrics{
      .cpuPower = 8.0, .gpuPower = 4.0, .anePower = 0.0, .ramPower = 1.0, .systemPower = 13.0};
  // 20 cells stand for 8 W: 4 W are 10 cells, 1 W is 2.5, cut to 2. The last line has 45
  // characters (9, 35 and "W"), so the box is 47 wide.
  EXPECT_THAT(plain(state), StartsWith("╭─ Power ──────────────────────────────────────╮\n"
                                       "│ CPU:    ████████████████████    8.0W         │\n"
                                       "│ GPU:    ██████████░░░░░░░░░░    4.0W         │\n"
                                       "│ ANE:    ░░░░░░░░░░░░░░░░░░░░    0.0W         │\n"
                                       "│ DRAM:   ██░░░░░░░░░░░░░░░░░░    1.0W         │\n"
                                       "│ ───────────────────────────────────          │\n"
                                       "│ Total:                                 13.0W │\n"
                                       "╰───────────────────────────────────────────────╯\n"));
}

TEST(TablePower, ShowsOtherPowerAndAddsItToTheTotal) {
  SystemPowerState state = withBattery(samples::batteryAt(-12.0));
  state.power = samples::silicon(4.0);
  const std::string text = plain(state);
  // 12 W drawn less 4 W of silicon: 8 W, the longest bar; 4 W + 8 W = 12 W.
  EXPECT_THAT(text, HasSubstr(" Other:  ████████████████████    8.0W "));
  EXPECT_THAT(text, HasSubstr(fmt::format(" Total:  {:>35}W ", "12.0")));
}

TEST(TablePower, OtherPowerOfZeroIsShown) {
  SystemPowerState state = withBattery(samples::batteryAt(-4.0));
  state.power = samples::silicon(15.0);
  const std::string text = plain(state);
  EXPECT_THAT(text, HasSubstr(" Other:  ░░░░░░░░░░░░░░░░░░░░    0.0W "));
  EXPECT_THAT(text, HasSubstr(fmt::format(" Total:  {:>35}W ", "15.0")));
}

TEST(TablePower, OnACThereIsNoOtherPower) {
  SystemPowerState state = withBattery(samples::batteryAt(-12.0));
  state.battery->acConnected = true;
  state.power = samples::silicon(4.0);
  const std::string text = plain(state);
  EXPECT_THAT(text, Not(HasSubstr("Other:")));
  EXPECT_THAT(text, HasSubstr(fmt::format(" Total:  {:>35}W ", "4.0")));
}

TEST(TablePower, TheScaleIsAtLeastOneWatt) {
  SystemPowerState state;
  state.power = PowerMetrics{.cpuPower = 0.5, .systemPower = 0.5};
  EXPECT_THAT(plain(state), HasSubstr(" CPU:    ██████████░░░░░░░░░░    0.5W "));
}

TEST(TablePower, AWideNumberPushesItsLineOut) {
  SystemPowerState state;
  state.power = PowerMetrics{.cpuPower = 12345.67, .systemPower = 12345.67};
  EXPECT_THAT(plain(state), HasSubstr(" CPU:    ████████████████████  12345.7W "));
}

// Thermal box

TEST(TableThermal, NamesAndColoursEveryState) {
  SystemPowerState state;
  const auto of = [&state](ThermalState thermal) {
    state.thermal.state = thermal;
    return inColour(state);
  };
  EXPECT_THAT(of(ThermalState::nominal), HasSubstr(" State:      \x1b[32mNominal\x1b[0m "));
  EXPECT_THAT(of(ThermalState::fair), HasSubstr(" State:      \x1b[33mFair\x1b[0m "));
  EXPECT_THAT(of(ThermalState::serious), HasSubstr(" State:      \x1b[31mSerious\x1b[0m "));
  EXPECT_THAT(of(ThermalState::critical), HasSubstr(" State:      \x1b[31mCritical\x1b[0m "));
}

TEST(TableThermal, NamesEveryPressureLevel) {
  SystemPowerState state;
  const auto at = [&state](std::int64_t level) {
    state.thermal.pressure = level;
    return plain(state);
  };
  EXPECT_THAT(at(0), HasSubstr(" Pressure:   Nominal (0/4) "));
  EXPECT_THAT(at(1), HasSubstr(" Pressure:   Moderate (1/4) "));
  EXPECT_THAT(at(2), HasSubstr(" Pressure:   Heavy (2/4) "));
  EXPECT_THAT(at(3), HasSubstr(" Pressure:   Trapping (3/4) "));
  EXPECT_THAT(at(4), HasSubstr(" Pressure:   Sleeping (4/4) "));
  EXPECT_THAT(at(5), HasSubstr(" Pressure:   Unknown (5/4) "));
}

TEST(TableThermal, LowPowerIsYellowWhenOnAndPlainWhenOff) {
  SystemPowerState state;
  EXPECT_THAT(inColour(state), HasSubstr(" Low Power:  Off "));
  state.thermal.isLowPowerMode = true;
  EXPECT_THAT(inColour(state), HasSubstr(" Low Power:  \x1b[33mOn\x1b[0m "));
}

// Fan box

TEST(TableFans, OneLineAFan) {
  // (3600 - 1200) / (6000 - 1200) = 50 %: 5 cells of 10.
  EXPECT_THAT(
      plain(withFan(
          {.id = 0, .name = "Left Fan", .currentRPM = 3600, .minRPM = 1200, .maxRPM = 6000})),
      EndsWith("╭─ Fans ───────────────────────────────────────╮\n"
               "│ Left Fan:  3600 RPM  █████░░░░░  [1200–6000] │\n"
               "╰───────────────────────────────────────────────╯"));
}

TEST(TableFans, SpeedIsGreenUpTo50YellowUpTo80RedAbove) {
  const auto at = [](std::int64_t rpm) {
    return inColour(
        withFan({.id = 0, .name = "Fan", .currentRPM = rpm, .minRPM = 0, .maxRPM = 1000}));
  };
  EXPECT_THAT(at(500), HasSubstr("\x1b[32m500\x1b[0m RPM  █████░░░░░  "));
  EXPECT_THAT(at(501), HasSubstr("\x1b[33m501\x1b[0m RPM  █████░░░░░  "));
  EXPECT_THAT(at(800), HasSubstr("\x1b[33m800\x1b[0m RPM  ████████░░  "));
  EXPECT_THAT(at(801), HasSubstr("\x1b[31m801\x1b[0m RPM  ████████░░  "));
  EXPECT_THAT(at(999), HasSubstr("RPM  █████████░  "));
}

TEST(TableFans, ASpeedOutsideTheLimitsStaysWithinTheBar) {
  EXPECT_THAT(inColour(withFan({.name = "Fan", .currentRPM = 0, .minRPM = 1200, .maxRPM = 6000})),
              HasSubstr("\x1b[32m0\x1b[0m RPM  ░░░░░░░░░░  [1200–6000]"));
  EXPECT_THAT(
      inColour(withFan({.name = "Fan", .currentRPM = 9000, .minRPM = 1200, .maxRPM = 6000})),
      HasSubstr("\x1b[31m9000\x1b[0m RPM  ██████████  [1200–6000]"));
}

TEST(TableFans, WithoutALimitTheBarIsEmpty) {
  EXPECT_THAT(inColour(withFan({.name = "Fan", .currentRPM = 3000, .minRPM = 0, .maxRPM = 0})),
              HasSubstr("\x1b[32m3000\x1b[0m RPM  ░░░░░░░░░░  [0–0]"));
}

TEST(TableFans, EqualLimitsAreEmptyUpToThemAndFullAbove) {
  const auto at = [](std::int64_t rpm) {
    return inColour(withFan({.name = "Fan", .currentRPM = rpm, .minRPM = 2000, .maxRPM = 2000}));
  };
  EXPECT_THAT(at(2000), HasSubstr("\x1b[32m2000\x1b[0m RPM  ░░░░░░░░░░  [2000–2000]"));
  EXPECT_THAT(at(2001), HasSubstr("\x1b[31m2001\x1b[0m RPM  ██████████  [2000–2000]"));
}

TEST(TableFans, ExtremeSpeedsCannotBreakTheBox) {
  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  constexpr auto least = std::numeric_limits<std::int64_t>::min();
  EXPECT_THAT(plain(withFan({.name = "Fan", .currentRPM = most, .minRPM = least, .maxRPM = most})),
              HasSubstr("RPM  ██████████  ["));
  EXPECT_THAT(
      plain(withFan({.name = "Fan", .currentRPM = most, .minRPM = most - 1, .maxRPM = most})),
      HasSubstr("RPM  ░░░░░░░░░░  ["));
}

// Sensor box

TEST(TableSensors, NamesArePaddedAndCutTo22Characters) {
  SystemPowerState state;
  state.sensors = {{"a", "CPU Die", 45.25}, {"b", "A name of many more than 22", 105.0}};
  const std::string text = plain(state);
  EXPECT_THAT(text, HasSubstr("│ CPU Die                 45.2°C        │\n"));
  EXPECT_THAT(text, HasSubstr("│ A name of many more th 105.0°C        │\n"));
}

TEST(TableSensors, NumbersAreGreenUpTo70YellowUpTo90RedAbove) {
  SystemPowerState state = withSensors(1);
  const auto at = [&state](double temperature) {
    state.sensors.front().temperature = temperature;
    return inColour(state);
  };
  EXPECT_THAT(at(70.0), HasSubstr("\x1b[32m 70.0\x1b[0m°C"));
  EXPECT_THAT(at(70.1), HasSubstr("\x1b[33m 70.1\x1b[0m°C"));
  EXPECT_THAT(at(90.0), HasSubstr("\x1b[33m 90.0\x1b[0m°C"));
  EXPECT_THAT(at(90.1), HasSubstr("\x1b[31m 90.1\x1b[0m°C"));
}

TEST(TableSensors, TwelveHaveNoClosingLine) {
  const std::string text = plain(withSensors(12));
  EXPECT_THAT(text, HasSubstr(" Sensor 12 "));
  EXPECT_THAT(text, Not(HasSubstr("...")));
}

TEST(TableSensors, ThirteenCloseWithOneMoreInThePlural) {
  const std::string text = plain(withSensors(13));
  EXPECT_THAT(text, HasSubstr(" Sensor 12 "));
  EXPECT_THAT(text, Not(HasSubstr(" Sensor 13 ")));
  EXPECT_THAT(text, HasSubstr("│ ... and 1 more sensors                │\n"));
}

TEST(TableSensors, ManyCloseWithTheirCount) {
  EXPECT_THAT(plain(withSensors(40)), HasSubstr("│ ... and 28 more sensors"));
}

// Network box

TEST(TableNetwork, HasRatesTotalsAndOneLineAnInterface) {
  SystemPowerState state;
  state.network =
      NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1'500'000, 2000, 1234.0, 10.0),
                                     samples::interface(5, "en1"),
                                     samples::interface(9, "utun12345", 999, 0, 0.0, 0.0)}};
  // Totals: 1,500,000 + 999 = 1.5 MB and 2.0 KB; 1234 B/s is 1.2 KB/s. The first interface's line
  // has 52 characters, so the box is 54 wide.
  EXPECT_THAT(plain(state), EndsWith("╭─ Network ───────────────────────────────────────────╮\n"
                                     "│ Rate:   ↓1.2 KB/s  ↑10 B/s                          │\n"
                                     "│ Total:  ↓1.5 MB  ↑2.0 KB                            │\n"
                                     "│ en0      ↓1.2 KB/s   ↑10 B/s  total ↓1.5 MB ↑2.0 KB │\n"
                                     "│ utun1234 ↓0 B/s      ↑0 B/s  total ↓999 B ↑0 B      │\n"
                                     "╰──────────────────────────────────────────────────────╯"));
}

TEST(TableNetwork, RatesAreCutToTenCharacters) {
  SystemPowerState state;
  // 12345.7 GB/s has 12 characters.
  state.network =
      NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1, 12'345.7e9, 0.0)}};
  EXPECT_THAT(plain(state), HasSubstr(" en0      ↓12345.7 GB ↑0 B/s "));
}

TEST(TableNetwork, ListsTheFirstFiveProcessesBelowALine) {
  SystemPowerState state;
  state.network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1)}};
  for (std::int32_t pid = 1; pid <= 7; ++pid) {
    state.network->processes.push_back({.id = pid,
                                        .name = fmt::format("process number {}", pid * 11),
                                        .bytesInPerSec = 100.0 * pid,
                                        .bytesOutPerSec = 1.0});
  }
  const std::string text = plain(state);
  EXPECT_THAT(text, HasSubstr("│ ──────────────────────────────               │\n"
                              "│ process number 7 ↓700 B/s    ↑1 B/s          │\n"));
  EXPECT_THAT(text, HasSubstr("│ process number 3 ↓300 B/s    ↑1 B/s          │\n"));
  EXPECT_THAT(text, Not(HasSubstr("↓200 B/s")));
}

TEST(TableNetwork, WithoutTopProcessesThereIsNoLine) {
  SystemPowerState state;
  state.network = NetworkSnapshot{.interfaces = {samples::interface(4, "en0", 1, 1)},
                                  .processes = {{.id = 1, .name = "idle", .bytesIn = 5}}};
  EXPECT_THAT(plain(state), Not(HasSubstr("│ ───")));
  EXPECT_THAT(plain(state), Not(HasSubstr("idle")));
}

// Monitor frame

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
}

TEST(TableMonitor, BeginsWithTheTimeAndAnEmptyLine) {
  EXPECT_THAT(
      TableFormatter::formatMonitor({.timestamp = sampleTime}, false),
      StartsWith("  Quorvex Monitor  2026-01-31T09:30:05Z  (Ctrl+C to stop)\n\n╭─ Thermal"));
}

TEST(TableMonitor, TheWholeHeaderIsGreen) {
  EXPECT_THAT(
      TableFormatter::formatMonitor({.timestamp = sampleTime}, true),
      StartsWith(
          "\x1b[32m  Quorvex Monitor  2026-01-31T09:30:05Z  (Ctrl+C to stop)\x1b[0m\n\n╭─ "));
}

TEST(TableMonitor, BlanksTheRowsBelowAShortFrame) {
  const std::string text = TableFormatter::formatMonitor({.timestamp = sampleTime}, false);
  // Header, empty line and the five lines of the thermal box leave 23 of 30.
  std::string expected{"  Quorvex Monitor  2026-01-31T09:30:05Z  (Ctrl+C to stop)\n\n"};
  expected += thermalBox;
  for (int row = 0; row < 23; ++row) {
    expected += "\n\x1b[2K";
  }
  EXPECT_EQ(text, expected);
}

/// A frame of 2 + 5 lines and a sensor box of 2 + `sensors`.
std::string frame(std::size_t sensors, std::size_t fans) {
  SystemPowerState state = withSensors(sensors);
  for (std::size_t i = 0; i < fans; ++i) {
    state.fans.push_back({.id = static_cast<std::int64_t>(i), .name = "Fan"});
  }
  return TableFormatter::formatMonitor(state, false);
}

TEST(TableMonitor, AFrameOf29LinesGetsOneBlankedRow) {
  const std::string text = frame(12, 6);  // 7 + 14 + 8
  EXPECT_THAT(text, EndsWith("╯\n\x1b[2K"));
  EXPECT_EQ(lineCount(text), 30U);
}

TEST(TableMonitor, AFrameOf30LinesGetsNoPadding) {
  const std::string text = frame(12, 7);
  EXPECT_THAT(text, EndsWith("╯"));
  EXPECT_EQ(lineCount(text), 30U);
}

TEST(TableMonitor, AFrameOfMoreThan30LinesGetsNoPadding) {
  const std::string text = frame(12, 8);
  EXPECT_THAT(text, EndsWith("╯"));
  EXPECT_EQ(lineCount(text), 31U);
}

// Battery detail

TEST(TableBatteryDetail, HasSixteenLines) {
  BatteryInfo info = samples::battery();
  info.voltage = 11.9;
  info.amperage = -0.95;
  info.wattage = -11.305;  // 11.9 V * -0.95 A
  info.acConnected = true;
  info.adapterWatts = 96;
  info.timeRemaining = 45;
  info.timeRemainingKind = BatteryTimeRemainingKind::untilFull;
  info.serialNumber = "F5D1234567";
  EXPECT_EQ(TableFormatter::formatBatteryDetail(info),
            "╭─ Battery Detail ──────────────────────╮\n"
            "│ Charge:           80%                 │\n"
            "│ Current Capacity: 4800 mAh            │\n"
            "│ Max Capacity:     6000 mAh            │\n"
            "│ Design Capacity:  6250 mAh            │\n"
            "│ Health:           96% (Good)          │\n"
            "│ Cycle Count:      120                 │\n"
            "│ Voltage:          11.900 V            │\n"
            "│ Amperage:         -0.950 A            │\n"
            "│ Wattage:          -11.30 W            │\n"
            "│ Temperature:      30.5°C              │\n"
            "│ Charging:         No                  │\n"
            "│ Fully Charged:    No                  │\n"
            "│ AC Connected:     Yes                 │\n"
            "│ Adapter Watts:    96W                 │\n"
            "│ Time Remaining:   0:45 to full        │\n"
            "│ Serial:           F5D1234567          │\n"
            "╰────────────────────────────────────────╯");
}

TEST(TableBatteryDetail, HasWordsForWhatIsAbsent) {
  const std::string text = TableFormatter::formatBatteryDetail(samples::battery());
  EXPECT_THAT(text, HasSubstr("│ Adapter Watts:    N/A "));
  EXPECT_THAT(text, HasSubstr("│ Time Remaining:   Calculating... "));
  EXPECT_THAT(text, HasSubstr("│ Serial:           Unknown "));
}

TEST(TableBatteryDetail, KeepsAZeroAndAnEmptyTextThatArePresent) {
  BatteryInfo info = samples::battery();
  info.adapterWatts = 0;
  info.serialNumber = "";
  info.isCharging = true;
  info.isFullyCharged = true;
  const std::string text = TableFormatter::formatBatteryDetail(info);
  EXPECT_THAT(text, HasSubstr("│ Adapter Watts:    0W "));
  EXPECT_THAT(text, HasSubstr("│ Serial:                               │\n"));
  EXPECT_THAT(text, HasSubstr("│ Charging:         Yes "));
  EXPECT_THAT(text, HasSubstr("│ Fully Charged:    Yes "));
}

}  // namespace
}  // namespace quorvex
