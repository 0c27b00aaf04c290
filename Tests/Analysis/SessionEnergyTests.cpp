#include <gtest/gtest.h>

#include <vector>

#include "SessionEnergy.h"

namespace quorvex {
namespace {

constexpr const char* mixedNote = "Mixed power sources; use powerSegments for per-source averages.";
constexpr const char* gapNote = "Large sampling gaps; energy totals unavailable.";

PowerSessionPowerSegment segment(const char* kind) {
  return {.sourceKind = kind, .wattSampleCount = 2, .totalWattHours = 1.0};
}

const SessionWatts oneHourAtTenWatts{
    .sampleCount = 4, .sum = 48.0, .totalWattHours = 10.0, .durationSeconds = 3600.0};

TEST(SessionEnergy, TheAverageIsWeightedByTimeOverTheWholeSession) {
  EXPECT_EQ(sessionEnergy(oneHourAtTenWatts, std::vector{segment("a")}),
            (SessionEnergy{.averageWatts = 10.0, .totalWattHours = 10.0}));
}

TEST(SessionEnergy, MixedKindsWithholdBoth) {
  EXPECT_EQ(sessionEnergy(oneHourAtTenWatts, std::vector{segment("a"), segment("b")}),
            SessionEnergy{.note = mixedNote});
}

TEST(SessionEnergy, SegmentsOfOneKindAreNotMixed) {
  EXPECT_EQ(sessionEnergy(oneHourAtTenWatts, std::vector{segment("a"), segment("a")}).note,
            std::nullopt);
}

TEST(SessionEnergy, AGapOfTheSessionWithholdsBoth) {
  SessionWatts watts = oneHourAtTenWatts;
  watts.hasGap = true;
  EXPECT_EQ(sessionEnergy(watts, std::vector{segment("a")}), SessionEnergy{.note = gapNote});
}

TEST(SessionEnergy, AGapOfASegmentWithholdsBoth) {
  auto sparse = segment("a");
  sparse.totalWattHours.reset();
  EXPECT_EQ(sessionEnergy(oneHourAtTenWatts, std::vector{segment("a"), sparse}),
            SessionEnergy{.note = gapNote});
}

TEST(SessionEnergy, ASegmentOfOneWattSampleHasNoGap) {
  auto single = segment("a");
  single.wattSampleCount = 1;
  single.totalWattHours.reset();
  EXPECT_EQ(sessionEnergy(oneHourAtTenWatts, std::vector{single}).note, std::nullopt);
}

TEST(SessionEnergy, MixedKindsAreToldBeforeAGap) {
  SessionWatts watts = oneHourAtTenWatts;
  watts.hasGap = true;
  EXPECT_EQ(sessionEnergy(watts, std::vector{segment("a"), segment("b")}).note, mixedNote);
}

TEST(SessionEnergy, WithoutEnergyTheAverageIsTheMeanOfTheSamples) {
  SessionWatts watts = oneHourAtTenWatts;
  watts.totalWattHours.reset();
  EXPECT_EQ(sessionEnergy(watts, {}), SessionEnergy{.averageWatts = 48.0 / 4.0});
}

TEST(SessionEnergy, WithoutDurationTheAverageIsTheMeanOfTheSamples) {
  SessionWatts watts = oneHourAtTenWatts;
  watts.durationSeconds = 0.0;
  EXPECT_EQ(sessionEnergy(watts, {}),
            (SessionEnergy{.averageWatts = 48.0 / 4.0, .totalWattHours = 10.0}));
}

TEST(SessionEnergy, WithoutWattSamplesThereIsNothingAndNoNote) {
  EXPECT_EQ(sessionEnergy({.durationSeconds = 3600.0}, {}), SessionEnergy{});
}

}  // namespace
}  // namespace quorvex
