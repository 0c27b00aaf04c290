#include <limits>
#include <vector>

#include "BatteryAnalysis.h"
#include "ObservationBuilder.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

using observations::at;
using observations::desktop;
using observations::discharging;
using observations::idleOnAC;
using observations::removePercent;
using testing::IsEmpty;
using testing::SizeIs;
using Samples = std::vector<Observation>;

constexpr double maxGap = 120.0;

std::vector<PowerSessionBatteryRun> runsOf(const Samples& samples, double limit = maxGap) {
  return dischargeRuns(batteryTrack(samples), limit);
}

std::optional<PowerSessionBatteryCycleInsights> insightsOf(const Samples& samples,
                                                           double limit = maxGap) {
  return batteryInsights(samples, batteryTrack(samples), limit);
}

/// `count` samples evenly from 0 to `seconds` that drain from `from` to `to` percent.
Samples drain(std::size_t count, double seconds, std::int64_t from, std::int64_t to, double watts) {
  Samples samples;
  for (std::size_t i = 0; i < count; ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(count - 1);
    const double percent = static_cast<double>(from) + share * static_cast<double>(to - from);
    samples.push_back(discharging(seconds * share, static_cast<std::int64_t>(percent), watts));
  }
  samples.back().snapshot->battery->chargePercent = to;
  return samples;
}

Samples percentages(std::initializer_list<std::int64_t> values) {
  Samples samples;
  for (const std::int64_t value : values) {
    samples.push_back(idleOnAC(static_cast<double>(samples.size()), value));
  }
  return samples;
}

TEST(BatteryInsights, AreAbsentWithoutAnyPercentage) {
  EXPECT_EQ(insightsOf({desktop(0), desktop(10)}), std::nullopt);
  EXPECT_EQ(insightsOf({}), std::nullopt);
}

TEST(BatteryInsights, ExtrapolateHalfAnHourFrom100To90PercentToAFullBattery) {
  // 5 Wh in 30 minutes are 10 W; a tenth of the battery gave 5 Wh, so all of it gives 50 Wh.
  const auto insights = insightsOf(drain(180, 1800.0, 100, 90, 10.0));
  ASSERT_TRUE(insights);
  ASSERT_THAT(insights->dischargeRuns, SizeIs(1));
  const PowerSessionBatteryRun& run = insights->dischargeRuns[0];
  EXPECT_EQ(run.index, 0);
  EXPECT_EQ(run.startedAt, at(0));
  EXPECT_EQ(run.endedAt, at(1800));
  EXPECT_EQ(run.durationSeconds, 1800.0);
  EXPECT_EQ(run.sampleCount, 180);
  EXPECT_EQ(run.batteryPercentStart, 100);
  EXPECT_EQ(run.batteryPercentEnd, 90);
  EXPECT_EQ(run.batteryPercentDelta, -10);
  EXPECT_DOUBLE_EQ(run.averageDrawWatts, 10.0);
  EXPECT_NEAR(run.totalWattHours.value(), 5.0, 1e-9);
  EXPECT_NEAR(run.estimatedUsableFullBatteryWattHours.value(), 50.0, 1e-9);
  EXPECT_EQ(run.confidence, "strong");
  EXPECT_NEAR(insights->estimatedUsableFullBatteryWattHours.value(), 50.0, 1e-9);
  EXPECT_EQ(insights->confidence, "derived-from-continuous-discharge");
  EXPECT_EQ(insights->note, std::nullopt);
}

TEST(DischargeRuns, AreStrongAtExactlyFiveMinutesThreeSamplesAndOnePoint) {
  const auto runs = runsOf(drain(3, 300.0, 80, 79, 12.0), 150.0);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].confidence, "strong");
  // 12 W for 5 minutes is 1 Wh for one point of a hundred.
  EXPECT_NEAR(runs[0].estimatedUsableFullBatteryWattHours.value(), 100.0, 1e-9);
}

TEST(DischargeRuns, AreLowJustBelowFiveMinutes) {
  const auto runs = runsOf(drain(3, 299.9, 80, 79, 12.0), 150.0);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].confidence, "low");
  EXPECT_TRUE(runs[0].totalWattHours.has_value());
  EXPECT_EQ(runs[0].estimatedUsableFullBatteryWattHours, std::nullopt);
}

TEST(DischargeRuns, AreLowWithTwoSamples) {
  const auto runs = runsOf(drain(2, 300.0, 80, 79, 12.0), 300.0);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].confidence, "low");
  EXPECT_EQ(runs[0].estimatedUsableFullBatteryWattHours, std::nullopt);
}

TEST(DischargeRuns, AreLowWithoutADrop) {
  const auto runs = runsOf(drain(3, 300.0, 80, 80, 12.0), 150.0);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].batteryPercentDelta, 0);
  EXPECT_EQ(runs[0].confidence, "low");
  EXPECT_EQ(runs[0].estimatedUsableFullBatteryWattHours, std::nullopt);
}

TEST(DischargeRuns, AreLowWhenThePercentageRises) {
  const auto runs = runsOf(drain(3, 300.0, 80, 81, 12.0), 150.0);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].confidence, "low");
  EXPECT_EQ(runs[0].estimatedUsableFullBatteryWattHours, std::nullopt);
}

