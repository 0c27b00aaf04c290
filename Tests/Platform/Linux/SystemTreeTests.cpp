#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "FakeTree.h"
#include "SystemTree.h"

namespace quorvex::system_tree {
namespace {

using ::testing::ElementsAre;

TEST(SystemTreeTests, AFileIsReadAsItStandsHoweverLong) {
  const quorvex::testing::FakeTree tree;
  const std::string text = " a\n" + std::string(10000, 'b') + "\n\n";
  tree.file("file", text);
  EXPECT_EQ(readFile(tree.path("file")), text);
}

TEST(SystemTreeTests, AMissingOrUnreadableFileIsNone) {
  const quorvex::testing::FakeTree tree;
  tree.unreadable("file");
  EXPECT_EQ(readFile(tree.path("file")), std::nullopt);
  EXPECT_EQ(readFile(tree.path("missing")), std::nullopt);
  EXPECT_EQ(readWord(tree.path("missing")), std::nullopt);
  EXPECT_EQ(readInteger(tree.path("missing")), std::nullopt);
  EXPECT_EQ(readCounter(tree.path("missing")), std::nullopt);
}

TEST(SystemTreeTests, AWordLosesTheWhiteSpaceAtItsEndsOnly) {
  const quorvex::testing::FakeTree tree;
  tree.file("file", "\t Package id 0 \n");
  EXPECT_EQ(readWord(tree.path("file")), "Package id 0");
}

TEST(SystemTreeTests, ABlankFileHasNoWord) {
  const quorvex::testing::FakeTree tree;
  tree.file("empty", "");
  tree.file("blank", " \n\t\n");
  EXPECT_EQ(readWord(tree.path("empty")), std::nullopt);
  EXPECT_EQ(readWord(tree.path("blank")), std::nullopt);
}

TEST(SystemTreeTests, AnIntegerIsTheWholeText) {
  EXPECT_EQ(parseInteger("0"), 0);
  EXPECT_EQ(parseInteger("-12"), -12);
  EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  for (const char* text :
       {"", " 1", "1 ", "+1", "1.5", "1e3", "0x10", "12mA", "-", "one", "9223372036854775808"}) {
    EXPECT_EQ(parseInteger(text), std::nullopt) << text;
  }
}

TEST(SystemTreeTests, ACounterIsUnsignedAndTakesAll64Bits) {
  EXPECT_EQ(parseCounter("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  for (const char* text : {"", "-1", "18446744073709551616", "1,000"}) {
    EXPECT_EQ(parseCounter(text), std::nullopt) << text;
  }
}

TEST(SystemTreeTests, AFilesNumberMayStandBetweenWhiteSpace) {
  const quorvex::testing::FakeTree tree;
  tree.file("number", " -42\n");
  tree.file("counter", "18446744073709551615\n");
  EXPECT_EQ(readInteger(tree.path("number")), -42);
  EXPECT_EQ(readCounter(tree.path("counter")), std::numeric_limits<std::uint64_t>::max());
}

TEST(SystemTreeTests, NumberedNamesComeInTheOrderOfTheirNumbers) {
  const quorvex::testing::FakeTree tree;
  tree.folder("hwmon10");
  tree.folder("hwmon2");
  tree.folder("hwmon1");
  tree.file("a", "");
  EXPECT_THAT(folderNames(tree.root()), ElementsAre("a", "hwmon1", "hwmon2", "hwmon10"));
}

TEST(SystemTreeTests, AnEmptyFolderIsNotAMissingOne) {
  const quorvex::testing::FakeTree tree;
  tree.folder("empty");
  tree.file("file", "");
  EXPECT_EQ(listFolder(tree.path("empty")), std::vector<std::string>{});
  EXPECT_EQ(listFolder(tree.path("missing")), std::nullopt);
  EXPECT_EQ(listFolder(tree.path("file")), std::nullopt);
  EXPECT_TRUE(folderNames(tree.path("missing")).empty());
}

}  // namespace
}  // namespace quorvex::system_tree
