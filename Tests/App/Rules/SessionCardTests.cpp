#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "RulesSamples.h"
#include "SessionCard.h"
#include "SessionFormat.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string metric(const SessionCard& card, std::string_view label) {
  for (const LabelledValue& value : card.metrics) {
    if (value.label == label) {
      return value.value;
    }
  }
  return "missing";
}

TEST(FormatSessionDuration, IsRoundedToWholeSeconds) {
  EXPECT_EQ(formatSessionDuration(59.4), "59s");
  EXPECT_EQ(formatSessionDuration(59.6), "1m 0s");
  EXPECT_EQ(formatSessionDuration(3599.4), "59m 59s");
}

TEST(FormatSessionDuration, FromAnHourTheSecondsAreDropped) {
  EXPECT_EQ(formatSessionDuration(3600), "1h 0m");
  EXPECT_EQ(formatSessionDuration(3599.6), "1h 0m");
  EXPECT_EQ(formatSessionDuration(3600 + 2 * 60 + 59), "1h 2m");
}

TEST(FormatSessionDuration, NegativeCountsAsZero) {
  EXPECT_EQ(formatSessionDuration(-5), "0s");
  EXPECT_EQ(formatSessionDuration(0), "0s");
}

TEST(FormatSessionDuration, NumbersThatAreNotFiniteAreWorded) {
  EXPECT_EQ(formatSessionDuration(std::numeric_limits<double>::quiet_NaN()), "0s");
  EXPECT_EQ(formatSessionDuration(-std::numeric_limits<double>::infinity()), "0s");
  EXPECT_THAT(formatSessionDuration(std::numeric_limits<double>::infinity()), HasSubstr("h "));
}

TEST(SessionCard, ShowsTheRunningFigures) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.batteryPercentDelta = -3;
  summary.totalBytesIn = 1'500'000;
  summary.totalBytesOut = 999;
  const SessionCard card = sessionCard("Idle test", summary);
  EXPECT_EQ(card.title, "Idle test");
  EXPECT_EQ(card.status, "Recording");
  EXPECT_THAT(card.metrics,
              ElementsAre(LabelledValue{"Duration", "1m 0s"}, LabelledValue{"Average", "12.0W"},
                          LabelledValue{"Energy", "0.200Wh"}, LabelledValue{"Battery", "-3%"},
                          LabelledValue{"Down", "1.5 MB"}, LabelledValue{"Up", "999 B"}));
  EXPECT_EQ(card.accessibilityText,
            "Recording: Idle test, Duration 1m 0s, Average 12.0W, Energy 0.200Wh, Battery -3%, "
            "Down 1.5 MB, Up 999 B");
}

TEST(SessionCard, ARisingChargeHasNoSign) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.batteryPercentDelta = 4;
  EXPECT_EQ(metric(sessionCard("", summary), "Battery"), "4%");
  summary.batteryPercentDelta.reset();
  EXPECT_EQ(metric(sessionCard("", summary), "Battery"), "--");
}

TEST(SessionCard, AGapOnOneSourceReadsSparseForAverageAndEnergy) {
  const SessionCard card = sessionCard("", samples::sparseSummary());
  EXPECT_EQ(metric(card, "Average"), "Sparse");
  EXPECT_EQ(metric(card, "Energy"), "Sparse");
  EXPECT_FALSE(card.strip);
}

TEST(SessionCard, SeveralSourcesReadAsPhasesAndShowTheStrip) {
  const SessionCard card = sessionCard("", samples::mixedSummary());
  EXPECT_EQ(metric(card, "Average"), "2 phases");
  EXPECT_EQ(metric(card, "Energy"), "2 phases");
  ASSERT_TRUE(card.strip);
  EXPECT_EQ(card.strip->bars.size(), 2U);
}

TEST(SessionCard, AverageAndEnergyAreWithheldEachOnItsOwn) {
  PowerSessionSummary summary = samples::steadySummary();
  summary.totalWattHours.reset();
  const SessionCard card = sessionCard("", summary);
  EXPECT_EQ(metric(card, "Average"), "12.0W");
  EXPECT_EQ(metric(card, "Energy"), "--");
}

TEST(SegmentedSummaryLabel, EitherNoteOfAGapReadsSparse) {
  PowerSessionSummary summary = samples::mixedSummary();
  summary.averageWattsNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_EQ(segmentedSummaryLabel(summary), "Sparse");
  summary.averageWattsNote.reset();
  summary.totalWattHoursNote = std::string{PowerSessionMetrics::sparsePowerCoverageNote};
  EXPECT_EQ(segmentedSummaryLabel(summary), "Sparse");
}

TEST(SegmentedSummaryLabel, ASingleSegmentWithoutNoteHasNoWord) {
  PowerSessionSummary summary = samples::steadySummary();
  EXPECT_EQ(segmentedSummaryLabel(summary), "--");
  summary.powerSegments.clear();
  EXPECT_EQ(segmentedSummaryLabel(summary), "--");
}

}  // namespace
}  // namespace quorvex
