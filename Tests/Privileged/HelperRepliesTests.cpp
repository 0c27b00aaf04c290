#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>

#include "HelperReplies.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

constexpr const char* fullStatus =
    R"({"isInstalled":true,"isExecutable":true,"isSetuidRoot":true,"ownerUserID":0,"groupID":20,)"
    R"("installedVersion":"0.14.0","supportsProTelemetry":true,"path":"\/x\/y","error":"none"})";

constexpr const char* fullSnapshot =
    R"({"isAvailable":true,"source":"powermetrics","sampledAt":"2026-01-31T09:30:05Z",)"
    R"("sampleIntervalMilliseconds":1000,"processes":[{"pid":-1,"name":"ALL_TASKS",)"
    R"("energyImpact":12.5,"cpuTimePercent":3,"wakeupsPerSecond":0.5,"diskBytesPerSecond":4096,)"
    R"("isAggregate":true}],"cpuPowerWatts":3.0,"gpuPowerWatts":0.25,"anePowerWatts":0,)"
    R"("rawSampleSummary":"cpu, gpu, ane","error":"odd"})";

std::string without(std::string json, const std::string& part) {
  const auto at = json.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return at == std::string::npos ? json : json.erase(at, part.size());
}

std::string with(std::string json, const std::string& part, const std::string& replacement) {
  const auto at = json.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return at == std::string::npos ? json : json.replace(at, part.size(), replacement);
}

std::string snapshotProblem(const std::string& json) {
  const auto reply = decodeProTelemetrySnapshot(json);
  return reply ? "decoded" : reply.error().description;
}

std::string statusProblem(const std::string& json) {
  const auto reply = decodeHelperStatus(json);
  return reply ? "decoded" : reply.error().description;
}

TEST(HelperReplies, StatusReadsEveryField) {
  const auto status = decodeHelperStatus(fullStatus);
  ASSERT_TRUE(status);
  EXPECT_EQ(*status, (HelperStatus{.isInstalled = true,
                                   .isExecutable = true,
                                   .isSetuidRoot = true,
                                   .ownerUserID = 0,
                                   .groupID = 20,
                                   .installedVersion = "0.14.0",
                                   .supportsProTelemetry = true,
                                   .path = "/x/y",
                                   .error = "none"}));
}

TEST(HelperReplies, StatusWithoutPathIsUndecodableAsAWhole) {
  EXPECT_EQ(statusProblem(without(fullStatus, R"(,"path":"\/x\/y")")), "$.path: missing");
}

TEST(HelperReplies, StatusNeedsEachRequiredKey) {
  for (const std::string key : {"isInstalled", "isExecutable", "isSetuidRoot", "ownerUserID",
                                "groupID", "supportsProTelemetry", "path"}) {
    EXPECT_EQ(statusProblem(with(fullStatus, '"' + key + '"', "\"other\"")),
              "$." + key + ": missing");
  }
}

TEST(HelperReplies, StatusOptionalFieldsMayBeMissingOrNull) {
  for (const std::string& json :
       {without(without(fullStatus, R"("installedVersion":"0.14.0",)"), R"(,"error":"none")"),
        with(with(fullStatus, R"("0.14.0")", "null"), R"("none")", "null")}) {
    const auto reply = decodeHelperStatus(json);
    ASSERT_TRUE(reply) << json;
    EXPECT_EQ(reply->installedVersion, std::nullopt);
    EXPECT_EQ(reply->error, std::nullopt);
    EXPECT_TRUE(reply->supportsProTelemetry);
  }
}

TEST(HelperReplies, StatusRefusesValuesOfOtherTypes) {
  EXPECT_EQ(statusProblem(with(fullStatus, R"("isInstalled":true)", R"("isInstalled":1)")),
            "$.isInstalled: not a Boolean");
  EXPECT_EQ(statusProblem(with(fullStatus, R"("isInstalled":true)", R"("isInstalled":null)")),
            "$.isInstalled: not a Boolean");
  EXPECT_EQ(statusProblem(with(fullStatus, R"("groupID":20)", R"("groupID":"20")")),
            "$.groupID: not a number");
  EXPECT_EQ(statusProblem(with(fullStatus, R"("groupID":20)", R"("groupID":20.5)")),
            "$.groupID: not an integer of 64 bits");
  EXPECT_EQ(statusProblem(with(fullStatus, R"("0.14.0")", "14")),
            "$.installedVersion: not a string");
}

TEST(HelperReplies, KeysAreCaseSensitive) {
  EXPECT_EQ(statusProblem(with(fullStatus, R"("path")", R"("Path")")), "$.path: missing");
}

