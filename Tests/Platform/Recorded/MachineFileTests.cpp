#include <filesystem>
#include <fstream>

#include "Date.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using Pace = MachineFile::Pace;
using AtEnd = MachineFile::AtEnd;

std::string withTopLevel(const std::string& keys) {
  return "{" + keys + R"(, "frames": [{"at": 0}, {"at": 30}]})";
}

TEST(MachineFile, DefaultsOfTheTopLevel) {
  const MachineFile file = parsedFile(R"({"frames": [{"at": 0}, {"at": 12.5}]})");
  EXPECT_EQ(file.name, "");
  EXPECT_EQ(file.startedAt, std::nullopt);
  EXPECT_EQ(file.pace, Pace::real);
  EXPECT_EQ(file.atEnd, AtEnd::hold);
  EXPECT_EQ(file.duration, milliseconds{12500}) << "`at` of the last frame";
}

TEST(MachineFile, TopLevelKeysAreRead) {
  const MachineFile file = parsedFile(withTopLevel(
      R"("name": "A laptop", "startedAt": "2026-01-31T09:30:05.25Z", "pace": "instant",
         "atEnd": "repeat", "duration": 60)"));
  EXPECT_EQ(file.name, "A laptop");
  EXPECT_EQ(file.startedAt, Date{std::chrono::sys_days{std::chrono::January / 31 / 2026}} +
                                hours{9} + minutes{30} + milliseconds{5250});
  EXPECT_EQ(file.pace, Pace::instant);
  EXPECT_EQ(file.atEnd, AtEnd::repeat);
  EXPECT_EQ(file.duration, seconds{60});
  EXPECT_EQ(parsedFile(withTopLevel(R"("atEnd": "interrupt")")).atEnd, AtEnd::interrupt);
  EXPECT_EQ(parsedFile(withTopLevel(R"("atEnd": "hold", "pace": "real")")).pace, Pace::real);
}

TEST(MachineFile, KeysMayComeInAnyOrder) {
  const MachineFile file = parsedFile(
      R"({"frames": [{"registry": {"Voltage": 11900}, "at": 0},
                     {"registry": {"Voltage": 12100}, "at": 5}], "pace": "instant"})");
  EXPECT_EQ(*file.registry.value(seconds{0}), (Dictionary{{"Voltage", 11900}}));
  EXPECT_EQ(*file.registry.value(seconds{5}), (Dictionary{{"Voltage", 12100}}));
}

TEST(MachineFile, UnknownKeysAreRefused) {
  EXPECT_EQ(refusalOf(withTopLevel(R"("pacee": "real")")), "$.pacee: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("regstry": {})")), "$.frames[0].regstry: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("energyChannels": [{"value": 1, "unit": "nJ"}])")),
            "$.frames[0].energyChannels[0].unit: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("smc": {"FNum": {"type": "ui8 ", "bytes": "02", "x": 1}})")),
            "$.frames[0].smc.FNum.x: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("hid": [{"name": "A"}])")),
            "$.frames[0].hid[0].name: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("thermal": {"state": 0, "level": 1})")),
            "$.frames[0].thermal.level: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("interfaces": [{"index": 1, "mtu": 1500}])")),
            "$.frames[0].interfaces[0].mtu: unknown key");
  EXPECT_EQ(
      refusalOf(fileWithFrame(
          R"("interfaces": [{"index": 1, "bytesIn": {"start": 1, "perSecond": 1, "x": 0}}])")),
      "$.frames[0].interfaces[0].bytesIn.x: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("nettop": {"status": 0, "error": ""})")),
            "$.frames[0].nettop.error: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("processes": [{"pid": 1, "threads": 4}])")),
            "$.frames[0].processes[0].threads: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("helper": {"executable": true, "path": ""})")),
            "$.frames[0].helper.path: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(
                R"("helper": {"executable": true, "replies": {"a": {"status": 0, "x": 1}}})")),
            "$.frames[0].helper.replies.a.x: unknown key");
  EXPECT_EQ(refusalOf(fileWithFrame(R"("osascript": {"status": 0, "seconds": 1})")),
            "$.frames[0].osascript.seconds: unknown key");
}

TEST(MachineFile, TopLevelValuesOfTheWrongKindAreRefused) {
  EXPECT_EQ(refusalOf(withTopLevel(R"("name": null)")), "$.name: must be a string");
  EXPECT_EQ(refusalOf(withTopLevel(R"("pace": "fast")")), R"($.pace: must be "real" or "instant")");
  EXPECT_EQ(refusalOf(withTopLevel(R"("pace": 1)")), "$.pace: must be a string");
  EXPECT_EQ(refusalOf(withTopLevel(R"("atEnd": "stop")")),
            R"($.atEnd: must be "hold", "repeat" or "interrupt")");
  EXPECT_EQ(refusalOf(withTopLevel(R"("duration": "60")")), "$.duration: must be a number");
  EXPECT_EQ(refusalOf(withTopLevel(R"("duration": -1)")), "$.duration: must not be negative");
}

TEST(MachineFile, StartMustBeAnInstantInUTC) {
  const std::string problem =
      R"($.startedAt: must be an ISO 8601 date and time in UTC, as "2026-01-31T09:30:05Z")";
  for (const char* text : {"yesterday", "2026-01-31T09:30:05", "2026-01-31T09:30:05+00:00",
                           "2026-02-30T09:30:05Z", "2026-01-31T09:30:05ZZ", ""}) {
    EXPECT_EQ(refusalOf(withTopLevel("\"startedAt\": \"" + std::string{text} + "\"")), problem)
        << text;
  }
}

