#include <gtest/gtest.h>

#include "HelperControls.h"
#include "HelperFlow.h"
#include "RulesSamples.h"

namespace quorvex {
namespace {

constexpr const char* path = "/Library/PrivilegedHelperTools/com.quorvex.helper";

/// A tool that can be used.
HelperStatus readyStatus() {
  return {.isInstalled = true,
          .isExecutable = true,
          .isSetuidRoot = true,
          .ownerUserID = 0,
          .groupID = 0,
          .installedVersion = "0.14.0",
          .supportsProTelemetry = true,
          .path = path};
}

HelperStatus wrongOwner() {
  HelperStatus status = readyStatus();
  status.ownerUserID = 501;
  status.isSetuidRoot = false;
  return status;
}

HelperStatus notInstalled() {
  return {.path = path, .error = "Helper is not installed"};
}

using HelperControlsTests = samples::TimedTest;

TEST_F(HelperControlsTests, BeforeTheStatusIsKnownItIsBeingChecked) {
  const HelperControls controls = helperControls({}, times());
  EXPECT_EQ(controls.groupTitle, "Pro Telemetry");
  EXPECT_EQ(controls.title, "Checking helper...");
  EXPECT_EQ(controls.detail,
            "Pro Telemetry uses a root-owned helper for privileged powermetrics samples.");
  EXPECT_FALSE(controls.canSwitch);
}

TEST_F(HelperControlsTests, AReadyToolTellsItsVersionAndCanBeSwitchedOn) {
  const HelperControls controls = helperControls({.status = readyStatus()}, times());
  EXPECT_EQ(controls.title, "Helper installed");
  EXPECT_EQ(controls.detail, std::string{"v0.14.0 at "} + path);
  EXPECT_TRUE(controls.isReady);
  EXPECT_TRUE(controls.canSwitch);
  EXPECT_EQ(controls.enabledSwitch.title, "Enabled");
  EXPECT_EQ(controls.enabledSwitch.key, "proTelemetryEnabled");
}

TEST_F(HelperControlsTests, AMissingVersionIsUnknown) {
  HelperStatus status = readyStatus();
  status.installedVersion.reset();
  EXPECT_EQ(helperStatusDetail(status), "vunknown at " + std::string(path));
}

TEST_F(HelperControlsTests, ReadyNeedsEveryConditionButNoGroup) {
  EXPECT_FALSE(isHelperReady(std::nullopt));
  const auto readyWithout = [](auto change) {
    HelperStatus status = readyStatus();
    change(status);
    return isHelperReady(status);
  };
  EXPECT_FALSE(readyWithout([](HelperStatus& status) { status.isInstalled = false; }));
  EXPECT_FALSE(readyWithout([](HelperStatus& status) { status.isExecutable = false; }));
  EXPECT_FALSE(readyWithout([](HelperStatus& status) { status.isSetuidRoot = false; }));
  EXPECT_FALSE(readyWithout([](HelperStatus& status) { status.ownerUserID = 501; }));
  EXPECT_FALSE(readyWithout([](HelperStatus& status) { status.supportsProTelemetry = false; }));
  EXPECT_TRUE(readyWithout([](HelperStatus& status) { status.groupID = 20; }));
}

TEST_F(HelperControlsTests, AToolWithTheWrongOwnerNeedsReinstallAndDisablesTheSwitch) {
  const HelperControlsState state =
      HelperFlow::statusRead({.proTelemetryEnabled = true}, wrongOwner());
  EXPECT_FALSE(state.proTelemetryEnabled);
  const HelperControls controls = helperControls(state, times());
  EXPECT_EQ(controls.title, "Helper needs reinstall");
  EXPECT_EQ(controls.detail, std::string{"Expected root-owned setuid helper at "} + path);
  EXPECT_FALSE(controls.canSwitch);
  EXPECT_FALSE(controls.enabledSwitch.isOn);
}

TEST_F(HelperControlsTests, AnUnusableToolTellsItsOwnErrorFirst) {
  HelperStatus status = wrongOwner();
  status.error = "Helper exited with status 1";
  EXPECT_EQ(helperStatusDetail(status), "Helper exited with status 1");
}

TEST_F(HelperControlsTests, AToolThatIsNotThereIsNotInstalled) {
  EXPECT_EQ(helperStatusTitle(notInstalled()), "Helper not installed");
  EXPECT_EQ(helperStatusDetail(notInstalled()), "Helper is not installed");
  HelperStatus silent = notInstalled();
  silent.error.reset();
  EXPECT_EQ(helperStatusDetail(silent),
            std::string{"Expected root-owned setuid helper at "} + path);
}

TEST_F(HelperControlsTests, TheButtonsRestDuringAnInstallation) {
  const HelperControls idle = helperControls({}, times());
  EXPECT_EQ(idle.installButton.title, "Install Helper");
  EXPECT_TRUE(idle.canInstall);
  EXPECT_EQ(idle.refreshButton.title, "Refresh");
  EXPECT_TRUE(idle.canRefresh);
  const HelperControls busy = helperControls({.isInstalling = true}, times());
  EXPECT_EQ(busy.installButton.title, "Installing...");
  EXPECT_FALSE(busy.canInstall);
  EXPECT_FALSE(busy.canRefresh);
}

TEST_F(HelperControlsTests, TheLastSampleIsToldWhileTheSettingIsOn) {
  HelperControlsState state{.status = readyStatus(),
                            .proTelemetryEnabled = true,
                            .lastSampledAt = samples::at(14 * 3600 + 5 * 60)};
  EXPECT_EQ(helperControls(state, times()).lastSample, "Last sample 14:05");
  state.proTelemetryEnabled = false;
  EXPECT_EQ(helperControls(state, times()).lastSample, std::nullopt);
  state.proTelemetryEnabled = true;
  state.lastSampledAt.reset();
  EXPECT_EQ(helperControls(state, times()).lastSample, std::nullopt);
}

TEST_F(HelperControlsTests, AMessageIsOrangeWhenItTellsOfAFailureInAnyCase) {
  EXPECT_EQ(helperMessageColor("Session export failed: disk full"), ColorName::orange);
  EXPECT_EQ(helperMessageColor("FAILED"), ColorName::orange);
  EXPECT_EQ(helperMessageColor("Pro Telemetry helper installed"), ColorName::secondary);
  EXPECT_EQ(helperControls({}, times()).message, std::nullopt);
  EXPECT_EQ(helperControls({.message = "Done"}, times()).message,
            (ColoredText{"Done", ColorName::secondary}));
}

TEST(HelperFlow, AReadyToolLeavesTheSettingAsItIs) {
  EXPECT_TRUE(
      HelperFlow::statusRead({.proTelemetryEnabled = true}, readyStatus()).proTelemetryEnabled);
  EXPECT_FALSE(HelperFlow::statusRead({}, readyStatus()).proTelemetryEnabled);
}

TEST(HelperFlow, AnAppWithoutTheToolSaysSoAndInstallsNothing) {
  const HelperControlsState state = HelperFlow::bundledHelperMissing({});
  EXPECT_FALSE(state.isInstalling);
  EXPECT_EQ(state.message,
            "Bundled helper is missing from this app build. Rebuild Quorvex.app before "
            "installing.");
}

TEST(HelperFlow, AnInstallationAnnouncesThePassword) {
  const HelperControlsState state = HelperFlow::installing({});
  EXPECT_TRUE(state.isInstalling);
  EXPECT_EQ(state.message, "macOS will ask for an administrator password.");
}

TEST(HelperFlow, ASuccessfulInstallTurnsTheFeatureOn) {
  const HelperControlsState state = HelperFlow::installed(
      HelperFlow::installing({}), {.succeeded = true, .message = "Pro Telemetry helper installed"},
      readyStatus());
  EXPECT_FALSE(state.isInstalling);
  EXPECT_TRUE(state.proTelemetryEnabled);
  EXPECT_EQ(state.message, "Pro Telemetry helper installed");
  EXPECT_EQ(state.status, readyStatus());
}

TEST(HelperFlow, AFailedInstallTurnsTheSettingOff) {
  const HelperControlsState state =
      HelperFlow::installed(HelperFlow::installing({.proTelemetryEnabled = true}),
                            {.succeeded = false, .message = "User canceled."}, readyStatus());
  EXPECT_FALSE(state.isInstalling);
  EXPECT_FALSE(state.proTelemetryEnabled);
  EXPECT_EQ(state.message, "User canceled.");
}

TEST(HelperFlow, ASamplesFailureIsToldAndASuccessChangesNothing) {
  const HelperControlsState told{.message = "before"};
  EXPECT_EQ(HelperFlow::sampled(told, std::nullopt), told);
  EXPECT_EQ(HelperFlow::sampled(told, ProTelemetrySnapshot{.isAvailable = true}), told);
  EXPECT_EQ(HelperFlow::sampled(told, ProTelemetrySnapshot{.error = "timed out"}).message,
            "timed out");
}

TEST(HelperFlow, AFailedExportIsToldInTheSamePlace) {
  EXPECT_EQ(HelperFlow::exportFailed({}, "disk full").message, "Session export failed: disk full");
}

}  // namespace
}  // namespace quorvex
