#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "AppFixture.h"
#include "DropdownModel.h"
#include "LaunchAtLoginModel.h"
#include "SettingsModel.h"

// The models of the dropdown and the settings.

namespace quorvex {
namespace {

using ::testing::ElementsAre;

class ModelTest : public testing::AppTest {
 protected:
  ModelTest() { startApp(); }

  static QString text(const QVariantMap& content, const char* part, const char* name) {
    return content.value(QString::fromLatin1(part))
        .toMap()
        .value(QString::fromLatin1(name))
        .toString();
  }
};

TEST_F(ModelTest, TheDropdownStartsAnEngineThatRests) {
  DropdownModel model(*app, *commands);
  settle();
  EXPECT_TRUE(app->engine().isRunning().value());
}

TEST_F(ModelTest, TheDropdownShowsTheNewestReading) {
  DropdownModel model(*app, *commands);
  model.setShown(true);
  EXPECT_EQ(model.list(QStringLiteral("heroLines"))->value(0, QStringLiteral("number")),
            QStringLiteral("Collecting…"));
  settle();
  // 12.0 V times 1.5 A.
  EXPECT_EQ(model.list(QStringLiteral("heroLines"))->value(0, QStringLiteral("number")),
            QStringLiteral("18.0"));
  EXPECT_EQ(model.list(QStringLiteral("heroLines"))->value(0, QStringLiteral("color")),
            QStringLiteral("red"));
}

TEST_F(ModelTest, NothingIsMadeForAWindowThatNobodySees) {
  DropdownModel model(*app, *commands);
  const QSignalSpy changed(&model, &LiveModel::contentChanged);
  advance(10.0);
  EXPECT_EQ(changed.count(), 0);
  model.setShown(true);
  EXPECT_EQ(changed.count(), 1);
  model.setShown(false);
  advance(10.0);
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(ModelTest, APollThatChangesNothingTellsTheViewNothing) {
  DropdownModel model(*app, *commands);
  model.setShown(true);
  settle();
  commands->refresh();
  settle();
  const auto graph = model.content().value(QStringLiteral("hero"));
  const QSignalSpy rows(model.list(QStringLiteral("stats")), &QAbstractItemModel::dataChanged);
  commands->refresh();
  settle();
  EXPECT_EQ(rows.count(), 0);
  EXPECT_EQ(model.content().value(QStringLiteral("hero")), graph);
}

TEST_F(ModelTest, TheGraphModeOfTheSettingsDecidesTheHero) {
  DropdownModel model(*app, *commands);
  model.setShown(true);
  app->defaults().setMenuGraphMode(QStringLiteral("network"));
  settle();
  EXPECT_EQ(model.list(QStringLiteral("heroLines"))->count(), 2);
  app->defaults().setMenuGraphMode(QStringLiteral("no such mode"));
  settle();
  EXPECT_EQ(text(model.content(), "hero", "mode"), QStringLiteral("power"));
}

TEST_F(ModelTest, ARecordingShowsInTheDropdownUntilItIsStopped) {
  DropdownModel model(*app, *commands);
  model.setShown(true);
  const auto isRecording = [&] {
    return model.content()
        .value(QStringLiteral("session"))
        .toMap()
        .value(QStringLiteral("isRecording"))
        .toBool();
  };
  EXPECT_FALSE(isRecording());
  commands->startSession(QString{});
  advance(65.0);
  EXPECT_TRUE(isRecording());
  EXPECT_TRUE(text(model.content(), "session", "elapsed").startsWith(QStringLiteral("1m")));
  commands->stopSession();
  settle();
  EXPECT_FALSE(isRecording());
}

TEST_F(ModelTest, TheSettingsApplyTheStoredIntervalWhenTheyAppear) {
  machine.defaults.values["refreshInterval"] = 0.26;
  SettingsModel model(*app, *commands);
  EXPECT_EQ(app->defaults().refreshInterval(), 0.5);
  EXPECT_EQ(app->engine().interval().value(), 0.5);
}

TEST_F(ModelTest, ASettingsSwitchFollowsItsSetting) {
  SettingsModel model(*app, *commands);
  model.setShown(true);
  auto* toggles = model.list(QStringLiteral("dashboardToggles"));
  ASSERT_EQ(toggles->count(), 6);
  EXPECT_EQ(toggles->value(0, QStringLiteral("key")), QStringLiteral("showBattery"));
  EXPECT_EQ(toggles->value(0, QStringLiteral("isOn")), true);
  app->defaults().setShowBattery(false);
  settle();
  EXPECT_EQ(toggles->value(0, QStringLiteral("isOn")), false);
  EXPECT_EQ(toggles->value(1, QStringLiteral("isOn")), true);
}

TEST_F(ModelTest, LaunchAtLoginRegistersAndShowsTheTrueStatus) {
  LaunchAtLoginModel model(machine.login, true);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), false);
  model.setEnabled(true);
  EXPECT_THAT(machine.login.log, ElementsAre("register"));
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), true);
  model.setEnabled(false);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), false);
}

