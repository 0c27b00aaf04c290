#include "PowerSessionReport.h"

namespace quorvex {
namespace {

PowerSessionReport reportOf(std::initializer_list<const char*> sourceKinds) {
  PowerSessionReport report;
  for (const char* kind : sourceKinds) {
    report.phases.push_back({.sourceKind = kind});
  }
  return report;
}

TEST(PowerSessionReport, IsMixedWithMoreThanOneKindOfSource) {
  EXPECT_TRUE(reportOf({"batteryDischarge", "batteryChargeInput"}).hasMixedPowerSources());
  EXPECT_TRUE(
      reportOf({"batteryDischarge", "batteryDischarge", "unavailable"}).hasMixedPowerSources());
  EXPECT_FALSE(reportOf({"batteryDischarge", "batteryDischarge"}).hasMixedPowerSources());
  EXPECT_FALSE(reportOf({"batteryDischarge"}).hasMixedPowerSources());
  EXPECT_FALSE(reportOf({}).hasMixedPowerSources());
}

TEST(PowerSessionReport, RateIsTheChangeOfChargePerHour) {
  PowerSessionReport report;
  report.summary.batteryPercentDelta = -15;
  report.summary.durationSeconds = 1800.0;
  // 15 % in half an hour
  EXPECT_EQ(report.batteryPercentPerHour(), -30.0);
  report.summary.batteryPercentDelta = 0;
  EXPECT_EQ(report.batteryPercentPerHour(), 0.0);
}

TEST(PowerSessionReport, RateIsAbsentWithoutChangeOfCharge) {
  PowerSessionReport report;
  report.summary.durationSeconds = 1800.0;
  EXPECT_EQ(report.batteryPercentPerHour(), std::nullopt);
}

TEST(PowerSessionReport, RateIsAbsentWithoutDuration) {
  PowerSessionReport report;
  report.summary.batteryPercentDelta = -15;
  EXPECT_EQ(report.batteryPercentPerHour(), std::nullopt);
}

TEST(PowerSessionReport, TellsItsStory) {
  PowerSessionReport report = reportOf({"batteryDischarge"});
  report.phases[0].sourceLabel = "Battery draw";
  const PowerSessionStory story = report.story();
  EXPECT_EQ(story.headline, "0m: battery draw");
  ASSERT_EQ(story.episodes.size(), 1U);
  EXPECT_EQ(story.episodes[0].narrative, "Battery draw");
}

}  // namespace
}  // namespace quorvex
