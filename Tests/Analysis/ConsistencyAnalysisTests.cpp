#include <vector>

#include "ConsistencyAnalysis.h"
#include "ObservationBuilder.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::bare;
using observations::desktop;
using observations::discharging;
using testing::ElementsAre;
using testing::IsEmpty;
using Samples = std::vector<Observation>;

/// 25 W of battery draw of which silicon explains half a watt.
Observation unexplainedDraw(double seconds = 0) {
  Observation observation = discharging(seconds, 80, 25.0);
  observation.snapshot->siliconWatts = 0.5;
  observation.snapshot->unattributedPower = 24.5;
  return observation;
}

Observation withSilicon(double watts, bool complete) {
  Observation observation = desktop(0);
  observation.snapshot->systemPower = watts;
  observation.snapshot->siliconChannelsComplete = complete;
  return observation;
}

bool qualifies(const Observation& observation) {
  return !telemetryConsistencyChecks({&observation, 1}).empty();
}

TEST(ConsistencyChecks, AreNoneWithoutObservations) {
  EXPECT_THAT(telemetryConsistencyChecks({}), IsEmpty());
}

TEST(ConsistencyChecks, AreNoneForSamplesWithoutSnapshots) {
  EXPECT_FALSE(qualifies(bare(0)));
}

TEST(ConsistencyChecks, CountHighDrawThatSiliconDoesNotExplain) {
  const Samples samples{unexplainedDraw(0), discharging(2, 80, 5.0), unexplainedDraw(4)};
  EXPECT_THAT(telemetryConsistencyChecks(samples),
              ElementsAre(PowerSessionTelemetryConsistencyCheck{
                  .code = "battery-draw-residual-dominates",
                  .severity = "warning",
                  .message = "Battery draw was high while IOReport silicon watts were near zero; "
                             "unattributed power dominated and should not be read as measured "
                             "display power.",
                  .sampleCount = 2}));
}

TEST(ConsistencyChecks, CountSamplesWithIncompleteSilicon) {
  const Samples samples{withSilicon(3.0, false), withSilicon(3.0, true), withSilicon(0.0, false)};
  EXPECT_THAT(telemetryConsistencyChecks(samples),
              ElementsAre(PowerSessionTelemetryConsistencyCheck{
                  .code = "incomplete-silicon-channels",
                  .severity = "info",
                  .message = "Some IOReport samples were missing silicon aggregate channels; "
                             "residual/unattributed power absorbs the missing rails.",
                  .sampleCount = 2}));
}

TEST(ConsistencyChecks, ComeInTheirOrder) {
  const Samples samples{withSilicon(3.0, false), unexplainedDraw()};
  const auto checks = telemetryConsistencyChecks(samples);
  ASSERT_EQ(checks.size(), 2U);
  EXPECT_EQ(checks[0].code, "battery-draw-residual-dominates");
  EXPECT_EQ(checks[1].code, "incomplete-silicon-channels");
}

TEST(ConsistencyChecks, NeverCallASnapshotWithoutPowerIncomplete) {
  EXPECT_FALSE(qualifies(desktop(0)));
}

TEST(ResidualDominates, TakesDisplayAndOtherPowerForAMissingResidual) {
  Observation observation = unexplainedDraw();
  observation.snapshot->unattributedPower.reset();
  observation.snapshot->displayAndOtherPower = 18.0;  // below 0.75 * 25 W = 18.75 W
  EXPECT_FALSE(qualifies(observation));
  observation.snapshot->displayAndOtherPower = 18.75;
  EXPECT_TRUE(qualifies(observation));
}

TEST(ResidualDominates, TakesTheResidualBeforeDisplayAndOtherPower) {
  Observation observation = unexplainedDraw();
  observation.snapshot->unattributedPower = 18.0;
  observation.snapshot->displayAndOtherPower = 25.0;
  EXPECT_FALSE(qualifies(observation));
}

TEST(ResidualDominates, NotWhileTheBatterySupplementsTheCharger) {
  Observation observation = unexplainedDraw();
  observation.snapshot->powerSourceKind = "batterySupplement";
  EXPECT_FALSE(qualifies(observation));
}

TEST(ResidualDominates, NotBelowTwentyWattsOfDraw) {
  Observation observation = unexplainedDraw();
  observation.snapshot->batteryDischargeWatts = 20.0;
  EXPECT_TRUE(qualifies(observation));
  observation.snapshot->batteryDischargeWatts = 19.99;
  EXPECT_FALSE(qualifies(observation));
  observation.snapshot->batteryDischargeWatts.reset();
  EXPECT_FALSE(qualifies(observation));
}

TEST(ResidualDominates, NotWithAWattOfSilicon) {
  Observation observation = unexplainedDraw();
  observation.snapshot->siliconWatts = 0.99;
  EXPECT_TRUE(qualifies(observation));
  observation.snapshot->siliconWatts = 1.0;
  EXPECT_FALSE(qualifies(observation));
}

TEST(ResidualDominates, TakesThePowerRecordForMissingSiliconWatts) {
  Observation observation = unexplainedDraw();
  observation.snapshot->siliconChannelsComplete = true;
  observation.snapshot->systemPower = 5.0;
  EXPECT_TRUE(qualifies(observation));
  observation.snapshot->siliconWatts.reset();
  EXPECT_FALSE(qualifies(observation));
  observation.snapshot->systemPower = 0.5;
  EXPECT_TRUE(qualifies(observation));
}

TEST(ResidualDominates, WithoutAnySiliconReadingIfTheResidualIsThere) {
  Observation observation = unexplainedDraw();
  observation.snapshot->siliconWatts.reset();
  EXPECT_TRUE(qualifies(observation));
}

TEST(ResidualDominates, NotWithoutSiliconPowerAndResidual) {
  // 20 W of draw ask for a residual of 15 W, and there is none.
  EXPECT_FALSE(qualifies(discharging(0, 80, 20.0)));
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
