#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PowerDiagnostics.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr Date sampleTime{std::chrono::seconds{1'769'851'805}};  // 2026-01-31T09:30:05Z

Date after(double seconds) {
  return dateByAdding(sampleTime, seconds);
}

/// An unplugged laptop that draws `watts`, `seconds` after the sample time.
SystemPowerState drawing(double watts, double seconds = 0.0) {
  return SystemPowerState{.battery = samples::batteryAt(-watts), .timestamp = after(seconds)};
}

SystemPowerState withoutReading(double seconds = 0.0) {
  return SystemPowerState{.timestamp = after(seconds)};
}

SystemPowerState onAC(double watts) {
  SystemPowerState state = drawing(-watts);
  state.battery->acConnected = true;
  return state;
}

std::string diagnostics(const SystemPowerState& state,
                        const JSONFormatter::ReportContext& context) {
  JSONWriter json{JSONWriter::Style::compact};
  writePowerDiagnostics(json, state, context);
  EXPECT_TRUE(json.isValid());
  return json.takeText();
}

TEST(PowerDiagnostics, ALaptopOnBatteryTellsEverything) {
  SystemPowerState state = drawing(12.34);
  state.power = samples::silicon(4.0);
  const std::vector<SystemPowerState> history{drawing(12.34, -4.0), withoutReading(-2.0)};
  // 12.34 W drawn less 4 W of silicon leave 8.34 W unattributed; 12.34 W / 12 V = 1.028 A.
  EXPECT_EQ(
      diagnostics(state, {.history = history, .refreshInterval = 2.0, .generatedAt = after(1.5)}),
      R"({"charger":{"acConnected":false,"chargerOvercomingCurrentLoad":false,)"
      R"("isPluggedInAndDraining":false,"netBatteryWatts":-12.34,)"
      R"("note":"Negative net battery watts while AC is connected means the system is )"
      R"(supplementing charger input from the battery."},)"
      R"("configuredRefreshInterval":2,"displayAndOtherPower":8.34,"historySampleCount":2,)"
      R"("ioReport":{"anePower":0,"available":true,"cpuPower":2,"gpuPower":1,"ramPower":1,)"
      R"("systemPower":4},)"
      R"("powerHistory":[{"sourceKind":"batteryDischarge","sourceLabel":"Battery draw",)"
      R"("timestamp":"2026-01-31T09:30:01Z","watts":12.34}],)"
      R"("rawBattery":{"amperage":-1.028,"calculation":"voltage * amperage","voltage":12,)"
      R"("wattage":-12.34},)"
      R"("sampleAgeSeconds":1.5,"siliconChannelsComplete":true,"sourceKind":"batteryDischarge",)"
      R"("sourceLabel":"Battery draw",)"
      R"("sourceSummary":"SmartBattery whole-system draw while unplugged","totalWatts":12.34,)"
      R"("unattributedPower":8.34,"valueUnchangedSeconds":5.5})");
}

TEST(PowerDiagnostics, ADesktopHasNeitherChargerNorRawBattery) {
  SystemPowerState state = withoutReading();
  state.power = samples::silicon(4.0);
  const std::string text = diagnostics(state, {.generatedAt = sampleTime});
  EXPECT_THAT(text, Not(HasSubstr("charger")));
  EXPECT_THAT(text, Not(HasSubstr("rawBattery")));
  EXPECT_THAT(text, Not(HasSubstr("unattributedPower")));
  EXPECT_THAT(text, Not(HasSubstr("displayAndOtherPower")));
  EXPECT_THAT(text, Not(HasSubstr("siliconChannelsComplete")));
  EXPECT_THAT(text, HasSubstr(R"("totalWatts":4)"));
}

TEST(PowerDiagnostics, WithoutAReadingThereIsNoTotal) {
  const std::string text = diagnostics(withoutReading(), {.generatedAt = sampleTime});
  EXPECT_THAT(text, Not(HasSubstr("totalWatts")));
  EXPECT_THAT(text, Not(HasSubstr("valueUnchangedSeconds")));
  EXPECT_THAT(text, HasSubstr(R"("ioReport":{"available":false,"unavailableReason":)"));
}

TEST(PowerDiagnostics, IncompleteSiliconIsTold) {
  SystemPowerState state = drawing(12.0);
  state.power = samples::silicon(4.0);
  state.power->siliconChannelsComplete = false;
  EXPECT_THAT(diagnostics(state, {}), HasSubstr(R"("siliconChannelsComplete":false)"));
}

TEST(PowerDiagnostics, AnIdleBatteryOnACHasAnOvercomingChargerAndNoMinimumLoad) {
  SystemPowerState state = onAC(0.0);
  state.battery->adapterWatts = 96;
  const std::string text = diagnostics(state, {.generatedAt = sampleTime});
  EXPECT_THAT(text, HasSubstr(R"("charger":{"acConnected":true,"adapterRatingWatts":96,)"
                              R"("chargerOvercomingCurrentLoad":true,)"
                              R"("isPluggedInAndDraining":false,"netBatteryWatts":0,"note":)"));
  EXPECT_THAT(text, Not(HasSubstr("minimumObservedSystemLoad")));
  EXPECT_THAT(text, Not(HasSubstr("batterySupplementWatts")));
  EXPECT_THAT(text, HasSubstr(R"("sourceKind":"onACBatteryIdle")"));
}

