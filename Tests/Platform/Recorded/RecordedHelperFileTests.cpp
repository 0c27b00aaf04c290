#include "RecordedHelperFile.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

const std::string helperPath{RecordedHelperFile::helperPath};
constexpr const char* osascriptPath = "/usr/bin/osascript";

constexpr const char* usableHelper =
    R"("helper": {"mode": "4755", "owner": 0, "group": 20, "executable": true})";

std::string usableHelperAnd(std::string_view field) {
  std::string fields = usableHelper;
  fields += ", ";
  fields += field;
  return fields;
}

std::optional<std::int64_t> ownerOf(RecordedMachine& machine) {
  const auto attributes = machine.fileAttributes().attributes(helperPath);
  return attributes ? attributes->ownerID : std::nullopt;
}

void runInstaller(RecordedMachine& machine) {
  const auto launched = machine.childProcesses().launch(osascriptPath, {});
  ASSERT_TRUE(std::holds_alternative<std::unique_ptr<ChildProcess>>(launched));
}

TEST(RecordedHelperFile, NullIsNoFile) {
  const auto machine = machineWithFrame(R"("helper": null)");
  EXPECT_FALSE(machine->fileAttributes().fileExists(helperPath));
  EXPECT_FALSE(machine->fileAttributes().attributes(helperPath).has_value());
  EXPECT_FALSE(machine->fileAttributes().isExecutable(helperPath));
}

TEST(RecordedHelperFile, AttributesAreTheFrames) {
  const auto machine = machineWithFrame(usableHelper);
  EXPECT_TRUE(machine->fileAttributes().fileExists(helperPath));
  EXPECT_TRUE(machine->fileAttributes().isExecutable(helperPath));
  const auto attributes = machine->fileAttributes().attributes(helperPath);
  ASSERT_TRUE(attributes);
  EXPECT_EQ(attributes->permissions, 04755U);
  EXPECT_EQ(attributes->ownerID, 0);
  EXPECT_EQ(attributes->groupID, 20);
}

TEST(RecordedHelperFile, EachAttributeMayBeUnreadable) {
  const auto without = [](const std::string& keys) {
    return *machineWithFrame(R"("helper": {"executable": true)" + keys + "}")
                ->fileAttributes()
                .attributes(helperPath);
  };
  EXPECT_EQ(without(R"(, "mode": null, "owner": 0, "group": 0)").permissions, std::nullopt);
  EXPECT_EQ(without(R"(, "mode": "755", "owner": null, "group": 0)").ownerID, std::nullopt);
  EXPECT_EQ(without(R"(, "mode": "755", "owner": 0, "group": null)").groupID, std::nullopt);
  EXPECT_EQ(without(R"(, "mode": null, "owner": 0, "group": 0)").ownerID, 0);
}

TEST(RecordedHelperFile, FileMayBeNotExecutable) {
  const auto machine = machineWithFrame(R"("helper": {"mode": "644", "executable": false})");
  EXPECT_TRUE(machine->fileAttributes().fileExists(helperPath));
  EXPECT_FALSE(machine->fileAttributes().isExecutable(helperPath));
}

TEST(RecordedHelperFile, MachineHasNoOtherFile) {
  const auto machine = machineWithFrame(usableHelper);
  EXPECT_FALSE(machine->fileAttributes().fileExists("/bin/sh"));
  EXPECT_FALSE(machine->fileAttributes().attributes("/bin/sh").has_value());
  EXPECT_FALSE(machine->fileAttributes().isExecutable("/bin/sh"));
}

constexpr const char* installer =
    R"("osascript": {"status": 0, "installs": {"owner": 7, "executable": true}})";

TEST(RecordedHelperFile, InstallationReplacesTheFile) {
  const auto machine = machineWithFrame(installer);
  EXPECT_FALSE(machine->fileAttributes().fileExists(helperPath));
  runInstaller(*machine);
  EXPECT_EQ(ownerOf(*machine), 7);
  machine->clock().sleep(1e6);
  EXPECT_EQ(ownerOf(*machine), 7) << "from then on";
}

