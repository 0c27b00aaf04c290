#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "ByteFormat.h"

namespace quorvex {
namespace {

constexpr auto si = ByteFormatStyle::si;
constexpr auto binary = ByteFormatStyle::binary;

TEST(ByteFormat, ScalesArePowersOfTheStylesBase) {
  EXPECT_EQ(kb(si), 1e3);
  EXPECT_EQ(mb(si), 1e6);
  EXPECT_EQ(gb(si), 1e9);
  EXPECT_EQ(kb(binary), 1024.0);
  EXPECT_EQ(mb(binary), 1048576.0);
  EXPECT_EQ(gb(binary), 1073741824.0);
}

TEST(ByteFormat, BytesStayWholeBelowTheFirstScale) {
  EXPECT_EQ(formatBytes(0, si), "0 B");
  EXPECT_EQ(formatBytes(512, si), "512 B");
  EXPECT_EQ(formatBytes(1023, binary), "1023 B");
  EXPECT_EQ(formatBytes(1000, binary), "1000 B");
}

TEST(ByteFormat, ReachingAScaleTakesIt) {
  EXPECT_EQ(formatBytes(1024, binary), "1.0 KB");
  EXPECT_EQ(formatBytes(1000, si), "1.0 KB");
  EXPECT_EQ(formatBytes(1'000'000, si), "1.0 MB");
  EXPECT_EQ(formatBytes(1'000'000'000, si), "1.0 GB");
  EXPECT_EQ(formatBytes(1'048'576, binary), "1.0 MB");
  EXPECT_EQ(formatBytes(1'073'741'824, binary), "1.0 GB");
}

TEST(ByteFormat, ScaleIsChosenBeforeRounding) {
  EXPECT_EQ(formatBytes(999'999, si), "1000.0 KB");
  EXPECT_EQ(formatBytes(1'048'575, binary), "1024.0 KB");
}

TEST(ByteFormat, LargestCounterIsInTheLastScale) {
  EXPECT_EQ(formatBytes(std::numeric_limits<std::uint64_t>::max(), si), "18446744073.7 GB");
}

TEST(ByteFormat, RatesComeWithoutAFractionBelowTheFirstScale) {
  EXPECT_EQ(formatBytesPerSec(0.0, si), "0 B/s");
  EXPECT_EQ(formatBytesPerSec(511.6, si), "512 B/s");
}

TEST(ByteFormat, RateScaleIsChosenBeforeRounding) {
  EXPECT_EQ(formatBytesPerSec(999.6, si), "1000 B/s");
  EXPECT_EQ(formatBytesPerSec(1000.0, si), "1.0 KB/s");
  EXPECT_EQ(formatBytesPerSec(1023.9, binary), "1024 B/s");
}

TEST(ByteFormat, RatesClimbTheSameLadder) {
  EXPECT_EQ(formatBytesPerSec(1.5e6, si), "1.5 MB/s");
  EXPECT_EQ(formatBytesPerSec(2.25e9, si), "2.2 GB/s");
  EXPECT_EQ(formatBytesPerSec(3.0 * 1048576.0, binary), "3.0 MB/s");
  EXPECT_EQ(formatBytesPerSec(2048.0, binary), "2.0 KB/s");
}

}  // namespace
}  // namespace quorvex
