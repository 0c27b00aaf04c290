#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "FakeChildProcesses.h"
#include "FakeInterfaceTable.h"
#include "NetworkService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeChildProcesses;
using testing::FakeInterfaceTable;
using testing::FakeLaunch;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Interfaces = std::vector<NetworkInterfaceStats>;
using Processes = std::vector<NetworkProcessInfo>;

NetworkInterfaceStats stats(std::int64_t id, std::string name, std::uint64_t bytesIn,
                            std::uint64_t bytesOut, double inPerSec = 0.0, double outPerSec = 0.0) {
  return {id, std::move(name), bytesIn, bytesOut, inPerSec, outPerSec};
}

NetworkProcessInfo process(std::int32_t pid, std::string name, std::uint64_t bytesIn,
                           std::uint64_t bytesOut, double inPerSec = 0.0, double outPerSec = 0.0) {
  return {pid,
          std::move(name),
          bytesIn,
          bytesOut,
          inPerSec,
          outPerSec,
          NetworkAttributionSource::nettop};
}

// Interfaces

class NetworkServiceInterfaceTests : public ::testing::Test {
 protected:
  FakeInterfaceTable table;
  FakeChildProcesses children;
  NetworkService service{table, children, NetworkProcessAttributionMode::disabled};
};

TEST_F(NetworkServiceInterfaceTests, ReadsTheInterfacesInTheKernelsOrder) {
  table.names = {{4, "en0"}, {2, "utun3"}};
  table.set({{.index = 4, .bytesIn = 5'000'000'000, .bytesOut = 600},
             {.index = 2, .bytesIn = 0, .bytesOut = 0}});
  EXPECT_EQ(service.readInterfaces(),
            (Interfaces{stats(4, "en0", 5'000'000'000, 600), stats(2, "utun3", 0, 0)}));
  EXPECT_EQ(table.listReads(), 1);
}

TEST_F(NetworkServiceInterfaceTests, AFailedReadGivesAnEmptyList) {
  EXPECT_THAT(service.readInterfaces(), IsEmpty());
}

TEST_F(NetworkServiceInterfaceTests, AnEmptyBufferGivesAnEmptyList) {
  table.buffer.emplace();
  EXPECT_THAT(service.readInterfaces(), IsEmpty());
}

TEST_F(NetworkServiceInterfaceTests, TheLoopbackInterfaceIsLeftOut) {
  table.names = {{1, "lo0"}, {2, "lo1"}};
  table.set({{.index = 1, .bytesIn = 9, .bytesOut = 9}, {.index = 2, .bytesIn = 1}});
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(2, "lo1", 1, 0)}));
}

TEST_F(NetworkServiceInterfaceTests, AnInterfaceWithoutANameIsLeftOut) {
  table.names = {{4, "en0"}};
  table.set({{.index = 3, .bytesIn = 9}, {.index = 4, .bytesIn = 1}});
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0)}));
}

TEST_F(NetworkServiceInterfaceTests, MessagesOfOtherTypesAreSkippedByTheirLength) {
  table.names = {{4, "en0"}, {5, "en1"}};
  table.set({{.index = 5, .type = 12, .length = 20},
             {.index = 4, .bytesIn = 1},
             {.index = 5, .type = 14, .length = 112},
             {.index = 5, .bytesIn = 2}});
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0), stats(5, "en1", 2, 0)}));
  EXPECT_THAT(table.namedIndices(), ElementsAre(4, 5));
}

TEST_F(NetworkServiceInterfaceTests, AMessageOfLengthZeroEndsTheWalk) {
  table.names = {{4, "en0"}, {5, "en1"}};
  table.set({{.index = 4, .bytesIn = 1}, {.index = 5}});
  (*table.buffer)[160] = std::byte{0};
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0)}));
}

TEST_F(NetworkServiceInterfaceTests, AMessageThatPassesTheEndEndsTheWalk) {
  table.names = {{4, "en0"}, {5, "en1"}};
  table.set({{.index = 4, .bytesIn = 1}, {.index = 5}});
  (*table.buffer)[160] = std::byte{161};
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0)}));
}

