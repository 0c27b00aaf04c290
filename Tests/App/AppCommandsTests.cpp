#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <cstdint>
#include <string>

#include "AppFixture.h"
#include "ProTelemetryService.h"

namespace quorvex {
namespace {

using ::testing::Contains;
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

TEST_F(AppCommandsTest, TheReportHasTheFiveBusiestProcessesOfAThirdOfASecond) {
  for (std::int32_t pid = 1; pid <= 6; ++pid) {
    // Between the two walks, each takes a tenth of a second of CPU time more than the one before.
    machine.processes.setProcess(pid, "worker " + std::to_string(pid),
                                 {.userTime = static_cast<std::uint64_t>(pid) * 100'000'000U});
    machine.processes.queueResources(pid, {ProcessResources{}});
  }
  startApp();
  commands->copyJSONReport();
  settle();
  EXPECT_THAT(machine.time.sleeps(), Contains(0.35));
  const std::string text = QGuiApplication::clipboard()->text().toStdString();
  for (int pid = 2; pid <= 6; ++pid) {
    EXPECT_THAT(text, HasSubstr("worker " + std::to_string(pid)));
  }
  EXPECT_THAT(text, Not(HasSubstr("worker 1")));
}

TEST_F(AppCommandsTest, OnlyTheDropdownsReportHasThePrivilegedSample) {
  constexpr const char* path = ProTelemetryService::defaultHelperPath;
  machine.files.set(path, testing::FakeFile{});
  machine.children.answer(
      path, {"read-pro-telemetry-json"},
      {.output = R"({"isAvailable":true,"source":"powermetrics",)"
                 R"("sampledAt":"2026-01-31T09:30:05Z","sampleIntervalMilliseconds":1000,)"
                 R"("processes":[],"cpuPowerWatts":3.0})"});
  startApp();
  app->defaults().setProTelemetryEnabled(true);
  commands->startSession(QString{});
  advance(4.0);
  ASSERT_TRUE(app->sessionRecordingCoordinator().latestProTelemetry().value());
  commands->copyJSONReport();
  settle();
  EXPECT_THAT(QGuiApplication::clipboard()->text().toStdString(), HasSubstr("\"proTelemetry\""));
  commands->copyJSONReportOfNow();
  settle();
  EXPECT_THAT(QGuiApplication::clipboard()->text().toStdString(),
              Not(HasSubstr("\"proTelemetry\"")));
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
