#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "SessionJSON.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr Date startedAt{std::chrono::milliseconds{1'769'851'805'750}};

PowerSession sessionUntil(std::optional<Date> endedAt) {
  return PowerSession{UUID{},
                      "a/b",
                      startedAt,
                      endedAt,
                      endedAt ? PowerSessionStatus::completed : PowerSessionStatus::active,
                      PowerSessionSource::cli,
                      "0.14.0",
                      6,
                      0.5,
                      startedAt};
}

std::string document(const PowerSessionSummary& summary, const SessionDetails& details = {},
                     std::optional<Date> endedAt = std::nullopt) {
  const PowerSession session = sessionUntil(endedAt);
  return jsonDocument(
      [&](JSONWriter& json) { writeSessionFields(json, session, summary, details); });
}

/// The keys of the document at one depth, in their order.
std::vector<std::string> keysAtDepth(const std::string& text, std::size_t depth) {
  std::vector<std::string> keys;
  const std::string start = "\n" + std::string(2 * depth, ' ') + "\"";
  for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at + 1)) {
    const std::size_t from = at + start.size();
    keys.push_back(text.substr(from, text.find('"', from) - from));
  }
  return keys;
}

TEST(SessionJSON, ASessionHasItsKeys) {
  const std::string text = document({});
  EXPECT_THAT(keysAtDepth(text, 1),
              ::testing::ElementsAre("id", "sampleInterval", "source", "startedAt", "status",
                                     "summary", "title"));
  EXPECT_THAT(text, HasSubstr("\"sampleInterval\" : 0.5,\n  \"source\" : \"cli\",\n"
                              "  \"startedAt\" : \"2026-01-31T09:30:05Z\",\n"
                              "  \"status\" : \"active\",\n"));
  EXPECT_THAT(text, HasSubstr("\"title\" : \"a\\/b\"\n}\n"));
}

TEST(SessionJSON, AnEndedSessionSaysWhen) {
  EXPECT_THAT(document({}, {}, startedAt), HasSubstr("\"endedAt\" : \"2026-01-31T09:30:05Z\""));
}

TEST(SessionJSON, AnEmptySummaryHasTheKeysThatAreAlwaysThere) {
  EXPECT_THAT(keysAtDepth(document({}), 2),
              ::testing::ElementsAre("chargeBehavior", "durationSeconds", "maxThermalPressure",
                                     "measurementOverhead", "networkSummary", "powerSegments",
                                     "processFamilies", "sampleCount", "samplingConfidence",
                                     "telemetryChannelNotes", "telemetryConsistencyChecks",
                                     "thermalSummary", "topContributors", "topNetworkApps",
                                     "totalBytesIn", "totalBytesOut", "wattSampleCount"));
}

TEST(SessionJSON, AFullSummaryHasEveryKey) {
  PowerSessionSummary summary;
  summary.sampleCount = 2;
  summary.durationSeconds = 3.0;
  summary.averageWatts = summary.minWatts = summary.maxWatts = summary.totalWattHours = 1.0;
  summary.averageWattsNote = summary.totalWattHoursNote = "note";
  summary.batteryPercentStart = summary.batteryPercentEnd = summary.batteryPercentDelta = 1;
  summary.maxTemperature = summary.peakBytesInPerSec = summary.peakBytesOutPerSec = 1.0;
  summary.maxFanRPM = 1;
  summary.batteryInsights.emplace();
  EXPECT_THAT(
      keysAtDepth(document(summary), 2),
      ::testing::ElementsAre(
          "averageWatts", "averageWattsNote", "batteryInsights", "batteryPercentDelta",
          "batteryPercentEnd", "batteryPercentStart", "chargeBehavior", "durationSeconds",
          "effectiveSampleInterval", "maxFanRPM", "maxTemperature", "maxThermalPressure",
          "maxWatts", "measurementOverhead", "minWatts", "networkSummary", "peakBytesInPerSec",
          "peakBytesOutPerSec", "powerSegments", "processFamilies", "sampleCount",
          "samplingConfidence", "telemetryChannelNotes", "telemetryConsistencyChecks",
          "thermalSummary", "topContributors", "topNetworkApps", "totalBytesIn", "totalBytesOut",
          "totalWattHours", "totalWattHoursNote", "wattSampleCount"));
}

TEST(SessionJSON, OneSampleHasNoEffectiveInterval) {
  PowerSessionSummary summary;
  summary.sampleCount = 1;
  summary.durationSeconds = 10.0;
  EXPECT_THAT(document(summary), Not(HasSubstr("effectiveSampleInterval")));
}

TEST(SessionJSON, SamplesOfOneInstantHaveNoEffectiveInterval) {
  PowerSessionSummary summary;
  summary.sampleCount = 2;
  EXPECT_THAT(document(summary), Not(HasSubstr("effectiveSampleInterval")));
}

TEST(SessionJSON, NumbersAreNotRounded) {
  PowerSessionSummary summary;
  summary.sampleCount = 4;
  summary.durationSeconds = 10.0;
  summary.averageWatts = 12.3456789;
  const std::string text = document(summary);
  EXPECT_THAT(text, HasSubstr("\"averageWatts\" : 12.3456789,"));
  // 10 s are three intervals.
  EXPECT_THAT(text, HasSubstr("\"effectiveSampleInterval\" : 3.3333333333333335,"));
  EXPECT_THAT(text, HasSubstr("\"durationSeconds\" : 10,"));
}

TEST(SessionJSON, TheThermalDigestIsThereWhenItIsGiven) {
  PowerSessionThermalDigest digest;
  EXPECT_THAT(keysAtDepth(document({}, {.thermalDigest = &digest}), 1),
              ::testing::Contains("thermalDigest"));
  const std::string text = document({}, {.thermalDigest = &digest});
  EXPECT_THAT(text, HasSubstr("\"thermalDigest\" : {\n    \"maxThermalPressure\" : 0,\n"
                              "    \"thermalPressureWasTriggered\" : false,\n"
                              "    \"timeAbove100C\" : 0,\n    \"timeAbove70C\" : 0,\n"
                              "    \"timeAbove80C\" : 0,\n    \"timeAbove90C\" : 0,\n"
                              "    \"timeAbove95C\" : 0,\n    \"verdict\" : \"cool\"\n  },"));
  digest.peakTemperatureCelsius = 81.5;
  EXPECT_THAT(document({}, {.thermalDigest = &digest}),
              HasSubstr("\"peakTemperatureCelsius\" : 81.5,"));
}

TEST(SessionJSON, TheStoryIsThereWhenItIsGiven) {
  const PowerSessionStory story{.headline = "H",
                                .episodes = {{.timeRange = "7 – 8",
                                              .phase = "Battery draw",
                                              .narrative = "Idle",
                                              .highlights = {"one"}}}};
  EXPECT_THAT(document({}, {.story = &story}),
              HasSubstr("\"story\" : {\n    \"episodes\" : [\n      {\n"
                        "        \"highlights\" : [\n          \"one\"\n        ],\n"
                        "        \"narrative\" : \"Idle\",\n"
                        "        \"phase\" : \"Battery draw\",\n"
                        "        \"timeRange\" : \"7 – 8\"\n      }\n    ],\n"
                        "    \"headline\" : \"H\"\n  },"));
}

TEST(SessionJSON, ANumberThatIsNotFiniteMakesTheDocumentEmpty) {
  PowerSessionSummary summary;
  summary.averageWatts = std::numeric_limits<double>::infinity();
  EXPECT_EQ(document(summary), "{}\n");
}

}  // namespace
}  // namespace quorvex