TEST(PowerDiagnostics, ADrainOnACGivesALowerBoundOfTheLoad) {
  SystemPowerState state = onAC(-3.0);
  state.battery->adapterWatts = 30;
  // 3 W from the battery and the 30 W that the adapter is rated for.
  EXPECT_THAT(
      diagnostics(state, {}),
      HasSubstr(R"("adapterRatingWatts":30,"batterySupplementWatts":3,)"
                R"("chargerOvercomingCurrentLoad":false,"isPluggedInAndDraining":true,)"
                R"("minimumObservedSystemLoadNote":"Adapter watts is the reported adapter rating, )"
                R"(not guaranteed delivered power.","minimumObservedSystemLoadWatts":33,)"
                R"("netBatteryWatts":-3,)"));
}

TEST(PowerDiagnostics, ADrainOnACWithoutARatingGivesNoBound) {
  const std::string text = diagnostics(onAC(-3.0), {});
  EXPECT_THAT(text, HasSubstr(R"("isPluggedInAndDraining":true)"));
  EXPECT_THAT(text, Not(HasSubstr("adapterRatingWatts")));
  EXPECT_THAT(text, Not(HasSubstr("minimumObservedSystemLoad")));
  EXPECT_THAT(text, Not(HasSubstr("batterySupplementWatts")));
}

TEST(PowerDiagnostics, AReportFromBeforeItsSampleHasAgeZero) {
  EXPECT_THAT(diagnostics(drawing(10.0), {.generatedAt = after(-5.0)}),
              HasSubstr(R"("sampleAgeSeconds":0,)"));
}

TEST(PowerDiagnostics, WithoutHistoryTheValueHasStoodSinceTheSample) {
  const std::string text = diagnostics(drawing(10.0), {.generatedAt = after(3.0)});
  EXPECT_THAT(text, HasSubstr(R"("sampleAgeSeconds":3,)"));
  EXPECT_THAT(text, HasSubstr(R"("valueUnchangedSeconds":3})"));
  EXPECT_THAT(text, HasSubstr(R"("historySampleCount":0,)"));
  EXPECT_THAT(text, Not(HasSubstr("powerHistory")));
}

TEST(PowerDiagnostics, AHistoryWithoutAnyReadingLeavesThePowerHistoryOut) {
  const std::vector<SystemPowerState> history{withoutReading(-2.0), withoutReading(-1.0)};
  const std::string text = diagnostics(drawing(10.0), {.history = history});
  EXPECT_THAT(text, HasSubstr(R"("historySampleCount":2,)"));
  EXPECT_THAT(text, Not(HasSubstr("powerHistory")));
}

TEST(ValueUnchangedSeconds, IsAbsentWithoutATotal) {
  const std::vector<SystemPowerState> history{drawing(10.0)};
  EXPECT_EQ(valueUnchangedSeconds(withoutReading(), history, after(5.0)), std::nullopt);
}

TEST(ValueUnchangedSeconds, IsTheStatesAgeWithoutHistory) {
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.0), {}, after(5.0)), 5.0);
}

TEST(ValueUnchangedSeconds, ADifferenceWithinTheToleranceIsNoChange) {
  const std::vector<SystemPowerState> history{drawing(10.0, -4.0), drawing(10.0, -2.0)};
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.04), history, after(1.0)), 5.0);
}

TEST(ValueUnchangedSeconds, ADifferenceAboveTheToleranceIsAChangeAtTheState) {
  const std::vector<SystemPowerState> history{drawing(10.0, -4.0), drawing(10.0, -2.0)};
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.06), history, after(1.0)), 1.0);
}

TEST(ValueUnchangedSeconds, ExactlyTheToleranceIsNoChange) {
  // 0.05 W apart from 0 W is exact; an unplugged battery at 0 W would have no reading.
  SystemPowerState idle = withoutReading(-4.0);
  idle.power = samples::silicon(0.0);
  const std::vector<SystemPowerState> history{idle};
  EXPECT_EQ(valueUnchangedSeconds(drawing(0.05), history, after(1.0)), 5.0);
}

TEST(ValueUnchangedSeconds, TheLastChangeInTheHistoryIsTheAnchor) {
  const std::vector<SystemPowerState> history{drawing(10.0, -8.0), drawing(11.0, -6.0),
                                              drawing(12.0, -4.0), drawing(12.0, -2.0)};
  EXPECT_EQ(valueUnchangedSeconds(drawing(12.0), history, sampleTime), 4.0);
}

TEST(ValueUnchangedSeconds, NeighboursAreComparedSoThatASlowDriftIsNoChange) {
  const std::vector<SystemPowerState> history{drawing(10.00, -6.0), drawing(10.04, -4.0),
                                              drawing(10.08, -2.0)};
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.12), history, sampleTime), 6.0);
}

TEST(ValueUnchangedSeconds, SamplesWithoutATotalArePassedOver) {
  const std::vector<SystemPowerState> history{withoutReading(-9.0), drawing(10.0, -6.0),
                                              withoutReading(-4.0), drawing(10.0, -2.0)};
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.0), history, sampleTime), 6.0);
}

TEST(ValueUnchangedSeconds, AChangeOfKindWithTheSameWattsIsNone) {
  SystemPowerState silicon = withoutReading(-4.0);
  silicon.power = samples::silicon(10.0);
  const std::vector<SystemPowerState> history{silicon};
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.0), history, sampleTime), 4.0);
}

TEST(ValueUnchangedSeconds, IsNeverNegative) {
  EXPECT_EQ(valueUnchangedSeconds(drawing(10.0), {}, after(-5.0)), 0.0);
}

}  // namespace
}  // namespace quorvex
