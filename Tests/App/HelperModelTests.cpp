#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "AppFixture.h"
#include "HelperModel.h"
#include "InstallScript.h"
#include "ProTelemetryService.h"

// The dashboard's controls of the helper tool, over a tool that exists in the machine of fakes
// only.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeChild;
using testing::FakeFile;
using testing::FakeLaunch;

constexpr const char* path = ProTelemetryService::defaultHelperPath;
constexpr const char* goodStatus =
    R"({"isInstalled":true,"isExecutable":true,"isSetuidRoot":true,"ownerUserID":0,"groupID":0,)"
    R"("installedVersion":"0.14.0","supportsProTelemetry":true,"path":"/x"})";
constexpr const char* goodSample =
    R"({"isAvailable":true,"source":"powermetrics","sampledAt":"2026-01-31T09:30:05Z",)"
    R"("sampleIntervalMilliseconds":1000,"processes":[],"cpuPowerWatts":3.0})";

class HelperModelTest : public testing::AppTest {
 protected:
  HelperModelTest() { startApp(); }
  ~HelperModelTest() override { model.reset(); }

  void makeModel() {
    model = std::make_unique<HelperModel>(*app, QString::fromStdString(home.path().string()));
    model->setShown(true);
    settle();
  }
  void toolIsThere(FakeChild sample) {
    machine.files.set(path, FakeFile{});
    machine.children.answer(path, {"status-json"}, {.output = goodStatus});
    machine.children.answer(path, {"read-pro-telemetry-json"}, std::move(sample));
  }
  void toolIsUsable() { toolIsThere({.output = goodSample}); }
  void everySampleFails() { toolIsThere({.error = "powermetrics failed", .exitStatus = 1}); }
  /// The tool lies beside the program; its installation ends as `child` does.
  void installationEnds(FakeChild child) {
    const std::string source = (home.path() / ProTelemetryService::bundledHelperName).string();
    std::ofstream{source} << "tool";
    machine.children.answer("/usr/bin/osascript", {"-e", helperInstallScript(source, path)},
                            std::move(child));
  }

  [[nodiscard]] QVariant shown(const char* name) const {
    return model->content().value(QString::fromLatin1(name));
  }
  [[nodiscard]] QString message() const {
    return shown("message").toMap().value(QStringLiteral("text")).toString();
  }
  [[nodiscard]] std::ptrdiff_t sampleCount() const {
    return std::ranges::count(machine.children.launches(),
                              FakeLaunch{path, {"read-pro-telemetry-json"}});
  }
  [[nodiscard]] bool isOn() const { return app->defaults().proTelemetryEnabled(); }

  std::unique_ptr<HelperModel> model;
};

TEST_F(HelperModelTest, UntilTheStatusIsReadItIsBeingChecked) {
  toolIsUsable();
  model = std::make_unique<HelperModel>(*app, QString{});
  EXPECT_EQ(shown("title"), QStringLiteral("Checking helper..."));
  EXPECT_EQ(shown("canSwitch"), false);
  model->setShown(true);
  settle();
  EXPECT_EQ(shown("title"), QStringLiteral("Helper installed"));
  EXPECT_EQ(shown("detail"), QStringLiteral("v0.14.0 at ") + QLatin1String(path));
  EXPECT_EQ(shown("canSwitch"), true);
}

TEST_F(HelperModelTest, AToolWithTheWrongOwnerTurnsTheSettingOffAndDisablesTheSwitch) {
  toolIsUsable();
  machine.files.set(path, FakeFile{.attributes = FileAttributeRecord{04755, 501, 0}});
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  EXPECT_FALSE(isOn());
  EXPECT_EQ(shown("title"), QStringLiteral("Helper needs reinstall"));
  EXPECT_EQ(shown("canSwitch"), false);
}

TEST_F(HelperModelTest, AUsableToolLeavesTheSettingOn) {
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  EXPECT_TRUE(isOn());
}

TEST_F(HelperModelTest, WithoutTheToolAmongTheResourcesNothingIsInstalled) {
  makeModel();
  model->install();
  settle();
  EXPECT_EQ(message(), QStringLiteral("Bundled helper is missing from this app build. Rebuild "
                                      "Quorvex.app before installing."));
  EXPECT_THAT(machine.children.launches(), ElementsAre());
}

