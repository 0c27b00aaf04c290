#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeChildProcesses.h"
#include "FakeFileAttributes.h"
#include "PrivilegedSMCHelperService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeChild;
using testing::FakeChildProcesses;
using testing::FakeFile;
using testing::FakeFileAttributes;
using ::testing::IsEmpty;

constexpr const char* path = PrivilegedSMCHelperService::defaultHelperPath;

class PrivilegedSMCHelperServiceTests : public ::testing::Test {
 protected:
  void childDoes(FakeChild child) {
    children_.answer(path, {"read-temperatures-json"}, std::move(child));
  }
  [[nodiscard]] PrivilegedSMCHelperService service() { return {files_, children_}; }

  FakeFileAttributes files_;
  FakeChildProcesses children_;
};

TEST_F(PrivilegedSMCHelperServiceTests, DefaultPathIsWhereTheToolIsInstalled) {
  EXPECT_STREQ(path, "/Library/PrivilegedHelperTools/com.quorvex.helper");
}

TEST_F(PrivilegedSMCHelperServiceTests, AvailableOnlyWhenThisUserMayExecuteTheFile) {
  EXPECT_FALSE(service().isAvailable());
  files_.set(path, FakeFile{.executable = false});
  EXPECT_FALSE(service().isAvailable());
  files_.set(path, FakeFile{});
  EXPECT_TRUE(service().isAvailable());
}

TEST_F(PrivilegedSMCHelperServiceTests, OwnerAndModeAreNotAsked) {
  files_.set(path, FakeFile{.attributes = FileAttributeRecord{0755, 501, 20}});
  childDoes({.output = R"([{"key":"k","name":"n","temperature":40}])"});
  EXPECT_THAT(service().readTemperatures(), ElementsAre(TemperatureSensor{"k", "n", 40.0}));
}

TEST_F(PrivilegedSMCHelperServiceTests, FileThatIsNotExecutableIsNeverLaunched) {
  files_.set(path, FakeFile{.executable = false});
  childDoes({.output = R"([{"key":"k","name":"n","temperature":40}])"});
  EXPECT_THAT(service().readTemperatures(), IsEmpty());
  EXPECT_THAT(children_.launches(), IsEmpty());
}

TEST_F(PrivilegedSMCHelperServiceTests, SensorsComeInTheToolsOrder) {
  files_.set(path, FakeFile{});
  childDoes({.output = R"([{"key":"b","name":"Z","temperature":40},)"
                       R"({"key":"a","name":"A","temperature":50.5}])"});
  EXPECT_THAT(service().readTemperatures(),
              ElementsAre(TemperatureSensor{"b", "Z", 40.0}, TemperatureSensor{"a", "A", 50.5}));
}

TEST_F(PrivilegedSMCHelperServiceTests, OutputIsReadToItsEndBeforeTheUnlimitedWait) {
  files_.set(path, FakeFile{});
  childDoes({.output = "[]", .seconds = 86400.0});
  EXPECT_THAT(service().readTemperatures(), IsEmpty());
  EXPECT_THAT(children_.log(),
              ElementsAre(std::string{"launch "} + path + " read-temperatures-json",
                          "readOutputToEnd", "waitForExit", "exitStatus", "destroyed"));
}

TEST_F(PrivilegedSMCHelperServiceTests, FailedLaunchIsAnEmptyList) {
  files_.set(path, FakeFile{});
  children_.fail(path, {"read-temperatures-json"}, "no such file");
  EXPECT_THAT(service().readTemperatures(), IsEmpty());
}

TEST_F(PrivilegedSMCHelperServiceTests, FailedExitIsAnEmptyListWhateverWasWritten) {
  files_.set(path, FakeFile{});
  childDoes({.output = R"([{"key":"k","name":"n","temperature":40}])", .exitStatus = 1});
  EXPECT_THAT(service().readTemperatures(), IsEmpty());
}

TEST_F(PrivilegedSMCHelperServiceTests, UndecodableReplyIsAnEmptyList) {
  files_.set(path, FakeFile{});
  for (const char* output : {"", "garbage", "{}", "[{\"key\":\"k\"}]",
                             "[{\"key\":\"k\",\"name\":\"n\",\"temperature\":40}", "\xff\xfe[]"}) {
    FakeChildProcesses children;
    children.answerAll({.output = output});
    EXPECT_THAT(PrivilegedSMCHelperService(files_, children).readTemperatures(), IsEmpty())
        << output;
  }
}

TEST_F(PrivilegedSMCHelperServiceTests, AnotherPathCanBeGiven) {
  files_.set("/opt/tool", FakeFile{});
  children_.answer("/opt/tool", {"read-temperatures-json"},
                   {.output = R"([{"key":"k","name":"n","temperature":40}])"});
  EXPECT_THAT(PrivilegedSMCHelperService(files_, children_, "/opt/tool").readTemperatures(),
              ElementsAre(TemperatureSensor{"k", "n", 40.0}));
}

}  // namespace
}  // namespace quorvex
