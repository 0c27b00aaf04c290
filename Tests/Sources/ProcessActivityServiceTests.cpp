#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <numeric>

#include "FakeClock.h"
#include "FakeProcessTable.h"
#include "ProcessActivityService.h"

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using testing::FakeClock;
using testing::FakeProcessTable;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Call = FakeProcessTable::Call;

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;
constexpr std::uint64_t nanojoulesPerJoule = 1'000'000'000;
constexpr std::uint64_t megabyte = 1'000'000;
constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

/// The one process of a ranking over two samples of it; fails the test when it is not listed.
ProcessActivityInfo onlyActivity(const ProcessSample& first, const ProcessSample& second,
                                 double seconds) {
  const auto ranked =
      ProcessActivityService::rankedActivity(std::vector{first}, std::vector{second}, seconds);
  EXPECT_THAT(ranked, SizeIs(1));
  return ranked.empty() ? ProcessActivityInfo{} : ranked.front();
}

ProcessSample idle(std::int32_t pid = 42) {
  return {.pid = pid, .name = "worker"};
}

TEST(ProcessActivityRanking, OneCoreFullyBusyIsAHundredPercent) {
  ProcessSample busy = idle();
  busy.cpuTimeNanoseconds = 1 * nanosecondsPerSecond;
  const ProcessActivityInfo info = onlyActivity(idle(), busy, 1.0);
  EXPECT_DOUBLE_EQ(info.cpuPercent, 100.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 100.0);
}

TEST(ProcessActivityRanking, FourBusyCoresAreFourHundredPercentWithNoCap) {
  ProcessSample busy = idle();
  busy.cpuTimeNanoseconds = 4 * nanosecondsPerSecond;
  const ProcessActivityInfo info = onlyActivity(idle(), busy, 1.0);
  EXPECT_DOUBLE_EQ(info.cpuPercent, 400.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 400.0);
}

TEST(ProcessActivityRanking, RatesArePerSecondOfTheInterval) {
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = nanosecondsPerSecond / 4;
  second.wakeups = 10;
  second.diskBytes = 3 * megabyte;
  second.energyNanojoules = nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(idle(), second, 0.5);
  EXPECT_DOUBLE_EQ(info.cpuPercent, 0.25 / 0.5 * 100.0);
  EXPECT_DOUBLE_EQ(info.wakeupsPerSecond, 10 / 0.5);
  EXPECT_DOUBLE_EQ(info.diskBytesPerSecond, 3e6 / 0.5);
  ASSERT_TRUE(info.energyWattsEstimate.has_value());
  EXPECT_DOUBLE_EQ(*info.energyWattsEstimate, 1.0 / 0.5);
  // 50 % CPU, 20 wakeups/s * 0.2, 6 MB/s * 0.5, 2 W * 10.
  EXPECT_DOUBLE_EQ(info.impactScore, 50.0 + 4.0 + 3.0 + 20.0);
}

TEST(ProcessActivityRanking, AThousandWakeupsPerSecondScoreTheCap) {
  ProcessSample second = idle();
  second.wakeups = 1000;
  const ProcessActivityInfo info = onlyActivity(idle(), second, 1.0);
  EXPECT_DOUBLE_EQ(info.wakeupsPerSecond, 1000.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 100.0);
}

TEST(ProcessActivityRanking, AHundredWakeupsPerSecondScoreTwenty) {
  ProcessSample second = idle();
  second.wakeups = 100;
  EXPECT_DOUBLE_EQ(onlyActivity(idle(), second, 1.0).impactScore, 100 * 0.2);
}

TEST(ProcessActivityRanking, FourHundredMegabytesPerSecondScoreTheCap) {
  ProcessSample second = idle();
  second.diskBytes = 400 * megabyte;
  const ProcessActivityInfo info = onlyActivity(idle(), second, 1.0);
  EXPECT_DOUBLE_EQ(info.diskBytesPerSecond, 4e8);
  EXPECT_DOUBLE_EQ(info.impactScore, 100.0);
}

TEST(ProcessActivityRanking, TwoMegabytesPerSecondScoreOne) {
  ProcessSample second = idle();
  second.diskBytes = 2 * megabyte;
  EXPECT_DOUBLE_EQ(onlyActivity(idle(), second, 1.0).impactScore, 2 * 0.5);
}

TEST(ProcessActivityRanking, OneJoulePerSecondIsOneWattAndTenPoints) {
  ProcessSample second = idle();
  second.energyNanojoules = nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(idle(), second, 1.0);
  EXPECT_EQ(info.energyWattsEstimate, 1.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 1.0 * 10.0);
}