TEST_F(HelperModelTest, DuringTheInstallationTheButtonsRestAndThePasswordIsAnnounced) {
  installationEnds({.exitStatus = 1});
  makeModel();
  model->install();
  QCoreApplication::processEvents();
  EXPECT_EQ(shown("installButton").toMap().value(QStringLiteral("title")),
            QStringLiteral("Installing..."));
  EXPECT_EQ(shown("canInstall"), false);
  EXPECT_EQ(shown("canRefresh"), false);
  EXPECT_EQ(message(), QStringLiteral("macOS will ask for an administrator password."));
  settle();
  EXPECT_EQ(shown("canInstall"), true);
}

TEST_F(HelperModelTest, AFailedInstallTurnsTheSettingOff) {
  toolIsUsable();
  installationEnds({.error = "User canceled.", .exitStatus = 1});
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  ASSERT_TRUE(isOn());
  model->install();
  settle();
  EXPECT_FALSE(isOn());
  EXPECT_EQ(message(), QStringLiteral("User canceled."));
}

TEST_F(HelperModelTest, ASuccessfulInstallTurnsTheFeatureOn) {
  installationEnds({});
  makeModel();
  ASSERT_EQ(shown("title"), QStringLiteral("Helper not installed"));
  toolIsUsable();
  model->install();
  settle();
  EXPECT_TRUE(isOn());
  EXPECT_EQ(message(), QStringLiteral("Pro Telemetry helper installed"));
  EXPECT_EQ(shown("title"), QStringLiteral("Helper installed"));
  EXPECT_EQ(sampleCount(), 1) << "the loop began";
}

TEST_F(HelperModelTest, ASampleIsTakenAtOnceAndThenEveryTenSeconds) {
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  EXPECT_EQ(sampleCount(), 1);
  EXPECT_TRUE(shown("lastSample").toString().startsWith(QStringLiteral("Last sample ")));
  advance(9.9);
  EXPECT_EQ(sampleCount(), 1);
  advance(0.2);
  EXPECT_EQ(sampleCount(), 2);
  advance(20.0);
  EXPECT_EQ(sampleCount(), 4);
}

TEST_F(HelperModelTest, TurningTheSettingOffEndsTheLoopAndOnBeginsANewOne) {
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  app->defaults().setProTelemetryEnabled(false);
  advance(30.0);
  EXPECT_EQ(sampleCount(), 1);
  EXPECT_FALSE(shown("lastSample").isValid());
  app->defaults().setProTelemetryEnabled(true);
  settle();
  EXPECT_EQ(sampleCount(), 2);
}

TEST_F(HelperModelTest, TheLoopEndsWithTheWindow) {
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  model.reset();
  advance(30.0);
  EXPECT_EQ(sampleCount(), 1);
}

TEST_F(HelperModelTest, TheLoopGoesOnWhileTheOtherTabIsSeen) {
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  model->setShown(false);
  advance(10.1);
  EXPECT_EQ(sampleCount(), 2);
}

TEST_F(HelperModelTest, RefreshReadsTheStatusAndSamplesOnlyWhenTheSettingIsOn) {
  toolIsUsable();
  makeModel();
  machine.files.remove(path);
  model->refreshStatus();
  settle();
  EXPECT_EQ(shown("title"), QStringLiteral("Helper not installed"));
  EXPECT_EQ(sampleCount(), 0);
  toolIsUsable();
  app->defaults().setProTelemetryEnabled(true);
  settle();
  model->refreshStatus();
  settle();
  EXPECT_EQ(sampleCount(), 2) << "the loop's and the button's";
}

TEST_F(HelperModelTest, ASamplesErrorIsTold) {
  everySampleFails();
  app->defaults().setProTelemetryEnabled(true);
  makeModel();
  EXPECT_EQ(message(), QStringLiteral("powermetrics failed"));
  EXPECT_EQ(shown("message").toMap().value(QStringLiteral("color")), QStringLiteral("orange"));
}

TEST_F(HelperModelTest, AnErrorFromBeforeTheWindowOpenedIsTold) {
  everySampleFails();
  app->defaults().setProTelemetryEnabled(true);
  commands->startSession(QString{});
  advance(2.0);
  ASSERT_EQ(app->sessionRecordingCoordinator().lastMessage().value(), "powermetrics failed");
  toolIsUsable();
  makeModel();
  EXPECT_EQ(message(), QStringLiteral("powermetrics failed"));
}

}  // namespace
}  // namespace quorvex
