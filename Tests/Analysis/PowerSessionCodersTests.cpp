#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "PowerSessionCoders.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "SampleRecords.h"
#include "SystemPowerStateDTO.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string fanJSON =
    R"({"currentRPM":2000,"id":0,"maxRPM":6000,"minRPM":1200,"name":"Left"})";
const std::string powerJSON =
    R"({"anePower":0,"cpuPower":2,"cpuUsagePercent":0,"gpuPower":1,"ramPower":1,)"
    R"("siliconChannelsComplete":true,"systemPower":4})";

template <typename Record>
Result<Record, DecodingError> decoded(std::string_view json) {
  return PowerSessionCoders::decoder().decode<Record>(json);
}

template <typename Record>
std::string problem(std::string_view json) {
  const auto result = decoded<Record>(json);
  return result ? "no problem" : result.error().description;
}

std::string replaced(std::string text, std::string_view old, std::string_view with) {
  const auto at = text.find(old);
  EXPECT_NE(at, std::string::npos);
  return at == std::string::npos ? text : text.replace(at, old.size(), with);
}

TEST(PowerSessionEncoderTests, KeysAreSortedAndNothingStandsBetweenTokens) {
  const FanInfoDTO fan{FanInfo{0, "Left", 2000, 1200, 6000}};
  EXPECT_EQ(*PowerSessionCoders::encoder().encode(fan), fanJSON);
}

TEST(PowerSessionEncoderTests, PrettyFormHasTheSameKeysOnLinesOfTheirOwn) {
  const ThermalInfoDTO thermal{ThermalInfo{}};
  EXPECT_EQ(*PowerSessionCoders::prettyEncoder().encode(thermal),
            "{\n  \"isLowPowerMode\" : false,\n  \"pressure\" : 0,\n  \"state\" : \"nominal\"\n}");
}

TEST(PowerSessionEncoderTests, DatesAreWholeSecondsInUTC) {
  SystemPowerStateDTO dto;
  dto.timestamp = *parseISO8601("2026-01-31T10:30:05.999+01:00");
  const auto json = PowerSessionCoders::encoder().encode(dto);
  EXPECT_NE(json->find(R"("timestamp":"2026-01-31T09:30:05Z")"), std::string::npos);
}

TEST(PowerSessionEncoderTests, ANonFiniteNumberIsRefusedWithItsPlace) {
  for (const double number : {std::nan(""), std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity()}) {
    SystemPowerState state;
    state.battery = samples::battery();
    state.battery->voltage = number;
    const auto json = PowerSessionCoders::encoder().encode(SystemPowerStateDTO{state});
    ASSERT_FALSE(json);
    EXPECT_EQ(json.error().description, "$.battery.voltage: not a finite number");
  }
}

TEST(PowerSessionEncoderTests, ANonFiniteNumberInARowIsNamedByItsIndex) {
  std::vector<ProcessActivityDTO> rows(3);
  rows[2].energyWattsEstimate = std::nan("");
  const auto json = PowerSessionCoders::encoder().encode(rows);
  ASSERT_FALSE(json);
  EXPECT_EQ(json.error().description, "$[2].energyWattsEstimate: not a finite number");
}

TEST(PowerSessionEncoderTests, TextThatIsNotUTF8IsRepairedSoThatItCanBeReadAgain) {
  FanInfoDTO fan;
  fan.name =
      "F\xFF"
      "an";
  const auto read = decoded<FanInfoDTO>(*PowerSessionCoders::encoder().encode(fan));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->name,
            "F\xEF\xBF\xBD"
            "an");
}

TEST(PowerSessionDecoderTests, AnOptionalKeyMayBeMissing) {
  const auto power = decoded<PowerMetricsDTO>(powerJSON);
  ASSERT_TRUE(power);
  EXPECT_EQ(power->gpuUsagePercent, std::nullopt);
  EXPECT_EQ(power->systemPower, 4.0);
}

TEST(PowerSessionDecoderTests, AnOptionalKeyMayBeNull) {
  const auto power = decoded<PowerMetricsDTO>(
      replaced(powerJSON, R"("ramPower")", R"("gpuUsagePercent":null,"ramPower")"));
  ASSERT_TRUE(power);
  EXPECT_EQ(power->gpuUsagePercent, std::nullopt);
}

TEST(PowerSessionDecoderTests, EveryRequiredKeyIsRequired) {
  for (const char* key : {"currentRPM", "id", "maxRPM", "minRPM", "name"}) {
    const std::string quoted = std::string{"\""} + key + "\"";
    EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, quoted, "\"other\"")),
              std::string{"$."} + key + ": missing");
  }
}