TEST_F(NetworkServiceInterfaceTests, ARestOfFewerThan160BytesEndsTheWalk) {
  table.names = {{4, "en0"}, {5, "en1"}};
  table.set({{.index = 4, .bytesIn = 1}, {.index = 5, .length = 159}});
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0)}));
  table.buffer->push_back(std::byte{0});
  EXPECT_THAT(service.readInterfaces(), SizeIs(2));
}

TEST_F(NetworkServiceInterfaceTests, ALongerMessageIsSteppedOverWhole) {
  table.names = {{4, "en0"}, {5, "en1"}};
  table.set({{.index = 4, .bytesIn = 1, .length = 300}, {.index = 5, .bytesIn = 2}});
  EXPECT_EQ(service.readInterfaces(), (Interfaces{stats(4, "en0", 1, 0), stats(5, "en1", 2, 0)}));
}

// Counters and rates

TEST(NetworkServiceTests, ARisingCounterMovedByTheDifference) {
  EXPECT_EQ(NetworkService::counterDelta(100, 350), 250U);
  EXPECT_EQ(NetworkService::counterDelta(0, std::numeric_limits<std::uint64_t>::max()),
            std::numeric_limits<std::uint64_t>::max());
}

TEST(NetworkServiceTests, AnUnchangedCounterMovedByZero) {
  EXPECT_EQ(NetworkService::counterDelta(7, 7), 0U);
}

TEST(NetworkServiceTests, AFallWithinThirtyTwoBitsIsAWrap) {
  // 6 bytes up to the wrap and 10 behind it.
  EXPECT_EQ(NetworkService::counterDelta(4294967290, 10), 16U);
  EXPECT_EQ(NetworkService::counterDelta(4294967295, 0), 1U);
}

