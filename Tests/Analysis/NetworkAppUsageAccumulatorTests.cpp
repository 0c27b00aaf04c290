#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>
#include <map>

#include "NetworkAppUsageAccumulator.h"
#include "ObservationBuilder.h"

namespace quorvex {
namespace {

using observations::at;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::size_t all = 1000;

ObservedNetworkProcess process(std::int32_t pid, std::string_view name, std::uint64_t bytesIn,
                               std::uint64_t bytesOut = 0) {
  return {.pid = pid, .name = name, .isFromNettop = true, .bytesIn = bytesIn, .bytesOut = bytesOut};
}

class Accumulating {
 public:
  explicit Accumulating(std::optional<double> maxGap = 120.0) : accumulator_(maxGap) {}

  Accumulating& at(double seconds, const std::vector<ObservedNetworkProcess>& rows,
                   std::string_view fallback = "none") {
    accumulator_.ingest(std::span{rows}, fallback, observations::at(seconds));
    return *this;
  }
  [[nodiscard]] std::vector<PowerSessionNetworkAppUsage> apps(std::size_t limit = all) const {
    return accumulator_.materialize(limit);
  }
  [[nodiscard]] std::vector<std::string> names(std::size_t limit = all) const {
    std::vector<std::string> result;
    for (const auto& app : apps(limit)) {
      result.push_back(app.name);
    }
    return result;
  }

 private:
  NetworkAppUsageAccumulator accumulator_;
};

TEST(NetworkAppUsageAccumulator, CountsTheIncreaseBetweenNeighbouringSamples) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 1000, 100)})
                        .at(10, {process(1, "curl", 1500, 130)})
                        .at(20, {process(1, "curl", 1700, 130)})
                        .apps();
  EXPECT_THAT(apps, ElementsAre(PowerSessionNetworkAppUsage{.name = "curl",
                                                            .source = "nettop",
                                                            .totalBytesIn = 500 + 200,
                                                            .totalBytesOut = 30,
                                                            .sampleCount = 3}));
}

TEST(NetworkAppUsageAccumulator, AFallenCounterAddsNothingAndIsTheNewBaseline) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 1000)})
                        .at(10, {process(1, "curl", 200)})
                        .at(20, {process(1, "curl", 260)})
                        .apps();
  ASSERT_THAT(apps, SizeIs(1));
  EXPECT_EQ(apps[0].totalBytesIn, 60U);
}

TEST(NetworkAppUsageAccumulator, DirectionsFallApart) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 1000, 1000)})
                        .at(10, {process(1, "curl", 900, 1010)})
                        .apps();
  EXPECT_EQ(apps[0].totalBytesIn, 0U);
  EXPECT_EQ(apps[0].totalBytesOut, 10U);
}

TEST(NetworkAppUsageAccumulator, AProcessThatMissesASampleLosesItsBaseline) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 1000), process(2, "ssh", 10)})
                        .at(10, {process(2, "ssh", 20)})
                        .at(20, {process(1, "curl", 5000), process(2, "ssh", 30)})
                        .at(30, {process(1, "curl", 5001), process(2, "ssh", 40)})
                        .apps();
  ASSERT_THAT(apps, SizeIs(2));
  EXPECT_EQ(apps[0].name, "ssh");
  EXPECT_EQ(apps[0].totalBytesIn, 30U);
  EXPECT_EQ(apps[1].totalBytesIn, 1U);
}

TEST(NetworkAppUsageAccumulator, AnEmptyListIsASampleToo) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 1000)})
                        .at(10, {})
                        .at(20, {process(1, "curl", 5000)})
                        .apps();
  EXPECT_THAT(apps, IsEmpty());
}

