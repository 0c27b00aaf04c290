#include <gtest/gtest.h>

#include <limits>

#include "RulesSamples.h"
#include "SessionFormat.h"

namespace quorvex {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using SessionTimeRangeTests = samples::TimedTest;

TEST(SessionTemperature, HasNoDegreeSign) {
  EXPECT_EQ(SessionFormat::temperatureText(54.6, false), "55 C");
  EXPECT_EQ(SessionFormat::temperatureText(55.0, true), "131 F") << "55 * 9 / 5 + 32";
  EXPECT_EQ(SessionFormat::temperatureText(std::nullopt, true), "--");
  EXPECT_EQ(SessionFormat::temperatureText(nan, false), "nan C");
}

TEST(SessionPercentDelta, AlwaysHasItsSign) {
  EXPECT_EQ(SessionFormat::percentDeltaText(-3), "-3%");
  EXPECT_EQ(SessionFormat::percentDeltaText(0), "+0%");
  EXPECT_EQ(SessionFormat::percentDeltaText(12), "+12%");
  EXPECT_EQ(SessionFormat::percentDeltaText(std::nullopt), "--");
}

TEST(SessionWatts, AbsentReadsAsTwoHyphens) {
  EXPECT_EQ(SessionFormat::wattsText(12.34), "12.3W");
  EXPECT_EQ(SessionFormat::wattsText(std::nullopt), "--");
}

TEST_F(SessionTimeRangeTests, JoinsBothTimesByADash) {
  EXPECT_EQ(SessionFormat::timeRangeText(samples::at(14 * 3600 + 5 * 60),
                                         samples::at(14 * 3600 + 40 * 60), times()),
            "14:05 – 14:40");
}

TEST(PrimaryPowerText, IsTheAverageWhenThereIsOne) {
  EXPECT_EQ(SessionFormat::primaryPowerText(samples::steadySummary()), "12.0W");
}

TEST(PrimaryPowerText, ASparseSessionReadsSparse) {
  EXPECT_EQ(SessionFormat::primaryPowerText(samples::sparseSummary()), "Sparse");
}

TEST(PrimaryPowerText, AMixedSessionCountsItsPhases) {
  EXPECT_EQ(SessionFormat::primaryPowerText(samples::mixedSummary()), "2 phases");
}

TEST(PrimaryPowerText, WithoutSamplesThereIsNone) {
  EXPECT_EQ(SessionFormat::primaryPowerText(PowerSessionSummary::empty()), "--");
}

TEST(PrimaryPowerText, LooksAtTheAveragesNoteAlone) {
  PowerSessionSummary summary = samples::mixedSummary();
  summary.totalWattHoursNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_EQ(SessionFormat::primaryPowerText(summary), "2 phases");
}

TEST(SparsePowerCoverage, IsToldByEitherNote) {
  EXPECT_FALSE(SessionFormat::hasSparsePowerCoverage(samples::mixedSummary()));
  EXPECT_FALSE(SessionFormat::hasSparsePowerCoverage(samples::steadySummary()));
  PowerSessionSummary summary = samples::steadySummary();
  summary.averageWattsNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_TRUE(SessionFormat::hasSparsePowerCoverage(summary));
  summary.averageWattsNote.reset();
  summary.totalWattHoursNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_TRUE(SessionFormat::hasSparsePowerCoverage(summary));
}

TEST(ColorForSource, EveryKindHasItsColourOnACToo) {
  for (const std::optional<bool> connected : {std::optional<bool>{}, std::optional{true}}) {
    EXPECT_EQ(SessionFormat::colorForSource("batteryDischarge", connected), ColorName::orange);
    EXPECT_EQ(SessionFormat::colorForSource("batteryChargeInput", connected), ColorName::green);
    EXPECT_EQ(SessionFormat::colorForSource("batterySupplement", connected), ColorName::yellow);
    EXPECT_EQ(SessionFormat::colorForSource("ioReportSiliconPower", connected), ColorName::blue);
  }
}

TEST(ColorForSource, AnyOtherKindIsMintOnACAndElseQuiet) {
  EXPECT_EQ(SessionFormat::colorForSource("unavailable", true), ColorName::mint);
  EXPECT_EQ(SessionFormat::colorForSource("unavailable", false), ColorName::secondary);
  EXPECT_EQ(SessionFormat::colorForSource("unavailable", std::nullopt), ColorName::secondary);
  EXPECT_EQ(SessionFormat::colorForSource("", true), ColorName::mint);
}

}  // namespace
}  // namespace quorvex
