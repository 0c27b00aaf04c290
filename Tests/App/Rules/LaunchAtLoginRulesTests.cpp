#include <gtest/gtest.h>

#include "LaunchAtLoginRules.h"

namespace quorvex {
namespace {

LaunchAtLoginToggle toggleAt(LoginItemStatus status) {
  return launchAtLoginToggle(status, launchAtLoginTitle, true, std::nullopt);
}

TEST(LaunchAtLoginRulesTests, EnabledIsOn) {
  const LaunchAtLoginToggle toggle = toggleAt(LoginItemStatus::enabled);
  EXPECT_TRUE(toggle.isEnabled);
  EXPECT_EQ(toggle.help, "Quorvex will open automatically when you log in.");
}

TEST(LaunchAtLoginRulesTests, RequiresApprovalIsOnAndSendsToSystemSettings) {
  const LaunchAtLoginToggle toggle = toggleAt(LoginItemStatus::requiresApproval);
  EXPECT_TRUE(toggle.isEnabled);
  EXPECT_EQ(toggle.help, "Enable Quorvex in System Settings > Login Items.");
}

TEST(LaunchAtLoginRulesTests, NotRegisteredIsOff) {
  const LaunchAtLoginToggle toggle = toggleAt(LoginItemStatus::notRegistered);
  EXPECT_FALSE(toggle.isEnabled);
  EXPECT_EQ(toggle.help, "Quorvex will not open automatically.");
}

TEST(LaunchAtLoginRulesTests, NotFoundIsOff) {
  const LaunchAtLoginToggle toggle = toggleAt(LoginItemStatus::notFound);
  EXPECT_FALSE(toggle.isEnabled);
  EXPECT_EQ(toggle.help, "Install Quorvex.app before enabling launch at login.");
}

TEST(LaunchAtLoginRulesTests, AnyOtherStatusIsOffAndUnavailable) {
  const LaunchAtLoginToggle toggle = toggleAt(LoginItemStatus::unknown);
  EXPECT_FALSE(toggle.isEnabled);
  EXPECT_EQ(toggle.help, "Launch-at-login status is unavailable.");
}

TEST(LaunchAtLoginRulesTests, StatusAnOperatingSystemMayInventIsUnavailable) {
  EXPECT_EQ(LaunchAtLoginRules::statusText(static_cast<LoginItemStatus>(42)),
            "Launch-at-login status is unavailable.");
}

TEST(LaunchAtLoginRulesTests, CarriesItsTitleAndSymbol) {
  const LaunchAtLoginToggle toggle =
      launchAtLoginToggle(LoginItemStatus::enabled, "Launch at Login", false, std::nullopt);
  EXPECT_EQ(toggle.title, "Launch at Login");
  EXPECT_EQ(toggle.symbol, "power");
}

TEST(LaunchAtLoginRulesTests, CaptionRepeatsTheStatusOnlyWhereWanted) {
  EXPECT_EQ(launchAtLoginToggle(LoginItemStatus::enabled, "", true, std::nullopt).caption,
            "Quorvex will open automatically when you log in.");
  EXPECT_EQ(launchAtLoginToggle(LoginItemStatus::enabled, "", false, std::nullopt).caption,
            std::nullopt);
}

TEST(LaunchAtLoginRulesTests, FailedChangeIsToldInRedAndShowsTheTrueStatus) {
  const LaunchAtLoginToggle toggle =
      launchAtLoginToggle(LoginItemStatus::notRegistered, "", false, "Operation not permitted");
  EXPECT_FALSE(toggle.isEnabled);
  EXPECT_EQ(toggle.errorMessage, (ColoredText{"Operation not permitted", ColorName::red}));
}

TEST(LaunchAtLoginRulesTests, SuccessfulChangeHasNoErrorMessage) {
  EXPECT_EQ(toggleAt(LoginItemStatus::enabled).errorMessage, std::nullopt);
}

}  // namespace
}  // namespace quorvex
