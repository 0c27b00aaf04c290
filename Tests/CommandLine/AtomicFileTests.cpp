#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "AtomicFile.h"
#include "TemporaryFolder.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

class AtomicFile : public ::testing::Test {
 protected:
  static std::string contentOf(const fs::path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
  }
  [[nodiscard]] auto entryCount() const {
    return std::distance(fs::directory_iterator{folder}, fs::directory_iterator{});
  }

  testing::TemporaryFolder temporary;
  const fs::path& folder = temporary.path();
};

TEST_F(AtomicFile, ANewFileHasTheContentAndNothingLiesBesideIt) {
  EXPECT_EQ(writeAtomically(folder / "f", "text\n"), std::nullopt);
  EXPECT_EQ(contentOf(folder / "f"), "text\n");
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(AtomicFile, AnOldFileIsReplacedAndKeepsItsPermissions) {
  std::ofstream{folder / "f"} << "a longer old text";
  chmod((folder / "f").c_str(), 0640);
  EXPECT_EQ(writeAtomically(folder / "f", "new"), std::nullopt);
  EXPECT_EQ(contentOf(folder / "f"), "new");
  EXPECT_EQ(fs::status(folder / "f").permissions(), fs::perms{0640});
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(AtomicFile, ALinkGoesOnLeadingToTheFile) {
  std::ofstream{folder / "f"} << "old";
  fs::create_symlink("f", folder / "link");
  EXPECT_EQ(writeAtomically(folder / "link", "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(contentOf(folder / "f"), "new");
}

TEST_F(AtomicFile, AMissingFolderIsToldWithThePath) {
  const fs::path file = folder / "none" / "f";
  EXPECT_EQ(writeAtomically(file, "new"), file.string() + ": No such file or directory");
}

TEST_F(AtomicFile, AFolderIsNotReplaced) {
  fs::create_directory(folder / "d");
  EXPECT_EQ(writeAtomically(folder / "d", "new"), (folder / "d").string() + ": Is a directory");
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(AtomicFile, ADeviceIsWrittenToAndNotReplaced) {
  EXPECT_EQ(writeAtomically("/dev/null", "new"), std::nullopt);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(writeAtomically("/dev/full", "new"), "/dev/full: No space left on device");
}

TEST_F(AtomicFile, ATildeIsTheHomeFolder) {
  const char* const home = std::getenv("HOME");
  const std::string before = home != nullptr ? home : "/";
  setenv("HOME", "/home/someone", 1);
  EXPECT_EQ(expandingTilde("~/a/b"), "/home/someone/a/b");
  EXPECT_EQ(expandingTilde("~"), "/home/someone");
  EXPECT_EQ(expandingTilde("a/~/b"), "a/~/b");
  EXPECT_EQ(expandingTilde("~no-such-user/a"), "~no-such-user/a");
  EXPECT_EQ(expandingTilde("~root/a"), std::string{getpwnam("root")->pw_dir} + "/a");
  setenv("HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace quorvex
