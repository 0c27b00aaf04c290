#include <cstring>

#include "RecordedSMCPort.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

constexpr std::uint32_t fanCountKey = 0x464E756D;  // "FNum"
constexpr std::uint32_t fanSpeedKey = 0x46304163;  // "F0Ac"
constexpr const char* fan =
    R"("smc": {"FNum": {"type": "ui8 ", "bytes": "02"},
               "F0Ac": {"type": "flt ", "bytes": "00400F45"}})";

struct Reply {
  int result = 0;
  SMCKeyRecord record;
};

Reply ask(SMCPort& smc, SMCPort::Connection connection, std::uint32_t key, std::uint8_t command,
          std::uint32_t dataSize = 0) {
  Reply reply;
  reply.record.extra = 99;
  SMCKeyRecord input{.key = key, .dataSize = dataSize};
  input.command = command;
  reply.result = smc.call(connection, input, reply.record);
  return reply;
}

TEST(RecordedSMCPort, NullIsNoService) {
  EXPECT_EQ(machineWithFrame(R"("smc": null)")->smc().open(), std::nullopt);
}

TEST(RecordedSMCPort, KeyInfoTellsSizeAndType) {
  const auto machine = machineWithFrame(fan);
  const auto connection = machine->smc().open();
  const Reply reply =
      ask(machine->smc(), *connection, fanSpeedKey, SMCKeyRecord::readKeyInfoCommand);
  EXPECT_EQ(reply.result, 0);
  EXPECT_EQ(reply.record,
            (SMCKeyRecord{.key = fanSpeedKey, .dataSize = 4, .dataType = 0x666C7420 /* flt */}));
}

TEST(RecordedSMCPort, ReadGivesTheBytes) {
  const auto machine = machineWithFrame(fan);
  const auto connection = machine->smc().open();
  const Reply reply =
      ask(machine->smc(), *connection, fanSpeedKey, SMCKeyRecord::readBytesCommand, 4);
  EXPECT_EQ(reply.result, 0);
  float speed = 0;
  std::memcpy(&speed, reply.record.bytes.data(), sizeof speed);
  EXPECT_EQ(speed, 2292.0F) << "0x450F4000: 1.119140625 * 2^11";
  EXPECT_EQ(reply.record.bytes[4], 0);
  EXPECT_EQ(reply.record.extra, 0U) << "the output is a fresh record";
}

TEST(RecordedSMCPort, KeyInfoTellsTheGivenSize) {
  const auto machine =
      machineWithFrame(R"("smc": {"FNum": {"type": "ui8 ", "bytes": "02", "size": 33}})");
  const auto connection = machine->smc().open();
  EXPECT_EQ(ask(machine->smc(), *connection, fanCountKey, SMCKeyRecord::readKeyInfoCommand)
                .record.dataSize,
            33U);
}

TEST(RecordedSMCPort, UnknownKeyIsAKernelError) {
  const auto machine = machineWithFrame(fan);
  const auto connection = machine->smc().open();
  for (const auto command : {SMCKeyRecord::readKeyInfoCommand, SMCKeyRecord::readBytesCommand}) {
    EXPECT_EQ(ask(machine->smc(), *connection, 0x46314163, command).result,
              RecordedSMCPort::notFound);
  }
}

TEST(RecordedSMCPort, KeysAreCaseSensitive) {
  const auto machine = machineWithFrame(
      R"("smc": {"Tm0P": {"type": "sp78", "bytes": "3280"}, "TM0P": {"type": "ui8 ", "bytes": "01"}})");
  const auto connection = machine->smc().open();
  EXPECT_EQ(ask(machine->smc(), *connection, 0x546D3050, SMCKeyRecord::readKeyInfoCommand)
                .record.dataSize,
            2U);
  EXPECT_EQ(ask(machine->smc(), *connection, 0x544D3050, SMCKeyRecord::readKeyInfoCommand)
                .record.dataSize,
            1U);
}

TEST(RecordedSMCPort, OtherCommandsAreUnsupported) {
  const auto machine = machineWithFrame(fan);
  const auto connection = machine->smc().open();
  EXPECT_EQ(ask(machine->smc(), *connection, fanCountKey, 6).result, RecordedSMCPort::unsupported);
}

TEST(RecordedSMCPort, CallNeedsAnOpenConnection) {
  const auto machine = machineWithFrame(fan);
  const auto first = machine->smc().open();
  const auto second = machine->smc().open();
  EXPECT_NE(*first, *second);
  machine->smc().close(*first);
  EXPECT_EQ(ask(machine->smc(), *first, fanCountKey, SMCKeyRecord::readKeyInfoCommand).result,
            RecordedSMCPort::badArgument);
  EXPECT_EQ(ask(machine->smc(), *second, fanCountKey, SMCKeyRecord::readKeyInfoCommand).result, 0);
}

TEST(RecordedSMCPort, OpenConnectionFailsWhileTheFrameHasNoService) {
  const auto machine = machineOf(R"({"pace": "instant", "frames": [{"at": 0, )" + std::string{fan} +
                                 R"(}, {"at": 5, "smc": null}]})");
  const auto connection = machine->smc().open();
  machine->clock().sleep(5);
  EXPECT_EQ(ask(machine->smc(), *connection, fanCountKey, SMCKeyRecord::readKeyInfoCommand).result,
            RecordedSMCPort::noDevice);
}

}  // namespace
}  // namespace quorvex