TEST(PowerSessionDecoderTests, ARequiredKeyMustNotBeNull) {
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "2000", "null")), "$.currentRPM: not a number");
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "\"Left\"", "null")), "$.name: not a string");
}

TEST(PowerSessionDecoderTests, UnknownKeysAreIgnoredWhereverTheyStand) {
  for (const char* key : {"a", "e", "zz"}) {
    for (const char* value :
         {"1", "null", "true", "\"x\"", "[1,{\"a\":[]}]", "{\"b\":{\"c\":-1.5e3}}"}) {
      std::string json = fanJSON;
      const std::string field = std::string{"\""} + key + "\":" + value;
      if (*key == 'a') {
        json.insert(1, field + ",");
      } else if (*key == 'e') {
        json = replaced(json, "\"id\"", field + ",\"id\"");
      } else {
        json.insert(json.size() - 1, "," + field);
      }
      const auto fan = decoded<FanInfoDTO>(json);
      ASSERT_TRUE(fan) << json << fan.error().description;
      EXPECT_EQ(fan->name, "Left");
      EXPECT_EQ(fan->maxRPM, 6000);
    }
  }
}

TEST(PowerSessionDecoderTests, AnUnknownKeysValueMustStillBeJSON) {
  for (const char* value :
       {"tru", "01", "1.", "\"\\x\"", "[1 2]", "{\"a\" 1}", "nul", "-", "{\"\\q\":1}"}) {
    EXPECT_EQ(problem<FanInfoDTO>(
                  replaced(fanJSON, "\"id\"", std::string{"\"extra\":"} + value + ",\"id\"")),
              "$: not valid JSON")
        << value;
  }
}

TEST(PowerSessionDecoderTests, AnUnknownKeysValueMayNotBeNestedWithoutLimit) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "\"id\"", "\"extra\":" + deep + ",\"id\"")),
            "$.extra: nested too deeply");
}

TEST(PowerSessionDecoderTests, KeysMayStandInAnyOrder) {
  const auto fan = decoded<FanInfoDTO>(
      R"( { "name" : "Left", "minRPM":1200 , "id": 0,"maxRPM":6000,
            "currentRPM": 2000 } )");
  ASSERT_TRUE(fan);
  EXPECT_EQ(*PowerSessionCoders::encoder().encode(*fan), fanJSON);
}

TEST(PowerSessionDecoderTests, AKeyMayBeWrittenWithEscapes) {
  const auto fan = decoded<FanInfoDTO>(replaced(fanJSON, "\"name\"", "\"n\\u0061me\""));
  ASSERT_TRUE(fan);
  EXPECT_EQ(fan->name, "Left");
}

TEST(PowerSessionDecoderTests, TheLastOfTwoEqualKeysCounts) {
  const auto fan = decoded<FanInfoDTO>(replaced(fanJSON, "\"id\"", "\"name\":\"First\",\"id\""));
  ASSERT_TRUE(fan);
  EXPECT_EQ(fan->name, "Left");
}

TEST(PowerSessionDecoderTests, AWrongTypeFailsTheRecordWithItsPlace) {
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "2000", "\"2000\"")),
            "$.currentRPM: not a number");
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "2000", "true")), "$.currentRPM: not a number");
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "\"Left\"", "5")), "$.name: not a string");
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "\"Left\"", "[\"Left\"]")),
            "$.name: not a string");
  EXPECT_EQ(problem<PowerMetricsDTO>(replaced(powerJSON, "true", "1")),
            "$.siliconChannelsComplete: not a Boolean");
  EXPECT_EQ(problem<PowerMetricsDTO>(replaced(powerJSON, "true", "\"true\"")),
            "$.siliconChannelsComplete: not a Boolean");
}

TEST(PowerSessionDecoderTests, APlaceWithinArraysAndObjectsIsNamed) {
  SystemPowerState state;
  state.sensors = {{"TC0P", "CPU", 40.5}, {"TG0P", "GPU", 41.5}};
  const std::string json = *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{state});
  EXPECT_EQ(problem<SystemPowerStateDTO>(replaced(json, "41.5", "{}")),
            "$.sensors[1].temperature: not a number");
  EXPECT_EQ(problem<SystemPowerStateDTO>(replaced(json, "\"fans\":[]", "\"fans\":{}")),
            "$.fans: not an array");
  EXPECT_EQ(problem<SystemPowerStateDTO>(replaced(json, "\"nominal\"", "7")),
            "$.thermal.state: not a string");
}

