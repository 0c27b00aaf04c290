#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::nanoseconds;
using testing::ElementsAre;

constexpr nanoseconds start{0};

std::string refusalOfFrame(const std::string& keys) {
  return refusalOf(fileWithFrame(keys));
}

Dictionary registryOf(const std::string& json) {
  const MachineFile file = parsedFile(fileWithFrame("\"registry\": " + json));
  const Dictionary* registry = file.registry.value(start);
  return registry != nullptr ? *registry : Dictionary{};
}

TEST(RecordReaders, NumberWithoutFractionAndExponentIsAnInteger) {
  const Dictionary registry =
      registryOf(R"({"A": 42, "B": -950, "C": 9223372036854775807, "D": -9223372036854775808})");
  EXPECT_EQ(registry.at("A"), DictionaryValue{42});
  EXPECT_EQ(registry.at("B"), DictionaryValue{-950});
  EXPECT_EQ(registry.at("C"), DictionaryValue{std::numeric_limits<std::int64_t>::max()});
  EXPECT_EQ(registry.at("D"), DictionaryValue{std::numeric_limits<std::int64_t>::min()});
}

TEST(RecordReaders, EveryOtherNumberIsAFloat) {
  const Dictionary registry = registryOf(
      R"({"A": 42.0, "B": 4e1, "C": 9223372036854775808, "D": -9223372036854775809,
          "E": 123456789012345678901234567890, "F": 1e-999})");
  EXPECT_EQ(*registry.at("A").ifFloat(), 42.0);
  EXPECT_EQ(*registry.at("B").ifFloat(), 40.0);
  EXPECT_EQ(*registry.at("C").ifFloat(), std::ldexp(1.0, 63));
  EXPECT_EQ(*registry.at("D").ifFloat(), -std::ldexp(1.0, 63));
  EXPECT_EQ(*registry.at("E").ifFloat(), 123456789012345678901234567890.0);
  EXPECT_EQ(*registry.at("F").ifFloat(), 0.0);
}

TEST(RecordReaders, BooleansStringsAndObjectsKeepTheirTypes) {
  const Dictionary registry =
      registryOf(R"({"A": true, "B": false, "C": "Good \u00e9", "D": {"Watts": 96}})");
  EXPECT_EQ(registry.at("A").boolean(), true);
  EXPECT_EQ(registry.at("B").boolean(), false);
  EXPECT_EQ(registry.at("C").string(), "Good \u00e9");
  EXPECT_EQ(*registry.at("D").dictionary(), (Dictionary{{"Watts", 96}}));
}

TEST(RecordReaders, ArraysAndNullsAreValuesOfSomeOtherType) {
  const Dictionary registry = registryOf(R"({"A": [1, "x", {"B": []}], "B": null})");
  EXPECT_EQ(registry.at("A"), DictionaryValue{});
  EXPECT_EQ(registry.at("B"), DictionaryValue{});
}

TEST(RecordReaders, PowerSourcesAreDictionariesOrNulls) {
  const MachineFile file = parsedFile(fileWithFrame(R"("powerSources": [null, {"A": 1}])"));
  EXPECT_THAT(*file.powerSources.value(start),
              ElementsAre(std::nullopt, std::optional{Dictionary{{"A", 1}}}));
  EXPECT_EQ(refusalOfFrame(R"("powerSources": [5])"),
            "$.frames[0].powerSources[0]: must be an object");
}

TEST(RecordReaders, EnergyChannelsHaveANameOrNoneAndAValue) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("energyChannels": [{"name": "ANE0", "value": -7}, {"name": null, "value": 8},
                            {"value": 9}])"));
  const auto& channels = *file.energyChannels.value(start);
  ASSERT_EQ(channels.size(), 3U);
  EXPECT_EQ(channels[0].name, "ANE0");
  EXPECT_EQ(channels[0].delta, -7);
  EXPECT_EQ(channels[1].name, std::nullopt);
  EXPECT_EQ(channels[2].name, std::nullopt);
  EXPECT_EQ(refusalOfFrame(R"("energyChannels": [{"name": "ANE0"}])"),
            "$.frames[0].energyChannels[0].value: missing");
  EXPECT_EQ(refusalOfFrame(R"("energyChannels": [{"value": 1.5}])"),
            "$.frames[0].energyChannels[0].value: must be an integer from -9223372036854775808 to "
            "9223372036854775807");
}

