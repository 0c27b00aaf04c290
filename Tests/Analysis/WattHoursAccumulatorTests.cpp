#include <gtest/gtest.h>

#include "ObservationBuilder.h"
#include "WattHoursAccumulator.h"

namespace quorvex {
namespace {

using observations::at;

TEST(WattHoursAccumulator, BeginsWithoutEnergyIntervalOrGap) {
  const WattHoursAccumulator energy{120.0};
  EXPECT_EQ(energy.wattHours(), 0.0);
  EXPECT_EQ(energy.coveredWattHours(), std::nullopt);
  EXPECT_FALSE(energy.hasGap());
}

TEST(WattHoursAccumulator, OneSampleIsNoInterval) {
  WattHoursAccumulator energy{120.0};
  energy.ingest({at(0.0), 10.0});
  EXPECT_EQ(energy.wattHours(), 0.0);
  EXPECT_EQ(energy.coveredWattHours(), std::nullopt);
}

TEST(WattHoursAccumulator, AddsTrapezoids) {
  WattHoursAccumulator energy{120.0};
  energy.ingest({at(0.0), 10.0});
  energy.ingest({at(36.0), 20.0});
  energy.ingest({at(72.0), 40.0});
  // 15 W and 30 W for a hundredth of an hour each.
  EXPECT_DOUBLE_EQ(energy.wattHours(), 0.15 + 0.30);
  EXPECT_DOUBLE_EQ(*energy.coveredWattHours(), 0.15 + 0.30);
}

TEST(WattHoursAccumulator, SamplesOfOneInstantCoverNothing) {
  WattHoursAccumulator energy{120.0};
  energy.ingest({at(5.0), 10.0});
  energy.ingest({at(5.0), 20.0});
  EXPECT_EQ(energy.wattHours(), 0.0);
  EXPECT_EQ(energy.coveredWattHours(), std::nullopt);
  EXPECT_FALSE(energy.hasGap());
}

TEST(WattHoursAccumulator, AStepBackAddsNothingAndBeginsTheNextInterval) {
  WattHoursAccumulator energy{120.0};
  energy.ingest({at(36.0), 10.0});
  energy.ingest({at(0.0), 20.0});
  energy.ingest({at(18.0), 20.0});
  EXPECT_DOUBLE_EQ(energy.wattHours(), 20.0 * 18.0 / 3600.0);
}

TEST(WattHoursAccumulator, AnIntervalAtTheLimitCountsAndOneAboveItIsAGap) {
  WattHoursAccumulator energy{120.0};
  energy.ingest({at(0.0), 9.0});
  energy.ingest({at(120.0), 9.0});
  EXPECT_FALSE(energy.hasGap());
  energy.ingest({at(240.5), 9.0});
  EXPECT_TRUE(energy.hasGap());
  // What lies before and behind a gap goes on counting.
  energy.ingest({at(300.5), 9.0});
  EXPECT_DOUBLE_EQ(energy.wattHours(), 9.0 * (120.0 + 60.0) / 3600.0);
}

TEST(WattHoursAccumulator, WithoutALimitNothingIsAGap) {
  WattHoursAccumulator energy;
  energy.ingest({at(0.0), 9.0});
  energy.ingest({at(3600.0), 9.0});
  EXPECT_DOUBLE_EQ(energy.wattHours(), 9.0);
  EXPECT_FALSE(energy.hasGap());
}

}  // namespace
}  // namespace quorvex
