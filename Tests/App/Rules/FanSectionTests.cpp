#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "FanSection.h"

namespace quorvex {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

double fractionOf(std::int64_t current, std::int64_t lowest, std::int64_t highest) {
  const std::vector<FanInfo> fans{
      {.name = "Fan", .currentRPM = current, .minRPM = lowest, .maxRPM = highest}};
  return fanSection(fans).rows.at(0).fraction;
}

TEST(FanSectionTests, EachFanHasARowInItsPlace) {
  const std::vector<FanInfo> fans{
      {.id = 1, .name = "Right", .currentRPM = 2400, .minRPM = 1200, .maxRPM = 6000},
      {.id = 0, .name = "Left", .currentRPM = 1300, .minRPM = 1200, .maxRPM = 5800}};
  const FanSection section = fanSection(fans);
  EXPECT_EQ(section.title, "Fans");
  EXPECT_EQ(section.emptyText, "");
  ASSERT_THAT(section.rows, SizeIs(2));
  EXPECT_EQ(section.rows[0].name, "Right");
  EXPECT_EQ(section.rows[0].currentText, "2400 RPM");
  EXPECT_EQ(section.rows[0].minText, "1200 RPM");
  EXPECT_EQ(section.rows[0].maxText, "6000 RPM");
  EXPECT_EQ(section.rows[0].fraction, 0.25);
  EXPECT_EQ(section.rows[0].accessibilityText, "Right: 2400 RPM, from 1200 RPM to 6000 RPM");
  EXPECT_EQ(section.rows[1].name, "Left");
}

TEST(FanSectionTests, WithoutFansThereIsNoData) {
  const FanSection section = fanSection({});
  EXPECT_THAT(section.rows, IsEmpty());
  EXPECT_EQ(section.emptyText, "No Data");
}

TEST(FanSectionTests, SpeedStaysBetweenItsLimits) {
  EXPECT_EQ(fractionOf(0, 1200, 6000), 0.0);
  EXPECT_EQ(fractionOf(7000, 1200, 6000), 1.0);
}

TEST(FanSectionTests, EqualLimitsAreNotDividedBy) {
  EXPECT_EQ(fractionOf(1200, 1200, 1200), 0.0);
  EXPECT_EQ(fractionOf(0, 0, 0), 0.0);
  EXPECT_EQ(fractionOf(1201, 1200, 1200), 1.0);
}

TEST(FanSectionTests, ExtremeSpeedsStayBetweenTheLimits) {
  constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(fractionOf(highest, lowest, highest), 1.0);
  EXPECT_EQ(fractionOf(lowest, highest, lowest), 0.0);
}

}  // namespace
}  // namespace quorvex
