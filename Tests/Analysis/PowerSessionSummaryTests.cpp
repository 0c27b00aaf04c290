#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "AnyRecord.h"
#include "PowerSessionCoders.h"
#include "PowerSessionSummary.h"

namespace quorvex {
namespace {

using ::testing::IsEmpty;

constexpr const char* emptyNetworkNote =
    "Network totals are observed counter deltas/maxes, not power causality.";
/// The keys that must be there.
constexpr const char* leastJSON =
    R"({"durationSeconds":60,"maxThermalPressure":1,"sampleCount":3,"wattSampleCount":2})";

Result<PowerSessionSummary, DecodingError> decoded(std::string_view json) {
  return PowerSessionCoders::decoder().decode<PowerSessionSummary>(json);
}

TEST(PowerSessionSummary, TheEmptySummaryHasNothingButItsFixedTexts) {
  const PowerSessionSummary& empty = PowerSessionSummary::empty();
  EXPECT_EQ(empty.durationSeconds, 0.0);
  EXPECT_EQ(empty.sampleCount, 0);
  EXPECT_EQ(empty.averageWatts, std::nullopt);
  EXPECT_EQ(empty.averageWattsNote, std::nullopt);
  EXPECT_EQ(empty.totalWattHoursNote, std::nullopt);
  EXPECT_EQ(empty.batteryInsights, std::nullopt);
  EXPECT_EQ(empty.maxThermalPressure, 0);
  EXPECT_EQ(empty.totalBytesIn, 0U);
  EXPECT_THAT(empty.powerSegments, IsEmpty());
  EXPECT_THAT(empty.topContributors, IsEmpty());
  EXPECT_THAT(empty.topNetworkApps, IsEmpty());
  EXPECT_THAT(empty.processFamilies, IsEmpty());
  EXPECT_THAT(empty.telemetryConsistencyChecks, IsEmpty());
  EXPECT_EQ(empty.telemetryChannelNotes, PowerSessionAnalysis::telemetryChannelNotes());
  EXPECT_EQ(empty.samplingConfidence, PowerSessionSamplingConfidence::empty());
  EXPECT_EQ(empty.chargeBehavior, PowerSessionChargeBehavior::empty());
  EXPECT_EQ(empty.thermalSummary, PowerSessionThermalSummary::empty());
  EXPECT_EQ(empty.measurementOverhead, PowerSessionMeasurementOverhead::empty());
  EXPECT_EQ(empty.measurementOverhead.note, "No process impact samples were captured.");
  EXPECT_EQ(empty.networkSummary, (PowerSessionNetworkSummary{.note = emptyNetworkNote}));
}

TEST(PowerSessionSummary, FourKeysAreEnoughToLoad) {
  const auto summary = decoded(leastJSON);
  ASSERT_TRUE(summary) << summary.error().description;
  PowerSessionSummary expected;
  expected.durationSeconds = 60.0;
  expected.maxThermalPressure = 1;
  expected.sampleCount = 3;
  expected.wattSampleCount = 2;
  EXPECT_EQ(*summary, expected);
}

TEST(PowerSessionSummary, EachOfTheFourKeysIsRequired) {
  for (const std::string key :
       {"durationSeconds", "maxThermalPressure", "sampleCount", "wattSampleCount"}) {
    std::string json = leastJSON;
    json.replace(json.find(key), key.size(), "other");
    const auto summary = decoded(json);
    ASSERT_FALSE(summary);
    EXPECT_EQ(summary.error().description, "$." + key + ": missing");
  }
}

TEST(PowerSessionSummary, AMissingNetworkSummaryTellsTheRecordsOwnTotals) {
  PowerSessionSummary summary;
  summary.totalBytesIn = 1000;
  summary.totalBytesOut = 200;
  summary.topNetworkApps = {{.name = "curl", .source = "nettop", .totalBytesIn = 900}};
  std::string json = *PowerSessionCoders::encoder().encode(summary);
  const auto at = json.find("\"networkSummary\"");
  json.replace(at, std::string_view{"\"networkSummary\""}.size(), "\"somethingElse\"");
  const auto read = decoded(json);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->networkSummary, (PowerSessionNetworkSummary{.totalBytesIn = 1000,
                                                              .totalBytesOut = 200,
                                                              .topMovers = summary.topNetworkApps,
                                                              .note = emptyNetworkNote}));
}

TEST(PowerSessionSummary, APresentNetworkSummaryStandsAsItIs) {
  const auto read = decoded(
      R"({"durationSeconds":60,"maxThermalPressure":1,"networkSummary":{"note":"n","topMovers":[],)"
      R"("totalBytesIn":7,"totalBytesOut":8},"sampleCount":3,"totalBytesIn":1000,"wattSampleCount":2})");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->networkSummary,
            (PowerSessionNetworkSummary{.totalBytesIn = 7, .totalBytesOut = 8, .note = "n"}));
}

TEST(PowerSessionSummary, NothingOfAnEarlierSummaryStaysWhenKeysAreMissing) {
  auto decoder = PowerSessionCoders::decoder();
  PowerSessionSummary summary;
  summary.totalBytesIn = 5;
  summary.topNetworkApps.resize(2);
  summary.powerSegments.resize(3);
  summary.networkSummary.totalBytesIn = 5;
  ASSERT_TRUE(decoder.decodeInto(summary, leastJSON));
  EXPECT_EQ(summary, *decoded(leastJSON));
}

TEST(PowerSessionSummary, AbsentValuesAreLeftOut) {
  EXPECT_EQ(
      *PowerSessionCoders::encoder().encode(PowerSessionPowerSegment{}),
      R"({"durationSeconds":0,"endedAt":"1970-01-01T00:00:00Z","index":0,"sampleCount":0,)"
      R"("sourceKind":"","sourceLabel":"","startedAt":"1970-01-01T00:00:00Z","wattSampleCount":0})");
}

TEST(PowerSessionSummary, RowsAreWrittenUnderTheirFieldNames) {
  EXPECT_EQ(*PowerSessionCoders::encoder().encode(PowerSessionContributor{
                .name = "n", .source = "s", .score = 1.5, .confidence = "c", .isAggregate = true}),
            R"({"confidence":"c","isAggregate":true,"name":"n","score":1.5,"source":"s"})");
  EXPECT_EQ(
      *PowerSessionCoders::encoder().encode(PowerSessionNetworkAppUsage{.name = "n",
                                                                        .source = "s",
                                                                        .totalBytesIn = 1,
                                                                        .totalBytesOut = 2,
                                                                        .peakBytesInPerSec = 3.5,
                                                                        .peakBytesOutPerSec = 4.5,
                                                                        .sampleCount = 5}),
      R"({"name":"n","peakBytesInPerSec":3.5,"peakBytesOutPerSec":4.5,"sampleCount":5,)"
      R"("source":"s","totalBytesIn":1,"totalBytesOut":2})");
}

TEST(PowerSessionSummary, WhateverIsWrittenIsReadBackTheSame) {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    const auto summary = samples::any<PowerSessionSummary>();
    const auto json = PowerSessionCoders::encoder().encode(summary);
    RC_ASSERT(json.hasValue());
    const auto read = decoder.decode<PowerSessionSummary>(*json);
    RC_ASSERT(read.hasValue());
    RC_ASSERT(*read == summary);
    RC_ASSERT(*PowerSessionCoders::encoder().encode(*read) == *json);
  }));
}

}  // namespace
}  // namespace quorvex
