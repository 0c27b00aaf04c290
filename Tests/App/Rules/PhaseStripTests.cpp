#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "PhaseStrip.h"
#include "RulesSamples.h"

namespace quorvex {
namespace {

using samples::phase;
using testing::IsEmpty;
using testing::SizeIs;

using Phases = std::vector<PowerSessionPhaseDigest>;

TEST(PhaseGroups, TwoPhasesOfOneSourceSeparatedByAnotherAreOneGroup) {
  Phases phases{phase("batteryDischarge", "Battery draw", false, 60),
                phase("batteryChargeInput", "Battery charge input", true, 100),
                phase("batteryDischarge", "Another label", false, 90)};
  phases[0].batteryPercentDelta = -1;
  phases[2].batteryPercentDelta = -2;
  const std::vector<PhaseGroup> groups = phaseGroups(phases);
  ASSERT_THAT(groups, SizeIs(2));
  EXPECT_EQ(groups[0], (PhaseGroup{"batteryDischarge-false", "batteryDischarge", "Battery draw",
                                   false, 60.0 + 90.0, -3}));
  EXPECT_EQ(groups[1].id, "batteryChargeInput-true");
}

TEST(PhaseGroups, UnknownConnectionIsAThirdValue) {
  const Phases phases{phase("unavailable", "On AC, battery idle", true, 10),
                      phase("unavailable", "Unavailable", false, 20),
                      phase("unavailable", "Unavailable", std::nullopt, 30)};
  const std::vector<PhaseGroup> groups = phaseGroups(phases);
  ASSERT_THAT(groups, SizeIs(3));
  EXPECT_EQ(groups[0].id, "unavailable-nil");
  EXPECT_EQ(groups[1].id, "unavailable-false");
  EXPECT_EQ(groups[2].id, "unavailable-true");
}

TEST(PhaseGroups, TheLongestComesFirstAndEqualOnesKeepTheirOrder) {
  const Phases phases{phase("a", "A", true, 10), phase("b", "B", true, 30),
                      phase("c", "C", true, 10)};
  const std::vector<PhaseGroup> groups = phaseGroups(phases);
  ASSERT_THAT(groups, SizeIs(3));
  EXPECT_EQ(groups[0].label, "B");
  EXPECT_EQ(groups[1].label, "A");
  EXPECT_EQ(groups[2].label, "C");
}

TEST(PhaseGroups, ChangesOfChargeThatAreNotKnownCountForNothing) {
  Phases phases{phase("a", "A", true, 10), phase("a", "A", true, 10)};
  EXPECT_EQ(phaseGroups(phases)[0].batteryPercentDelta, std::nullopt);
  phases[1].batteryPercentDelta = 4;
  EXPECT_EQ(phaseGroups(phases)[0].batteryPercentDelta, 4);
}

TEST(PhaseGroups, ChangesOfChargeBeyondAllRangeStayAtItsEnd) {
  Phases phases{phase("a", "A", true, 10), phase("a", "A", true, 10)};
  phases[0].batteryPercentDelta = std::numeric_limits<std::int64_t>::max();
  phases[1].batteryPercentDelta = 1;
  EXPECT_EQ(phaseGroups(phases)[0].batteryPercentDelta, std::numeric_limits<std::int64_t>::max());
  phases[0].batteryPercentDelta = std::numeric_limits<std::int64_t>::min();
  phases[1].batteryPercentDelta = -1;
  EXPECT_EQ(phaseGroups(phases)[0].batteryPercentDelta, std::numeric_limits<std::int64_t>::min());
}

TEST(PhaseStrip, EveryBarIsItsShareOfAllGroups) {
  const Phases phases{phase("batteryDischarge", "Battery draw", false, 45),
                      phase("ioReportSiliconPower", "IOReport silicon power", true, 15)};
  EXPECT_DOUBLE_EQ(totalDuration(phaseGroups(phases)), 60.0);
  const PhaseStrip strip = phaseStrip(phases, true);
  EXPECT_TRUE(strip.showsLegend);
  ASSERT_THAT(strip.bars, SizeIs(2));
  EXPECT_DOUBLE_EQ(strip.bars[0].fraction, 45.0 / 60.0);
  EXPECT_EQ(strip.bars[0].color, ColorName::orange);
  EXPECT_EQ(strip.bars[0].label, "Battery draw");
  EXPECT_EQ(strip.bars[0].durationText, "45s");
  EXPECT_DOUBLE_EQ(strip.bars[1].fraction, 15.0 / 60.0);
  EXPECT_EQ(strip.bars[1].color, ColorName::blue);
}

TEST(PhaseStrip, IsToldInWordsToo) {
  Phases phases{phase("batteryDischarge", "Battery draw", false, 4500),
                phase("batteryChargeInput", "Battery charge input", true, 1500)};
  phases[0].batteryPercentDelta = -9;
  EXPECT_EQ(phaseStrip(phases, false).accessibilityText,
            "Power sources: Battery draw: 1h 15m, 75% of the time, battery -9%; Battery charge "
            "input: 25m 0s, 25% of the time");
}

TEST(PhaseStrip, PhasesOfNoDurationHaveNoWidth) {
  const Phases phases{phase("a", "A", true, 0)};
  const PhaseStrip strip = phaseStrip(phases, false);
  ASSERT_THAT(strip.bars, SizeIs(1));
  EXPECT_DOUBLE_EQ(strip.bars[0].fraction, 0.0);
}

TEST(PhaseStrip, WithoutPhasesThereIsNothing) {
  const PhaseStrip strip = phaseStrip({}, true);
  EXPECT_THAT(strip.bars, IsEmpty());
  EXPECT_EQ(strip.accessibilityText, "");
}

}  // namespace
}  // namespace quorvex