TEST(RecordReaders, HIDProductMayBeAnyValue) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("hid": [{"product": "PMU tdie1", "value": 41.5}, {"product": 5, "value": 40},
                 {"product": {"a": [1]}, "value": null}, {"product": null}, {}])"));
  using Service = HIDTemperatureService;
  const auto& services = *file.hid.value(start);
  ASSERT_EQ(services.size(), 5U);
  EXPECT_EQ(services[0].product, "PMU tdie1");
  EXPECT_EQ(services[0].value, 41.5);
  EXPECT_EQ(services[1].product, std::nullopt);
  EXPECT_EQ(services[1].value, 40.0);
  for (std::size_t i = 2; i < 5; ++i) {
    EXPECT_EQ(services[i].product, Service{}.product);
    EXPECT_EQ(services[i].value, std::nullopt);
  }
  EXPECT_EQ(refusalOfFrame(R"("hid": [{"value": "41"}])"),
            "$.frames[0].hid[0].value: must be a number");
}

TEST(RecordReaders, ThermalNeedsOnlyItsState) {
  const MachineFile full = parsedFile(fileWithFrame(
      R"("thermal": {"state": 2, "pressure": 18446744073709551615, "lowPowerMode": true})"));
  const RecordedThermal& thermal = *full.thermal.value(start);
  EXPECT_EQ(thermal.state, 2);
  EXPECT_EQ(thermal.pressure, std::numeric_limits<std::uint64_t>::max());
  EXPECT_TRUE(thermal.isLowPowerMode);

  const MachineFile bare = parsedFile(fileWithFrame(R"("thermal": {"state": -3})"));
  EXPECT_EQ(bare.thermal.value(start)->state, -3);
  EXPECT_EQ(bare.thermal.value(start)->pressure, std::nullopt);
  EXPECT_FALSE(bare.thermal.value(start)->isLowPowerMode);

  EXPECT_EQ(refusalOfFrame(R"("thermal": {"pressure": 1})"), "$.frames[0].thermal.state: missing");
  EXPECT_EQ(refusalOfFrame(R"("thermal": {"state": 0, "pressure": -1})"),
            "$.frames[0].thermal.pressure: must be a whole number from 0 to 18446744073709551615");
  EXPECT_EQ(refusalOfFrame(R"("thermal": {"state": 0, "lowPowerMode": 1})"),
            "$.frames[0].thermal.lowPowerMode: must be true or false");
}

TEST(RecordReaders, InterfaceLimits) {
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 65535, "type": 255}])"), "(accepted)");
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"name": "en0"}])"),
            "$.frames[0].interfaces[0].index: missing");
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 65536}])"),
            "$.frames[0].interfaces[0].index: must be an integer from 0 to 65535");
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 1, "type": 256}])"),
            "$.frames[0].interfaces[0].type: must be an integer from 0 to 255");
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 1, "name": 5}])"),
            "$.frames[0].interfaces[0].name: must be a string");
}

