#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AnalysisFlagsCard.h"

namespace quorvex {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

using Checks = std::vector<PowerSessionTelemetryConsistencyCheck>;

TEST(AnalysisFlagsCard, IsAbsentWhenThereIsNothingToShow) {
  EXPECT_FALSE(analysisFlagsCard({}, {}));
  EXPECT_FALSE(analysisFlagsCard({}, {.observed = false, .overheadFraction = 0.1}));
}

TEST(AnalysisFlagsCard, ObservedOverheadTellsItsShare) {
  const auto card =
      analysisFlagsCard({}, {.observed = true, .overheadFraction = 0.15, .note = "A note."});
  ASSERT_TRUE(card);
  EXPECT_EQ(card->heading, "Analysis Flags");
  ASSERT_TRUE(card->overhead);
  EXPECT_EQ(card->overhead->text,
            (ColoredText{"Measurement overhead observed", ColorName::orange}));
  EXPECT_EQ(card->overhead->fractionText, "15%");
  EXPECT_EQ(card->overhead->note, "A note.");
  EXPECT_THAT(card->checks, IsEmpty());
}

TEST(AnalysisFlagsCard, AnUnknownShareIsLeftOut) {
  EXPECT_EQ(analysisFlagsCard({}, {.observed = true})->overhead->fractionText, "");
}

TEST(AnalysisFlagsCard, WarningsAreOrangeAndAllElseIsQuiet) {
  const Checks checks{{"battery-draw-residual-dominates", "warning", "High draw.", 3},
                      {"incomplete-silicon-channels", "info", "Missing rails.", 1}};
  const auto card = analysisFlagsCard(checks, {});
  ASSERT_TRUE(card);
  EXPECT_FALSE(card->overhead);
  ASSERT_THAT(card->checks, SizeIs(2));
  EXPECT_EQ(card->checks[0].code, "battery-draw-residual-dominates");
  EXPECT_EQ(card->checks[0].message, "High draw.");
  EXPECT_EQ(card->checks[0].samplesText, "3 samples");
  EXPECT_EQ(card->checks[0].color, ColorName::orange);
  EXPECT_EQ(card->checks[0].accessibilityText,
            "warning: battery-draw-residual-dominates: High draw. 3 samples");
  EXPECT_EQ(card->checks[1].color, ColorName::secondary);
  EXPECT_EQ(card->checks[1].samplesText, "1 samples");
}

}  // namespace
}  // namespace quorvex