TEST(PowerSessionDecoderTests, AnIntegerMustBeWholeAndFit) {
  const auto withRPM = [](std::string_view number) {
    return problem<FanInfoDTO>(replaced(fanJSON, "2000", number));
  };
  EXPECT_EQ(withRPM("2000.5"), "$.currentRPM: not an integer of 64 bits");
  EXPECT_EQ(withRPM("9223372036854775808"), "$.currentRPM: not an integer of 64 bits");
  EXPECT_EQ(withRPM("1e300"), "$.currentRPM: not an integer of 64 bits");
  EXPECT_EQ(withRPM("1e999"), "$.currentRPM: not a number");
  EXPECT_EQ(withRPM("9223372036854775807"), "no problem");
  EXPECT_EQ(withRPM("-9223372036854775808"), "no problem");
  EXPECT_EQ(decoded<FanInfoDTO>(replaced(fanJSON, "2000", "2.0e3"))->currentRPM, 2000);
}

TEST(PowerSessionDecoderTests, ProcessIdsAreIntegersOf32Bits) {
  const auto withPID = [](std::string_view pid) {
    const std::string json =
        std::string{R"([{"confidence":"estimated","cpuPercent":1,)"
                    R"("diskBytesPerSecond":2,"impactScore":3,"name":"a","pid":)"} +
        std::string{pid} + R"(,"wakeupsPerSecond":4}])";
    return problem<std::vector<ProcessActivityDTO>>(json);
  };
  EXPECT_EQ(withPID("2147483647"), "no problem");
  EXPECT_EQ(withPID("-2147483648"), "no problem");
  EXPECT_EQ(withPID("2147483648"), "$[0].pid: not an integer of 32 bits");
  EXPECT_EQ(withPID("-2147483649"), "$[0].pid: not an integer of 32 bits");
}

TEST(PowerSessionDecoderTests, CountersAreUnsignedIntegersOf64Bits) {
  const auto withBytes = [](std::string_view bytes) {
    const std::string json =
        std::string{R"({"attributionSource":"none","interfaces":[{"bytesIn":)"} +
        std::string{bytes} +
        R"(,"bytesInPerSec":0,"bytesOut":0,"bytesOutPerSec":0,"id":1,"name":"en0"}],)"
        R"("processes":[],"totalBytesInPerSec":0,"totalBytesOutPerSec":0})";
    return problem<NetworkSnapshotDTO>(json);
  };
  EXPECT_EQ(withBytes("18446744073709551615"), "no problem");
  EXPECT_EQ(withBytes("18446744073709551616"),
            "$.interfaces[0].bytesIn: not an unsigned integer of 64 bits");
  EXPECT_EQ(withBytes("-1"), "$.interfaces[0].bytesIn: not an unsigned integer of 64 bits");
}

TEST(PowerSessionDecoderTests, ADateMustBeISO8601) {
  const std::string json =
      *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{SystemPowerState{}});
  EXPECT_EQ(problem<SystemPowerStateDTO>(replaced(json, "1970-01-01T00:00:00Z", "yesterday")),
            "$.timestamp: not an ISO 8601 date");
  EXPECT_EQ(problem<SystemPowerStateDTO>(replaced(json, "\"1970-01-01T00:00:00Z\"", "0")),
            "$.timestamp: not an ISO 8601 date");
}

TEST(PowerSessionDecoderTests, WhatIsNoJSONDocumentIsRefused) {
  for (const char* text : {"", " ", "{", "}", "{\"id\"", "{\"id\":", "\xFF", "nonsense", "{} {}",
                           "{\"a\":\"\x01\"}", "{\"name\":\"Left", "[1,]", "{,}"}) {
    EXPECT_FALSE(decoded<FanInfoDTO>(text)) << text;
  }
  EXPECT_EQ(problem<FanInfoDTO>(fanJSON + "x"), "$: not valid JSON");
  EXPECT_EQ(problem<FanInfoDTO>(fanJSON + "{}"), "$: not valid JSON");
  EXPECT_EQ(problem<FanInfoDTO>(replaced(fanJSON, "Left", "\xC3")), "$: not valid JSON");
}