TEST(NetworkServiceTests, AFallFromAboveThirtyTwoBitsIsAReset) {
  EXPECT_EQ(NetworkService::counterDelta(5'000'000'000, 10), 0U);
  EXPECT_EQ(NetworkService::counterDelta(4294967296, 0), 0U);
  EXPECT_EQ(NetworkService::counterDelta(6'000'000'000, 5'000'000'000), 0U);
}

TEST(NetworkServiceTests, ThroughputWithoutAnIntervalReturnsTheReadingAsItCame) {
  const Interfaces last{stats(4, "en0", 0, 0)};
  const Interfaces current{stats(4, "en0", 1000, 1000, 3.0, 4.0)};
  EXPECT_EQ(NetworkService::throughput(last, current, 0.0), current);
  EXPECT_EQ(NetworkService::throughput(last, current, -1.0), current);
  EXPECT_EQ(NetworkService::throughput(last, current, std::numeric_limits<double>::quiet_NaN()),
            current);
}

TEST(NetworkServiceTests, ThroughputIsBytesOverSeconds) {
  const Interfaces last{stats(4, "en0", 500, 80)};
  const Interfaces current{stats(4, "en0", 500 + 1000, 80 + 300)};
  EXPECT_EQ(NetworkService::throughput(last, current, 2.0),
            (Interfaces{stats(4, "en0", 1500, 380, 1000 / 2.0, 300 / 2.0)}));
}

TEST(NetworkServiceTests, ThroughputMatchesById) {
  const Interfaces last{stats(5, "en1", 50, 0), stats(4, "en0", 100, 0)};
  const Interfaces current{stats(4, "en9", 300, 0), stats(5, "en1", 60, 0)};
  EXPECT_EQ(NetworkService::throughput(last, current, 1.0),
            (Interfaces{stats(4, "en9", 300, 0, 200.0), stats(5, "en1", 60, 0, 10.0)}));
}

TEST(NetworkServiceTests, AnUnknownInterfaceKeepsItsRates) {
  const Interfaces current{stats(4, "en0", 1000, 1000, 3.0, 4.0)};
  EXPECT_EQ(NetworkService::throughput({}, current, 1.0), current);
}

TEST(NetworkServiceTests, OneWrappedCounterLeavesTheOtherAlone) {
  const Interfaces last{stats(4, "en0", 4294967290, 100)};
  const Interfaces current{stats(4, "en0", 10, 130)};
  EXPECT_EQ(NetworkService::throughput(last, current, 1.0),
            (Interfaces{stats(4, "en0", 10, 130, 16.0, 30.0)}));
}

TEST(NetworkServiceTests, ProcessThroughputIsBytesOverSeconds) {
  const Processes last{process(42, "curl", 100, 50)};
  const Processes current{process(42, "curl", 100 + 4000, 50 + 600)};
  EXPECT_EQ(NetworkService::processThroughput(last, current, 4.0),
            (Processes{process(42, "curl", 4100, 650, 4000 / 4.0, 600 / 4.0)}));
}

TEST(NetworkServiceTests, AReusedPidDoesNotInheritTheOldProcess) {
  const Processes last{process(42, "curl", 100, 50)};
  const Processes current{process(42, "ssh", 5000, 5000)};
  EXPECT_EQ(NetworkService::processThroughput(last, current, 1.0), current);
}

TEST(NetworkServiceTests, AFallingProcessCounterIsAReset) {
  const Processes last{process(42, "curl", 4294967290, 50)};
  const Processes current{process(42, "curl", 10, 80)};
  EXPECT_EQ(NetworkService::processThroughput(last, current, 1.0),
            (Processes{process(42, "curl", 10, 80, 0.0, 30.0)}));
}

TEST(NetworkServiceTests, TheLaterOfTwoEqualIdentitiesIsTheBaseline) {
  const Processes last{process(42, "curl", 100, 0), process(42, "curl", 300, 0)};
  const Processes current{process(42, "curl", 1000, 0)};
  EXPECT_EQ(NetworkService::processThroughput(last, current, 1.0),
            (Processes{process(42, "curl", 1000, 0, 700.0)}));
}

TEST(NetworkServiceTests, ProcessThroughputWithoutAnIntervalHasRatesOfZero) {
  const Processes last{process(42, "curl", 0, 0)};
  const Processes current{process(42, "curl", 1000, 1000, 3.0, 4.0)};
  EXPECT_EQ(NetworkService::processThroughput(last, current, 0.0),
            (Processes{process(42, "curl", 1000, 1000)}));
  EXPECT_EQ(NetworkService::processThroughput({}, current, 1.0),
            (Processes{process(42, "curl", 1000, 1000)}));
}

// The run of nettop

class NetworkServiceNettopTests : public ::testing::Test {
 protected:
  static constexpr const char* output =
      ",bytes_in,bytes_out,\nlaunchd.1,0,0,\nSafari.4242,100,200,\ncurl.7,5000,1,\n";

  FakeInterfaceTable table;
  FakeChildProcesses children;
  NetworkService service{table, children, NetworkProcessAttributionMode::nettop};
};

TEST_F(NetworkServiceNettopTests, RunsTheToolOnceForOneSample) {
  children.answerAll({.output = output});
  static_cast<void>(service.snapshotProcessActivity());
  EXPECT_THAT(children.launches(),
              ElementsAre(FakeLaunch{"/usr/bin/nettop",
                                     {"-P", "-x", "-L", "1", "-J", "bytes_in,bytes_out"}}));
}

TEST_F(NetworkServiceNettopTests, GivesTheProcessesWithTrafficMostBytesFirst) {
  children.answerAll({.output = output});
  EXPECT_EQ(service.snapshotProcessActivity(),
            (Processes{process(7, "curl", 5000, 1), process(4242, "Safari", 100, 200)}));
}

TEST_F(NetworkServiceNettopTests, ProcessesWithoutTrafficAreDropped) {
  children.answerAll({.output = "a.1,0,0\nb.2,1,0\nc.3,0,1\n"});
  EXPECT_EQ(service.readNettopProcessCounters(),
            (Processes{process(2, "b", 1, 0), process(3, "c", 0, 1)}));
}

TEST_F(NetworkServiceNettopTests, EqualTotalsKeepTheToolsOrder) {
  children.answerAll({.output = "b.2,5,5\na.1,10,0\nd.4,11,0\nc.3,0,10\n"});
  EXPECT_EQ(service.readNettopProcessCounters(),
            (Processes{process(4, "d", 11, 0), process(2, "b", 5, 5), process(1, "a", 10, 0),
                       process(3, "c", 0, 10)}));
}

TEST_F(NetworkServiceNettopTests, ADisabledServiceNeverStartsTheTool) {
  children.answerAll({.output = output});
  const NetworkService disabled{table, children, NetworkProcessAttributionMode::disabled};
  EXPECT_EQ(disabled.processAttributionMode(), NetworkProcessAttributionMode::disabled);
  EXPECT_THAT(disabled.snapshotProcessActivity(), IsEmpty());
  EXPECT_THAT(children.launches(), IsEmpty());
}

TEST_F(NetworkServiceNettopTests, AFailedLaunchGivesAnEmptyList) {
  children.failAll("no such file");
  EXPECT_THAT(service.snapshotProcessActivity(), IsEmpty());
}

TEST_F(NetworkServiceNettopTests, AFailedChildGivesAnEmptyListWhateverItPrinted) {
  children.answerAll({.output = output, .exitStatus = 1});
  EXPECT_THAT(service.snapshotProcessActivity(), IsEmpty());
}

TEST_F(NetworkServiceNettopTests, OutputIsReadOnlyAfterTheExitAndErrorsNever) {
  children.answerAll({.output = output, .error = "warning"});
  static_cast<void>(service.snapshotProcessActivity());
  EXPECT_THAT(children.log(),
              ElementsAre("launch /usr/bin/nettop -P -x -L 1 -J bytes_in,bytes_out",
                          "waitForExit 8", "exitStatus", "readOutputToEnd", "destroyed"));
}

TEST_F(NetworkServiceNettopTests, AToolThatTakesTooLongIsTerminated) {
  children.answerAll({.output = output, .seconds = std::nullopt});
  EXPECT_THAT(service.snapshotProcessActivity(), IsEmpty());
  EXPECT_THAT(children.log(), ElementsAre("launch /usr/bin/nettop -P -x -L 1 -J bytes_in,bytes_out",
                                          "waitForExit 8", "terminate", "destroyed"));
}

TEST_F(NetworkServiceNettopTests, AToolThatEndsJustInTimeIsHeard) {
  children.answerAll({.output = output, .seconds = 8.0});
  EXPECT_THAT(service.snapshotProcessActivity(), SizeIs(2));
}

TEST_F(NetworkServiceNettopTests, PathAndTimeoutCanBeChosen) {
  children.answerAll({.output = output, .seconds = 1.0});
  const NetworkService chosen{table, children, NetworkProcessAttributionMode::nettop, "/opt/nettop",
                              0.5};
  EXPECT_THAT(chosen.snapshotProcessActivity(), IsEmpty());
  EXPECT_EQ(children.launches().front().path, "/opt/nettop");
  EXPECT_EQ(children.log()[1], "waitForExit 0.5");
}

TEST_F(NetworkServiceNettopTests, OutputThatIsNoUTF8GivesAnEmptyList) {
  children.answerAll({.output = std::string{output} + "caf\xE9.9,1,1\n"});
  EXPECT_THAT(service.snapshotProcessActivity(), IsEmpty());
  children.answerAll({.output = std::string{output} + "café.9,1,1\n"});
  EXPECT_THAT(service.snapshotProcessActivity(), SizeIs(3));
}

TEST_F(NetworkServiceNettopTests, NoOutputGivesAnEmptyList) {
  children.answerAll({.output = ""});
  EXPECT_THAT(service.snapshotProcessActivity(), IsEmpty());
}

using NetworkServiceNettopDeathTests = NetworkServiceNettopTests;

TEST_F(NetworkServiceNettopDeathTests, CountersWhoseSumOverflowsAreFatal) {
  children.answerAll({.output = "a.1,18446744073709551615,1\n"});
  EXPECT_DEATH(static_cast<void>(service.readNettopProcessCounters()),
               "Fatal error: integer overflow in an addition");
}

}  // namespace
}  // namespace quorvex
