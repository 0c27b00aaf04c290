#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

#include "ObservationBuilder.h"
#include "PowerSessionAnalysis.h"

namespace quorvex {

namespace PowerSessionAnalysis {
namespace {

using observations::at;
using observations::charging;
using observations::desktop;
using observations::discharging;
using observations::idleOnAC;
using observations::start;
using observations::undecodable;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Samples = std::vector<Observation>;

constexpr SessionFacts active{.startedAt = start, .endedAt = std::nullopt, .sampleInterval = 2.0};

SessionFacts endedAfter(double seconds, double sampleInterval = 2.0) {
  return {.startedAt = start, .endedAt = at(seconds), .sampleInterval = sampleInterval};
}

TEST(Analyze, OfNoSamplesConcludesNothingEvenForAnHour) {
  const Result result = analyze(endedAfter(3600), {});
  EXPECT_EQ(result.samplingConfidence, PowerSessionSamplingConfidence::empty());
  EXPECT_EQ(result.batteryInsights, std::nullopt);
  EXPECT_EQ(result.chargeBehavior, PowerSessionChargeBehavior::empty());
  EXPECT_THAT(result.processFamilies, IsEmpty());
  EXPECT_EQ(result.measurementOverhead.totalObservedProcessScore, 0.0);
  EXPECT_EQ(result.networkSummary, std::nullopt);
  EXPECT_EQ(result.thermalSummary.maxTemperatureCelsius, std::nullopt);
  EXPECT_EQ(result.thermalSummary.medianMaxSensorTemperatureCelsius, std::nullopt);
  EXPECT_EQ(result.thermalSummary.p95MaxSensorTemperatureCelsius, std::nullopt);
  EXPECT_EQ(result.thermalSummary.maxFanRPM, std::nullopt);
  EXPECT_EQ(result.thermalSummary.verdict, "cool");
  EXPECT_THAT(result.telemetryConsistencyChecks, IsEmpty());
}

TEST(Analyze, OfTwoSamplesFarApartRaisesThreeFlagsInOrder) {
  const Samples samples{desktop(0), desktop(1000)};
  const auto confidence = analyze(active, samples).samplingConfidence;
  EXPECT_EQ(confidence.wallClockDurationSeconds, 1000.0);
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 0.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 1);
  EXPECT_EQ(confidence.totalGapSeconds, 1000.0);
  EXPECT_THAT(confidence.denseWindows, SizeIs(2));
  EXPECT_THAT(confidence.flags,
              ElementsAre("long-gaps", "low-sample-window", "low-active-coverage"));
}

TEST(Analyze, WidensTheGapLimitForASlowSession) {
  // Sampled every 60 seconds, the limit is 240.
  const Samples samples{desktop(0), desktop(200), desktop(440)};
  const auto confidence = analyze(endedAfter(440, 60.0), samples).samplingConfidence;
  EXPECT_EQ(confidence.activeSampledDurationSeconds, 440.0);
  EXPECT_EQ(confidence.gapsOver60Seconds, 2);
  EXPECT_THAT(confidence.denseWindows, SizeIs(1));
  EXPECT_THAT(confidence.flags, IsEmpty());
  EXPECT_THAT(analyze(endedAfter(440, 2.0), samples).samplingConfidence.denseWindows, SizeIs(3));
}

TEST(Analyze, UsesTheGapLimitForDischargeAndChargeRuns) {
  const Samples draining{discharging(0, 90, 10.0), discharging(200, 89, 10.0)};
  EXPECT_THAT(analyze(endedAfter(200, 60.0), draining).batteryInsights->dischargeRuns, SizeIs(1));
  EXPECT_THAT(analyze(endedAfter(200, 2.0), draining).batteryInsights->dischargeRuns, SizeIs(2));
  const Samples filling{charging(0, 50, 30.0), charging(200, 51, 30.0)};
  EXPECT_THAT(analyze(endedAfter(200, 60.0), filling).chargeBehavior.chargeRuns, SizeIs(1));
  EXPECT_THAT(analyze(endedAfter(200, 2.0), filling).chargeBehavior.chargeRuns, SizeIs(2));
}

TEST(Analyze, TakesTheWallClockToTheEndOfAStoppedSession) {
  const Samples samples{desktop(0), desktop(50), desktop(100)};
  EXPECT_EQ(analyze(endedAfter(150), samples).samplingConfidence.wallClockDurationSeconds, 150.0);
  // An end before the last sample is believed too.
  EXPECT_EQ(analyze(endedAfter(60), samples).samplingConfidence.wallClockDurationSeconds, 60.0);
}

TEST(Analyze, TakesTheWallClockToTheLastSampleOfAnActiveSession) {
  const Samples samples{desktop(10), desktop(50), desktop(100)};
  EXPECT_EQ(analyze(active, samples).samplingConfidence.wallClockDurationSeconds, 100.0);
}

TEST(Analyze, OfASessionThatEndsBeforeItsStartHasNoWallClockAndNoLowCoverage) {
  const Samples samples{desktop(0)};
  const auto confidence = analyze(endedAfter(-100), samples).samplingConfidence;
  EXPECT_EQ(confidence.wallClockDurationSeconds, 0.0);
  EXPECT_THAT(confidence.flags, ElementsAre("low-sample-window"));
}

TEST(Analyze, KeepsSamplesThatDoNotDecodeWithTheirColumns) {
  Samples samples;
  for (const double seconds : {0.0, 100.0, 200.0}) {
    samples.push_back(undecodable(discharging(seconds, 80, 30.0)));
    samples.back().columns.maxTemperature = 85.0;
  }
  const Result result = analyze(endedAfter(200), samples);
  EXPECT_EQ(result.samplingConfidence.sampleCount, 3);
  EXPECT_THAT(result.samplingConfidence.denseWindows, SizeIs(1));
  EXPECT_EQ(result.batteryInsights->highestPercent, 80);
  EXPECT_THAT(result.batteryInsights->dischargeRuns, IsEmpty());
  EXPECT_EQ(result.thermalSummary.verdict, "warm-not-constrained");
}

TEST(Analyze, OfADesktopHasNoBatteryInsightsAndNoChargeBehavior) {
  const Samples samples{desktop(0), desktop(2)};
  const Result result = analyze(active, samples);
  EXPECT_EQ(result.batteryInsights, std::nullopt);
  EXPECT_EQ(result.chargeBehavior, PowerSessionChargeBehavior::empty());
}

TEST(Analyze, PutsFamiliesOverheadAndChecksInTheirPlaces) {
  const std::vector<ObservedProcess> rows{{"powermetrics", 30.0}, {"Safari", 70.0}};
  Samples samples{observations::withProRows(discharging(0, 80, 25.0), rows)};
  samples[0].snapshot->unattributedPower = 25.0;
  const Result result = analyze(active, samples);
  EXPECT_THAT(result.processFamilies, SizeIs(2));
  EXPECT_TRUE(result.measurementOverhead.observed);
  EXPECT_THAT(result.measurementOverhead.processNames, ElementsAre("powermetrics"));
  EXPECT_THAT(result.telemetryConsistencyChecks, SizeIs(1));
}

TEST(SortByTime, KeepsTheOrderOfSamplesOfOneInstant) {
  Samples samples{idleOnAC(5, 1), idleOnAC(3, 2), idleOnAC(5, 3), idleOnAC(3, 4)};
  sortByTime(samples);
  std::vector<std::int64_t> percents;
  for (const Observation& observation : samples) {
    percents.push_back(observation.batteryPercent().value_or(-1));
  }
  EXPECT_THAT(percents, ElementsAre(2, 4, 1, 3));
}

/// A day that drains, charges and has gaps, at different times throughout.
Samples generatedSamples() {
  const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 200));
  Samples samples;
  int seconds = 0;
  for (const int step : steps) {
    seconds += step;
    const auto percent = *rc::gen::inRange<std::int64_t>(0, 101);
    const double watts = *rc::gen::inRange(0, 60);
    switch (*rc::gen::inRange(0, 5)) {
      case 0:
        samples.push_back(charging(seconds, percent, watts));
        break;
      case 1:
        samples.push_back(idleOnAC(seconds, percent));
        break;
      case 2:
        samples.push_back(undecodable(idleOnAC(seconds, percent)));
        break;
      default:
        samples.push_back(discharging(seconds, percent, watts));
    }
    samples.back().columns.maxTemperature = watts + 40.0;
  }
  return samples;
}