TEST(PowerSessionDecoderTests, EveryPrefixOfABlobIsRefused) {
  SystemPowerState state;
  state.battery = samples::batteryAt(-5.0);
  state.network.emplace().interfaces = {samples::interface(4, "en0")};
  const std::string json = *PowerSessionCoders::encoder().encode(SystemPowerStateDTO{state});
  for (std::size_t size = 0; size < json.size(); ++size) {
    EXPECT_FALSE(decoded<SystemPowerStateDTO>(json.substr(0, size))) << size;
  }
}

TEST(PowerSessionDecoderTests, ADocumentOfAnotherShapeIsNamed) {
  EXPECT_EQ(problem<FanInfoDTO>("[]"), "$: not an object");
  EXPECT_EQ(problem<FanInfoDTO>("5"), "$: not an object");
  EXPECT_EQ(problem<std::vector<ProcessActivityDTO>>("{}"), "$: not an array");
  EXPECT_EQ(problem<std::vector<ProcessActivityDTO>>("null"), "$: not an array");
}

TEST(PowerSessionDecoderTests, EscapedTextIsRead) {
  const auto fan =
      decoded<FanInfoDTO>(replaced(fanJSON, "Left", R"(a\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00)"));
  ASSERT_TRUE(fan);
  EXPECT_EQ(fan->name, "a\"\\/\b\f\n\r\t\u00e9\U0001F600");
}

TEST(PowerSessionDecoderTests, HalfASurrogatePairIsNoText) {
  EXPECT_FALSE(decoded<FanInfoDTO>(replaced(fanJSON, "Left", R"(\ud83d)")));
}

TEST(PowerSessionDecoderTests, ARecordThatIsUsedAgainKeepsNothingOfTheLastDocument) {
  SystemPowerState rich;
  rich.battery = samples::batteryAt(-5.0);
  rich.sensors = {{"a", "A", 1.0}, {"b", "B", 2.0}};
  rich.network = NetworkSnapshot{};
  auto decoder = PowerSessionCoders::decoder();
  const auto encoder = PowerSessionCoders::encoder();
  SystemPowerStateDTO record;
  ASSERT_TRUE(decoder.decodeInto(record, *encoder.encode(SystemPowerStateDTO{rich})));
  EXPECT_EQ(record, SystemPowerStateDTO{rich});
  ASSERT_TRUE(decoder.decodeInto(record, *encoder.encode(SystemPowerStateDTO{SystemPowerState{}})));
  EXPECT_EQ(record, SystemPowerStateDTO{SystemPowerState{}});
}

TEST(PowerSessionDecoderTests, ADecoderGoesOnAfterAFailure) {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_FALSE(decoder.decode<FanInfoDTO>("{\"id\":"));
  EXPECT_TRUE(decoder.decode<FanInfoDTO>(fanJSON));
}

TEST(PowerSessionDecoderTests, ATextWithReadableBytesBehindItIsReadInPlace) {
  const std::string padded = fanJSON + std::string(RecordDecoder::padding, '}');
  FanInfoDTO fan;
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(decoder.decodeInto(fan, std::string_view{padded}.substr(0, fanJSON.size()),
                                 RecordDecoder::padding));
  EXPECT_EQ(fan.name, "Left");
}

TEST(PowerSessionDecoderTests, ASnapshotOfTheHelperIsReadAndWrittenByOneTable) {
  const std::string json =
      R"({"anePowerWatts":0.5,"cpuPowerWatts":3,"isAvailable":true,"processes":[{"cpuTimePercent":12.5,)"
      R"("isAggregate":true,"name":"ALL_TASKS","pid":-1}],"sampleIntervalMilliseconds":1000,)"
      R"("sampledAt":"2026-01-31T09:30:05Z","source":"powermetrics"})";
  const auto snapshot = decoded<ProTelemetrySnapshot>(json);
  ASSERT_TRUE(snapshot);
  EXPECT_EQ(snapshot->cpuPowerWatts, 3.0);
  EXPECT_EQ(snapshot->gpuPowerWatts, std::nullopt);
  ASSERT_THAT(snapshot->processes, SizeIs(1));
  EXPECT_EQ(snapshot->processes[0].pid, -1);
  EXPECT_TRUE(snapshot->processes[0].isAggregate);
  EXPECT_EQ(*PowerSessionCoders::encoder().encode(*snapshot), json);
}

TEST(PowerSessionDecoderTests, AnEmptyArrayOfActivitiesIsReadAsSuch) {
  EXPECT_THAT(*decoded<std::vector<ProcessActivityDTO>>("[]"), IsEmpty());
}

}  // namespace
}  // namespace quorvex
