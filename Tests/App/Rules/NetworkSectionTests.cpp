#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NetworkSection.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

SystemPowerState stateOf(std::vector<NetworkInterfaceStats> interfaces) {
  return {.network = NetworkSnapshot{.interfaces = std::move(interfaces)}};
}

NetworkProcessInfo process(std::int32_t id, std::string name, double inPerSec) {
  return {.id = id, .name = std::move(name), .bytesInPerSec = inPerSec};
}

TEST(NetworkSectionTests, ShowsRatesAndTotals) {
  const NetworkSection section = networkSection(
      stateOf({samples::interface(4, "en0", 1, 1, 1.5e6, 2e3)}), {}, 3'000'000'000, 512);
  EXPECT_EQ(section.title, "Network");
  EXPECT_EQ(section.download, (NetworkRate{"Download", "arrow.down", "1.5 MB/s"}));
  EXPECT_EQ(section.upload, (NetworkRate{"Upload", "arrow.up", "2.0 KB/s"}));
  EXPECT_EQ(section.totalLabel, "Total");
  EXPECT_EQ(section.totalIn.text, "3.0 GB");
  EXPECT_EQ(section.totalOut.text, "512 B");
  EXPECT_EQ(section.totalNote, "since monitoring started");
}

TEST(NetworkSectionTests, ThroughputIsOfTheReadingsWithASnapshot) {
  const std::vector<SystemPowerState> history{
      stateOf({samples::interface(4, "en0", 1, 1, 100.0, 50.0)}),
      {},
      stateOf({samples::interface(4, "en0", 1, 1, 0.0, 75.0)})};
  const NetworkSection section = networkSection({}, history, 0, 0);
  EXPECT_EQ(section.throughput.label, "Throughput");
  ASSERT_THAT(section.throughput.lines, SizeIs(1));
  ASSERT_THAT(section.throughput.lines[0].points, SizeIs(2));
  // 100 + 50 bytes a second at the top, 0 + 75 half way.
  EXPECT_EQ(section.throughput.lines[0].points[0].height, 1.0);
  EXPECT_EQ(section.throughput.lines[0].points[1].height, 0.5);
}

TEST(NetworkSectionTests, InterfacesAreAllButLoopback) {
  const NetworkSection section = networkSection(
      stateOf({samples::interface(1, "lo0", 1, 1, 9.0, 9.0),
               samples::interface(4, "en0", 1, 1, 1e3, 20.0), samples::interface(9, "utun0")}),
      {}, 0, 0);
  EXPECT_EQ(section.interfacesTitle, "Interfaces (2)");
  ASSERT_THAT(section.interfaces, SizeIs(2));
  EXPECT_EQ(section.interfaces[0].name, "en0");
  EXPECT_EQ(section.interfaces[0].inText, "1.0 KB/s");
  EXPECT_EQ(section.interfaces[0].outText, "20 B/s");
  EXPECT_EQ(section.interfaces[0].accessibilityText, "en0: download 1.0 KB/s, upload 20 B/s");
  EXPECT_EQ(section.interfaces[1].name, "utun0");
}

TEST(NetworkSectionTests, TopProcessesAreTheBusiestFive) {
  SystemPowerState state = stateOf({});
  state.network->processes = {process(1, "a", 100.0), process(2, "b", 700.0),
                              process(3, "c", 300.0), process(4, "d", 200.0),
                              process(5, "e", 500.0), process(6, "f", 400.0),
                              process(7, "g", 600.0)};
  const NetworkSection section = networkSection(state, {}, 0, 0);
  EXPECT_EQ(section.topProcessesTitle, "Top Processes");
  ASSERT_THAT(section.topProcesses, SizeIs(5));
  EXPECT_EQ(section.topProcesses[0].name, "b");
  EXPECT_EQ(section.topProcesses[0].inText, "700 B/s");
  EXPECT_EQ(section.topProcesses[0].outText, "0 B/s");
  EXPECT_EQ(section.topProcesses[4].name, "c");
}

TEST(NetworkSectionTests, IdleProcessesAreNotListed) {
  SystemPowerState state = stateOf({});
  state.network->processes = {process(1, "idle", 0.0)};
  const NetworkSection section = networkSection(state, {}, 0, 0);
  EXPECT_THAT(section.topProcesses, IsEmpty());
  EXPECT_EQ(section.topProcessesTitle, "");
}

TEST(NetworkSectionTests, AbsentSnapshotCountsAsNoInterfaces) {
  const NetworkSection section = networkSection({}, {}, 0, 0);
  EXPECT_EQ(section.download.text, "0 B/s");
  EXPECT_EQ(section.upload.text, "0 B/s");
  EXPECT_EQ(section.interfacesTitle, "Interfaces (0)");
  EXPECT_THAT(section.interfaces, IsEmpty());
  EXPECT_EQ(section.throughput.emptyText, "Collecting data...");
}

}  // namespace
}  // namespace quorvex