TEST_F(ModelTest, LaunchAtLoginThatAwaitsApprovalIsOnAndSendsToTheSystemSettings) {
  machine.login.current = LoginItemStatus::requiresApproval;
  LaunchAtLoginModel model(machine.login, true);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), true);
  EXPECT_EQ(model.content().value(QStringLiteral("caption")),
            QStringLiteral("Enable Quorvex in System Settings > Login Items."));
  model.setEnabled(false);
  EXPECT_THAT(machine.login.log, ElementsAre("unregister"));
}

TEST_F(ModelTest, LaunchAtLoginSaysSoWhereThereIsNothingToLaunch) {
  machine.login.current = LoginItemStatus::notFound;
  machine.login.failure = "The program's own file is not known.";
  SettingsModel settings(*app, *commands);
  const LaunchAtLoginModel& model = *settings.launchAtLogin();
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), false);
  EXPECT_EQ(model.content().value(QStringLiteral("caption")),
            QStringLiteral("Install Quorvex.app before enabling launch at login."));
  settings.launchAtLogin()->setEnabled(true);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), false);
  EXPECT_EQ(text(model.content(), "errorMessage", "text"),
            QStringLiteral("The program's own file is not known."));
}

TEST_F(ModelTest, LaunchAtLoginIsReadAnewWhenItIsSeenAgain) {
  LaunchAtLoginModel model(machine.login, true);
  machine.login.current = LoginItemStatus::enabled;
  model.setShown(true);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), true);
}

TEST_F(ModelTest, TheSettingsMakeTheEngineFollowTheStoredLowImpactMode) {
  machine.defaults.values["lowImpactMode"] = true;
  SettingsModel model(*app, *commands);
  EXPECT_TRUE(app->engine().lowImpactMode().value());
}

TEST_F(ModelTest, TheSettingsLeaveAnIntervalThatHoldsAlone) {
  machine.defaults.values["refreshInterval"] = std::string{"5"};
  app->engine().start();
  settle();
  const SettingsModel model(*app, *commands);
  settle();
  EXPECT_THAT(app->engine().history().value(), ::testing::SizeIs(1));
  EXPECT_EQ(text(model.content(), "refresh", "title"), QStringLiteral("Refresh"));
  EXPECT_EQ(model.content()
                .value(QStringLiteral("refresh"))
                .toMap()
                .value(QStringLiteral("stepper"))
                .toMap()
                .value(QStringLiteral("valueText")),
            QStringLiteral("2 seconds"));
}

TEST_F(ModelTest, AFailedRegistrationSpringsBackAndSaysWhy) {
  machine.login.failure = "Operation not permitted";
  LaunchAtLoginModel model(machine.login, true);
  model.setEnabled(true);
  EXPECT_EQ(model.content().value(QStringLiteral("isEnabled")), false);
  EXPECT_EQ(text(model.content(), "errorMessage", "text"),
            QStringLiteral("Operation not permitted"));
  machine.login.failure.reset();
  model.setEnabled(true);
  EXPECT_FALSE(model.content().value(QStringLiteral("errorMessage")).isValid());
}

}  // namespace
}  // namespace quorvex
