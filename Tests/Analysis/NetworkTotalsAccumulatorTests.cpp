#include <gtest/gtest.h>

#include <limits>

#include "NetworkTotalsAccumulator.h"
#include "ObservationBuilder.h"

namespace quorvex {
namespace {

using observations::at;

TEST(NetworkTotalsAccumulator, RatesHoldSinceTheSampleBefore) {
  NetworkTotalsAccumulator totals{120.0};
  totals.ingest(1000.0, 500.0, at(0));
  EXPECT_EQ(totals.totalBytesIn(), 0U);
  totals.ingest(200.0, 10.0, at(10));
  totals.ingest(300.0, 0.0, at(15));
  EXPECT_EQ(totals.totalBytesIn(), 200U * 10U + 300U * 5U);
  EXPECT_EQ(totals.totalBytesOut(), 10U * 10U);
}

TEST(NetworkTotalsAccumulator, AFractionIsLostPerInterval) {
  NetworkTotalsAccumulator totals{120.0};
  for (int second = 0; second <= 10; ++second) {
    totals.ingest(0.9, 1.9, at(second));
  }
  EXPECT_EQ(totals.totalBytesIn(), 0U);
  EXPECT_EQ(totals.totalBytesOut(), 10U);
}

TEST(NetworkTotalsAccumulator, NothingIsAddedAcrossAGapWithinAnInstantOrBackInTime) {
  NetworkTotalsAccumulator totals{120.0};
  totals.ingest(100.0, 100.0, at(0));
  totals.ingest(100.0, 100.0, at(120.5));
  totals.ingest(100.0, 100.0, at(120.5));
  totals.ingest(100.0, 100.0, at(60));
  EXPECT_EQ(totals.totalBytesIn(), 0U);
  totals.ingest(100.0, 100.0, at(180));
  EXPECT_EQ(totals.totalBytesIn(), 100U * 120U);
}

TEST(NetworkTotalsAccumulator, WithoutALimitEveryIntervalCounts) {
  NetworkTotalsAccumulator totals;
  totals.ingest(0.0, 0.0, at(0));
  totals.ingest(2.0, 0.0, at(3600));
  EXPECT_EQ(totals.totalBytesIn(), 2U * 3600U);
}

TEST(NetworkTotalsAccumulator, PeaksAreAbsentUnlessAboveZero) {
  NetworkTotalsAccumulator totals{120.0};
  EXPECT_EQ(totals.peakBytesInPerSec(), std::nullopt);
  totals.ingest(0.0, 0.0, at(0));
  EXPECT_EQ(totals.peakBytesInPerSec(), std::nullopt);
  totals.ingest(7.0, 0.0, at(500));
  totals.ingest(5.0, 0.0, at(1000));
  EXPECT_EQ(totals.peakBytesInPerSec(), 7.0);
  EXPECT_EQ(totals.peakBytesOutPerSec(), std::nullopt);
}

TEST(NetworkTotalsAccumulator, RatesThatNoNetworkHasDoNotFail) {
  NetworkTotalsAccumulator totals{120.0};
  totals.ingest(0.0, 0.0, at(0));
  totals.ingest(-1e300, 1e300, at(1));
  totals.ingest(-5.0, 1.0, at(2));
  EXPECT_EQ(totals.totalBytesIn(), 0U);
  EXPECT_EQ(totals.totalBytesOut(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(totals.peakBytesInPerSec(), std::nullopt);
}

}  // namespace
}  // namespace quorvex
