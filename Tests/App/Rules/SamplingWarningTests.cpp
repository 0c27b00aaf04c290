#include <gtest/gtest.h>

#include <limits>

#include "SamplingWarning.h"

namespace quorvex {
namespace {

std::string textAt(double utilization) {
  const std::optional<SamplingWarning> warning = samplingWarning(utilization);
  return warning ? warning->text : "none";
}

TEST(SamplingWarningTests, NoWarningBeforeTheFirstPoll) {
  EXPECT_EQ(samplingWarning(std::nullopt), std::nullopt);
}

TEST(SamplingWarningTests, NoWarningAtThreeTenths) {
  EXPECT_EQ(samplingWarning(0.3), std::nullopt);
}

TEST(SamplingWarningTests, WarnsAbove3Tenths) {
  const std::optional<SamplingWarning> warning = samplingWarning(0.31);
  ASSERT_TRUE(warning);
  EXPECT_EQ(warning->text,
            "Sampling at ~31% of interval — consider a longer interval or low-impact mode.");
  EXPECT_EQ(warning->symbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(warning->color, ColorName::orange);
}

TEST(SamplingWarningTests, UtilizationOf12DisplaysAs999Percent) {
  EXPECT_EQ(textAt(12.0),
            "Sampling at ~999% of interval — consider a longer interval or low-impact mode.");
}

TEST(SamplingWarningTests, UtilizationOf25DisplaysAs999Percent) {
  EXPECT_EQ(textAt(25.0), textAt(12.0));
  EXPECT_EQ(textAt(std::numeric_limits<double>::infinity()), textAt(12.0));
}

TEST(SamplingWarningTests, RoundsToWholePercent) {
  EXPECT_EQ(textAt(0.3049),
            "Sampling at ~30% of interval — consider a longer interval or low-impact mode.");
  EXPECT_EQ(textAt(1.006),
            "Sampling at ~101% of interval — consider a longer interval or low-impact mode.");
}

TEST(SamplingWarningTests, NaNGivesNoWarning) {
  EXPECT_EQ(samplingWarning(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

}  // namespace
}  // namespace quorvex
