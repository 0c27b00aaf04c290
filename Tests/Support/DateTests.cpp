#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>

#include "Date.h"

namespace quorvex {
namespace {

using namespace std::chrono_literals;

constexpr Date epoch{};

TEST(Date, SecondsBetweenKeepsFractionAndSign) {
  EXPECT_DOUBLE_EQ(secondsBetween(epoch, epoch + 1500ms), 1.5);
  EXPECT_DOUBLE_EQ(secondsBetween(epoch + 2s, epoch), -2.0);
}

TEST(Date, SecondsBetweenTheEndsOfTimeIsFinite) {
  const Date first{std::chrono::nanoseconds::min()};
  const Date last{std::chrono::nanoseconds::max()};
  // The whole range of 64-bit nanoseconds: 2^64 ns.
  EXPECT_DOUBLE_EQ(secondsBetween(first, last), 18446744073.709551615);
}

TEST(Date, SecondsBecomeNearestNanoseconds) {
  EXPECT_EQ(nanosecondsFromSeconds(0.1), 100ms);
  EXPECT_EQ(nanosecondsFromSeconds(-2.5), -2500ms);
  EXPECT_EQ(nanosecondsFromSeconds(1.4e-9), 1ns);
}

TEST(Date, SecondsBeyondTheRangeSaturate) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(nanosecondsFromSeconds(infinity), std::chrono::nanoseconds::max());
  EXPECT_EQ(nanosecondsFromSeconds(-infinity), std::chrono::nanoseconds::min());
  EXPECT_EQ(nanosecondsFromSeconds(1e300), std::chrono::nanoseconds::max());
  EXPECT_EQ(nanosecondsFromSeconds(std::numeric_limits<double>::quiet_NaN()), 0ns);
}

TEST(Date, AddingSaturatesInBothDirections) {
  EXPECT_EQ(dateByAdding(epoch, 1.25), epoch + 1250ms);
  EXPECT_EQ(dateByAdding(epoch + 1s, 1e300), Date{std::chrono::nanoseconds::max()});
  EXPECT_EQ(dateByAdding(epoch - 1s, -1e300), Date{std::chrono::nanoseconds::min()});
}

TEST(Date, ISO8601IsWholeSecondsInUTC) {
  EXPECT_EQ(iso8601(epoch), "1970-01-01T00:00:00Z");
  EXPECT_EQ(iso8601(epoch + 86399s + 999ms), "1970-01-01T23:59:59Z");
  EXPECT_EQ(
      iso8601(Date{std::chrono::sys_days{std::chrono::year{2024} / 2 / 29}} + 9h + 30min + 5s),
      "2024-02-29T09:30:05Z");
}

TEST(Date, ISO8601DropsFractionsTowardsThePast) {
  EXPECT_EQ(iso8601(epoch - 1ns), "1969-12-31T23:59:59Z");
}

TEST(Date, ParsingTakesFractionsAndZones) {
  EXPECT_EQ(parseISO8601("1970-01-01T00:00:01Z"), epoch + 1s);
  EXPECT_EQ(parseISO8601("1970-01-01T00:00:01.5Z"), epoch + 1500ms);
  EXPECT_EQ(parseISO8601("1970-01-01T00:00:00.1234567899Z"), epoch + 123456789ns);
  EXPECT_EQ(parseISO8601("1970-01-01T02:00:00+02:00"), epoch);
  EXPECT_EQ(parseISO8601("1969-12-31T18:30:00-05:30"), epoch);
}

TEST(Date, ParsingRefusesEverythingElse) {
  for (const char* text :
       {"", "1970-01-01", "1970-01-01T00:00:00", "1970-01-01 00:00:00Z", "1970-13-01T00:00:00Z",
        "1970-02-29T00:00:00Z", "1970-01-01T24:00:00Z", "1970-01-01T00:60:00Z",
        "1970-01-01T00:00:60Z", "1970-01-01T00:00:00.Z", "1970-01-01T00:00:00Zx",
        "1970-01-01T00:00:00+2:00", "1970-01-01T00:00:00+24:00", "1970-1-1T00:00:00Z",
        "9999-01-01T00:00:00Z", "+970-01-01T00:00:00Z"}) {
    EXPECT_EQ(parseISO8601(text), std::nullopt) << text;
  }
}

RC_GTEST_PROP(Date, EveryWholeSecondSurvivesItsText, ()) {
  const auto seconds = *rc::gen::inRange<std::int64_t>(-9'000'000'000, 9'000'000'000);
  const Date date{std::chrono::seconds{seconds}};
  RC_ASSERT(parseISO8601(iso8601(date)) == date);
}

}  // namespace
}  // namespace quorvex
