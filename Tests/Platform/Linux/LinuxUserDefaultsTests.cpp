#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "ConfigurationFolder.h"
#include "FakeTree.h"
#include "LinuxUserDefaults.h"
#include "SystemTree.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;

constexpr const char* fileName = "quorvex/defaults.json";

class LinuxUserDefaultsTests : public ::testing::Test {
 protected:
  [[nodiscard]] std::string file() const {
    return system_tree::readFile(tree.path(fileName)).value_or("(none)");
  }

  testing::FakeTree tree;
  LinuxUserDefaults port{tree.root()};
};

TEST_F(LinuxUserDefaultsTests, WithoutAFileNothingIsSet) {
  EXPECT_EQ(port.value("refreshInterval"), std::nullopt);
  EXPECT_EQ(file(), "(none)") << "reading makes none";
}

TEST_F(LinuxUserDefaultsTests, ValuesAreThereForTheNextProcess) {
  port.setValue("refreshInterval", 2.5);
  port.setValue("showBattery", false);
  port.setValue("count", std::int64_t{-3});
  port.setValue("menuGraphMode", std::string{"power"});
  LinuxUserDefaults next{tree.root()};
  EXPECT_EQ(next.value("refreshInterval"), UserDefaultsValue{2.5});
  EXPECT_EQ(next.value("showBattery"), UserDefaultsValue{false});
  EXPECT_EQ(next.value("count"), UserDefaultsValue{std::int64_t{-3}});
  EXPECT_EQ(next.value("menuGraphMode"), UserDefaultsValue{std::string{"power"}});
}

TEST_F(LinuxUserDefaultsTests, FileIsOneJSONObject) {
  port.setValue("b", true);
  port.setValue("a", 0.5);
  EXPECT_EQ(file(), "{\n  \"a\" : 0.5,\n  \"b\" : true\n}\n");
  EXPECT_THAT(system_tree::folderNames(tree.path("quorvex")), ElementsAre("defaults.json"));
}

TEST_F(LinuxUserDefaultsTests, WholeFloatComesBackAsTheSameNumber) {
  port.setValue("refreshInterval", 2.0);
  EXPECT_EQ(port.number("refreshInterval"), 2.0);
}

TEST_F(LinuxUserDefaultsTests, TextWithDigitsIsNoNumber) {
  tree.file(fileName, R"({"refreshInterval": "5", "showBattery": "false"})");
  EXPECT_EQ(port.number("refreshInterval"), std::nullopt);
  EXPECT_EQ(port.text("refreshInterval"), "5");
  EXPECT_TRUE(port.boolean("showBattery", true));
}

TEST_F(LinuxUserDefaultsTests, RemovedValueIsGoneAndTheOthersStay) {
  port.setValue("a", true);
  port.setValue("b", true);
  port.removeValue("a");
  EXPECT_EQ(port.value("a"), std::nullopt);
  EXPECT_TRUE(port.boolean("b", false));
  port.removeValue("never set");
}

TEST_F(LinuxUserDefaultsTests, BrokenFileCountsAsEmptyAndIsReplaced) {
  for (const char* text : {"", "{", "[1]", "null"}) {
    tree.file(fileName, text);
    EXPECT_EQ(port.value("a"), std::nullopt) << text;
    port.setValue("a", std::int64_t{1});
    EXPECT_EQ(port.number("a"), 1.0) << text;
  }
}

TEST_F(LinuxUserDefaultsTests, ValuesOfOtherTypesAreNone) {
  tree.file(fileName,
            R"({"list": [1], "object": {}, "nothing": null, "huge": 18446744073709551615})");
  EXPECT_EQ(port.value("list"), std::nullopt);
  EXPECT_EQ(port.value("object"), std::nullopt);
  EXPECT_EQ(port.value("nothing"), std::nullopt);
  EXPECT_EQ(port.value("huge"), UserDefaultsValue{18446744073709551616.0});
}

TEST_F(LinuxUserDefaultsTests, NumberThatJSONCannotCarryIsNotStored) {
  port.setValue("a", true);
  port.setValue("b", std::nan(""));
  EXPECT_EQ(port.value("b"), std::nullopt);
  EXPECT_TRUE(port.boolean("a", false));
}

TEST_F(LinuxUserDefaultsTests, FolderThatCannotBeWrittenLosesTheValueQuietly) {
  tree.file("quorvex", "a file in the folder's place");
  port.setValue("a", true);
  EXPECT_EQ(port.value("a"), std::nullopt);
}

TEST_F(LinuxUserDefaultsTests, ConfigurationFolderFollowsTheXDGRules) {
  ASSERT_EQ(setenv("HOME", "/home/ada", 1), 0);
  ASSERT_EQ(setenv("XDG_CONFIG_HOME", "/somewhere", 1), 0);
  EXPECT_EQ(configurationFolder(), "/somewhere");
  ASSERT_EQ(setenv("XDG_CONFIG_HOME", "relative", 1), 0);
  EXPECT_EQ(configurationFolder(), "/home/ada/.config");
  ASSERT_EQ(unsetenv("XDG_CONFIG_HOME"), 0);
  EXPECT_EQ(configurationFolder(), "/home/ada/.config");
}

}  // namespace
}  // namespace quorvex