TEST(RecordReaders, CountersAreWholeNumbersOrGrow) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("interfaces": [{"index": 1, "bytesIn": 18446744073709551615, "bytesOut": 25e3},
                        {"index": 2, "bytesIn": {"start": 7, "perSecond": -1.5}}])"));
  const auto& interfaces = *file.interfaces.value(start);
  EXPECT_EQ(interfaces[0].bytesIn.start, std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(interfaces[0].bytesOut.start, 25000U);
  EXPECT_EQ(interfaces[1].bytesIn.start, 7U);
  EXPECT_EQ(interfaces[1].bytesIn.perSecond, -1.5);
  EXPECT_EQ(interfaces[1].bytesOut.start, 0U) << "a counter left out is 0";

  const std::string place = "$.frames[0].interfaces[0].bytesIn";
  const std::string problem = ": must be a whole number from 0 to 18446744073709551615";
  for (const char* counter : {"-1", "1.5", "18446744073709551616", "\"5\"", "null", "true"}) {
    EXPECT_EQ(
        refusalOfFrame(R"("interfaces": [{"index": 1, "bytesIn": )" + std::string{counter} + "}]"),
        place + problem)
        << counter;
  }
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 1, "bytesIn": {"start": 1}}])"),
            place + ".perSecond: missing");
  EXPECT_EQ(refusalOfFrame(R"("interfaces": [{"index": 1, "bytesIn": {"perSecond": 1}}])"),
            place + ".start: missing");
}

TEST(RecordReaders, InterfaceBufferIsHexadecimal) {
  const MachineFile file = parsedFile(fileWithFrame(R"("interfaceBuffer": "00fFA1")"));
  EXPECT_THAT(*file.interfaceBuffer.value(start),
              ElementsAre(std::byte{0x00}, std::byte{0xFF}, std::byte{0xA1}));
  for (const char* text : {"0", "0g", "00 11", "000"}) {
    EXPECT_EQ(refusalOfFrame(R"("interfaceBuffer": ")" + std::string{text} + "\""),
              "$.frames[0].interfaceBuffer: must be pairs of hexadecimal digits")
        << text;
  }
}

TEST(RecordReaders, ProcessNeedsOnlyItsPID) {
  const MachineFile file = parsedFile(fileWithFrame(R"("processes": [{"pid": 77}])"));
  const RecordedProcess& process = file.processes.value(start)->processes.front();
  EXPECT_EQ(process.pid, 77);
  EXPECT_EQ(process.name, std::nullopt);
  EXPECT_EQ(process.userTime.start, 0U);
  EXPECT_EQ(process.energy.start, 0U);
  EXPECT_TRUE(process.isAccessible);
  EXPECT_EQ(refusalOfFrame(R"("processes": [{"name": "a"}])"),
            "$.frames[0].processes[0].pid: missing");
  EXPECT_EQ(refusalOfFrame(R"("processes": [{"pid": 2147483648}])"),
            "$.frames[0].processes[0].pid: must be an integer from -2147483648 to 2147483647");
}

TEST(RecordReaders, SMCValueTakesItsSizeFromItsBytes) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("smc": {"F0Ac": {"type": "flt ", "bytes": "00000a45"},
                 "FNum": {"type": "ui8 ", "bytes": "02", "size": 4294967295}})"));
  const RecordedSMCKeys& keys = *file.smc.value(start);
  ASSERT_EQ(keys.size(), 2U);
  EXPECT_EQ(keys[0].key, 0x46304163U) << "F0Ac";
  EXPECT_EQ(keys[0].dataType, 0x666C7420U) << "flt and a blank";
  EXPECT_EQ(keys[0].dataSize, 4U);
  EXPECT_EQ(keys[0].bytes[3], 0x45);
  EXPECT_EQ(keys[1].dataSize, 4294967295U);
}

TEST(RecordReaders, SMCValueOfMoreBytesThanTheRecordHoldsKeepsItsSize) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("smc": {"ABCD": {"type": "ch8*", "bytes": ")" + std::string(66, '7') + "\"}}"));
  EXPECT_EQ(file.smc.value(start)->front().dataSize, 33U);
  EXPECT_EQ(file.smc.value(start)->front().bytes[31], 0x77);
}

TEST(RecordReaders, SMCTypeIsFourLegacyCharacters) {
  const MachineFile file = parsedFile(
      fileWithFrame("\"smc\": {\"ABCD\": {\"type\": \"\u00e9\u2020a\\u0000\", \"bytes\": \"\"}}"));
  EXPECT_EQ(file.smc.value(start)->front().dataType, 0x8EA06100U) << "e acute, dagger, a, NUL";
  EXPECT_EQ(file.smc.value(start)->front().dataSize, 0U);
  for (const char* type : {"flt", "flt  ", "", "abc\u4e00"}) {
    EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": {"type": ")" + std::string{type} +
                             R"(", "bytes": "00"}})"),
              "$.frames[0].smc.ABCD.type: must have 4 Mac OS Roman characters")
        << type;
  }
}

