#include <limits>

#include "BatteryTrack.h"
#include "ObservationBuilder.h"
#include "PercentChange.h"

namespace quorvex {
namespace {

using observations::at;
using observations::bare;
using observations::charging;
using observations::discharging;
using observations::undecodable;

BatteryPoint pointOf(const Observation& observation) {
  return batteryTrack({&observation, 1}).at(0);
}

TEST(BatteryTrack, TakesDischargeWattsFromADischargingSnapshot) {
  EXPECT_EQ(pointOf(discharging(4, 80, 9.5)),
            (BatteryPoint{.timestamp = at(4), .percent = 80, .dischargeWatts = 9.5}));
}

TEST(BatteryTrack, TakesChargeInputFromAChargingSnapshot) {
  EXPECT_EQ(pointOf(charging(4, 80, 40.0)),
            (BatteryPoint{.timestamp = at(4), .percent = 80, .chargeInputWatts = 40.0}));
}

TEST(BatteryTrack, HasNoWattsWhenTheSourceIsAnother) {
  Observation observation = discharging(0, 80, 9.5);
  observation.snapshot->powerSourceKind = "batterySupplement";
  observation.snapshot->batteryChargeInputWatts = 3.0;
  EXPECT_EQ(pointOf(observation), (BatteryPoint{.timestamp = at(0), .percent = 80}));
}

TEST(BatteryTrack, HasNoWattsWithoutThoseOfTheSource) {
  Observation discharge = discharging(0, 80, 9.5);
  discharge.snapshot->batteryDischargeWatts.reset();
  discharge.snapshot->batteryChargeInputWatts = 9.5;
  EXPECT_EQ(pointOf(discharge), (BatteryPoint{.timestamp = at(0), .percent = 80}));
  Observation charge = charging(0, 80, 40.0);
  charge.snapshot->batteryChargeInputWatts.reset();
  charge.snapshot->batteryDischargeWatts = 40.0;
  EXPECT_EQ(pointOf(charge), (BatteryPoint{.timestamp = at(0), .percent = 80}));
}

TEST(BatteryTrack, InfersDischargeFromTheColumnWhenTheSnapshotNamesNoSource) {
  Observation observation = discharging(0, 80, 9.5);
  observation.snapshot->powerSourceKind.reset();
  EXPECT_EQ(pointOf(observation).dischargeWatts, 9.5);
  observation.columns.acConnected.reset();
  EXPECT_EQ(pointOf(observation).dischargeWatts, std::nullopt);
}

TEST(BatteryTrack, NeverInfersChargeInput) {
  Observation observation = charging(0, 80, 40.0);
  observation.snapshot->powerSourceKind.reset();
  EXPECT_EQ(pointOf(observation).chargeInputWatts, std::nullopt);
}

TEST(BatteryTrack, TakesThePercentageOfTheSnapshotBeforeTheColumn) {
  Observation observation = discharging(0, 80, 9.5);
  observation.columns.batteryPercent = 79;
  EXPECT_EQ(pointOf(observation).percent, 80);
  observation.snapshot->battery.reset();
  EXPECT_EQ(pointOf(observation).percent, 79);
  EXPECT_EQ(pointOf(undecodable(observation)).percent, 79);
  EXPECT_EQ(pointOf(bare(0)).percent, std::nullopt);
}

TEST(PercentSpan, IsThatOfTheFirstAndLastPresentPercentages) {
  const std::vector<BatteryPoint> points{{.timestamp = at(0)},
                                         {.timestamp = at(1), .percent = 90},
                                         {.timestamp = at(2), .percent = 70},
                                         {.timestamp = at(3), .percent = 80},
                                         {.timestamp = at(4)}};
  EXPECT_EQ(percentSpan(points).start, 90);
  EXPECT_EQ(percentSpan(points).end, 80);
}

TEST(PercentSpan, IsAbsentWithoutPercentages) {
  const std::vector<BatteryPoint> points{{.timestamp = at(0)}};
  EXPECT_EQ(percentSpan(points).start, std::nullopt);
  EXPECT_EQ(percentSpan(points).end, std::nullopt);
  EXPECT_EQ(percentSpan({}).start, std::nullopt);
}

TEST(DischargeEnergy, AveragesPlainlyAndIntegratesOverTime) {
  const std::vector<BatteryPoint> points{{.timestamp = at(0), .dischargeWatts = 10.0},
                                         {.timestamp = at(30)},
                                         {.timestamp = at(60), .dischargeWatts = 20.0},
                                         {.timestamp = at(360), .dischargeWatts = 30.0}};
  const DischargeEnergy energy = dischargeEnergy(points);
  EXPECT_DOUBLE_EQ(energy.averageWatts.value(), (10.0 + 20.0 + 30.0) / 3.0);
  EXPECT_DOUBLE_EQ(energy.totalWattHours.value(), (15.0 * 60.0 + 25.0 * 300.0) / 3600.0);
}

TEST(DischargeEnergy, IsAbsentWithoutDischargeWatts) {
  const std::vector<BatteryPoint> points{{.timestamp = at(0), .chargeInputWatts = 10.0}};
  EXPECT_EQ(dischargeEnergy(points).averageWatts, std::nullopt);
  EXPECT_EQ(dischargeEnergy(points).totalWattHours, std::nullopt);
}

TEST(PercentChange, IsEndMinusStart) {
  EXPECT_EQ(percentChange(100, 90), -10);
  EXPECT_EQ(percentChange(49, 51), 2);
}

TEST(PercentChange, StaysAtTheEndsOfItsType) {
  constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
  constexpr auto highest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(percentChange(lowest, highest), highest);
  EXPECT_EQ(percentChange(highest, lowest), lowest);
}

}  // namespace
}  // namespace quorvex
