#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "NetworkCounterAccumulator.h"

namespace quorvex {
namespace {

using Counters = NetworkCounterAccumulator::Counters;
using Interfaces = std::vector<NetworkInterfaceStats>;

NetworkInterfaceStats interface(std::int64_t id, std::uint64_t bytesIn, std::uint64_t bytesOut) {
  return {.id = id, .name = "en0", .bytesIn = bytesIn, .bytesOut = bytesOut};
}

TEST(NetworkCounterAccumulatorTests, AFirstReadingAddsNothing) {
  NetworkCounterAccumulator accumulator;
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 5000, 700)}), (Counters{0, 0}));
  EXPECT_EQ(accumulator.lastCounters.at(4), (Counters{5000, 700}));
}

TEST(NetworkCounterAccumulatorTests, ASecondReadingAddsWhatMoved) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 5000, 700)});
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 5000 + 100, 700 + 50)}),
            (Counters{100, 50}));
  EXPECT_EQ(accumulator.totalBytesIn, 100U);
  EXPECT_EQ(accumulator.totalBytesOut, 50U);
}

TEST(NetworkCounterAccumulatorTests, AResetOfALargeCounterAddsNothingAndRebases) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 6'000'000'000, 0)});
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 5'000'000'000, 0)}), (Counters{0, 0}));
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 5'000'000'300, 0)}), (Counters{300, 0}));
}

TEST(NetworkCounterAccumulatorTests, EachCounterIsJudgedByItself) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 6'000'000'000, 1000)});
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 10, 1000 + 40)}), (Counters{0, 40}));
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 10 + 5, 1040)}), (Counters{5, 40}));
}

TEST(NetworkCounterAccumulatorTests, AWrapOfThirtyTwoBitsIsBridged) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 4294967290, 0)});
  // 6 bytes up to the wrap and 10 behind it.
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 10, 0)}), (Counters{16, 0}));
}

TEST(NetworkCounterAccumulatorTests, InterfacesAddUp) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 0, 0), interface(5, 1000, 1000)});
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 10, 1), interface(5, 1200, 1020)}),
            (Counters{10 + 200, 1 + 20}));
}

TEST(NetworkCounterAccumulatorTests, AnInterfaceThatComesLaterSetsItsBaselineFirst) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 0, 0)});
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 10, 0), interface(9, 7777, 7777)}),
            (Counters{10, 0}));
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(9, 7777 + 3, 7777)}), (Counters{13, 0}));
}

TEST(NetworkCounterAccumulatorTests, AMissingInterfaceKeepsItsBaseline) {
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 1000, 0)});
  EXPECT_EQ(accumulator.ingest(Interfaces{}), (Counters{0, 0}));
  EXPECT_EQ(accumulator.ingest(Interfaces{interface(4, 1600, 0)}), (Counters{600, 0}));
}

TEST(NetworkCounterAccumulatorTests, TotalsNeverFall) {
  NetworkCounterAccumulator accumulator;
  Counters last{};
  for (const std::uint64_t counter : {100U, 900U, 20U, 4000000000U, 5U, 4294967295U, 0U}) {
    const Counters totals = accumulator.ingest(Interfaces{interface(4, counter, counter / 2)});
    EXPECT_GE(totals.bytesIn, last.bytesIn);
    EXPECT_GE(totals.bytesOut, last.bytesOut);
    last = totals;
  }
}

TEST(NetworkCounterAccumulatorDeathTests, ATotalThatOverflowsIsFatal) {
  const std::uint64_t highest = std::numeric_limits<std::uint64_t>::max();
  const std::string message = "Fatal error: integer overflow in an addition";
  NetworkCounterAccumulator accumulator;
  accumulator.ingest(Interfaces{interface(4, 0, 0), interface(5, 0, 0)});
  EXPECT_DEATH(accumulator.ingest(Interfaces{interface(4, highest, 0), interface(5, 1, 0)}),
               message);
  EXPECT_DEATH(accumulator.ingest(Interfaces{interface(4, 0, highest), interface(5, 0, 1)}),
               message);
}

}  // namespace
}  // namespace quorvex