TEST(MachineFile, FramesAreRequiredAndNotEmpty) {
  EXPECT_EQ(refusalOf("{}"), "$.frames: missing");
  EXPECT_EQ(refusalOf(R"({"frames": []})"), "$.frames: must have at least one frame");
  EXPECT_EQ(refusalOf(R"({"frames": {}})"), "$.frames: must be an array");
  EXPECT_EQ(refusalOf(R"({"frames": [5]})"), "$.frames[0]: must be an object");
}

TEST(MachineFile, FirstFrameMustStandAtZero) {
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 1}]})"),
            "$.frames[0].at: must be 0 in the first frame");
  EXPECT_EQ(refusalOf(R"({"frames": [{}]})"), "$.frames[0].at: missing");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0.0}]})"), "(accepted)");
}

TEST(MachineFile, FramesMustAscend) {
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0}, {"at": 5}, {"at": 4}]})"),
            "$.frames[2].at: must be above the one of the frame before");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0}, {"at": 0}]})"),
            "$.frames[1].at: must be above the one of the frame before");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0}, {"registry": {}}]})"), "$.frames[1].at: missing");
}

TEST(MachineFile, AtAndSuspendedMustNotBeNull) {
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": null}]})"), "$.frames[0].at: must be a number");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0, "suspended": null}]})"),
            "$.frames[0].suspended: must be a number");
}

TEST(MachineFile, SuspendedMustBeAboveZero) {
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0, "suspended": 0}]})"),
            "$.frames[0].suspended: must be above 0");
  EXPECT_EQ(refusalOf(R"({"frames": [{"at": 0, "suspended": -5}]})"),
            "$.frames[0].suspended: must not be negative");
}

TEST(MachineFile, RepeatNeedsADuration) {
  EXPECT_EQ(refusalOf(R"({"atEnd": "repeat", "frames": [{"at": 0}]})"),
            R"($.duration: must be above 0 when "atEnd" is "repeat")");
  EXPECT_EQ(refusalOf(R"({"atEnd": "repeat", "duration": 0, "frames": [{"at": 0}, {"at": 1}]})"),
            R"($.duration: must be above 0 when "atEnd" is "repeat")");
  EXPECT_EQ(refusalOf(R"({"atEnd": "repeat", "duration": 1, "frames": [{"at": 0}]})"),
            "(accepted)");
}

TEST(MachineFile, KeyLeftOutKeepsTheValueOfTheFrameBefore) {
  const MachineFile file = parsedFile(
      R"({"frames": [{"at": 0, "registry": {"A": 1}}, {"at": 10}, {"at": 20, "registry": null},
                     {"at": 30, "registry": {"A": 2}}]})");
  EXPECT_EQ(*file.registry.value(seconds{10}), (Dictionary{{"A", 1}}));
  EXPECT_EQ(*file.registry.value(milliseconds{19999}), (Dictionary{{"A", 1}}));
  EXPECT_EQ(file.registry.value(seconds{20}), nullptr);
  EXPECT_EQ(*file.registry.value(seconds{30}), (Dictionary{{"A", 2}}));
}

TEST(MachineFile, KeyLeftOutOfTheFirstFrameIsNull) {
  const MachineFile file = parsedFile(R"({"frames": [{"at": 0}, {"at": 10, "registry": {}}]})");
  EXPECT_EQ(file.registry.value(seconds{9}), nullptr);
  EXPECT_EQ(*file.registry.value(seconds{10}), Dictionary{});
}

TEST(MachineFile, EveryCarriedKeyMayBeNull) {
  for (const std::string key :
       {"registry", "powerSources", "energyChannels", "smc", "hid", "thermal", "interfaces",
        "interfaceBuffer", "nettop", "processes", "helper", "osascript"}) {
    std::string field{'"'};
    field.append(key).append("\": ");
    EXPECT_EQ(refusalOf(fileWithFrame(field + "null")), "(accepted)") << key;
    EXPECT_NE(refusalOf(fileWithFrame(field + "7")), "(accepted)") << key;
  }
}

TEST(MachineFile, ErrorBeginsWithThePathOfTheFile) {
  const auto result = parseMachineFile("{}", "/some/machine.json");
  EXPECT_EQ(std::get<MachineFileError>(result),
            (MachineFileError{"/some/machine.json: $.frames: missing"}));
}

TEST(MachineFile, FileThatCannotBeReadSaysWhy) {
  EXPECT_EQ(std::get<MachineFileError>(loadMachineFile("/nowhere/machine.json")).message,
            "/nowhere/machine.json: cannot be read: No such file or directory");
  EXPECT_EQ(std::get<MachineFileError>(loadMachineFile("/")).message,
            "/: cannot be read: Is a directory");
}

TEST(MachineFile, FileIsReadFromDisk) {
  const auto path = std::filesystem::path{testing::TempDir()} / "machine-file-test.json";
  std::ofstream{path} << R"({"name": "On disk", "frames": [{"at": 0}]})";
  const auto result = loadMachineFile(path.string());
  std::filesystem::remove(path);
  EXPECT_EQ(std::get<MachineFile>(result).name, "On disk");
}

TEST(MachineFile, ShippedMachinesAreValid) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator{QUORVEX_MACHINES_FOLDER}) {
    if (entry.path().extension() != ".json") {
      continue;
    }
    ++count;
    const auto result = RecordedMachine::load(entry.path().string());
    const auto* error = std::get_if<MachineFileError>(&result);
    EXPECT_EQ(error, nullptr) << (error != nullptr ? error->message : "");
  }
  EXPECT_GE(count, 12U);
}

}  // namespace
}  // namespace quorvex
