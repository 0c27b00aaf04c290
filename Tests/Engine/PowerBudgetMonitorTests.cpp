#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "PowerBudgetMonitor.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using Alert = PowerBudgetMonitor::Alert;

constexpr PowerMetrics busy{
    .cpuPower = 20.0, .gpuPower = 15.0, .anePower = 3.0, .ramPower = 2.0, .systemPower = 40.0};

TEST(PowerBudgetMonitor, WithoutThresholdsThereIsNoAlert) {
  EXPECT_THAT(PowerBudgetMonitor{}.check(busy), IsEmpty());
}

TEST(PowerBudgetMonitor, AReadingEqualToItsThresholdIsNoAlert) {
  const PowerBudgetMonitor monitor{
      .cpuThreshold = 20.0, .gpuThreshold = 15.0, .aneThreshold = 3.0, .systemThreshold = 40.0};
  EXPECT_THAT(monitor.check(busy), IsEmpty());
}

TEST(PowerBudgetMonitor, TheMessageRoundsAsTheFormatDoesAndTheNumbersAreNotRounded) {
  const PowerBudgetMonitor monitor{.cpuThreshold = 5.0};
  // 7.25 lies halfway and goes to the even digit.
  EXPECT_THAT(monitor.check({.cpuPower = 7.25}),
              ElementsAre(Alert{"CPU", 7.25, 5.0, "CPU power (7.2W) exceeds threshold (5.0W)"}));
}

TEST(PowerBudgetMonitor, AllFourExceededGiveFourAlertsInTheirOrder) {
  const PowerBudgetMonitor monitor{
      .cpuThreshold = 1.0, .gpuThreshold = 2.0, .aneThreshold = 2.5, .systemThreshold = 3.96};
  EXPECT_THAT(
      monitor.check(busy),
      ElementsAre(Alert{"CPU", 20.0, 1.0, "CPU power (20.0W) exceeds threshold (1.0W)"},
                  Alert{"GPU", 15.0, 2.0, "GPU power (15.0W) exceeds threshold (2.0W)"},
                  Alert{"ANE", 3.0, 2.5, "ANE power (3.0W) exceeds threshold (2.5W)"},
                  Alert{"System", 40.0, 3.96, "System power (40.0W) exceeds threshold (4.0W)"}));
}

TEST(PowerBudgetMonitor, EachThresholdChecksItsOwnReading) {
  EXPECT_THAT(PowerBudgetMonitor{.cpuThreshold = 19.0}.check(busy),
              ElementsAre(Field(&Alert::component, "CPU")));
  EXPECT_THAT(PowerBudgetMonitor{.gpuThreshold = 14.0}.check(busy),
              ElementsAre(Field(&Alert::component, "GPU")));
  EXPECT_THAT(PowerBudgetMonitor{.aneThreshold = 2.0}.check(busy),
              ElementsAre(Field(&Alert::component, "ANE")));
  EXPECT_THAT(PowerBudgetMonitor{.systemThreshold = 39.0}.check(busy),
              ElementsAre(Field(&Alert::component, "System")));
  EXPECT_THAT(PowerBudgetMonitor{.cpuThreshold = 21.0}.check(busy), IsEmpty());
}

TEST(PowerBudgetMonitor, AReadingBarelyAboveItsThresholdIsAnAlert) {
  const double above = std::nextafter(20.0, 21.0);
  EXPECT_THAT(
      PowerBudgetMonitor{.cpuThreshold = 20.0}.check({.cpuPower = above}),
      ElementsAre(Alert{"CPU", above, 20.0, "CPU power (20.0W) exceeds threshold (20.0W)"}));
}

TEST(PowerBudgetMonitor, AZeroThresholdIsAThreshold) {
  EXPECT_THAT(PowerBudgetMonitor{.aneThreshold = 0.0}.check({.anePower = 0.1}),
              ElementsAre(Alert{"ANE", 0.1, 0.0, "ANE power (0.1W) exceeds threshold (0.0W)"}));
  EXPECT_THAT(PowerBudgetMonitor{.aneThreshold = 0.0}.check({.anePower = 0.0}), IsEmpty());
}

}  // namespace
}  // namespace quorvex
