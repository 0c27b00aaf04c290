#include <vector>

#include "ChargeAnalysis.h"
#include "ObservationBuilder.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::at;
using observations::charging;
using observations::desktop;
using observations::discharging;
using observations::idleOnAC;
using observations::removePercent;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Samples = std::vector<Observation>;

PowerSessionChargeBehavior behaviorOf(const Samples& samples) {
  return chargeBehavior(batteryTrack(samples), 120.0);
}

TEST(ChargeBehavior, IsEmptyWithoutChargingSamples) {
  const auto empty = PowerSessionChargeBehavior::empty();
  EXPECT_EQ(empty.note, "Battery charge input is separate from discharge/system draw.");
  EXPECT_EQ(behaviorOf({}), empty);
  EXPECT_EQ(behaviorOf({desktop(0)}), empty);
  EXPECT_EQ(behaviorOf({discharging(0, 90, 10.0), idleOnAC(10, 90)}), empty);
}

TEST(ChargeBehavior, IsEmptyWhenTheChargingSamplesHaveNoInputWatts) {
  Samples samples{charging(0, 90, 30.0)};
  samples[0].snapshot->batteryChargeInputWatts.reset();
  EXPECT_EQ(behaviorOf(samples), PowerSessionChargeBehavior::empty());
}

TEST(ChargeBehavior, OfADesktopFollowsItsChargeKinds) {
  Samples samples{charging(0, 90, 30.0)};
  removePercent(samples[0]);
  const auto behavior = behaviorOf(samples);
  ASSERT_THAT(behavior.chargeRuns, SizeIs(1));
  EXPECT_EQ(behavior.chargeRuns[0].batteryPercentStart, std::nullopt);
  EXPECT_EQ(behavior.chargeRuns[0].batteryPercentEnd, std::nullopt);
}

TEST(ChargeBehavior, SaysWhatChargeInputIs) {
  EXPECT_EQ(
      behaviorOf({charging(0, 50, 30.0)}).note,
      "Charge-input watts are battery charge flow, not discharge watts or total system load.");
}

TEST(ChargeBehavior, DescribesARun) {
  const auto behavior =
      behaviorOf({charging(0, 50, 60.0), charging(10, 51, 50.0), charging(100, 53, 10.0)});
  EXPECT_THAT(behavior.chargeRuns, ElementsAre(PowerSessionChargeRun{
                                       .index = 0,
                                       .startedAt = at(0),
                                       .endedAt = at(100),
                                       .elapsedSeconds = 100.0,
                                       .sampleCount = 3,
                                       .batteryPercentStart = 50,
                                       .batteryPercentEnd = 53,
                                       .averageChargeInputWatts = (60.0 + 50.0 + 10.0) / 3.0,
                                       .confidence = "observed"}));
}

TEST(ChargeBehavior, CallsARunOfTwoSamplesLowSample) {
  const auto behavior = behaviorOf({charging(0, 50, 60.0), charging(10, 51, 50.0)});
  ASSERT_THAT(behavior.chargeRuns, SizeIs(1));
  EXPECT_EQ(behavior.chargeRuns[0].confidence, "low-sample");
}

TEST(ChargeBehavior, TakesTheFirstAndLastPresentPercentagesOfARun) {
  Samples samples{charging(0, 50, 60.0), charging(10, 51, 60.0), charging(20, 52, 60.0),
                  charging(30, 53, 60.0)};
  removePercent(samples.front());
  removePercent(samples.back());
  const auto behavior = behaviorOf(samples);
  ASSERT_THAT(behavior.chargeRuns, SizeIs(1));
  EXPECT_EQ(behavior.chargeRuns[0].batteryPercentStart, 51);
  EXPECT_EQ(behavior.chargeRuns[0].batteryPercentEnd, 52);
}

TEST(ChargeBehavior, KeepsOneRunAcrossAnInterruptionWithinTheGapLimit) {
  const auto behavior = behaviorOf({charging(0, 50, 60.0), charging(10, 50, 60.0), idleOnAC(60, 50),
                                    idleOnAC(90, 50), charging(110, 50, 60.0)});
  ASSERT_THAT(behavior.chargeRuns, SizeIs(1));
  EXPECT_EQ(behavior.chargeRuns[0].sampleCount, 3);
  EXPECT_EQ(behavior.chargeRuns[0].elapsedSeconds, 110.0);
}

TEST(ChargeBehavior, CutsARunAtAnInterruptionAboveTheGapLimit) {
  const auto behavior = behaviorOf({charging(0, 50, 60.0), charging(10, 50, 60.0), idleOnAC(60, 50),
                                    idleOnAC(90, 50), charging(140, 50, 60.0)});
  ASSERT_THAT(behavior.chargeRuns, SizeIs(2));
  EXPECT_EQ(behavior.chargeRuns[0].sampleCount, 2);
  EXPECT_EQ(behavior.chargeRuns[1].index, 1);
  EXPECT_EQ(behavior.chargeRuns[1].startedAt, at(140));
}

TEST(ChargeBehavior, DoesNotCutAtExactlyTheGapLimit) {
  EXPECT_THAT(behaviorOf({charging(0, 50, 60.0), charging(120, 50, 60.0)}).chargeRuns, SizeIs(1));
}

TEST(ChargeBehavior, GivesASessionThatStartsAt85PercentBothLowerMilestones) {
  const auto behavior = behaviorOf({charging(0, 85, 40.0), charging(60, 89, 35.0),
                                    charging(120, 90, 30.0), charging(180, 91, 25.0)});
  EXPECT_THAT(
      behavior.taperMilestones,
      ElementsAre(
          PowerSessionChargeMilestone{.percent = 70, .timestamp = at(0), .inputWatts = 40.0},
          PowerSessionChargeMilestone{.percent = 80, .timestamp = at(0), .inputWatts = 40.0},
          PowerSessionChargeMilestone{.percent = 90, .timestamp = at(120), .inputWatts = 30.0}));
}

TEST(ChargeBehavior, FindsMilestonesAcrossAllRuns) {
  const auto behavior =
      behaviorOf({charging(0, 72, 40.0), charging(1000, 94, 20.0), charging(2000, 95, 10.0),
                  charging(3000, 100, 2.0), charging(4000, 100, 1.0)});
  EXPECT_THAT(
      behavior.taperMilestones,
      ElementsAre(
          PowerSessionChargeMilestone{.percent = 70, .timestamp = at(0), .inputWatts = 40.0},
          PowerSessionChargeMilestone{.percent = 80, .timestamp = at(1000), .inputWatts = 20.0},
          PowerSessionChargeMilestone{.percent = 90, .timestamp = at(1000), .inputWatts = 20.0},
          PowerSessionChargeMilestone{.percent = 95, .timestamp = at(2000), .inputWatts = 10.0},
          PowerSessionChargeMilestone{.percent = 100, .timestamp = at(3000), .inputWatts = 2.0}));
}

TEST(ChargeBehavior, HasNoMilestoneThatWasNotReachedWhileCharging) {
  EXPECT_THAT(behaviorOf({idleOnAC(0, 100), charging(10, 69, 40.0)}).taperMilestones, IsEmpty());
}

TEST(ChargeBehavior, MatchesNoMilestoneToASampleWithoutPercentage) {
  Samples samples{charging(0, 100, 40.0), charging(10, 70, 30.0)};
  removePercent(samples[0]);
  const auto behavior = behaviorOf(samples);
  EXPECT_THAT(behavior.taperMilestones,
              ElementsAre(PowerSessionChargeMilestone{
                  .percent = 70, .timestamp = at(10), .inputWatts = 30.0}));
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
