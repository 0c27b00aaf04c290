#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeTree.h"
#include "LinuxLoginItem.h"
#include "SystemTree.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* entryName = "autostart/quorvex.desktop";

class LinuxLoginItemTests : public ::testing::Test {
 protected:
  [[nodiscard]] std::string entry() const {
    return system_tree::readFile(tree.path(entryName)).value_or("(none)");
  }
  /// The line of the entry that starts the program.
  [[nodiscard]] std::string execLine(const std::string& executable) const {
    LinuxLoginItem item{tree.root(), executable};
    EXPECT_EQ(item.registerItem(), std::nullopt);
    const std::string text = entry();
    const std::size_t start = text.find("Exec=");
    return text.substr(start, text.find('\n', start) - start);
  }

  testing::FakeTree tree;
  LinuxLoginItem port{tree.root(), "/opt/quorvex/quorvex"};
};

TEST_F(LinuxLoginItemTests, WithoutAnEntryNothingIsRegistered) {
  EXPECT_EQ(port.status(), LoginItemStatus::notRegistered);
}

TEST_F(LinuxLoginItemTests, RegisteringWritesAnEntryThatStartsTheProgram) {
  EXPECT_EQ(port.registerItem(), std::nullopt);
  EXPECT_EQ(port.status(), LoginItemStatus::enabled);
  EXPECT_EQ(entry(),
            "[Desktop Entry]\nType=Application\nName=Quorvex\nExec=\"/opt/quorvex/quorvex\"\n"
            "Terminal=false\n");
}

TEST_F(LinuxLoginItemTests, UnregisteringTakesTheEntryAway) {
  EXPECT_EQ(port.registerItem(), std::nullopt);
  EXPECT_EQ(port.unregisterItem(), std::nullopt);
  EXPECT_EQ(port.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(port.unregisterItem(), std::nullopt) << "what is not there is taken away already";
}

TEST_F(LinuxLoginItemTests, EntryThatTheUserSwitchedOffRequiresApproval) {
  for (const char* line : {"Hidden=true", "X-GNOME-Autostart-enabled=false"}) {
    tree.file(entryName, std::string{"[Desktop Entry]\nType=Application\n"} + line + "\n");
    EXPECT_EQ(port.status(), LoginItemStatus::requiresApproval) << line;
  }
  tree.file(entryName, "[Desktop Entry]\nHidden=false\nX-GNOME-Autostart-enabled=true");
  EXPECT_EQ(port.status(), LoginItemStatus::enabled);
}

TEST_F(LinuxLoginItemTests, EntryIsReadAsOtherProgramsMayWriteIt) {
  tree.file(entryName, "[Desktop Entry]\r\nType=Application\r\n Hidden = true \r\n");
  EXPECT_EQ(port.status(), LoginItemStatus::requiresApproval);
  tree.file(entryName, "[Desktop Entry]\nX-GNOME-Autostart-enabled =false\n");
  EXPECT_EQ(port.status(), LoginItemStatus::requiresApproval);
  tree.file(entryName,
            "[Desktop Entry]\nName=Quorvex\n#Hidden=true\n[Desktop Action New]\nHidden=true\n");
  EXPECT_EQ(port.status(), LoginItemStatus::enabled) << "what another group says";
}

TEST_F(LinuxLoginItemTests, RegisteringSwitchesOnWhatTheUserSwitchedOff) {
  tree.file(entryName, "[Desktop Entry]\nHidden=true\n");
  EXPECT_EQ(port.registerItem(), std::nullopt);
  EXPECT_EQ(port.status(), LoginItemStatus::enabled);
}

TEST_F(LinuxLoginItemTests, WithoutAKnownProgramThereIsNothingToRegister) {
  LinuxLoginItem item{tree.root(), std::nullopt};
  EXPECT_EQ(item.status(), LoginItemStatus::notFound);
  EXPECT_EQ(item.registerItem(), "The program's own file is not known.");
  EXPECT_EQ(entry(), "(none)");
}

TEST_F(LinuxLoginItemTests, EntryThatCannotBeReadIsUnknown) {
  tree.unreadable(entryName);
  EXPECT_EQ(port.status(), LoginItemStatus::unknown);
}

TEST_F(LinuxLoginItemTests, FolderThatCannotBeMadeIsToldInTheSystemsWords) {
  tree.file("autostart", "a file in the folder's place");
  EXPECT_EQ(port.registerItem(), "Not a directory");
}

TEST_F(LinuxLoginItemTests, EntryThatCannotBeWrittenIsTold) {
  tree.unreadable(entryName);
  EXPECT_THAT(port.registerItem(), ::testing::Optional(HasSubstr("cannot be written.")));
}

TEST_F(LinuxLoginItemTests, EntryThatCannotBeTakenAwayIsTold) {
  tree.file("autostart/quorvex.desktop/inside", "a folder in the entry's place");
  EXPECT_EQ(port.unregisterItem(), "Directory not empty");
}

TEST_F(LinuxLoginItemTests, PathIsQuotedAsDesktopEntriesWantIt) {
  EXPECT_EQ(execLine("/opt/my programs/quorvex"), "Exec=\"/opt/my programs/quorvex\"");
  EXPECT_EQ(execLine("/opt/100%/quorvex"), "Exec=\"/opt/100%%/quorvex\"");
  EXPECT_EQ(execLine(R"(/opt/a"b`c$d/quorvex)"), R"(Exec="/opt/a\\"b\\`c\\$d/quorvex")");
  EXPECT_EQ(execLine(R"(/opt/a\b/quorvex)"), R"(Exec="/opt/a\\\\b/quorvex")");
  EXPECT_THAT(execLine("/opt/a\nb/quorvex"), StartsWith(R"(Exec="/opt/a\nb/quorvex")"));
}

}  // namespace
}  // namespace quorvex