TEST(DischargeRuns, AreCutByOneSampleOnAC) {
  // An hour on battery with one sample in the middle that reads AC.
  Samples samples = drain(61, 3600.0, 90, 60, 10.0);
  samples[30] = idleOnAC(1800, 75);
  const auto runs = runsOf(samples);
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs[0].index, 0);
  EXPECT_EQ(runs[0].sampleCount, 30);
  EXPECT_EQ(runs[0].endedAt, at(29 * 60));
  EXPECT_EQ(runs[1].index, 1);
  EXPECT_EQ(runs[1].sampleCount, 30);
  EXPECT_EQ(runs[1].startedAt, at(31 * 60));
}

TEST(DischargeRuns, KeepTheirNumberWhenAnEarlierGroupWasDropped) {
  Samples samples = drain(61, 3600.0, 90, 60, 10.0);
  samples[30] = idleOnAC(1800, 75);
  removePercent(samples[0]);
  const auto runs = runsOf(samples);
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].index, 1);
  EXPECT_EQ(runs[0].startedAt, at(31 * 60));
}

TEST(DischargeRuns, AreDroppedWhenTheFirstSampleHasNoPercentage) {
  Samples samples = drain(10, 540.0, 90, 85, 10.0);
  removePercent(samples.front());
  EXPECT_THAT(runsOf(samples), IsEmpty());
}

TEST(DischargeRuns, AreDroppedWhenTheLastSampleHasNoPercentage) {
  Samples samples = drain(10, 540.0, 90, 85, 10.0);
  removePercent(samples.back());
  EXPECT_THAT(runsOf(samples), IsEmpty());
}

TEST(DischargeRuns, StandWhenASampleInBetweenHasNoPercentage) {
  Samples samples = drain(10, 540.0, 90, 85, 10.0);
  removePercent(samples[4]);
  EXPECT_THAT(runsOf(samples), SizeIs(1));
}

TEST(DischargeRuns, AreCutByOneSampleWithoutDischargeWatts) {
  Samples samples = drain(10, 540.0, 90, 85, 10.0);
  samples[4].snapshot->batteryDischargeWatts.reset();
  const auto runs = runsOf(samples);
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs[0].sampleCount, 4);
  EXPECT_EQ(runs[1].sampleCount, 5);
}

TEST(DischargeRuns, AreCutByOneSampleThatDoesNotDecode) {
  Samples samples = drain(10, 540.0, 90, 85, 10.0);
  samples[4].snapshot.reset();
  EXPECT_THAT(runsOf(samples), SizeIs(2));
}

TEST(DischargeRuns, AreCutOnlyAboveTheGapLimit) {
  EXPECT_THAT(runsOf({discharging(0, 90, 10.0), discharging(120, 89, 10.0)}), SizeIs(1));
  const auto runs = runsOf({discharging(0, 90, 10.0), discharging(120.001, 89, 10.0)});
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs[0].sampleCount, 1);
  EXPECT_EQ(runs[1].index, 1);
}

TEST(DischargeRuns, MeasureTheGapFromTheLastSampleOfTheRun) {
  // The AC sample closes the run; a new run needs no neighbour within the limit.
  const auto runs =
      runsOf({discharging(0, 90, 10.0), idleOnAC(60, 90), discharging(300, 89, 10.0)});
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs[1].index, 1);
}

TEST(DischargeRuns, OfOneSampleHaveNoEnergy) {
  const auto runs = runsOf({discharging(0, 90, 10.0)});
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(runs[0].durationSeconds, 0.0);
  EXPECT_EQ(runs[0].averageDrawWatts, 10.0);
  EXPECT_EQ(runs[0].totalWattHours, std::nullopt);
  EXPECT_EQ(runs[0].confidence, "low");
}

TEST(DischargeRuns, AverageTheWattsPlainlyAndNotByTime) {
  const auto runs =
      runsOf({discharging(0, 90, 10.0), discharging(10, 90, 20.0), discharging(110, 89, 60.0)});
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_DOUBLE_EQ(runs[0].averageDrawWatts, (10.0 + 20.0 + 60.0) / 3.0);
  EXPECT_DOUBLE_EQ(runs[0].totalWattHours.value(), (15.0 * 10.0 + 40.0 * 100.0) / 3600.0);
}

TEST(DischargeRuns, TakeNoSupplementForADischarge) {
  Samples samples{discharging(0, 90, 10.0)};
  samples[0].snapshot->powerSourceKind = "batterySupplement";
  EXPECT_THAT(runsOf(samples), IsEmpty());
}

TEST(BatteryInsights, CountStepsUpAndDownApart) {
  const auto insights = insightsOf(percentages({50, 49, 51, 50}));
  ASSERT_TRUE(insights);
  EXPECT_EQ(insights->totalPercentGained, 2);
  EXPECT_EQ(insights->totalPercentDischarged, 1 + 1);
  EXPECT_EQ(insights->netPercent, 0);
  EXPECT_EQ(insights->lowestPercent, 49);
  EXPECT_EQ(insights->highestPercent, 51);
}