TEST(HelperReplies, UnknownKeysAreIgnored) {
  EXPECT_EQ(statusProblem(with(fullStatus, "{", R"({"extra":{"deep":[1,null]},)")), "decoded");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"({"pid")", R"({"user":"root","pid")")), "decoded");
}

TEST(HelperReplies, SnapshotReadsEveryField) {
  using namespace std::chrono;
  const Date sampledAt = sys_days{year{2026} / 1 / 31} + 9h + 30min + 5s;
  const auto snapshot = decodeProTelemetrySnapshot(fullSnapshot);
  ASSERT_TRUE(snapshot);
  EXPECT_EQ(*snapshot, (ProTelemetrySnapshot{.isAvailable = true,
                                             .source = "powermetrics",
                                             .sampledAt = sampledAt,
                                             .sampleIntervalMilliseconds = 1000,
                                             .processes = {{.pid = -1,
                                                            .name = "ALL_TASKS",
                                                            .energyImpact = 12.5,
                                                            .cpuTimePercent = 3.0,
                                                            .wakeupsPerSecond = 0.5,
                                                            .diskBytesPerSecond = 4096.0,
                                                            .isAggregate = true}},
                                             .cpuPowerWatts = 3.0,
                                             .gpuPowerWatts = 0.25,
                                             .anePowerWatts = 0.0,
                                             .rawSampleSummary = "cpu, gpu, ane",
                                             .error = "odd"}));
}

TEST(HelperReplies, SnapshotNeedsEachRequiredKey) {
  for (const std::string key :
       {"isAvailable", "source", "sampledAt", "sampleIntervalMilliseconds", "processes"}) {
    EXPECT_EQ(snapshotProblem(with(fullSnapshot, '"' + key + '"', "\"other\"")),
              "$." + key + ": missing");
  }
  for (const std::string key : {"pid", "name", "isAggregate"}) {
    EXPECT_EQ(snapshotProblem(with(fullSnapshot, '"' + key + '"', "\"other\"")),
              "$.processes[0]." + key + ": missing");
  }
}

TEST(HelperReplies, SnapshotWithOnlyTheRequiredKeysHasNothingOptional) {
  const auto snapshot = decodeProTelemetrySnapshot(
      R"({"isAvailable":true,"source":"s","sampledAt":"2026-01-31T09:30:05Z",)"
      R"("sampleIntervalMilliseconds":0,"processes":[{"pid":1,"name":"a","isAggregate":false}]})");
  ASSERT_TRUE(snapshot);
  EXPECT_EQ(snapshot->cpuPowerWatts, std::nullopt);
  EXPECT_EQ(snapshot->gpuPowerWatts, std::nullopt);
  EXPECT_EQ(snapshot->anePowerWatts, std::nullopt);
  EXPECT_EQ(snapshot->rawSampleSummary, std::nullopt);
  EXPECT_EQ(snapshot->error, std::nullopt);
  EXPECT_THAT(snapshot->processes, ElementsAre(ProProcessEnergy{.pid = 1, .name = "a"}));
}

TEST(HelperReplies, SnapshotTimeThatIsNotISO8601IsAProblem) {
  for (const char* value : {R"("yesterday")", R"("2026-01-31 09:30:05")",
                            R"("2026-02-30T09:30:05Z")", "791544605", "null", R"("")"}) {
    EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("2026-01-31T09:30:05Z")", value)),
              "$.sampledAt: not an ISO 8601 date")
        << value;
  }
}

TEST(HelperReplies, ProcessIDHasThirtyTwoBits) {
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("pid":-1)", R"("pid":2147483647)")), "decoded");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("pid":-1)", R"("pid":2147483648)")),
            "$.processes[0].pid: not an integer of 32 bits");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("pid":-1)", R"("pid":-2147483649)")),
            "$.processes[0].pid: not an integer of 32 bits");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("pid":-1)", R"("pid":18446744073709551615)")),
            "$.processes[0].pid: not an integer of 32 bits");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("pid":-1)", R"("pid":7.0)")), "decoded");
}

TEST(HelperReplies, ProblemNamesTheRowOfAList) {
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("isAggregate":true}])",
                                 R"("isAggregate":true},{"pid":2,"name":"b"}])")),
            "$.processes[1].isAggregate: missing");
  EXPECT_EQ(
      snapshotProblem(with(fullSnapshot, R"("energyImpact":12.5)", R"("energyImpact":"high")")),
      "$.processes[0].energyImpact: not a number");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, R"("processes":[{)", R"("processes":[7,{)")),
            "$.processes[0]: not an object");
}

