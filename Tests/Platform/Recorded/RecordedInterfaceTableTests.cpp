#include <cstring>

#include "InterfaceMessage.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

namespace message = interface_message;

template <typename Integer>
Integer numberAt(const std::vector<std::byte>& list, std::size_t offset) {
  Integer number{};
  std::memcpy(&number, list.data() + offset, sizeof number);
  return number;
}

TEST(RecordedInterfaceTable, NullIsAFailedRead) {
  const auto machine = machineWithFrame(R"("interfaces": null)");
  EXPECT_EQ(machine->interfaceTable().readInterfaceList(), std::nullopt);
  EXPECT_EQ(machine->interfaceTable().interfaceName(4), std::nullopt);
}

TEST(RecordedInterfaceTable, InterfacesAreLaidOutAsTheKernelsMessages) {
  const auto machine = machineWithFrame(
      R"("interfaces": [{"index": 4, "name": "en0", "bytesIn": 5000000000, "bytesOut": 7},
                        {"index": 258, "name": "lo0", "bytesIn": 1, "bytesOut": 2, "type": 14}])");
  const auto list = machine->interfaceTable().readInterfaceList();
  ASSERT_TRUE(list);
  ASSERT_EQ(list->size(), 2 * message::size);
  EXPECT_EQ(numberAt<std::uint16_t>(*list, message::lengthOffset), message::size);
  EXPECT_EQ(numberAt<std::uint8_t>(*list, message::typeOffset), 18) << "the default type";
  EXPECT_EQ(numberAt<std::uint16_t>(*list, message::indexOffset), 4);
  EXPECT_EQ(numberAt<std::uint64_t>(*list, message::bytesInOffset), 5000000000U);
  EXPECT_EQ(numberAt<std::uint64_t>(*list, message::bytesOutOffset), 7U);
  EXPECT_EQ(numberAt<std::uint8_t>(*list, message::size + message::typeOffset), 14);
  EXPECT_EQ(numberAt<std::uint16_t>(*list, message::size + message::indexOffset), 258);
}

TEST(RecordedInterfaceTable, NoInterfacesAreAnEmptyBuffer) {
  const auto list = machineWithFrame(R"("interfaces": [])")->interfaceTable().readInterfaceList();
  ASSERT_TRUE(list);
  EXPECT_TRUE(list->empty());
}

TEST(RecordedInterfaceTable, NamesAreFoundByIndex) {
  const auto machine = machineWithFrame(
      R"("interfaces": [{"index": 4, "name": "en0"}, {"index": 5, "name": null}, {"index": 6}])");
  EXPECT_EQ(machine->interfaceTable().interfaceName(4), "en0");
  EXPECT_EQ(machine->interfaceTable().interfaceName(5), std::nullopt);
  EXPECT_EQ(machine->interfaceTable().interfaceName(6), std::nullopt);
  EXPECT_EQ(machine->interfaceTable().interfaceName(7), std::nullopt);
}

TEST(RecordedInterfaceTable, GivenBufferStandsAsItIs) {
  const auto machine =
      machineWithFrame(R"("interfaceBuffer": "a0ff", "interfaces": [{"index": 4, "name": "en0"}])");
  EXPECT_EQ(machine->interfaceTable().readInterfaceList(),
            (std::vector{std::byte{0xA0}, std::byte{0xFF}}));
  EXPECT_EQ(machine->interfaceTable().interfaceName(4), "en0") << "names come from the interfaces";
}

TEST(RecordedInterfaceTable, GivenBufferNeedsNoInterfaces) {
  const auto machine = machineWithFrame(R"("interfaceBuffer": "")");
  EXPECT_EQ(machine->interfaceTable().readInterfaceList(), std::vector<std::byte>{});
}

TEST(RecordedInterfaceTable, CountersGrowFromTheirOwnFrame) {
  const auto machine = machineOf(
      R"({"pace": "instant", "frames": [{"at": 0},
          {"at": 10, "interfaces": [{"index": 4, "name": "en0",
              "bytesIn": {"start": 1000, "perSecond": 200}, "bytesOut": 5}]},
          {"at": 20, "registry": {}}]})");
  const auto bytesIn = [&] {
    return numberAt<std::uint64_t>(*machine->interfaceTable().readInterfaceList(),
                                   message::bytesInOffset);
  };
  machine->clock().sleep(10);
  EXPECT_EQ(bytesIn(), 1000U);
  machine->clock().sleep(2);
  EXPECT_EQ(bytesIn(), 1400U) << "1000 + 200/s * 2 s";
  machine->clock().sleep(13);
  EXPECT_EQ(bytesIn(), 4000U) << "1000 + 200/s * 15 s: a frame without the key changes nothing";
}

TEST(RecordedInterfaceTable, CountersStartOverInEveryPass) {
  const auto machine = machineOf(
      R"({"pace": "instant", "atEnd": "repeat", "duration": 10, "frames": [{"at": 0,
          "interfaces": [{"index": 4, "bytesIn": {"start": 100, "perSecond": 10}}]}]})");
  machine->clock().sleep(13);
  EXPECT_EQ(numberAt<std::uint64_t>(*machine->interfaceTable().readInterfaceList(),
                                    message::bytesInOffset),
            130U)
      << "100 + 10/s * 3 s into the second pass";
}

TEST(RecordedInterfaceTable, CountersGoOnAfterTheEndWhenHolding) {
  const auto machine = machineOf(
      R"({"pace": "instant", "duration": 10, "frames": [{"at": 0,
          "interfaces": [{"index": 4, "bytesOut": {"start": 100, "perSecond": 10}}]}]})");
  machine->clock().sleep(13);
  EXPECT_EQ(numberAt<std::uint64_t>(*machine->interfaceTable().readInterfaceList(),
                                    message::bytesOutOffset),
            230U)
      << "100 + 10/s * 13 s";
}

}  // namespace
}  // namespace quorvex
