#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "FakeTree.h"
#include "InterfaceMessage.h"
#include "LinuxInterfaceTable.h"

namespace quorvex {
namespace {

/// Index, bytes in, bytes out.
using Counters = std::tuple<std::uint16_t, std::uint64_t, std::uint64_t>;

template <typename Number>
Number numberAt(const std::vector<std::byte>& buffer, std::size_t offset) {
  Number number = 0;
  std::memcpy(&number, buffer.data() + offset, sizeof number);
  return number;
}

class LinuxInterfaceTableTests : public ::testing::Test {
 protected:
  void set(const std::string& file, const std::string& text) {
    tree.file("class/net/" + file, text + "\n");
  }
  void interface(const std::string& name, const std::string& index, const std::string& bytesIn,
                 const std::string& bytesOut) {
    set(name + "/ifindex", index);
    set(name + "/type", "1");
    set(name + "/statistics/rx_bytes", bytesIn);
    set(name + "/statistics/tx_bytes", bytesOut);
  }
  std::vector<Counters> read() {
    const auto buffer = table.readInterfaceList();
    if (!buffer) {
      ADD_FAILURE() << "no list";
      return {};
    }
    EXPECT_EQ(buffer->size() % interface_message::size, 0U);
    std::vector<Counters> messages;
    for (std::size_t start = 0; start < buffer->size(); start += interface_message::size) {
      EXPECT_EQ(numberAt<std::uint16_t>(*buffer, start), 160);
      EXPECT_EQ(numberAt<std::uint8_t>(*buffer, start + 3), 18);
      messages.emplace_back(numberAt<std::uint16_t>(*buffer, start + 12),
                            numberAt<std::uint64_t>(*buffer, start + 96),
                            numberAt<std::uint64_t>(*buffer, start + 104));
    }
    return messages;
  }

  testing::FakeTree tree;
  LinuxInterfaceTable table{tree.root()};
};

TEST_F(LinuxInterfaceTableTests, WithoutTheClassTheReadFails) {
  EXPECT_EQ(table.readInterfaceList(), std::nullopt);
  EXPECT_EQ(table.interfaceName(1), std::nullopt);
}

TEST_F(LinuxInterfaceTableTests, AnEmptyClassIsAnEmptyList) {
  tree.folder("class/net");
  EXPECT_TRUE(read().empty());
}

TEST_F(LinuxInterfaceTableTests, MessagesCarryTheCountersInTheOrderOfTheIndices) {
  interface("a-late-one", "10", "7", "8");
  interface("wlan0", "3", "1000000", "5000");
  interface("eth0", "2", "18446744073709551615", "0");
  const std::vector<Counters> expected{
      {2, std::numeric_limits<std::uint64_t>::max(), 0}, {3, 1000000, 5000}, {10, 7, 8}};
  EXPECT_EQ(read(), expected);
}

TEST_F(LinuxInterfaceTableTests, LoopbackIsKnownByItsTypeAndNamedLo0) {
  interface("lo", "1", "10", "10");
  set("lo/type", "772");
  interface("lol", "2", "20", "20");
  EXPECT_EQ(read().size(), 2U);
  EXPECT_EQ(table.interfaceName(1), "lo0");
  EXPECT_EQ(table.interfaceName(2), "lol");
}

TEST_F(LinuxInterfaceTableTests, WithoutATypeAnInterfaceKeepsItsName) {
  interface("eth0", "2", "1", "2");
  tree.remove("class/net/eth0/type");
  EXPECT_EQ(read().size(), 1U);
  EXPECT_EQ(table.interfaceName(2), "eth0");
}

TEST_F(LinuxInterfaceTableTests, NamesAreFoundWithoutReadingTheListFirst) {
  interface("eth0", "2", "1", "2");
  EXPECT_EQ(table.interfaceName(2), "eth0");
  EXPECT_EQ(table.interfaceName(3), std::nullopt);
}

TEST_F(LinuxInterfaceTableTests, ARenamedInterfaceIsFoundUnderItsNewName) {
  interface("eth0", "2", "1", "2");
  EXPECT_EQ(read().size(), 1U);
  tree.remove("class/net/eth0");
  interface("lan", "2", "1", "2");
  EXPECT_EQ(table.interfaceName(2), "lan");
}

TEST_F(LinuxInterfaceTableTests, ARemovedInterfaceHasNoName) {
  interface("eth0", "2", "1", "2");
  EXPECT_EQ(read().size(), 1U);
  tree.remove("class/net/eth0");
  EXPECT_EQ(table.interfaceName(2), std::nullopt);
}

TEST_F(LinuxInterfaceTableTests, AnInterfaceThatLacksAFileOrIsGarbledIsLeftOut) {
  for (const char* file : {"ifindex", "statistics/rx_bytes", "statistics/tx_bytes"}) {
    interface("eth0", "2", "1", "2");
    interface("wlan0", "3", "5", "6");
    const std::vector<Counters> expected{{3, 5, 6}};
    const std::string path = std::string{"eth0/"} + file;
    tree.remove("class/net/" + path);
    EXPECT_EQ(read(), expected) << file << " missing";
    for (const char* text : {"", "many", "-1", "18446744073709551616"}) {
      set(path, text);
      EXPECT_EQ(read(), expected) << file << ' ' << text;
    }
    tree.unreadable("class/net/" + path);
    EXPECT_EQ(read(), expected) << file << " unreadable";
    tree.remove("class/net/" + path);
  }
}

TEST_F(LinuxInterfaceTableTests, AnIndexBeyond16BitsIsLeftOutAndNotCut) {
  interface("eth0", "65535", "1", "2");
  interface("veth", "65536", "3", "4");
  EXPECT_EQ(read(), (std::vector<Counters>{{65535, 1, 2}}));
  EXPECT_EQ(table.interfaceName(65535), "eth0");
  EXPECT_EQ(table.interfaceName(0), std::nullopt);
}

TEST_F(LinuxInterfaceTableTests, FilesBesideTheInterfacesAreNoInterfaces) {
  set("bonding_masters", "bond0");
  interface("eth0", "2", "1", "2");
  EXPECT_EQ(read().size(), 1U);
}

TEST_F(LinuxInterfaceTableTests, CountersAreReadAnew) {
  interface("eth0", "2", "1", "2");
  EXPECT_EQ(read(), (std::vector<Counters>{{2, 1, 2}}));
  set("eth0/statistics/rx_bytes", "100");
  EXPECT_EQ(read(), (std::vector<Counters>{{2, 100, 2}}));
}

}  // namespace
}  // namespace quorvex