TEST(RecordedHelperFile, InstallationTakesThePlaceOfTheFramesFile) {
  const auto machine = machineWithFrame(usableHelperAnd(installer));
  EXPECT_EQ(ownerOf(*machine), 0);
  runInstaller(*machine);
  EXPECT_EQ(ownerOf(*machine), 7);
}

TEST(RecordedHelperFile, FailedInstallationChangesNothing) {
  const auto machine = machineWithFrame(
      R"("osascript": {"status": 1, "installs": {"owner": 7, "executable": true}})");
  runInstaller(*machine);
  EXPECT_FALSE(machine->fileAttributes().fileExists(helperPath));
}

TEST(RecordedHelperFile, RunThatInstallsNothingChangesNothing) {
  const auto machine = machineWithFrame(usableHelperAnd(R"("osascript": {"status": 0})"));
  runInstaller(*machine);
  EXPECT_EQ(ownerOf(*machine), 0);
}

TEST(RecordedHelperFile, LaterFrameWithAFileEndsTheInstallation) {
  const auto machine =
      machineOf(R"({"pace": "instant", "frames": [{"at": 0, )" + std::string{installer} +
                R"(}, {"at": 10, "registry": {}},
                                     {"at": 20, "helper": {"owner": 8, "executable": true}}]})");
  machine->clock().sleep(5);
  runInstaller(*machine);
  machine->clock().sleep(6);
  EXPECT_EQ(ownerOf(*machine), 7) << "a frame that leaves the file out says nothing about it";
  machine->clock().sleep(9);
  EXPECT_EQ(ownerOf(*machine), 8);
}

TEST(RecordedHelperFile, LaterFrameWithoutAFileRemovesIt) {
  const auto machine = machineOf(R"({"pace": "instant", "frames": [{"at": 0, )" +
                                 std::string{installer} + R"(}, {"at": 10, "helper": null}]})");
  runInstaller(*machine);
  machine->clock().sleep(10);
  EXPECT_FALSE(machine->fileAttributes().fileExists(helperPath));
}

TEST(RecordedHelperFile, FrameOfTheSameMomentComesBeforeTheInstallation) {
  const auto machine = machineOf(R"({"pace": "instant", "frames": [{"at": 0, )" +
                                 std::string{installer} + R"(}, {"at": 10, "helper": null}]})");
  machine->clock().sleep(10);
  runInstaller(*machine);
  EXPECT_EQ(ownerOf(*machine), 7);
}

TEST(RecordedHelperFile, InstallationEndsWithTheNextPassThatCarriesAFile) {
  const auto machine = machineOf(
      R"({"pace": "instant", "atEnd": "repeat", "duration": 30, "frames": [{"at": 0, )" +
      std::string{installer} + R"(}, {"at": 10, "helper": {"owner": 8, "executable": true}}]})");
  machine->clock().sleep(20);
  runInstaller(*machine);
  EXPECT_EQ(ownerOf(*machine), 7);
  machine->clock().sleep(15);
  EXPECT_EQ(ownerOf(*machine), 7) << "5 s into the second pass no frame has carried one yet";
  machine->clock().sleep(5);
  EXPECT_EQ(ownerOf(*machine), 8);
  machine->clock().sleep(25);
  EXPECT_EQ(ownerOf(*machine), std::nullopt) << "what was replaced does not come back";
}

TEST(RecordedHelperFile, ReplacedInstallationStaysReplacedEvenUnasked) {
  const auto machine = machineOf(
      R"({"pace": "instant", "atEnd": "repeat", "duration": 30, "frames": [{"at": 0, )" +
      std::string{installer} + R"(}, {"at": 10, "helper": {"owner": 8, "executable": true}}]})");
  runInstaller(*machine);
  machine->clock().sleep(35);
  EXPECT_EQ(ownerOf(*machine), std::nullopt) << "the frame at 10 s passed while nobody asked";
}

}  // namespace
}  // namespace quorvex
