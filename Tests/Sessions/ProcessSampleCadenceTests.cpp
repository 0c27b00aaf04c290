#include <gtest/gtest.h>

#include <chrono>

#include "ProcessSampleCadence.h"

namespace quorvex {
namespace {

using namespace std::chrono_literals;

constexpr Date last{1'700'000'000s};

TEST(ProcessSampleCadence, TheFirstSampleTakesTheExtras) {
  EXPECT_TRUE(isProcessSampleDue(std::nullopt, last, usualProcessSampleInterval));
}

TEST(ProcessSampleCadence, TheyAreDueOnceTheIntervalHasPassed) {
  EXPECT_EQ(usualProcessSampleInterval, 10.0);
  EXPECT_FALSE(isProcessSampleDue(last, last + 9999ms, 10.0));
  EXPECT_TRUE(isProcessSampleDue(last, last + 10s, 10.0));
  EXPECT_TRUE(isProcessSampleDue(last, last + 60s, 10.0));
}

TEST(ProcessSampleCadence, AnEarlierTimeIsNotDue) {
  EXPECT_FALSE(isProcessSampleDue(last, last - 60s, 10.0));
}

}  // namespace
}  // namespace quorvex
