#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "SettingsRules.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;

TEST(SettingsRulesTests, SectionsHaveTheirTitles) {
  const SettingsContent content = settingsContent({}, std::nullopt);
  EXPECT_EQ(content.refresh.title, "Refresh");
  EXPECT_EQ(content.sampling.title, "Sampling");
  EXPECT_EQ(content.launch.title, "Launch");
  EXPECT_EQ(content.dashboardSections.title, "Dashboard Sections");
  EXPECT_EQ(content.display.title, "Display");
}

TEST(SettingsRulesTests, RefreshSectionHasStepperAndFooter) {
  const SettingsContent content = settingsContent({.refreshInterval = 2.5}, std::nullopt);
  EXPECT_EQ(content.refresh.stepper.label, "Interval");
  EXPECT_EQ(content.refresh.stepper.value, 2.5);
  EXPECT_EQ(content.refresh.stepper.valueText, "2.5 seconds");
  EXPECT_EQ(content.refresh.footer, "Applies to the menu bar, dashboard, and graph history.");
}

TEST(SettingsRulesTests, SamplingSectionExplainsLowImpactMode) {
  const SettingsContent content = settingsContent({.lowImpactMode = true}, std::nullopt);
  const ToggleControl& toggle = content.sampling.lowImpactMode;
  EXPECT_EQ(toggle.key, "lowImpactMode");
  EXPECT_EQ(toggle.title, "Low-impact mode");
  EXPECT_EQ(toggle.caption,
            "Skip silicon power breakdown and sensor fallback to reduce Quorvex's own CPU and "
            "energy cost. Recommended for long unattended sessions.");
  EXPECT_TRUE(toggle.isOn);
  EXPECT_EQ(content.sampling.warning, std::nullopt);
}

TEST(SettingsRulesTests, SamplingSectionWarnsOfHighUtilization) {
  const SettingsContent content = settingsContent({}, 0.5);
  ASSERT_TRUE(content.sampling.warning);
  EXPECT_EQ(content.sampling.warning->text,
            "Sampling at ~50% of interval — consider a longer interval or low-impact mode.");
}

TEST(SettingsRulesTests, LaunchSectionNamesItsControl) {
  EXPECT_EQ(settingsContent({}, std::nullopt).launch.toggleTitle, "Launch at Login");
}

TEST(SettingsRulesTests, DashboardSectionsAreSixTogglesInOrder) {
  const SettingsContent content = settingsContent({.showFans = false}, std::nullopt);
  EXPECT_THAT(content.dashboardSections.toggles,
              ElementsAre(FieldsAre("showBattery", "Battery", "", "", true),
                          FieldsAre("showPower", "Power Metrics", "", "", true),
                          FieldsAre("showThermal", "Thermal", "", "", true),
                          FieldsAre("showFans", "Fans", "", "", false),
                          FieldsAre("showSensors", "Temperature Sensors", "", "", true),
                          FieldsAre("showNetwork", "Network", "", "", true)));
}

TEST(SettingsRulesTests, DisplayTogglesTheUnitAndTheHighlights) {
  const SettingsContent content = settingsContent({.useFahrenheit = true}, std::nullopt);
  EXPECT_THAT(
      content.display.toggles,
      ElementsAre(
          FieldsAre("useFahrenheit", "Show temperatures in Fahrenheit", "", "", true),
          FieldsAre("showTemperatureHighlights", "Show 3-temperature highlights", "", "", true)));
}

TEST(SettingsRulesTests, EachToggleShowsItsOwnSetting) {
  AppSettings settings{.showBattery = false,
                       .showPower = false,
                       .showThermal = false,
                       .showFans = false,
                       .showSensors = false,
                       .showNetwork = false,
                       .useFahrenheit = false,
                       .showTemperatureHighlights = false};
  const auto shownAsOn = [&](bool AppSettings::*setting) {
    settings.*setting = true;
    const SettingsContent content = settingsContent(settings, std::nullopt);
    settings.*setting = false;
    std::vector<std::string> keys;
    for (const auto* section : {&content.dashboardSections, &content.display}) {
      for (const ToggleControl& toggle : section->toggles) {
        if (toggle.isOn) {
          keys.push_back(toggle.key);
        }
      }
    }
    return keys;
  };
  EXPECT_THAT(shownAsOn(&AppSettings::showBattery), ElementsAre("showBattery"));
  EXPECT_THAT(shownAsOn(&AppSettings::showPower), ElementsAre("showPower"));
  EXPECT_THAT(shownAsOn(&AppSettings::showThermal), ElementsAre("showThermal"));
  EXPECT_THAT(shownAsOn(&AppSettings::showFans), ElementsAre("showFans"));
  EXPECT_THAT(shownAsOn(&AppSettings::showSensors), ElementsAre("showSensors"));
  EXPECT_THAT(shownAsOn(&AppSettings::showNetwork), ElementsAre("showNetwork"));
  EXPECT_THAT(shownAsOn(&AppSettings::useFahrenheit), ElementsAre("useFahrenheit"));
  EXPECT_THAT(shownAsOn(&AppSettings::showTemperatureHighlights),
              ElementsAre("showTemperatureHighlights"));
}

TEST(SettingsRulesTests, IntervalOfExactlyOneIsSingular) {
  EXPECT_EQ(SettingsRules::formatRefreshInterval(1.0), "1 second");
}

TEST(SettingsRulesTests, WholeIntervalsHaveNoDecimals) {
  EXPECT_EQ(SettingsRules::formatRefreshInterval(2.0), "2 seconds");
  EXPECT_EQ(SettingsRules::formatRefreshInterval(60.0), "60 seconds");
}

TEST(SettingsRulesTests, HalfIntervalsHaveOneDecimal) {
  EXPECT_EQ(SettingsRules::formatRefreshInterval(0.5), "0.5 seconds");
  EXPECT_EQ(SettingsRules::formatRefreshInterval(1.5), "1.5 seconds");
}

TEST(SettingsRulesTests, IntervalIsWordedAsNormalised) {
  EXPECT_EQ(SettingsRules::formatRefreshInterval(1.2), "1 second");
  EXPECT_EQ(SettingsRules::formatRefreshInterval(500.0), "60 seconds");
  EXPECT_EQ(SettingsRules::formatRefreshInterval(std::numeric_limits<double>::quiet_NaN()),
            "2 seconds");
}

}  // namespace
}  // namespace quorvex
