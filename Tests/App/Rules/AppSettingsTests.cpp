#include <gtest/gtest.h>

#include <limits>

#include "AppSettings.h"
#include "FakeUserDefaults.h"
#include "RefreshInterval.h"

namespace quorvex {
namespace {

using testing::FakeUserDefaults;

/// The interval that the app starts with when `stored` lies under the key.
double startInterval(const UserDefaultsValue& stored) {
  FakeUserDefaults defaults;
  defaults.values.insert_or_assign("refreshInterval", stored);
  return normalisedRefreshInterval(appSettings(defaults).refreshInterval);
}

TEST(AppSettingsTests, NothingStoredGivesTheDefaults) {
  FakeUserDefaults defaults;
  const AppSettings settings = appSettings(defaults);
  EXPECT_EQ(settings.refreshInterval, 2.0);
  EXPECT_TRUE(settings.showBattery);
  EXPECT_TRUE(settings.showPower);
  EXPECT_TRUE(settings.showThermal);
  EXPECT_TRUE(settings.showFans);
  EXPECT_TRUE(settings.showSensors);
  EXPECT_TRUE(settings.showNetwork);
  EXPECT_FALSE(settings.useFahrenheit);
  EXPECT_TRUE(settings.showTemperatureHighlights);
  EXPECT_FALSE(settings.lowImpactMode);
  EXPECT_FALSE(settings.showAdvancedMetrics);
  EXPECT_FALSE(settings.proTelemetryEnabled);
  EXPECT_EQ(settings.menuGraphMode, GraphMode::power);
  EXPECT_TRUE(defaults.written.empty());
}

struct Switch {
  const char* key;
  bool AppSettings::*setting;
  bool initial;
};

TEST(AppSettingsTests, EachSwitchReadsItsOwnKeyAndNoOther) {
  const Switch switches[] = {
      {"showBattery", &AppSettings::showBattery, true},
      {"showPower", &AppSettings::showPower, true},
      {"showThermal", &AppSettings::showThermal, true},
      {"showFans", &AppSettings::showFans, true},
      {"showSensors", &AppSettings::showSensors, true},
      {"showNetwork", &AppSettings::showNetwork, true},
      {"useFahrenheit", &AppSettings::useFahrenheit, false},
      {"showTemperatureHighlights", &AppSettings::showTemperatureHighlights, true},
      {"lowImpactMode", &AppSettings::lowImpactMode, false},
      {"showAdvancedMetrics", &AppSettings::showAdvancedMetrics, false},
      {"proTelemetryEnabled", &AppSettings::proTelemetryEnabled, false}};
  for (const Switch& one : switches) {
    FakeUserDefaults defaults;
    defaults.values.emplace(one.key, !one.initial);
    AppSettings expected;
    expected.*one.setting = !one.initial;
    EXPECT_EQ(appSettings(defaults), expected) << one.key;
  }
}

TEST(AppSettingsTests, SwitchStoredAsTextKeepsItsDefault) {
  FakeUserDefaults defaults;
  defaults.values.emplace("showFans", std::string{"false"});
  defaults.values.emplace("lowImpactMode", std::string{"true"});
  EXPECT_EQ(appSettings(defaults), AppSettings{});
}

TEST(AppSettingsTests, IntervalOf026ReadsAsHalfASecond) {
  EXPECT_EQ(startInterval(0.26), 0.5);
}

TEST(AppSettingsTests, IntervalOf174ReadsAsOneAndAHalfSeconds) {
  EXPECT_EQ(startInterval(1.74), 1.5);
}

TEST(AppSettingsTests, IntervalOf500ReadsAs60Seconds) {
  EXPECT_EQ(startInterval(500.0), 60.0);
  EXPECT_EQ(startInterval(std::int64_t{500}), 60.0);
}

TEST(AppSettingsTests, IntervalStoredAsTextReadsAs2Seconds) {
  EXPECT_EQ(startInterval(std::string{"10"}), 2.0);
}

TEST(AppSettingsTests, IntervalStoredAsBooleanOrNaNReadsAs2Seconds) {
  EXPECT_EQ(startInterval(true), 2.0);
  EXPECT_EQ(startInterval(std::numeric_limits<double>::quiet_NaN()), 2.0);
}

TEST(AppSettingsTests, IntervalIsGivenAsStored) {
  FakeUserDefaults defaults;
  defaults.values.emplace("refreshInterval", 1.74);
  EXPECT_EQ(appSettings(defaults).refreshInterval, 1.74);
}

TEST(AppSettingsTests, GraphModeIsStoredByItsName) {
  FakeUserDefaults defaults;
  for (const GraphMode mode : {GraphMode::power, GraphMode::temperature, GraphMode::network}) {
    defaults.setValue(SettingsKey::menuGraphMode, std::string{rawValue(mode)});
    EXPECT_EQ(appSettings(defaults).menuGraphMode, mode);
  }
  EXPECT_EQ(rawValue(GraphMode::power), "power");
  EXPECT_EQ(rawValue(GraphMode::temperature), "temperature");
  EXPECT_EQ(rawValue(GraphMode::network), "network");
}

TEST(AppSettingsTests, UnknownGraphModeCountsAsPower) {
  FakeUserDefaults defaults;
  defaults.values.emplace("menuGraphMode", std::string{"Network"});
  EXPECT_EQ(appSettings(defaults).menuGraphMode, GraphMode::power);
  defaults.values.insert_or_assign("menuGraphMode", std::int64_t{2});
  EXPECT_EQ(appSettings(defaults).menuGraphMode, GraphMode::power);
}

}  // namespace
}  // namespace quorvex
