#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "FakeTree.h"
#include "PosixFileAttributes.h"

namespace quorvex {
namespace {

class PosixFileAttributesTests : public ::testing::Test {
 protected:
  std::string toolWithMode(mode_t mode) {
    tree.file("tool", "x");
    EXPECT_EQ(chmod(tree.path("tool").c_str(), mode), 0);
    return tree.path("tool");
  }

  testing::FakeTree tree;
  PosixFileAttributes files;
};

TEST_F(PosixFileAttributesTests, AMissingFileHasNothing) {
  const std::string path = tree.path("tool");
  EXPECT_FALSE(files.fileExists(path));
  EXPECT_EQ(files.attributes(path), std::nullopt);
  EXPECT_FALSE(files.isExecutable(path));
}

TEST_F(PosixFileAttributesTests, PermissionsCarryTheSetUserBitAndNoFileType) {
  const auto record = files.attributes(toolWithMode(04755));
  ASSERT_TRUE(record);
  EXPECT_EQ(record->permissions, 04755U);
}

TEST_F(PosixFileAttributesTests, OwnerAndGroupAreTheFiles) {
  const auto record = files.attributes(toolWithMode(0644));
  ASSERT_TRUE(record);
  EXPECT_EQ(record->ownerID, std::int64_t{geteuid()});
  EXPECT_EQ(record->groupID, std::int64_t{getegid()});
}

TEST_F(PosixFileAttributesTests, AFileWithoutAnyExecuteBitIsNotExecutable) {
  const std::string path = toolWithMode(0644);
  EXPECT_TRUE(files.fileExists(path));
  EXPECT_FALSE(files.isExecutable(path));
}

TEST_F(PosixFileAttributesTests, AFileWithTheOwnersExecuteBitIsExecutable) {
  EXPECT_TRUE(files.isExecutable(toolWithMode(0700)));
}

TEST_F(PosixFileAttributesTests, ALinkToASetUserToolIsNotOneItself) {
  const std::string tool = toolWithMode(04755);
  const std::string link = tree.path("link");
  std::filesystem::create_symlink(tool, link);
  EXPECT_TRUE(files.fileExists(link));
  EXPECT_TRUE(files.isExecutable(link));
  const auto record = files.attributes(link);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->permissions.value_or(0) & 04000U, 0U);
}

TEST_F(PosixFileAttributesTests, PathsAreLookedUpBelowTheRootWhenThereIsOne) {
  static_cast<void>(toolWithMode(0700));
  PosixFileAttributes below{tree.root()};
  EXPECT_TRUE(below.fileExists("/tool"));
  EXPECT_TRUE(below.isExecutable("/tool"));
  EXPECT_EQ(below.attributes("/tool")->permissions, 0700U);
  EXPECT_FALSE(below.fileExists(tree.path("tool")));
}

TEST_F(PosixFileAttributesTests, ALinkToNothingDoesNotExist) {
  std::filesystem::create_symlink(tree.path("nothing"), tree.path("link"));
  EXPECT_FALSE(files.fileExists(tree.path("link")));
}

}  // namespace
}  // namespace quorvex