TEST(HelperReplies, DocumentsOfAnotherFormAreProblems) {
  EXPECT_EQ(snapshotProblem("[]"), "$: not an object");
  EXPECT_EQ(snapshotProblem("7"), "$: not an object");
  EXPECT_EQ(snapshotProblem("not json"), "$: not an object");
  EXPECT_EQ(snapshotProblem(""), "$: not valid JSON");
  EXPECT_EQ(snapshotProblem("{\"a\":\"\xff\"}"), "$: not valid JSON");
  EXPECT_EQ(snapshotProblem(with(fullSnapshot, ":3.0", ":1e999")), "$.cpuPowerWatts: not a number");
}

TEST(HelperReplies, AnythingBehindTheDocumentIsAProblem) {
  EXPECT_EQ(statusProblem(std::string{fullStatus} + " \r\n\t"), "decoded");
  for (const char* more : {"{}", "]", ",", "x", " null", "}"}) {
    EXPECT_NE(statusProblem(std::string{fullStatus} + more), "decoded") << more;
    EXPECT_EQ(decodeTemperatureReply(std::string{"[]"} + more), std::nullopt) << more;
  }
}

TEST(HelperReplies, EveryTruncationOfAReplyIsAProblem) {
  const std::string status = fullStatus;
  const std::string snapshot = fullSnapshot;
  for (std::size_t length = 0; length < status.size(); ++length) {
    EXPECT_NE(statusProblem(status.substr(0, length)), "decoded") << length;
  }
  for (std::size_t length = 0; length < snapshot.size(); ++length) {
    EXPECT_NE(snapshotProblem(snapshot.substr(0, length)), "decoded") << length;
  }
}

TEST(HelperReplies, JSONThatIsBrokenInAnIgnoredPlaceIsAProblem) {
  EXPECT_EQ(statusProblem(with(fullStatus, "{", R"({"extra":[1,}],)")), "$: not valid JSON");
}

TEST(HelperReplies, ReplyAboveTheSizeLimitIsAProblem) {
  std::string reply(maximumReplySize - 2, ' ');
  reply.append("[]");
  EXPECT_THAT(decodeTemperatureReply(reply), Optional(IsEmpty()));
  reply.push_back(' ');
  EXPECT_EQ(decodeTemperatureReply(reply), std::nullopt);
  EXPECT_EQ(snapshotProblem(reply), "$: longer than 16777216 bytes");
}

TEST(HelperReplies, DeepNestingIsAProblemAndNoCrash) {
  const std::string deep(100'000, '[');
  EXPECT_NE(snapshotProblem(deep), "decoded");
  EXPECT_NE(snapshotProblem(with(fullSnapshot, "{", R"({"extra":)" + deep)), "decoded");
  EXPECT_EQ(decodeTemperatureReply(deep + std::string(100'000, ']')), std::nullopt);
}

TEST(HelperReplies, TemperaturesKeepTheOrderOfTheReply) {
  EXPECT_THAT(decodeTemperatureReply(R"([{"key":"Tp01","name":"CPU \u00e4","temperature":47},)"
                                     R"({"temperature":-3.5,"name":"","key":"TA0P"}])"),
              Optional(ElementsAre(TemperatureSensor{"Tp01", "CPU ä", 47.0},
                                   TemperatureSensor{"TA0P", "", -3.5})));
}

TEST(HelperReplies, EmptyTemperatureListIsAnAnswer) {
  EXPECT_THAT(decodeTemperatureReply("[]"), Optional(IsEmpty()));
}

TEST(HelperReplies, TemperaturesNeedAllThreeKeysInEveryRow) {
  for (const std::string row :
       {R"({"name":"n","temperature":1})", R"({"key":"k","temperature":1})",
        R"({"key":"k","name":"n"})", R"({"key":1,"name":"n","temperature":1})",
        R"({"key":"k","name":"n","temperature":"1"})",
        R"({"key":"k","name":null,"temperature":1})"}) {
    EXPECT_EQ(decodeTemperatureReply(R"([{"key":"k","name":"n","temperature":1},)" + row + "]"),
              std::nullopt)
        << row;
  }
}

TEST(HelperReplies, TemperaturesIgnoreUnknownKeys) {
  EXPECT_THAT(decodeTemperatureReply(R"([{"key":"k","name":"n","unit":"C","temperature":1}])"),
              Optional(ElementsAre(TemperatureSensor{"k", "n", 1.0})));
}

TEST(HelperReplies, TemperatureReplyThatIsNoArrayIsNone) {
  for (const char* json : {"{}", "null", "\"a\"", "", "[", "[1]", "[null]"}) {
    EXPECT_EQ(decodeTemperatureReply(json), std::nullopt) << json;
  }
}

}  // namespace
}  // namespace quorvex
