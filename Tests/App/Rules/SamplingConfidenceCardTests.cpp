#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RulesSamples.h"
#include "SamplingConfidenceCard.h"

namespace quorvex {
namespace {

using samples::at;
using testing::ElementsAre;
using testing::SizeIs;

using SamplingConfidenceCardTests = samples::TimedTest;

PowerSessionDenseWindow window(std::string confidence) {
  return {.startedAt = at(14 * 3600),
          .endedAt = at(14 * 3600 + 5 * 60),
          .sampleCount = 1,
          .confidence = std::move(confidence)};
}

TEST_F(SamplingConfidenceCardTests, TellsWhatWasCovered) {
  const SamplingConfidenceCard card = samplingConfidenceCard({.wallClockDurationSeconds = 3600,
                                                              .activeSampledDurationSeconds = 1800,
                                                              .sampleCount = 900,
                                                              .medianIntervalSeconds = 2.04},
                                                             times());
  EXPECT_EQ(card.heading, "Sampling Confidence");
  EXPECT_THAT(
      card.rows,
      ElementsAre(LabelledValue{"Wall clock", "1h 0m"}, LabelledValue{"Active sampled", "30m 0s"},
                  LabelledValue{"Samples", "900"}, LabelledValue{"Median gap", "2.0s"}));
}

TEST_F(SamplingConfidenceCardTests, WithoutIntervalsThereIsNoMedian) {
  EXPECT_EQ(samplingConfidenceCard({}, times()).rows.back(), (LabelledValue{"Median gap", "--"}));
}

TEST_F(SamplingConfidenceCardTests, FlagsAreTheBadgeInOrange) {
  const Badge badge =
      samplingConfidenceCard({.flags = {"long-gaps", "low-active-coverage"}}, times()).badge;
  EXPECT_EQ(badge.text, "long-gaps, low-active-coverage");
  EXPECT_EQ(badge.color, ColorName::orange);
}

TEST_F(SamplingConfidenceCardTests, WithoutFlagsTheBadgeIsDenseWhateverTheWindowsSay) {
  const SamplingConfidenceCard card =
      samplingConfidenceCard({.denseWindows = {window("low-sample")}}, times());
  EXPECT_EQ(card.badge.text, "Dense");
  EXPECT_EQ(card.badge.color, ColorName::green);
  ASSERT_THAT(card.windows, SizeIs(1));
  EXPECT_EQ(card.windows[0].confidence, (ColoredText{"low-sample", ColorName::orange}));
}

TEST_F(SamplingConfidenceCardTests, WithoutGapsThereIsNoSentence) {
  EXPECT_EQ(samplingConfidenceCard({.gapsOver60Seconds = 0}, times()).gapSentence, std::nullopt);
}

TEST_F(SamplingConfidenceCardTests, GapsAreCountedInOneSentence) {
  EXPECT_EQ(
      samplingConfidenceCard({.gapsOver60Seconds = 1, .totalGapSeconds = 90}, times()).gapSentence,
      "1 gaps over 60s, 1m 30s unsampled.");
}

TEST_F(SamplingConfidenceCardTests, OnlyADenseWindowIsGreen) {
  const SamplingConfidenceCard card = samplingConfidenceCard(
      {.denseWindows = {window("dense"), window("suspect-flat-battery")}}, times());
  ASSERT_THAT(card.windows, SizeIs(2));
  EXPECT_EQ(card.windows[0].timeRange, "14:00 – 14:05");
  EXPECT_EQ(card.windows[0].samplesText, "1 samples");
  EXPECT_EQ(card.windows[0].confidence, (ColoredText{"dense", ColorName::green}));
  EXPECT_EQ(card.windows[1].confidence, (ColoredText{"suspect-flat-battery", ColorName::orange}));
  EXPECT_EQ(card.windows[0].accessibilityText, "14:00 – 14:05, 1 samples, dense");
}

}  // namespace
}  // namespace quorvex
