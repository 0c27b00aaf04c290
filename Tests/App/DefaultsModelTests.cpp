#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "DefaultsModel.h"
#include "FakeUserDefaults.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DefaultsModelTest : public ::testing::Test {
 protected:
  testing::FakeUserDefaults storage;
  DefaultsModel model{storage};
  QSignalSpy changed{&model, &DefaultsModel::changed};
};

TEST_F(DefaultsModelTest, AUserWhoNeverSetAnythingHasTheDefaults) {
  EXPECT_EQ(model.refreshInterval(), 2.0);
  EXPECT_TRUE(model.showBattery() && model.showPower() && model.showThermal() && model.showFans() &&
              model.showSensors() && model.showNetwork() && model.showTemperatureHighlights());
  EXPECT_FALSE(model.useFahrenheit() || model.lowImpactMode() || model.showAdvancedMetrics() ||
               model.proTelemetryEnabled());
  EXPECT_EQ(model.menuGraphMode(), QStringLiteral("power"));
}

TEST_F(DefaultsModelTest, ATextUnderTheRefreshIntervalReadsAsTwoSeconds) {
  storage.values["refreshInterval"] = std::string{"5"};
  EXPECT_EQ(model.refreshInterval(), 2.0);
}

TEST_F(DefaultsModelTest, AWholeIntervalMayComeBackAsAnInteger) {
  storage.values["refreshInterval"] = std::int64_t{5};
  EXPECT_EQ(model.refreshInterval(), 5.0);
}

TEST_F(DefaultsModelTest, AWriteIsStoredUnderItsKeyAndTold) {
  model.setShowNetwork(false);
  EXPECT_EQ(storage.values.at("showNetwork"), UserDefaultsValue{false});
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(DefaultsModelTest, AWriteOfWhatIsThereIsNone) {
  model.setShowNetwork(true);
  model.setRefreshInterval(7.0);
  changed.clear();
  storage.written.clear();
  model.setRefreshInterval(7.0);
  model.setMenuGraphMode(QStringLiteral("power"));
  EXPECT_THAT(storage.written, IsEmpty());
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(DefaultsModelTest, AnIntervalTakesTheTextsPlaceAlsoWhenItReadsTheSame) {
  storage.values["refreshInterval"] = std::string{"5"};
  model.setRefreshInterval(2.0);
  EXPECT_THAT(storage.written, ElementsAre("refreshInterval"));
}

TEST_F(DefaultsModelTest, SettingsThatOthersFollowHaveTheirOwnSignal) {
  const QSignalSpy interval(&model, &DefaultsModel::refreshIntervalChanged);
  const QSignalSpy lowImpact(&model, &DefaultsModel::lowImpactModeChanged);
  const QSignalSpy advanced(&model, &DefaultsModel::showAdvancedMetricsChanged);
  const QSignalSpy pro(&model, &DefaultsModel::proTelemetryEnabledChanged);
  model.setRefreshInterval(3.0);
  model.setLowImpactMode(true);
  model.setShowAdvancedMetrics(true);
  model.setProTelemetryEnabled(true);
  EXPECT_EQ(interval.count(), 1);
  EXPECT_EQ(lowImpact.count(), 1);
  EXPECT_EQ(advanced.count(), 1);
  EXPECT_EQ(pro.count(), 1);
  EXPECT_EQ(changed.count(), 4);
}

}  // namespace
}  // namespace quorvex