TEST(ProcessActivityRanking, TwentyWattsScoreTheCap) {
  ProcessSample second = idle();
  second.energyNanojoules = 20 * nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(idle(), second, 1.0);
  EXPECT_EQ(info.energyWattsEstimate, 20.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 100.0);
}

TEST(ProcessActivityRanking, TheThreeCapsAreSeparateAndCPUAddsOnTop) {
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = 2 * nanosecondsPerSecond;
  second.wakeups = 100'000;
  second.diskBytes = 100'000 * megabyte;
  second.energyNanojoules = 1000 * nanojoulesPerJoule;
  EXPECT_DOUBLE_EQ(onlyActivity(idle(), second, 1.0).impactScore, 200.0 + 100.0 + 100.0 + 100.0);
}

TEST(ProcessActivityRanking, NoEnergyMovedMeansNoWattsAndNotZeroWatts) {
  ProcessSample first = idle();
  first.energyNanojoules = 7;
  ProcessSample second = first;
  second.wakeups = 100;
  EXPECT_EQ(onlyActivity(first, second, 1.0).energyWattsEstimate, std::nullopt);
}

TEST(ProcessActivityRanking, AFallingCPUCounterCountsAsZeroWhileTheOthersGrow) {
  ProcessSample first = idle();
  first.cpuTimeNanoseconds = 10;
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = 9;
  second.wakeups = 10;
  second.diskBytes = 2 * megabyte;
  second.energyNanojoules = nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(first, second, 1.0);
  EXPECT_EQ(info.cpuPercent, 0.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 2.0 + 1.0 + 10.0);
}

TEST(ProcessActivityRanking, AFallingWakeupCounterCountsAsZeroWhileTheOthersGrow) {
  ProcessSample first = idle();
  first.wakeups = 10;
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = nanosecondsPerSecond / 100;
  second.wakeups = 9;
  second.diskBytes = 2 * megabyte;
  second.energyNanojoules = nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(first, second, 1.0);
  EXPECT_EQ(info.wakeupsPerSecond, 0.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 1.0 + 1.0 + 10.0);
}

TEST(ProcessActivityRanking, AFallingDiskCounterCountsAsZeroWhileTheOthersGrow) {
  ProcessSample first = idle();
  first.diskBytes = 10;
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = nanosecondsPerSecond / 100;
  second.wakeups = 10;
  second.diskBytes = 9;
  second.energyNanojoules = nanojoulesPerJoule;
  const ProcessActivityInfo info = onlyActivity(first, second, 1.0);
  EXPECT_EQ(info.diskBytesPerSecond, 0.0);
  EXPECT_DOUBLE_EQ(info.impactScore, 1.0 + 2.0 + 10.0);
}

TEST(ProcessActivityRanking, AFallingEnergyCounterGivesNoWattsWhileTheOthersGrow) {
  ProcessSample first = idle();
  first.energyNanojoules = 10;
  ProcessSample second = idle();
  second.cpuTimeNanoseconds = nanosecondsPerSecond / 100;
  second.wakeups = 10;
  second.diskBytes = 2 * megabyte;
  second.energyNanojoules = 9;
  const ProcessActivityInfo info = onlyActivity(first, second, 1.0);
  EXPECT_EQ(info.energyWattsEstimate, std::nullopt);
  EXPECT_DOUBLE_EQ(info.impactScore, 1.0 + 2.0 + 1.0);
}

TEST(ProcessActivityRanking, AScoreOfExactlyTheLeastIsDropped) {
  // 100 kB/s are 0.1 MB/s * 0.5 = 0.05 points.
  ProcessSample second = idle();
  second.diskBytes = 100'000;
  EXPECT_THAT(ProcessActivityService::rankedActivity(std::vector{idle()}, std::vector{second}, 1.0),
              IsEmpty());
  second.diskBytes = 100'001;
  EXPECT_THAT(ProcessActivityService::rankedActivity(std::vector{idle()}, std::vector{second}, 1.0),
              SizeIs(1));
}

TEST(ProcessActivityRanking, EnergyAloneCanLiftAProcessAboveTheLeastScore) {
  ProcessSample second = idle();
  second.energyNanojoules = nanojoulesPerJoule / 100;
  EXPECT_DOUBLE_EQ(onlyActivity(idle(), second, 1.0).impactScore, 0.01 * 10.0);
}