RC_GTEST_PROP(Analyze, IsTheSameInWhateverOrderSamplesWereStored, ()) {
  const Samples ordered = generatedSamples();
  Samples mixed = ordered;
  for (std::size_t i = mixed.size(); i > 1; --i) {
    std::swap(mixed[i - 1], mixed[*rc::gen::inRange<std::size_t>(0, i)]);
  }
  sortByTime(mixed);
  RC_ASSERT(analyze(active, mixed) == analyze(active, ordered));
}

RC_GTEST_PROP(Analyze, CountsEverySampleInOneWindowAndEachRunOnce, ()) {
  const Samples samples = generatedSamples();
  const Result result = analyze(active, samples);
  std::int64_t inWindows = 0;
  for (const auto& window : result.samplingConfidence.denseWindows) {
    inWindows += window.sampleCount;
  }
  RC_ASSERT(inWindows == static_cast<std::int64_t>(samples.size()));
  std::int64_t inChargeRuns = 0;
  for (const auto& run : result.chargeBehavior.chargeRuns) {
    inChargeRuns += run.sampleCount;
  }
  RC_ASSERT(inChargeRuns == std::count_if(samples.begin(), samples.end(), [](const auto& sample) {
              return sample.sourceKind() == "batteryChargeInput";
            }));
  if (result.batteryInsights) {
    std::int64_t inRuns = 0;
    for (const auto& run : result.batteryInsights->dischargeRuns) {
      inRuns += run.sampleCount;
    }
    RC_ASSERT(inRuns == std::count_if(samples.begin(), samples.end(), [](const auto& sample) {
                return sample.snapshot && sample.snapshot->batteryDischargeWatts;
              }));
    RC_ASSERT(result.batteryInsights->totalPercentGained -
                  result.batteryInsights->totalPercentDischarged ==
              result.batteryInsights->netPercent);
  }
}

}  // namespace
}  // namespace PowerSessionAnalysis

}  // namespace quorvex