TEST(BatteryInsights, CountStepsAcrossGapsAndSamplesWithoutPercentage) {
  Samples samples{discharging(0, 50, 10.0), desktop(10), idleOnAC(50'000, 46)};
  const auto insights = insightsOf(samples);
  ASSERT_TRUE(insights);
  EXPECT_EQ(insights->totalPercentDischarged, 4);
  EXPECT_EQ(insights->netPercent, -4);
}

TEST(BatteryInsights, OfOnePercentageHaveNoMovement) {
  const auto insights = insightsOf(percentages({73}));
  ASSERT_TRUE(insights);
  EXPECT_EQ(insights->totalPercentGained, 0);
  EXPECT_EQ(insights->totalPercentDischarged, 0);
  EXPECT_EQ(insights->netPercent, 0);
  EXPECT_EQ(insights->lowestPercent, 73);
  EXPECT_EQ(insights->highestPercent, 73);
}

TEST(BatteryInsights, StayWithinTheirTypeForAbsurdPercentages) {
  constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
  constexpr auto highest = std::numeric_limits<std::int64_t>::max();
  const auto insights = insightsOf(percentages({lowest, highest, lowest, highest}));
  ASSERT_TRUE(insights);
  EXPECT_EQ(insights->totalPercentGained, highest);
  EXPECT_EQ(insights->totalPercentDischarged, highest);
  EXPECT_EQ(insights->netPercent, highest);
}

TEST(BatteryInsights, WithoutAStrongRunSayWhyThereIsNoEstimate) {
  const auto insights = insightsOf(drain(3, 299.9, 80, 79, 12.0), 150.0);
  ASSERT_TRUE(insights);
  EXPECT_THAT(insights->dischargeRuns, SizeIs(1));
  EXPECT_EQ(insights->estimatedUsableFullBatteryWattHours, std::nullopt);
  EXPECT_EQ(insights->confidence, "insufficient-continuous-discharge");
  EXPECT_EQ(insights->note,
            "Continuous unplugged data was too sparse or too short for usable full-battery Wh.");
}

TEST(BatteryInsights, AverageTheStrongRunsWhateverTheirLength) {
  // 60 W for 300 s are 5 Wh for 10 points: 50 Wh. 30 W for 600 s are 5 Wh for 5 points: 100 Wh.
  Samples samples = drain(4, 300.0, 90, 80, 60.0);
  samples.push_back(idleOnAC(400, 80));
  for (Observation& observation : drain(7, 600.0, 80, 75, 30.0)) {
    observation.columns.timestamp += std::chrono::seconds{500};
    samples.push_back(observation);
  }
  // A low run in between the same would not count: one sample more on battery.
  samples.push_back(idleOnAC(1150, 75));
  samples.push_back(discharging(1200, 75, 500.0));
  const auto insights = insightsOf(samples);
  ASSERT_TRUE(insights);
  ASSERT_THAT(insights->dischargeRuns, SizeIs(3));
  EXPECT_NEAR(insights->estimatedUsableFullBatteryWattHours.value(), (50.0 + 100.0) / 2.0, 1e-9);
}

TEST(BatteryInsights, TakeCapacitiesOfTheFirstReadingAtTheMeanVoltage) {
  Samples samples{idleOnAC(0, 80), idleOnAC(10, 80), idleOnAC(20, 80)};
  samples[0].snapshot->battery->voltage = 12.0;
  samples[1].snapshot->battery->voltage = 11.0;
  samples[1].snapshot->battery->maxCapacity = 1;
  samples[1].snapshot->battery->designCapacity = 1;
  samples[1].snapshot->battery->healthPercent = 1;
  samples[2].snapshot->battery.reset();
  const auto insights = insightsOf(samples);
  ASSERT_TRUE(insights);
  // 11.5 V times 6 Ah and 6.25 Ah
  EXPECT_DOUBLE_EQ(insights->reportedFullChargeCapacityWattHours.value(), 11.5 * 6.0);
  EXPECT_DOUBLE_EQ(insights->reportedDesignCapacityWattHours.value(), 11.5 * 6.25);
  EXPECT_EQ(insights->reportedHealthPercent, 96);
}

TEST(BatteryInsights, SkipSamplesWithoutABatteryToFindTheFirstReading) {
  Samples samples{desktop(0), observations::bare(5), idleOnAC(10, 80)};
  const auto insights = insightsOf(samples);
  ASSERT_TRUE(insights);
  EXPECT_DOUBLE_EQ(insights->reportedFullChargeCapacityWattHours.value(), 12.0 * 6.0);
}

TEST(BatteryInsights, ReportNoCapacityWithoutABatteryReading) {
  const auto insights = insightsOf({observations::undecodable(idleOnAC(0, 80))});
  ASSERT_TRUE(insights);
  EXPECT_EQ(insights->highestPercent, 80);
  EXPECT_EQ(insights->reportedFullChargeCapacityWattHours, std::nullopt);
  EXPECT_EQ(insights->reportedDesignCapacityWattHours, std::nullopt);
  EXPECT_EQ(insights->reportedHealthPercent, std::nullopt);
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