TEST(ProcessActivityRanking, AProcessInOneWalkOnlyIsDropped) {
  ProcessSample started = idle(3);
  started.wakeups = 1000;
  ProcessSample ended = idle(1);
  ended.wakeups = 1000;
  ProcessSample stays = idle(2);
  stays.wakeups = 100;
  EXPECT_THAT(ProcessActivityService::rankedActivity(std::vector{ended, idle(2)},
                                                     std::vector{stays, started}, 1.0),
              ElementsAre(Field(&ProcessActivityInfo::pid, 2)));
}

TEST(ProcessActivityRanking, EqualScoresStandInTheOrderOfTheirPids) {
  std::vector<ProcessSample> first;
  std::vector<ProcessSample> second;
  for (const std::int32_t pid : {1, 2, 3, 4}) {
    first.push_back(idle(pid));
    second.push_back(idle(pid));
    second.back().wakeups = pid == 3 ? 200 : 100;
  }
  EXPECT_THAT(
      ProcessActivityService::rankedActivity(first, second, 1.0),
      ElementsAre(Field(&ProcessActivityInfo::pid, 3), Field(&ProcessActivityInfo::pid, 1),
                  Field(&ProcessActivityInfo::pid, 2), Field(&ProcessActivityInfo::pid, 4)));
}

TEST(ProcessActivityRanking, TheNameIsThatOfTheSecondWalkAndTheIdentityIsThePid) {
  ProcessSample first = idle(42);
  first.name = "launcher";
  ProcessSample second = idle(42);
  second.name = "editor";
  second.wakeups = 100;
  const ProcessActivityInfo info = onlyActivity(first, second, 1.0);
  EXPECT_EQ(info.name, "editor");
  EXPECT_EQ(info.pid, 42);
  EXPECT_EQ(info.id, 42);
}

class ProcessActivityServiceTest : public ::testing::Test {
 protected:
  FakeProcessTable table;
  FakeClock clock;
  ProcessActivityService service{table, clock};

  /// Gives processes 1…count, which each make `pid` wakeups while the service sleeps.
  void makeProcesses(std::int32_t count) {
    for (std::int32_t pid = 1; pid <= count; ++pid) {
      table.setProcess(pid, "worker", {});
    }
    clock.duringSleep([this, count] {
      for (std::int32_t pid = 1; pid <= count; ++pid) {
        table.setProcess(pid, "worker", {.idleWakeups = static_cast<std::uint64_t>(pid) * 10});
      }
    });
  }
};

TEST_F(ProcessActivityServiceTest, AnIntervalOfZeroSleepsAndDividesByATenthOfASecond) {
  makeProcesses(1);
  const auto top = service.sampleTopProcesses(5, 0.0);
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.1));
  ASSERT_THAT(top, SizeIs(1));
  EXPECT_DOUBLE_EQ(top[0].wakeupsPerSecond, 10 / 0.1);
}

TEST_F(ProcessActivityServiceTest, ANegativeIntervalSleepsAndDividesByATenthOfASecond) {
  makeProcesses(1);
  const auto top = service.sampleTopProcesses(5, -3.0);
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.1));
  ASSERT_THAT(top, SizeIs(1));
  EXPECT_DOUBLE_EQ(top[0].wakeupsPerSecond, 10 / 0.1);
}

TEST_F(ProcessActivityServiceTest, AnIntervalThatIsNoNumberSleepsATenthOfASecond) {
  makeProcesses(1);
  EXPECT_THAT(service.sampleTopProcesses(5, std::numeric_limits<double>::quiet_NaN()), SizeIs(1));
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.1));
}

TEST_F(ProcessActivityServiceTest, TheDivisorIsTheIntervalAndNotTheTimeThatReallyPassed) {
  table.setProcess(1, "p", {});
  clock.duringSleep([this] {
    table.setProcess(1, "p", {.interruptWakeups = 70});
    clock.advance(100.0);
  });
  const auto top = service.sampleTopProcesses(5, 0.35);
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.35));
  ASSERT_THAT(top, SizeIs(1));
  EXPECT_DOUBLE_EQ(top[0].wakeupsPerSecond, 70 / 0.35);
}

TEST_F(ProcessActivityServiceTest,
       AskedForNothingInParticularGivesFiveAfterATimeOf350Milliseconds) {
  makeProcesses(8);
  EXPECT_THAT(service.sampleTopProcesses(), SizeIs(5));
  EXPECT_THAT(clock.sleeps(), ElementsAre(0.35));
}

