#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

#include "AppFixture.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

using AppCommandsTest = testing::AppTest;

TEST_F(AppCommandsTest, ApplyingAnIntervalStoresAndSetsTheNormalisedOne) {
  startApp();
  commands->applyRefreshInterval(3.26);
  EXPECT_EQ(app->defaults().refreshInterval(), 3.5);
  EXPECT_EQ(app->engine().interval().value(), 3.5);
}

TEST_F(AppCommandsTest, ApplyingTheIntervalThatHoldsCausesNoPoll) {
  startApp();
  app->engine().start();
  settle();
  ASSERT_THAT(app->engine().history().value(), SizeIs(1));
  commands->applyRefreshInterval(2.0);
  settle();
  EXPECT_THAT(app->engine().history().value(), SizeIs(1));
}

TEST_F(AppCommandsTest, RefreshPollsAtOnce) {
  startApp();
  app->engine().start();
  settle();
  commands->refresh();
  settle();
  EXPECT_THAT(app->engine().history().value(), SizeIs(2));
}

TEST_F(AppCommandsTest, LowImpactModeFollowsTheSetting) {
  startApp();
  app->defaults().setLowImpactMode(true);
  commands->applyLowImpactMode();
  EXPECT_TRUE(app->engine().lowImpactMode().value());
}

TEST_F(AppCommandsTest, TheReportIsPutOnThePasteboardInPlaceOfWhatWasThere) {
  startApp();
  app->engine().start();
  settle();
  QGuiApplication::clipboard()->setText(QStringLiteral("before"));
  const QSignalSpy copied(commands.get(), &AppCommands::reportCopied);
  commands->copyJSONReport();
  settle();
  EXPECT_EQ(copied.count(), 1);
  const std::string text = QGuiApplication::clipboard()->text().toStdString();
  EXPECT_THAT(text, Not(HasSubstr("before")));
  // The laptop draws 12.0 V times 1.5 A.
  EXPECT_THAT(text, HasSubstr("18"));
  EXPECT_THAT(text, HasSubstr("\"powerReadings\""));
}

TEST_F(AppCommandsTest, TheDashboardsReportIsOfTheMomentOfTheClick) {
  startApp();
  app->engine().start();
  settle();
  commands->copyJSONReportOfNow();
  machine.battery.registryAnswer->insert_or_assign("Amperage", -500);
  commands->refresh();
  settle();
  const std::string ofTheClick = QGuiApplication::clipboard()->text().toStdString();
  EXPECT_THAT(ofTheClick, HasSubstr("-18"));
  EXPECT_THAT(ofTheClick, Not(HasSubstr("\"wattage\" : -6")));
}

TEST_F(AppCommandsTest, StartAndStopTellThatTheSessionsChanged) {
  startApp();
  const QSignalSpy changed(commands.get(), &AppCommands::sessionsChanged);
  commands->startSession(QStringLiteral("Benchmark"));
  settle();
  commands->stopSession();
  EXPECT_EQ(changed.count(), 2);
  const auto sessions = app->sessionRecorder().sessions();
  ASSERT_THAT(sessions, SizeIs(1));
  EXPECT_EQ(sessions.front()->status(), PowerSessionStatus::completed);
  EXPECT_EQ(sessions.front()->title(), "Benchmark");
  EXPECT_EQ(sessions.front()->source(), PowerSessionSource::app);
}

}  // namespace
}  // namespace quorvex