TEST(RecordReaders, SMCLimits) {
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABC": {"type": "ui8 ", "bytes": "00"}})"),
            "$.frames[0].smc.ABC: an SMC key must have 4 bytes");
  EXPECT_EQ(refusalOfFrame("\"smc\": {\"ab\u00e9\": {\"type\": \"ui8 \", \"bytes\": \"00\"}}"),
            "(accepted)");
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": {"bytes": "00"}})"),
            "$.frames[0].smc.ABCD.type: missing");
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": {"type": "ui8 "}})"),
            "$.frames[0].smc.ABCD.bytes: missing");
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": {"type": "ui8 ", "bytes": "0"}})"),
            "$.frames[0].smc.ABCD.bytes: must be pairs of hexadecimal digits");
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": {"type": "ui8 ", "bytes": "00", "size": -1}})"),
            "$.frames[0].smc.ABCD.size: must be an integer from 0 to 4294967295");
  EXPECT_EQ(refusalOfFrame(R"("smc": {"ABCD": null})"), "$.frames[0].smc.ABCD: must be an object");
}

TEST(RecordReaders, ToolRunNeedsOnlyItsStatus) {
  const MachineFile file = parsedFile(fileWithFrame(R"("nettop": {"status": -1})"));
  EXPECT_EQ(file.nettop.value(start)->status, -1);
  EXPECT_EQ(file.nettop.value(start)->output, "");
  EXPECT_EQ(file.nettop.value(start)->duration, nanoseconds{0});
  EXPECT_EQ(refusalOfFrame(R"("nettop": {"output": ""})"), "$.frames[0].nettop.status: missing");
  EXPECT_EQ(refusalOfFrame(R"("nettop": {"status": 4294967296})"),
            "$.frames[0].nettop.status: must be an integer from -2147483648 to 2147483647");
  EXPECT_EQ(refusalOfFrame(R"("nettop": {"status": 0, "seconds": -1})"),
            "$.frames[0].nettop.seconds: must not be negative");
  EXPECT_EQ(refusalOfFrame(R"("osascript": {"installs": null})"),
            "$.frames[0].osascript.status: missing");
}

TEST(RecordReaders, HelperNeedsOnlyWhetherItIsExecutable) {
  const MachineFile file = parsedFile(fileWithFrame(R"("helper": {"executable": false})"));
  const RecordedHelper& helper = *file.helper.value(start);
  EXPECT_EQ(helper.permissions, std::nullopt);
  EXPECT_EQ(helper.ownerID, std::nullopt);
  EXPECT_EQ(helper.groupID, std::nullopt);
  EXPECT_FALSE(helper.isExecutable);
  EXPECT_TRUE(helper.replies.empty());
  EXPECT_EQ(refusalOfFrame(R"("helper": {"mode": "4755"})"),
            "$.frames[0].helper.executable: missing");
}

TEST(RecordReaders, HelperModeIsOctal) {
  const MachineFile file =
      parsedFile(fileWithFrame(R"("helper": {"mode": "4755", "executable": true})"));
  EXPECT_EQ(file.helper.value(start)->permissions, 04755U);
  for (const char* mode : {"\"\"", "\"4785\"", "\"04755\"", "\"rwx\""}) {
    EXPECT_EQ(
        refusalOfFrame(R"("helper": {"executable": true, "mode": )" + std::string{mode} + "}"),
        "$.frames[0].helper.mode: must be a string of 1 to 4 octal digits")
        << mode;
  }
  EXPECT_EQ(refusalOfFrame(R"("helper": {"executable": true, "mode": 4755})"),
            "$.frames[0].helper.mode: must be a string");
}

}  // namespace
}  // namespace quorvex
