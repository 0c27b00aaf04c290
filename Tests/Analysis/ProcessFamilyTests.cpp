#include <string>
#include <vector>

#include "ProcessFamily.h"

namespace quorvex::PowerSessionAnalysis {
namespace {

struct FamilyCase {
  std::string_view family;
  std::vector<std::string_view> keywords;
};

const std::vector<FamilyCase>& table() {
  static const std::vector<FamilyCase> cases{
      {"monitoring overhead",
       {"quorvex", "powermetrics", "sysmond", "activity monitor", "activitymonitor"}},
      {"AI/dev assistants", {"codex", "claude", "cursor", "copilot", "chatgpt"}},
      {"dev/runtime/build",
       {"xcode", "swift", "clang", "node", "npm", "python", "ruby", "java", "cargo", "make"}},
      {"browser/WebKit", {"safari", "chrome", "firefox", "arc", "webkit", "browser"}},
      {"UI/windowing", {"windowserver", "dock", "systemuiserver"}},
      {"macOS security/indexing", {"mds", "spotlight", "trustd", "syspolicyd", "securityd"}},
      {"media/network", {"music", "coreaudiod", "av", "zoom", "slack", "discord", "networkd"}},
      {"database", {"postgres", "mysql", "redis", "sqlite", "mongo"}},
  };
  return cases;
}

TEST(ProcessFamily, IsFoundByEveryKeyword) {
  for (const FamilyCase& expected : table()) {
    for (const std::string_view keyword : expected.keywords) {
      EXPECT_EQ(rawValue(processFamily(keyword)), expected.family) << keyword;
    }
  }
}

TEST(ProcessFamily, IsFoundAnywhereInTheName) {
  for (const FamilyCase& expected : table()) {
    for (const std::string_view keyword : expected.keywords) {
      const std::string name = "0_" + std::string{keyword} + "_0";
      EXPECT_EQ(rawValue(processFamily(name)), expected.family) << name;
    }
  }
}

TEST(ProcessFamily, OfANameWithKeywordsOfTwoFamiliesIsTheEarlierOne) {
  for (std::size_t i = 1; i < table().size(); ++i) {
    const std::string name = std::string{table()[i].keywords.front()} + "+" +
                             std::string{table()[i - 1].keywords.front()};
    EXPECT_EQ(rawValue(processFamily(name)), table()[i - 1].family) << name;
  }
}

TEST(ProcessFamily, IgnoresCase) {
  EXPECT_EQ(processFamily("Quorvex Helper"), ProcessFamily::monitoringOverhead);
  EXPECT_EQ(processFamily("ACTIVITY MONITOR"), ProcessFamily::monitoringOverhead);
  EXPECT_EQ(processFamily("Dock"), ProcessFamily::windowing);
}

TEST(ProcessFamily, OfDockerIsThatOfTheDock) {
  EXPECT_EQ(processFamily("Docker"), ProcessFamily::windowing);
}

TEST(ProcessFamily, OfPython311IsDevelopment) {
  EXPECT_EQ(processFamily("python3.11"), ProcessFamily::developmentTools);
}

TEST(ProcessFamily, OfWebKitNetworkingIsTheBrowsers) {
  EXPECT_EQ(processFamily("com.apple.WebKit.Networking"), ProcessFamily::browser);
}

TEST(ProcessFamily, OfMdsyncIsIndexing) {
  EXPECT_EQ(processFamily("mdsync"), ProcessFamily::securityAndIndexing);
}

TEST(ProcessFamily, OfSearchIsTheBrowsersForTheArcInIt) {
  EXPECT_EQ(processFamily("search"), ProcessFamily::browser);
}

TEST(ProcessFamily, OfJavaagentIsDevelopmentBeforeMedia) {
  EXPECT_EQ(processFamily("javaagent"), ProcessFamily::developmentTools);
  EXPECT_EQ(processFamily("navigator"), ProcessFamily::mediaAndNetwork);
}

TEST(ProcessFamily, OfAnUnknownNameIsOther) {
  EXPECT_EQ(processFamily("kernel_task"), ProcessFamily::other);
  EXPECT_EQ(processFamily(""), ProcessFamily::other);
  EXPECT_EQ(rawValue(processFamily("launchd")), "other");
}

}  // namespace
}  // namespace quorvex::PowerSessionAnalysis
