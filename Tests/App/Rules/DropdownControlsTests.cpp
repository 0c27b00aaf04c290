#include <gtest/gtest.h>

#include "DropdownControls.h"

namespace quorvex {
namespace {

TEST(DropdownControlsTests, StepperWordsTheIntervalInShort) {
  EXPECT_EQ(dropdownControls({.refreshInterval = 0.5}, {}, std::nullopt).refreshInterval.valueText,
            "0.5s");
  EXPECT_EQ(dropdownControls({.refreshInterval = 2.0}, {}, std::nullopt).refreshInterval.valueText,
            "2s");
}

TEST(DropdownControlsTests, RefreshHasItsSymbol) {
  const DropdownControls controls = dropdownControls({}, {}, std::nullopt);
  EXPECT_EQ(controls.refresh.title, "Refresh");
  EXPECT_EQ(controls.refresh.symbol, "arrow.clockwise");
}

TEST(DropdownControlsTests, LowImpactModeIsALeaf) {
  const DropdownControls controls = dropdownControls({.lowImpactMode = true}, {}, std::nullopt);
  EXPECT_EQ(controls.lowImpactMode.key, "lowImpactMode");
  EXPECT_EQ(controls.lowImpactMode.title, "Low-impact mode");
  EXPECT_EQ(controls.lowImpactMode.symbol, "leaf");
  EXPECT_TRUE(controls.lowImpactMode.isOn);
  EXPECT_FALSE(dropdownControls({}, {}, std::nullopt).lowImpactMode.isOn);
}

TEST(DropdownControlsTests, LowPowerModeOfTheSystemIsABadge) {
  EXPECT_EQ(dropdownControls({}, {}, std::nullopt).lowPowerMode, std::nullopt);
  const DropdownControls controls = dropdownControls({}, {.isLowPowerMode = true}, std::nullopt);
  ASSERT_TRUE(controls.lowPowerMode);
  EXPECT_EQ(controls.lowPowerMode->text, "Low Power Mode");
  EXPECT_EQ(controls.lowPowerMode->symbol, "leaf.fill");
}

TEST(DropdownControlsTests, HighUtilizationIsAnOrangeWarning) {
  EXPECT_EQ(dropdownControls({}, {}, 0.3).warning, std::nullopt);
  const DropdownControls controls = dropdownControls({}, {}, 0.31);
  ASSERT_TRUE(controls.warning);
  EXPECT_EQ(controls.warning->text,
            "Sampling at ~31% of interval — consider a longer interval or low-impact mode.");
  EXPECT_EQ(controls.warning->color, ColorName::orange);
}

}  // namespace
}  // namespace quorvex
