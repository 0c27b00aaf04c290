#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HeroContext.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

BatteryInfo onAC(double watts, std::optional<std::int64_t> adapterWatts) {
  BatteryInfo battery = samples::batteryAt(watts);
  battery.acConnected = true;
  battery.adapterWatts = adapterWatts;
  return battery;
}

AdapterPill pillOf(const BatteryInfo& battery) {
  return adapterStatusPill({.battery = battery}).value_or(AdapterPill{.label = "no pill"});
}

HeroContext powerContext(const SystemPowerState& state) {
  return heroContext(GraphMode::power, state);
}

TEST(HeroContextTests, WeakAdapterWithItsRating) {
  const AdapterPill pill = pillOf(onAC(-5.0, 30));
  EXPECT_EQ(pill.label, "30W Weak");
  EXPECT_EQ(pill.symbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(pill.color, ColorName::orange);
  EXPECT_EQ(pill.help, "Plugged in and draining: charger is not overcoming current load");
  EXPECT_EQ(pill.fillOpacity, 0.15);
}

TEST(HeroContextTests, GoodAdapterWithItsRating) {
  const AdapterPill pill = pillOf(onAC(20.0, 67));
  EXPECT_EQ(pill.label, "67W Adapter");
  EXPECT_EQ(pill.symbol, "");
  EXPECT_EQ(pill.color, ColorName::green);
  EXPECT_EQ(pill.help, "Connected adapter");
  EXPECT_EQ(pill.fillOpacity, 0.15);
}

TEST(HeroContextTests, AdapterWithoutRatingIsOnAC) {
  EXPECT_EQ(pillOf(onAC(20.0, std::nullopt)).label, "On AC");
  const AdapterPill weak = pillOf(onAC(-5.0, std::nullopt));
  EXPECT_EQ(weak.label, "On AC");
  EXPECT_EQ(weak.color, ColorName::orange);
}

TEST(HeroContextTests, WattageOfExactlyMinus1IsNotWeak) {
  EXPECT_EQ(pillOf(onAC(-1.0, 30)).label, "30W Adapter");
  EXPECT_EQ(pillOf(onAC(-1.01, 30)).label, "30W Weak");
}

TEST(HeroContextTests, ChargingAdapterIsNeverWeak) {
  BatteryInfo battery = onAC(-5.0, 30);
  battery.isCharging = true;
  EXPECT_EQ(pillOf(battery).label, "30W Adapter");
}

TEST(HeroContextTests, AdapterOfAFullDrainingBatteryIsWeak) {
  BatteryInfo battery = onAC(-5.0, 30);
  battery.isFullyCharged = true;
  EXPECT_EQ(pillOf(battery).label, "30W Weak");
}

TEST(HeroContextTests, NoPillWithoutBatteryOrAC) {
  EXPECT_EQ(adapterStatusPill({}), std::nullopt);
  EXPECT_EQ(adapterStatusPill({.battery = samples::batteryAt(-5.0)}), std::nullopt);
}

TEST(HeroContextTests, PillStandsBesideThePower) {
  const SystemPowerState state{.battery = onAC(-5.0, 30)};
  EXPECT_EQ(powerContext(state).adapterPill, adapterStatusPill(state));
}

TEST(HeroContextTests, ComponentsStandAboveHalfAWattOfCPUOrGPU) {
  SystemPowerState state{.power = samples::silicon(0.0)};
  state.power->cpuPower = 0.5;
  state.power->gpuPower = 0.5;
  EXPECT_THAT(powerContext(state).components, IsEmpty());
  state.power->cpuPower = 0.51;
  EXPECT_THAT(powerContext(state).components, ElementsAre("CPU 0.5W", "GPU 0.5W"));
  state.power->cpuPower = 0.0;
  state.power->gpuPower = 2.0;
  EXPECT_THAT(powerContext(state).components, ElementsAre("CPU 0.0W", "GPU 2.0W"));
}

TEST(HeroContextTests, ComponentsEndWithWhatTheSiliconDoesNotExplain) {
  // 12 W leave the battery, of which the silicon explains 8 W: 4 W CPU and 2 W GPU among them.
  const SystemPowerState state{.battery = samples::batteryAt(-12.0),
                               .power = samples::silicon(8.0)};
  const HeroContext context = powerContext(state);
  EXPECT_THAT(context.components, ElementsAre("CPU 4.0W", "GPU 2.0W", "Other 4.0W (incomplete)"));
  EXPECT_EQ(context.text, std::nullopt);
}

TEST(HeroContextTests, SourceWordStandsWithoutComponents) {
  EXPECT_EQ(powerContext({.battery = samples::batteryAt(-12.0)}).text->text, "Battery draw");
  BatteryInfo charging = onAC(20.0, 67);
  charging.isCharging = true;
  EXPECT_EQ(powerContext({.battery = charging}).text->text, "Charging");
}

TEST(HeroContextTests, SupplementIsWordedInOrange) {
  EXPECT_EQ(powerContext({.battery = onAC(-0.5, 67)}).text,
            (ColoredText{"Battery supplement", ColorName::orange}));
}

TEST(HeroContextTests, SiliconAndMissingReadingsHaveNoSourceWord) {
  EXPECT_EQ(powerContext({.power = samples::silicon(0.4)}).text, std::nullopt);
  EXPECT_EQ(powerContext({}).text, std::nullopt);
}

TEST(HeroContextTests, UnattributedWattsAreTheDrawBeyondTheSilicon) {
  EXPECT_DOUBLE_EQ(currentUnattributedWatts(
                       {.battery = samples::batteryAt(-12.0), .power = samples::silicon(9.0)})
                       .value_or(0.0),
                   3.0);
}

TEST(HeroContextTests, UnattributedWattsCountOnACToo) {
  EXPECT_TRUE(
      currentUnattributedWatts({.battery = onAC(-12.0, 30), .power = samples::silicon(9.0)}));
}

TEST(HeroContextTests, NoUnattributedWattsUpToATwentiethOfAWatt) {
  SystemPowerState state{.battery = samples::batteryAt(-0.05), .power = samples::silicon(0.0)};
  EXPECT_EQ(currentUnattributedWatts(state), std::nullopt);
  state.battery->wattage = -0.06;
  EXPECT_TRUE(currentUnattributedWatts(state));
}

TEST(HeroContextTests, NoUnattributedWattsWhenTheSiliconExceedsTheDraw) {
  EXPECT_EQ(currentUnattributedWatts(
                {.battery = samples::batteryAt(-5.0), .power = samples::silicon(9.0)}),
            std::nullopt);
}

TEST(HeroContextTests, NoUnattributedWattsWithoutBattery) {
  EXPECT_EQ(currentUnattributedWatts({.power = samples::silicon(9.0)}), std::nullopt);
}

TEST(HeroContextTests, NoUnattributedWattsWithoutSilicon) {
  EXPECT_EQ(currentUnattributedWatts({.battery = samples::batteryAt(-12.0)}), std::nullopt);
}

TEST(HeroContextTests, NoUnattributedWattsWhileCharging) {
  SystemPowerState state{.battery = samples::batteryAt(-12.0), .power = samples::silicon(9.0)};
  state.battery->isCharging = true;
  EXPECT_EQ(currentUnattributedWatts(state), std::nullopt);
}

TEST(HeroContextTests, NoUnattributedWattsWithoutDraw) {
  EXPECT_EQ(currentUnattributedWatts(
                {.battery = samples::batteryAt(12.0), .power = samples::silicon(9.0)}),
            std::nullopt);
}

TEST(HeroContextTests, TemperatureHasThePowerBesideIt) {
  const HeroContext context =
      heroContext(GraphMode::temperature, {.battery = samples::batteryAt(-12.34)});
  EXPECT_EQ(context.text->text, "12.3W power");
  EXPECT_EQ(context.adapterPill, std::nullopt);
  EXPECT_EQ(heroContext(GraphMode::temperature, {}).text, std::nullopt);
}

TEST(HeroContextTests, NetworkHasTheNumberOfInterfacesBesideIt) {
  const SystemPowerState state{.network =
                                   NetworkSnapshot{.interfaces = {samples::interface(4, "en0"),
                                                                  samples::interface(9, "utun0")}}};
  EXPECT_EQ(heroContext(GraphMode::network, state).text->text, "2 Interfaces");
  EXPECT_EQ(heroContext(GraphMode::network, {}).text->text, "0 Interfaces");
}

}  // namespace
}  // namespace quorvex
