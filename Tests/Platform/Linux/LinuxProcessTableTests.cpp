#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include "FakeTree.h"
#include "LinuxProcessTable.h"

namespace quorvex {
namespace {

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

/// A "stat" line: eleven fields between the name and the two tick counts.
std::string statLine(const std::string& name, const std::string& user, const std::string& system) {
  return "42 (" + name + ") S 1 42 42 0 -1 4194560 2537 0 11 0 " + user + " " + system +
         " 0 0 20 0 1 0 1234 22945792 3120\n";
}

class LinuxProcessTableTests : public ::testing::Test {
 protected:
  void process(const std::string& pid) {
    tree.file(pid + "/stat", statLine("tool", "250", "50"));
    tree.file(pid + "/comm", "tool\n");
    tree.file(pid + "/status",
              "Name:\ttool\nvoluntary_ctxt_switches:\t150\nnonvoluntary_ctxt_switches:\t7\n");
    tree.file(pid + "/io",
              "rchar: 900\nwchar: 800\nsyscr: 9\nsyscw: 8\nread_bytes: 4096\nwrite_bytes: 8192\n"
              "cancelled_write_bytes: 1\n");
  }
  std::vector<std::int32_t> processIDs(std::size_t capacity) {
    std::vector<std::int32_t> buffer(capacity);
    const std::int64_t bytes = table.listProcessIDs(buffer);
    EXPECT_GE(bytes, 0);
    buffer.resize(static_cast<std::size_t>(bytes) / sizeof(std::int32_t));
    return buffer;
  }
  std::string name(std::int32_t pid, std::size_t capacity = 1024) {
    std::vector<char> buffer(capacity, '?');
    const std::int64_t length = table.processName(pid, buffer);
    return length < 1 ? "none" : std::string(buffer.data(), static_cast<std::size_t>(length));
  }

  testing::FakeTree tree;
  LinuxProcessTable table{tree.root()};
  const std::uint64_t ticksPerSecond = static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK));
};

TEST_F(LinuxProcessTableTests, ProcessIDsAreTheNumberedFoldersInAscendingOrder) {
  for (const char* name : {"100", "9", "20", "self", "sys", "12x", "-3", "0", "2147483648"}) {
    tree.folder(name);
  }
  EXPECT_EQ(processIDs(10), (std::vector<std::int32_t>{9, 20, 100}));
}

TEST_F(LinuxProcessTableTests, AListThatDoesNotFitFillsTheBuffer) {
  for (const char* name : {"1", "2", "3"}) {
    tree.folder(name);
  }
  EXPECT_EQ(processIDs(2), (std::vector<std::int32_t>{1, 2}));
  EXPECT_EQ(processIDs(3), (std::vector<std::int32_t>{1, 2, 3}));
}

TEST_F(LinuxProcessTableTests, WithoutTheTreeTheListFails) {
  LinuxProcessTable missing{tree.path("missing")};
  std::array<std::int32_t, 4> buffer{};
  EXPECT_EQ(missing.listProcessIDs(buffer), 0);
}

TEST_F(LinuxProcessTableTests, ResourcesCarryTimeBytesAndWakeups) {
  process("42");
  const ProcessResources expected{
      .userTime = 250 * nanosecondsPerSecond / ticksPerSecond,
      .systemTime = 50 * nanosecondsPerSecond / ticksPerSecond,
      .idleWakeups = 0,
      .interruptWakeups = 150,
      .bytesRead = 4096,
      .bytesWritten = 8192,
      .energy = 0,
  };
  EXPECT_EQ(table.resources(42), expected);
}

TEST_F(LinuxProcessTableTests, AProcessThatIsGoneHasNoResources) {
  EXPECT_EQ(table.resources(42), std::nullopt);
  EXPECT_EQ(name(42), "none");
}

TEST_F(LinuxProcessTableTests, BlanksAndBracketsInANameDoNotMoveTheFields) {
  process("42");
  for (const char* name : {"", "a b", "1 2 3 4", ") S 0 0", "((x))", "a\nb"}) {
    tree.file("42/stat", statLine(name, "250", "50"));
    const auto resources = table.resources(42);
    ASSERT_TRUE(resources) << name;
    EXPECT_EQ(resources->userTime, 250 * nanosecondsPerSecond / ticksPerSecond) << name;
    EXPECT_EQ(resources->systemTime, 50 * nanosecondsPerSecond / ticksPerSecond) << name;
  }
}

