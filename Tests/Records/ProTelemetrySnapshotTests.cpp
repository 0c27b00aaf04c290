#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "ProTelemetrySnapshot.h"

namespace quorvex {
namespace {

using ::testing::DoubleEq;
using ::testing::Optional;

constexpr Date sampledAt{std::chrono::seconds{1'700'000'000}};

ProTelemetrySnapshot snapshot(std::optional<double> cpu, std::optional<double> gpu,
                              std::optional<double> ane) {
  ProTelemetrySnapshot result;
  result.isAvailable = true;
  result.sampledAt = sampledAt;
  result.cpuPowerWatts = cpu;
  result.gpuPowerWatts = gpu;
  result.anePowerWatts = ane;
  return result;
}

TEST(ProTelemetrySnapshot, FreshAtExactlyTheDefaultWindow) {
  const auto sample = snapshot(3.0, 1.0, 0.5);
  EXPECT_THAT(sample.freshPowerTotal(dateByAdding(sampledAt, 15.0)), Optional(3.0 + 1.0 + 0.5));
}

TEST(ProTelemetrySnapshot, StaleJustBeyondTheDefaultWindow) {
  EXPECT_EQ(snapshot(3.0, 1.0, 0.5).freshPowerTotal(dateByAdding(sampledAt, 15.1)), std::nullopt);
  EXPECT_EQ(snapshot(3.0, 1.0, 0.5).freshPowerTotal(dateByAdding(sampledAt, 15.000000001)),
            std::nullopt);
}

TEST(ProTelemetrySnapshot, TotalSumsThePresentFieldsOnly) {
  EXPECT_THAT(snapshot(3.0, std::nullopt, 0.5).freshPowerTotal(sampledAt), Optional(3.0 + 0.5));
  EXPECT_THAT(snapshot(std::nullopt, 2.0, std::nullopt).freshPowerTotal(sampledAt), Optional(2.0));
}

TEST(ProTelemetrySnapshot, TotalWithoutAnyFieldIsAbsentThoughTheSampleIsAvailable) {
  EXPECT_EQ(snapshot(std::nullopt, std::nullopt, std::nullopt).freshPowerTotal(sampledAt),
            std::nullopt);
}

TEST(ProTelemetrySnapshot, ZeroWattsAreATotal) {
  EXPECT_THAT(snapshot(0.0, std::nullopt, std::nullopt).freshPowerTotal(sampledAt), Optional(0.0));
}

TEST(ProTelemetrySnapshot, UnavailableSampleHasNoTotal) {
  auto sample = snapshot(3.0, 1.0, 0.5);
  sample.isAvailable = false;
  EXPECT_EQ(sample.freshPowerTotal(sampledAt), std::nullopt);
}

TEST(ProTelemetrySnapshot, SampleFromTheFutureIsFresh) {
  EXPECT_THAT(snapshot(3.0, 1.0, 0.5).freshPowerTotal(dateByAdding(sampledAt, -3600.0)),
              Optional(4.5));
}

TEST(ProTelemetrySnapshot, SampleOfAnotherCenturyIsStale) {
  auto sample = snapshot(3.0, 1.0, 0.5);
  sample.sampledAt = *parseISO8601("1678-01-01T00:00:00Z");
  EXPECT_EQ(sample.freshPowerTotal(*parseISO8601("2261-01-01T00:00:00Z")), std::nullopt);
}

TEST(ProTelemetrySnapshot, WindowCanBeGiven) {
  const auto sample = snapshot(3.0, std::nullopt, std::nullopt);
  EXPECT_THAT(sample.freshPowerTotal(dateByAdding(sampledAt, 60.0), 60.0), Optional(3.0));
  EXPECT_EQ(sample.freshPowerTotal(dateByAdding(sampledAt, 1.0), 0.0), std::nullopt);
  EXPECT_EQ(sample.freshPowerTotal(sampledAt, std::numeric_limits<double>::quiet_NaN()),
            std::nullopt);
}

}  // namespace
}  // namespace quorvex