TEST(NetworkAppUsageAccumulator, NothingIsComparedAcrossAGap) {
  const auto bytes = [](double seconds, std::optional<double> maxGap) {
    const auto apps = Accumulating{maxGap}
                          .at(0, {process(1, "curl", 1000)})
                          .at(seconds, {process(1, "curl", 1100)})
                          .apps();
    return apps.empty() ? 0U : apps[0].totalBytesIn;
  };
  EXPECT_EQ(bytes(120.0, 120.0), 100U);
  EXPECT_EQ(bytes(120.5, 120.0), 0U);
  EXPECT_EQ(bytes(5000.0, std::nullopt), 100U);
}

TEST(NetworkAppUsageAccumulator, NothingIsComparedWithinOneInstantOrBackInTime) {
  EXPECT_THAT(Accumulating{}
                  .at(10, {process(1, "curl", 1000)})
                  .at(10, {process(1, "curl", 1100)})
                  .at(5, {process(1, "curl", 1200)})
                  .apps(),
              IsEmpty());
}

TEST(NetworkAppUsageAccumulator, AReusedPidIsAnotherProcess) {
  EXPECT_THAT(
      Accumulating{}.at(0, {process(1, "curl", 10)}).at(10, {process(1, "ssh", 500)}).apps(),
      IsEmpty());
}

TEST(NetworkAppUsageAccumulator, ProcessesOfOneNameFoldIntoOneApp) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "Web", 100), process(2, "Web", 1000)})
                        .at(10, {process(1, "Web", 110), process(2, "Web", 1005)})
                        .apps();
  ASSERT_THAT(apps, SizeIs(1));
  EXPECT_EQ(apps[0].totalBytesIn, 10U + 5U);
  EXPECT_EQ(apps[0].sampleCount, 4);
}

TEST(NetworkAppUsageAccumulator, ARowWithoutSourceTakesTheSnapshots) {
  auto row = process(1, "curl", 10);
  row.isFromNettop = false;
  row.bytesInPerSec = 1.0;
  auto named = row;
  named.isFromNettop = true;
  const auto apps = Accumulating{}.at(0, {row, named}, "other").apps();
  ASSERT_THAT(apps, SizeIs(2));
  EXPECT_EQ(apps[0].source, "nettop");
  EXPECT_EQ(apps[1].source, "other");
}

TEST(NetworkAppUsageAccumulator, OfARowThatComesTwiceTheLaterIsTheBaseline) {
  const auto apps = Accumulating{}
                        .at(0, {process(1, "curl", 100), process(1, "curl", 400)})
                        .at(10, {process(1, "curl", 450), process(1, "curl", 460)})
                        .apps();
  ASSERT_THAT(apps, SizeIs(1));
  EXPECT_EQ(apps[0].totalBytesIn, 50U + 60U);
}

TEST(NetworkAppUsageAccumulator, PeaksAreThoseOfSingleRows) {
  auto first = process(1, "Web", 0);
  auto second = process(2, "Web", 0);
  first.bytesInPerSec = 10.0;
  second.bytesInPerSec = 30.0;
  second.bytesOutPerSec = 2.0;
  const auto apps = Accumulating{}.at(0, {first, second}).apps();
  ASSERT_THAT(apps, SizeIs(1));
  EXPECT_EQ(apps[0].peakBytesInPerSec, 30.0);
  EXPECT_EQ(apps[0].peakBytesOutPerSec, 2.0);
}

TEST(NetworkAppUsageAccumulator, AppsWithoutAnyTrafficAreLeftOut) {
  auto peakOnly = process(2, "peak", 0);
  peakOnly.bytesOutPerSec = 0.5;
  EXPECT_THAT(Accumulating{}.at(0, {process(1, "idle", 1000), peakOnly}).names(),
              ElementsAre("peak"));
}