TEST_F(LinuxProcessTableTests, AStatThatIsMissingUnreadableOrGarbledMakesTheProcessInaccessible) {
  const std::string tooMany = "18446744073709551615";
  for (const std::string& text : {std::string{}, std::string{"42 tool S"}, std::string{"42 (tool)"},
                                  std::string{"42 (tool) S 1 2 3\n"}, statLine("tool", "x", "50"),
                                  statLine("tool", "250", "-5"), statLine("tool", tooMany, "0"),
                                  statLine("tool", "0", tooMany)}) {
    process("42");
    tree.file("42/stat", text);
    EXPECT_EQ(table.resources(42), std::nullopt) << text;
  }
  tree.unreadable("42/stat");
  EXPECT_EQ(table.resources(42), std::nullopt);
}

TEST_F(LinuxProcessTableTests, UnreadableStorageCountersAreZeroAndLeaveTheRest) {
  process("42");
  const auto whole = table.resources(42);
  ASSERT_TRUE(whole);
  ProcessResources expected = *whole;
  expected.bytesRead = 0;
  expected.bytesWritten = 0;
  tree.unreadable("42/io");
  EXPECT_EQ(table.resources(42), expected);
  tree.remove("42/io");
  EXPECT_EQ(table.resources(42), expected);
  tree.file("42/io", "read_bytes: many\nwrite_bytes:\n");
  EXPECT_EQ(table.resources(42), expected);
}

TEST_F(LinuxProcessTableTests, EachStorageCounterIsReadOnItsOwn) {
  process("42");
  tree.file("42/io", "write_bytes: 8192\n");
  ASSERT_TRUE(table.resources(42));
  EXPECT_EQ(table.resources(42)->bytesRead, 0U);
  EXPECT_EQ(table.resources(42)->bytesWritten, 8192U);
  tree.file("42/io", "read_bytes: 4096");
  EXPECT_EQ(table.resources(42)->bytesRead, 4096U);
  EXPECT_EQ(table.resources(42)->bytesWritten, 0U);
}

TEST_F(LinuxProcessTableTests, UnreadableSwitchesAreNoWakeupsAndLeaveTheRest) {
  process("42");
  const auto whole = table.resources(42);
  ASSERT_TRUE(whole);
  ProcessResources expected = *whole;
  expected.interruptWakeups = 0;
  tree.remove("42/status");
  EXPECT_EQ(table.resources(42), expected);
  tree.file("42/status", "nonvoluntary_ctxt_switches:\t7\nvoluntary_ctxt_switches:\tmany\n");
  EXPECT_EQ(table.resources(42), expected);
}

TEST_F(LinuxProcessTableTests, TheNameIsTheKernelsWithoutItsNewline) {
  process("42");
  EXPECT_EQ(name(42), "tool");
  tree.file("42/comm", "a b\n\n");
  EXPECT_EQ(name(42), "a b\n");
}

TEST_F(LinuxProcessTableTests, ANameIsCutToItsBuffer) {
  process("42");
  EXPECT_EQ(name(42, 4), "tool");
  EXPECT_EQ(name(42, 2), "to");
  EXPECT_EQ(name(42, 0), "none");
}

TEST_F(LinuxProcessTableTests, ANulStandsBehindTheNameWhenThereIsRoom) {
  process("42");
  std::array<char, 6> buffer{'?', '?', '?', '?', '?', '?'};
  EXPECT_EQ(table.processName(42, buffer), 4);
  EXPECT_EQ(buffer, (std::array<char, 6>{'t', 'o', 'o', 'l', '\0', '?'}));
}

TEST_F(LinuxProcessTableTests, AnEmptyOrUnreadableNameIsNone) {
  process("42");
  tree.file("42/comm", "\n");
  EXPECT_EQ(name(42), "none");
  tree.unreadable("42/comm");
  EXPECT_EQ(name(42), "none");
}

}  // namespace
}  // namespace quorvex
