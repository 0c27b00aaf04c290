#include <algorithm>
#include <vector>

#include "ObservationBuilder.h"
#include "PowerSessionThermalDigest.h"

namespace quorvex {
namespace {

using observations::at;
using PowerSessionThermalDigestBuilder::digest;
using Verdict = PowerSessionThermalDigest::Verdict;

constexpr double sampleInterval = 2.0;

SampleColumns sample(double seconds, std::optional<double> celsius, std::int64_t pressure = 0) {
  return {.timestamp = at(seconds),
          .elapsedSeconds = seconds,
          .thermalPressure = pressure,
          .maxTemperature = celsius};
}

PowerSessionThermalDigest digestOf(const std::vector<SampleColumns>& samples,
                                   double interval = sampleInterval) {
  return digest(samples, interval);
}

/// Samples of one temperature from second 0 to `seconds`.
std::vector<SampleColumns> steady(double celsius, int seconds, int step) {
  std::vector<SampleColumns> samples;
  for (int second = 0; second <= seconds; second += step) {
    samples.push_back(sample(second, celsius));
  }
  return samples;
}

TEST(PowerSessionThermalDigest, OneHotSampleMeasuresNoTimeAndIsCool) {
  const auto result = digestOf({sample(0, 97.0)});
  EXPECT_EQ(result.peakTemperatureCelsius, 97.0);
  EXPECT_EQ(result.timeAbove70C, 0.0);
  EXPECT_EQ(result.timeAbove80C, 0.0);
  EXPECT_EQ(result.timeAbove90C, 0.0);
  EXPECT_EQ(result.timeAbove95C, 0.0);
  EXPECT_EQ(result.timeAbove100C, 0.0);
  EXPECT_EQ(result.maxThermalPressure, 0);
  EXPECT_FALSE(result.thermalPressureWasTriggered);
  EXPECT_EQ(result.verdict, Verdict::cool);
}

TEST(PowerSessionThermalDigest, TheCoolerEndOfAnIntervalDecidesItsBand) {
  const auto result = digestOf({sample(0, 96.0), sample(10, 72.0)});
  EXPECT_EQ(result.peakTemperatureCelsius, 96.0);
  EXPECT_EQ(result.timeAbove70C, 10.0);
  EXPECT_EQ(result.timeAbove80C, 0.0);
  EXPECT_EQ(result.timeAbove95C, 0.0);
  EXPECT_EQ(result.verdict, Verdict::warm);
}

TEST(PowerSessionThermalDigest, AnIntervalAboveTheGapLimitCountsForNothing) {
  const auto result = digestOf({sample(0, 99.0), sample(300, 99.0)});
  EXPECT_EQ(result.timeAbove70C, 0.0);
  EXPECT_EQ(result.timeAbove95C, 0.0);
  EXPECT_EQ(result.verdict, Verdict::cool);
}

TEST(PowerSessionThermalDigest, TheGapLimitItselfStillCounts) {
  EXPECT_EQ(digestOf({sample(0, 75.0), sample(120, 75.0)}).timeAbove70C, 120.0);
  EXPECT_EQ(digestOf({sample(0, 75.0), sample(120.001, 75.0)}).timeAbove70C, 0.0);
}

TEST(PowerSessionThermalDigest, TheGapLimitFollowsALongSampleInterval) {
  // 4 * 60 s = 240 s
  EXPECT_EQ(digestOf({sample(0, 75.0), sample(240, 75.0)}, 60.0).timeAbove70C, 240.0);
  EXPECT_EQ(digestOf({sample(0, 75.0), sample(241, 75.0)}, 60.0).timeAbove70C, 0.0);
}

TEST(PowerSessionThermalDigest, AMinuteAtNinetyFiveDegreesIsThrottled) {
  const auto result = digestOf(steady(95.0, 60, 10));
  EXPECT_EQ(result.timeAbove95C, 60.0);
  EXPECT_EQ(result.verdict, Verdict::throttled);
  EXPECT_FALSE(result.thermalPressureWasTriggered);
}

TEST(PowerSessionThermalDigest, FiftySecondsAtNinetyFiveDegreesAreHotControlled) {
  const auto result = digestOf(steady(95.0, 50, 10));
  EXPECT_EQ(result.timeAbove95C, 50.0);
  EXPECT_EQ(result.verdict, Verdict::hotControlled);
}

TEST(PowerSessionThermalDigest, TheBandsAreCumulative) {
  const auto result = digestOf(steady(96.0, 10, 10));
  EXPECT_EQ(result.timeAbove70C, 10.0);
  EXPECT_EQ(result.timeAbove80C, 10.0);
  EXPECT_EQ(result.timeAbove90C, 10.0);
  EXPECT_EQ(result.timeAbove95C, 10.0);
  EXPECT_EQ(result.timeAbove100C, 0.0);
}

TEST(PowerSessionThermalDigest, EachBandBeginsAtItsTemperature) {
  EXPECT_EQ(digestOf(steady(70.0, 10, 10)).timeAbove70C, 10.0);
  EXPECT_EQ(digestOf(steady(69.99, 10, 10)).timeAbove70C, 0.0);
  EXPECT_EQ(digestOf(steady(80.0, 10, 10)).timeAbove80C, 10.0);
  EXPECT_EQ(digestOf(steady(79.99, 10, 10)).timeAbove80C, 0.0);
  EXPECT_EQ(digestOf(steady(90.0, 10, 10)).timeAbove90C, 10.0);
  EXPECT_EQ(digestOf(steady(89.99, 10, 10)).timeAbove90C, 0.0);
  EXPECT_EQ(digestOf(steady(94.99, 10, 10)).timeAbove95C, 0.0);
  EXPECT_EQ(digestOf(steady(100.0, 10, 10)).timeAbove100C, 10.0);
  EXPECT_EQ(digestOf(steady(99.99, 10, 10)).timeAbove100C, 0.0);
}

TEST(PowerSessionThermalDigest, TheVerdictRisesWithTheBandThatWasHeld) {
  EXPECT_EQ(digestOf(steady(69.0, 100, 10)).verdict, Verdict::cool);
  EXPECT_EQ(digestOf(steady(79.0, 100, 10)).verdict, Verdict::warm);
  EXPECT_EQ(digestOf(steady(94.0, 100, 10)).verdict, Verdict::hotControlled);
}

TEST(PowerSessionThermalDigest, PressureTwoIsThrottledWithoutAnyTemperature) {
  const auto result = digestOf({sample(0, std::nullopt), sample(2, std::nullopt, 2)});
  EXPECT_EQ(result.peakTemperatureCelsius, std::nullopt);
  EXPECT_EQ(result.maxThermalPressure, 2);
  EXPECT_TRUE(result.thermalPressureWasTriggered);
  EXPECT_EQ(result.verdict, Verdict::throttled);
}

TEST(PowerSessionThermalDigest, PressureOneAloneIsTriggeredButCool) {
  const auto result = digestOf({sample(0, std::nullopt, 1), sample(2, std::nullopt)});
  EXPECT_EQ(result.maxThermalPressure, 1);
  EXPECT_TRUE(result.thermalPressureWasTriggered);
  EXPECT_EQ(result.verdict, Verdict::cool);
}

TEST(PowerSessionThermalDigest, SamplesOfOneInstantMakeNoTime) {
  const auto result = digestOf({sample(5, 99.0), sample(5, 99.0)});
  EXPECT_EQ(result.timeAbove70C, 0.0);
  EXPECT_EQ(result.verdict, Verdict::cool);
}

TEST(PowerSessionThermalDigest, ASampleWithoutTemperatureCutsTheTimeOnBothSides) {
  const auto result =
      digestOf({sample(0, 75.0), sample(10, 75.0), sample(20, std::nullopt), sample(30, 75.0)});
  EXPECT_EQ(result.timeAbove70C, 10.0);
  EXPECT_EQ(result.peakTemperatureCelsius, 75.0);
}

TEST(PowerSessionThermalDigest, TheOrderOfTheSamplesDoesNotMatter) {
  std::vector<SampleColumns> samples{sample(0, 71.0), sample(10, 85.0), sample(30, 96.0, 1),
                                     sample(35, 72.0), sample(50, std::nullopt)};
  const auto sorted = digestOf(samples);
  std::reverse(samples.begin(), samples.end());
  EXPECT_EQ(digestOf(samples), sorted);
  std::swap(samples[0], samples[2]);
  EXPECT_EQ(digestOf(samples), sorted);
  // 71..85: 10 s from 70 on; 85..96: 20 s from 80 on; 96..72: 5 s from 70 on.
  EXPECT_EQ(sorted.timeAbove70C, 10.0 + 20.0 + 5.0);
  EXPECT_EQ(sorted.timeAbove80C, 20.0);
}

TEST(PowerSessionThermalDigest, ObservationsGiveTheDigestOfTheirColumns) {
  std::vector<Observation> samples{observations::desktop(0), observations::desktop(10)};
  samples[0].columns.maxTemperature = 85.0;
  samples[1].columns.maxTemperature = 81.0;
  // Snapshots are not looked at, not even where a column is absent.
  samples.push_back(observations::desktop(20));
  samples[2].snapshot->maxSensorTemperature = 99.0;
  const auto result = digest(std::span<const Observation>{samples}, sampleInterval);
  EXPECT_EQ(result.timeAbove80C, 10.0);
  EXPECT_EQ(result.peakTemperatureCelsius, 85.0);
}

TEST(PowerSessionThermalDigestDeathTest, NoSamplesEndTheProcess) {
  EXPECT_DEATH((void)digestOf({}), "Fatal error: a thermal digest needs at least one sample");
}

TEST(PowerSessionThermalDigest, VerdictsHaveTheirWords) {
  EXPECT_EQ(rawValue(Verdict::cool), "cool");
  EXPECT_EQ(rawValue(Verdict::warm), "warm");
  EXPECT_EQ(rawValue(Verdict::hotControlled), "hotControlled");
  EXPECT_EQ(rawValue(Verdict::throttled), "throttled");
}

}  // namespace
}  // namespace quorvex
