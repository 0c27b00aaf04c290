#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "AppFixture.h"

// The app's start: what it makes of the settings and of the store.

namespace quorvex {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

using QuorvexAppTest = testing::AppTest;

TEST_F(QuorvexAppTest, TheIntervalIsNormalisedFromTheStoredOne) {
  const std::pair<UserDefaultsValue, double> cases[] = {
      {0.26, 0.5}, {1.74, 1.5}, {500.0, 60.0}, {std::string{"5"}, 2.0}, {std::int64_t{3}, 3.0}};
  for (const auto& [stored, interval] : cases) {
    machine.defaults.values["refreshInterval"] = stored;
    startApp();
    EXPECT_EQ(app->engine().interval().value(), interval);
  }
}

TEST_F(QuorvexAppTest, WithoutSettingsTheEnginePollsEveryTwoSecondsAndKeepsSixtyReadings) {
  startApp();
  EXPECT_EQ(app->engine().interval().value(), 2.0);
  EXPECT_EQ(app->engine().historyLimit(), 60);
  EXPECT_FALSE(app->engine().lowImpactMode().value());
  EXPECT_EQ(app->sessionRecorder().processSampleInterval(), 10.0);
  EXPECT_EQ(app->sessionRecordingCoordinator().proTelemetrySampleInterval(), 10.0);
}

TEST_F(QuorvexAppTest, LowImpactModeIsTakenFromTheSettings) {
  machine.defaults.values["lowImpactMode"] = true;
  startApp();
  EXPECT_TRUE(app->engine().lowImpactMode().value());
}

TEST_F(QuorvexAppTest, TheStoreIsTheUsersFile) {
  startApp();
  const auto file = home.path() / "Quorvex" / "QuorvexSessions.store";
  EXPECT_EQ(app->storeFile(), file);
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(QuorvexAppTest, AStoreThatCannotBeOpenedGivesWayToMemorySilently) {
  std::filesystem::create_directories(home.path() / "Quorvex");
  std::ofstream(home.path() / "Quorvex" / "QuorvexSessions.store") << "no store at all";
  startApp();
  EXPECT_EQ(app->storeFile(), std::nullopt);
  EXPECT_EQ(app->sessionRecorder().lastError().value(), std::nullopt);
  commands->startSession(QStringLiteral("Lost at exit"));
  settle();
  EXPECT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  startApp();
  EXPECT_THAT(app->sessionRecorder().sessions(), IsEmpty());
}

TEST_F(QuorvexAppTest, NothingIsReadBeforeSomethingIsShownOrRecorded) {
  startApp();
  advance(60.0);
  EXPECT_FALSE(app->engine().isRunning().value());
  EXPECT_THAT(app->engine().history().value(), IsEmpty());
}

TEST_F(QuorvexAppTest, ASessionThatWasActiveGoesOnAtTheNextStart) {
  startApp();
  commands->startSession(QStringLiteral("Overnight"));
  advance(4.0);
  const auto before = app->sessionRecorder().activeSummary().value().sampleCount;
  EXPECT_GT(before, 0);
  startApp();
  ASSERT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_EQ(app->sessionRecorder().activeSession().value()->title(), "Overnight");
  EXPECT_TRUE(app->sessionRecordingCoordinator().isSampling().value());
  advance(4.0);
  EXPECT_GT(app->sessionRecorder().activeSummary().value().sampleCount, before);
}

TEST_F(QuorvexAppTest, ASessionSamplesAtTheIntervalOfTheEngine) {
  const std::pair<UserDefaultsValue, double> cases[] = {
      {5.0, 5.0}, {500.0, 60.0}, {std::string{"5"}, 2.0}};
  for (const auto& [stored, interval] : cases) {
    machine.defaults.values["refreshInterval"] = stored;
    startApp();
    commands->startSession(QString{});
    ASSERT_NE(app->sessionRecorder().activeSession().value(), nullptr);
    EXPECT_EQ(app->sessionRecorder().activeSession().value()->sampleInterval(), interval);
    EXPECT_EQ(app->engine().interval().value(), interval);
    commands->stopSession();
  }
}

}  // namespace
}  // namespace quorvex