TEST_F(ProcessActivityServiceTest, TheHighestScoresComeFirst) {
  makeProcesses(4);
  EXPECT_THAT(service.sampleTopProcesses(3, 1.0),
              ElementsAre(Field(&ProcessActivityInfo::pid, 4), Field(&ProcessActivityInfo::pid, 3),
                          Field(&ProcessActivityInfo::pid, 2)));
}

TEST_F(ProcessActivityServiceTest, ALimitOfZeroGivesNone) {
  makeProcesses(4);
  EXPECT_THAT(service.sampleTopProcesses(0, 1.0), IsEmpty());
}

TEST_F(ProcessActivityServiceTest, ANegativeLimitGivesNone) {
  makeProcesses(4);
  EXPECT_THAT(service.sampleTopProcesses(-1, 1.0), IsEmpty());
}

TEST_F(ProcessActivityServiceTest, ALimitBeyondTheListGivesTheWholeList) {
  makeProcesses(4);
  EXPECT_THAT(service.sampleTopProcesses(1000, 1.0), SizeIs(4));
}

TEST_F(ProcessActivityServiceTest, AnEmptyFirstWalkGivesNoneWithoutSleeping) {
  EXPECT_THAT(service.sampleTopProcesses(5, 1.0), IsEmpty());
  EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(ProcessActivityServiceTest, AnEmptySecondWalkGivesNone) {
  makeProcesses(4);
  clock.duringSleep([this] { table.clear(); });
  EXPECT_THAT(service.sampleTopProcesses(5, 1.0), IsEmpty());
  EXPECT_THAT(clock.sleeps(), ElementsAre(1.0));
}

TEST_F(ProcessActivityServiceTest, EachWalkListsOnceAndAsksEachProcessOnceForCountersAndName) {
  makeProcesses(500);
  EXPECT_THAT(service.sampleTopProcesses(5, 1.0), SizeIs(5));
  EXPECT_EQ(table.count(Call::Kind::list), 2);
  EXPECT_EQ(table.count(Call::Kind::resources), 2 * 500);
  EXPECT_EQ(table.count(Call::Kind::name), 2 * 500);
}

TEST_F(ProcessActivityServiceTest, AFailedListGivesNoIDs) {
  table.setProcess(1, "p", {});
  table.setListResult(0);
  EXPECT_THAT(service.processIDs(), IsEmpty());
  table.setListResult(-1);
  EXPECT_THAT(service.processIDs(), IsEmpty());
  EXPECT_EQ(table.count(Call::Kind::list), 2);
}

TEST_F(ProcessActivityServiceTest, AListShorterThanTheFirstBufferTakesOneCall) {
  std::vector<std::int32_t> ids(4095);
  std::iota(ids.begin(), ids.end(), 1);
  table.setIDs(ids);
  EXPECT_EQ(service.processIDs(), ids);
  EXPECT_THAT(table.calls(), ElementsAre(Call{Call::Kind::list, 4096}));
}

TEST_F(ProcessActivityServiceTest, AFilledBufferIsTriedAgainInTheNextSize) {
  std::vector<std::int32_t> ids(4096);
  std::iota(ids.begin(), ids.end(), 1);
  table.setIDs(ids);
  EXPECT_EQ(service.processIDs(), ids);
  EXPECT_THAT(table.calls(),
              ElementsAre(Call{Call::Kind::list, 4096}, Call{Call::Kind::list, 8192}));
}

TEST_F(ProcessActivityServiceTest, AFilledLargestBufferGivesNoIDs) {
  table.setIDs(std::vector<std::int32_t>(65536, 1));
  EXPECT_THAT(service.processIDs(), IsEmpty());
  EXPECT_THAT(table.calls(),
              ElementsAre(Call{Call::Kind::list, 4096}, Call{Call::Kind::list, 8192},
                          Call{Call::Kind::list, 16384}, Call{Call::Kind::list, 32768},
                          Call{Call::Kind::list, 65536}));
}

TEST_F(ProcessActivityServiceTest, AnIncompleteLastIDIsCutOff) {
  table.setIDs({11, 12, 13});
  table.setListResult(11);
  EXPECT_THAT(service.processIDs(), ElementsAre(11, 12));
}

TEST_F(ProcessActivityServiceTest, PidZeroAndNegativePidsAreSkipped) {
  table.setProcess(0, "kernel", {});
  table.setProcess(-5, "odd", {});
  table.setProcess(1, "init", {});
  EXPECT_THAT(service.processSamplesByPID(), ElementsAre(Field(&ProcessSample::pid, 1)));
  EXPECT_EQ(table.count(Call::Kind::resources), 1);
}

TEST_F(ProcessActivityServiceTest, AProcessWithoutReadableCountersIsLeftOutAndNeverNamed) {
  table.setProcess(1, "init", {});
  table.setProcess(2, "secret", {});
  table.queueResources(2, {std::nullopt});
  EXPECT_THAT(service.processSamplesByPID(), ElementsAre(Field(&ProcessSample::pid, 1)));
  EXPECT_EQ(table.count(Call::Kind::name), 1);
}

TEST_F(ProcessActivityServiceTest, ASampleSumsThePairsOfCounters) {
  table.setProcess(7, "seven",
                   {.userTime = 1,
                    .systemTime = 20,
                    .idleWakeups = 300,
                    .interruptWakeups = 4000,
                    .bytesRead = 50'000,
                    .bytesWritten = 600'000,
                    .energy = 7'000'000});
  EXPECT_THAT(service.processSamplesByPID(),
              ElementsAre(ProcessSample{.pid = 7,
                                        .name = "seven",
                                        .cpuTimeNanoseconds = 21,
                                        .wakeups = 4300,
                                        .diskBytes = 650'000,
                                        .energyNanojoules = 7'000'000}));
}

TEST_F(ProcessActivityServiceTest, ASumPast64BitsStaysAtTheLargestValue) {
  table.setProcess(7, "seven", {.userTime = largest, .systemTime = 1});
  const auto samples = service.processSamplesByPID();
  ASSERT_THAT(samples, SizeIs(1));
  EXPECT_EQ(samples[0].cpuTimeNanoseconds, largest);
}

TEST_F(ProcessActivityServiceTest, SamplesAscendByPidWhateverTheSystemsOrder) {
  for (const std::int32_t pid : {30, 10, 20}) {
    table.setProcess(pid, "p", {});
  }
  EXPECT_THAT(service.processSamplesByPID(),
              ElementsAre(Field(&ProcessSample::pid, 10), Field(&ProcessSample::pid, 20),
                          Field(&ProcessSample::pid, 30)));
}

TEST_F(ProcessActivityServiceTest, ALaterDuplicateOfAPidOverwritesAnEarlierOne) {
  table.setProcess(9, "nine", {.bytesRead = 3});
  table.setProcess(8, "eight", {});
  table.setIDs({9, 8, 9, 9});
  table.queueResources(9, {ProcessResources{.bytesRead = 1}, ProcessResources{.bytesRead = 2}});
  EXPECT_THAT(service.processSamplesByPID(),
              ElementsAre(ProcessSample{.pid = 8, .name = "eight"},
                          ProcessSample{.pid = 9, .name = "nine", .diskBytes = 3}));
}

TEST_F(ProcessActivityServiceTest, AFailedNameLookupGivesThePidAsText) {
  table.setProcess(77, "hidden", {});
  table.setNameFails(77);
  EXPECT_EQ(service.processName(77), "PID 77");
  EXPECT_THAT(service.processSamplesByPID(), ElementsAre(Field(&ProcessSample::name, "PID 77")));
}

TEST_F(ProcessActivityServiceTest, ANameThatIsEmptyUpToItsFirstNULGivesThePidAsText) {
  table.setProcess(78, std::string{"\0abc", 4}, {});
  EXPECT_EQ(service.processName(78), "PID 78");
}

TEST_F(ProcessActivityServiceTest, ANameEndsAtItsFirstNUL) {
  table.setProcess(79, std::string{"abc\0def", 7}, {});
  EXPECT_EQ(service.processName(79), "abc");
}

TEST_F(ProcessActivityServiceTest, ANameThatIsNoValidUTF8IsRepaired) {
  table.setProcess(80, "a\xFFz", {});
  EXPECT_EQ(service.processName(80), "a\uFFFDz");
}

TEST_F(ProcessActivityServiceTest, ANameFillsAtMostTheBuffer) {
  table.setProcess(81, std::string(5000, 'n'), {});
  EXPECT_EQ(service.processName(81), std::string(1024, 'n'));
}

TEST_F(ProcessActivityServiceTest, ProcessesThatDoNothingAreNotListed) {
  table.setProcess(1, "sleeper", {.userTime = 5 * nanosecondsPerSecond});
  EXPECT_THAT(service.sampleTopProcesses(5, 1.0), IsEmpty());
}

}  // namespace
}  // namespace quorvex
