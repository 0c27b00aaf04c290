#include <limits>

#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();

TEST(RecordedCounter, PlainCounterStands) {
  EXPECT_EQ((RecordedCounter{.start = 5000}.value(hours{24})), 5000U);
}

TEST(RecordedCounter, GrowsByItsRate) {
  const RecordedCounter counter{.start = 1000000, .perSecond = 25000};
  EXPECT_EQ(counter.value(seconds{0}), 1000000U);
  EXPECT_EQ(counter.value(milliseconds{100}), 1002500U) << "25000/s * 0.1 s";
  EXPECT_EQ(counter.value(seconds{60}), 2500000U) << "25000/s * 60 s";
}

TEST(RecordedCounter, TruncatesToAWholeNumber) {
  const RecordedCounter rising{.start = 10, .perSecond = 0.5};
  EXPECT_EQ(rising.value(milliseconds{3999}), 11U) << "trunc(10 + 1.9995)";
  const RecordedCounter falling{.start = 10, .perSecond = -0.5};
  EXPECT_EQ(falling.value(milliseconds{3999}), 8U) << "trunc(10 - 1.9995)";
}

TEST(RecordedCounter, WholeProductsAreExact) {
  EXPECT_EQ((RecordedCounter{.perSecond = 100}.value(milliseconds{290})), 29U) << "100/s * 0.29 s";
  EXPECT_EQ((RecordedCounter{.perSecond = 1}.value(nanoseconds{999999999})), 0U);
}

TEST(RecordedCounter, StaysWithinItsRange) {
  EXPECT_EQ((RecordedCounter{.start = 5, .perSecond = -10}.value(seconds{1})), 0U);
  EXPECT_EQ((RecordedCounter{.start = greatest - 1, .perSecond = 10}.value(seconds{1})), greatest);
  EXPECT_EQ((RecordedCounter{.start = 1, .perSecond = 1e308}.value(hours{1000})), greatest);
  EXPECT_EQ((RecordedCounter{.start = greatest, .perSecond = -1e308}.value(hours{1000})), 0U);
}

TEST(RecordedProcessList, FindsTheFirstProcessOfAPID) {
  const MachineFile file = parsedFile(fileWithFrame(
      R"("processes": [{"pid": 9, "name": "i"}, {"pid": 4, "name": "d"}, {"pid": 9, "name": "x"}])"));
  const RecordedProcessList& list = *file.processes.value(seconds{0});
  EXPECT_EQ(list.find(9)->name, "i");
  EXPECT_EQ(list.find(4)->name, "d");
  EXPECT_EQ(list.find(5), nullptr);
  EXPECT_EQ(list.find(10), nullptr);
}

TEST(Track, AnswersWithTheEntryInForce) {
  Track<int> track;
  EXPECT_EQ(track.entry(hours{1}), nullptr);
  track.append(seconds{10}, 1);
  track.append(seconds{20}, std::nullopt);
  track.append(seconds{30}, 3);
  EXPECT_EQ(track.entry(milliseconds{9999}), nullptr);
  EXPECT_EQ(*track.value(seconds{10}), 1);
  EXPECT_EQ(*track.value(milliseconds{19999}), 1);
  EXPECT_NE(track.entry(seconds{20}), nullptr) << "a frame that says null is an entry";
  EXPECT_EQ(track.value(seconds{20}), nullptr);
  EXPECT_EQ(track.entry(hours{1})->at, seconds{30});
}

}  // namespace
}  // namespace quorvex