TEST(NetworkAppUsageAccumulator, MostBytesComeFirstThenGreatestPeaksThenNames) {
  const auto row = [](std::int32_t pid, std::string_view name, std::uint64_t in, double peak) {
    auto result = process(pid, name, in);
    result.bytesOutPerSec = peak;
    return result;
  };
  Accumulating accumulating;
  accumulating.at(0, {row(1, "d", 0, 1), row(2, "c", 0, 1), row(3, "b", 0, 9), row(4, "a", 0, 0)})
      .at(10, {row(1, "d", 50, 1), row(2, "c", 50, 1), row(3, "b", 50, 0), row(4, "a", 60, 0)});
  EXPECT_THAT(accumulating.names(), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(accumulating.names(2), ElementsAre("a", "b"));
  EXPECT_THAT(accumulating.names(0), IsEmpty());
}

TEST(NetworkAppUsageAccumulator, TotalsStayAtTheLargestValue) {
  constexpr auto most = std::numeric_limits<std::uint64_t>::max();
  const auto apps = Accumulating{}
                        .at(0, {process(1, "a", 0, 0)})
                        .at(1, {process(1, "a", most, most)})
                        .at(2, {process(1, "a", 0, 0)})
                        .at(3, {process(1, "a", 5, 5)})
                        .apps();
  EXPECT_EQ(apps[0].totalBytesIn, most);
}

TEST(NetworkAppUsageAccumulator, LiveRowsCountLikeStoredOnes) {
  NetworkAppUsageAccumulator live{120.0};
  NetworkAppUsageAccumulator stored{120.0};
  for (const std::uint64_t bytes : {10U, 40U}) {
    const std::vector<NetworkProcessInfo> rows{
        {.id = 1,
         .name = "curl",
         .bytesIn = bytes,
         .bytesOut = bytes * 2,
         .bytesInPerSec = 3.0,
         .bytesOutPerSec = 4.0,
         .attributionSource = NetworkAttributionSource::nettop},
        {.id = 2, .name = "ssh", .bytesIn = bytes}};
    live.ingest(std::span{rows}, "none", at(static_cast<double>(bytes)));
    auto curl = process(1, "curl", bytes, bytes * 2);
    curl.bytesInPerSec = 3.0;
    curl.bytesOutPerSec = 4.0;
    auto ssh = process(2, "ssh", bytes);
    ssh.isFromNettop = false;
    const std::vector<ObservedNetworkProcess> observed{curl, ssh};
    stored.ingest(ObservedNetwork{.attributionSource = "none", .processes = observed},
                  at(static_cast<double>(bytes)));
  }
  EXPECT_THAT(live.materialize(all), SizeIs(2));
  EXPECT_EQ(live.materialize(all), stored.materialize(all));
}

TEST(NetworkAppUsageAccumulator, AgreesWithAPlainMapOfTheLastSample) {
  EXPECT_TRUE(rc::check([] {
    const std::vector<std::string_view> names{"a", "b", "c"};
    NetworkAppUsageAccumulator accumulator{120.0};
    std::map<std::string, std::uint64_t> expected;
    std::map<std::pair<std::int32_t, std::string>, std::uint64_t> last;
    const auto sampleCount = *rc::gen::inRange(0, 30);
    for (int sample = 0; sample < sampleCount; ++sample) {
      std::vector<ObservedNetworkProcess> rows(*rc::gen::inRange<std::size_t>(0, 150));
      std::map<std::pair<std::int32_t, std::string>, std::uint64_t> present;
      for (auto& row : rows) {
        row = process(*rc::gen::inRange(0, 300), *rc::gen::elementOf(names),
                      *rc::gen::inRange<std::uint64_t>(0, 1000));
        const std::pair key{row.pid, std::string{row.name}};
        if (last.contains(key) && row.bytesIn > last[key]) {
          expected[key.second] += row.bytesIn - last[key];
        }
        present[key] = row.bytesIn;
      }
      accumulator.ingest(std::span<const ObservedNetworkProcess>{rows}, "none", at(10.0 * sample));
      last = present;
    }
    std::map<std::string, std::uint64_t> counted;
    for (const auto& app : accumulator.materialize(all)) {
      counted[app.name] = app.totalBytesIn;
    }
    RC_ASSERT(counted == expected);
  }));
}

}  // namespace
}  // namespace quorvex
