#include <gtest/gtest.h>

#include "ThermalSummaryCard.h"

namespace quorvex {
namespace {

using Verdict = PowerSessionThermalDigest::Verdict;

TEST(ThermalSummaryCard, EveryVerdictHasItsWordAndColour) {
  EXPECT_EQ(verdictText(Verdict::cool), (ColoredText{"Cool", ColorName::green}));
  EXPECT_EQ(verdictText(Verdict::warm), (ColoredText{"Warm", ColorName::yellow}));
  EXPECT_EQ(verdictText(Verdict::hotControlled),
            (ColoredText{"Hot, controlled", ColorName::orange}));
  EXPECT_EQ(verdictText(Verdict::throttled), (ColoredText{"Throttling detected", ColorName::red}));
}

TEST(ThermalSummaryCard, ThePeakIsInTheUsersUnit) {
  const PowerSessionThermalDigest digest{.peakTemperatureCelsius = 95.0};
  EXPECT_EQ(thermalSummaryCard(digest, false).peakTempText, "Peak 95°C");
  EXPECT_EQ(thermalSummaryCard(digest, true).peakTempText, "Peak 203°F") << "95 * 9 / 5 + 32";
}

TEST(ThermalSummaryCard, WithoutAPeakThereIsNoTemperature) {
  EXPECT_EQ(thermalSummaryCard({}, false).peakTempText, "Thermal: --");
}

TEST(ThermalSummaryCard, BandsWithTimeAreListedAndTheNinetyFiveNever) {
  const PowerSessionThermalDigest digest{.timeAbove70C = 3600,
                                         .timeAbove80C = 90,
                                         .timeAbove90C = 0,
                                         .timeAbove95C = 50,
                                         .timeAbove100C = 2};
  EXPECT_EQ(thermalSummaryCard(digest, true).timeAboveText,
            "1h 0m above 70°C · 1m 30s above 80°C · 2s above 100°C");
  EXPECT_EQ(thermalSummaryCard({.timeAbove90C = 30}, false).timeAboveText, "30s above 90°C");
  EXPECT_EQ(thermalSummaryCard({.timeAbove95C = 30}, false).timeAboveText, "");
}

TEST(ThermalSummaryCard, PressureIsToldWhenItWasReported) {
  EXPECT_EQ(thermalSummaryCard({}, false).pressureNote, "macOS reported no thermal pressure");
  EXPECT_EQ(
      thermalSummaryCard({.maxThermalPressure = 2, .thermalPressureWasTriggered = true}, false)
          .pressureNote,
      "macOS reported thermal pressure (level 2)");
}

TEST(ThermalSummaryCard, IsToldInWordsToo) {
  EXPECT_EQ(thermalSummaryCard({}, false).accessibilityText,
            "Cool. Thermal: --. macOS reported no thermal pressure");
  EXPECT_EQ(
      thermalSummaryCard(
          {.peakTemperatureCelsius = 75.0, .timeAbove70C = 30, .verdict = Verdict::warm}, false)
          .accessibilityText,
      "Warm. Peak 75°C. 30s above 70°C. macOS reported no thermal pressure");
}

}  // namespace
}  // namespace quorvex
