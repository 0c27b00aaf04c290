#include <csignal>
#include <limits>

#include "RecordedClock.h"
#include "RecordedTesting.h"

namespace quorvex {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr const char* startText = "2026-01-31T09:30:05.5Z";

/// A file that starts at a known moment: `top` are keys of the top level, `frames` follow the
/// first.
MachineFile fileWith(const std::string& top, const std::string& frames = "") {
  return parsedFile(R"({"startedAt": ")" + std::string{startText} + "\"" + top +
                    R"(, "frames": [{"at": 0})" + frames + "]}");
}

Date startDate() {
  return *parseISO8601(startText);
}

class InstantClock {
 public:
  explicit InstantClock(const MachineFile& file) : clock_(file, MachineFile::Pace::instant) {}
  explicit InstantClock(const std::string& top, const std::string& frames = "")
      : InstantClock(fileWith(top, frames)) {}
  RecordedClock& operator*() { return clock_; }
  RecordedClock* operator->() { return &clock_; }

 private:
  RecordedClock clock_;
};

TEST(RecordedClock, InstantClockStandsStillBetweenSleeps) {
  InstantClock clock{""};
  EXPECT_EQ(clock->now(), startDate());
  EXPECT_EQ(clock->monotonic(), nanoseconds{0});
  EXPECT_EQ(clock->now(), startDate());
}

TEST(RecordedClock, InstantSleepAdvancesBothClocks) {
  InstantClock clock{""};
  clock->sleep(0.1);
  clock->sleep(0.25);
  EXPECT_EQ(clock->monotonic(), milliseconds{350});
  EXPECT_EQ(clock->now(), startDate() + milliseconds{350});
}

TEST(RecordedClock, ManySmallSleepsAddUpExactly) {
  InstantClock clock{""};
  for (int i = 0; i < 10000; ++i) {
    clock->sleep(0.1);
  }
  EXPECT_EQ(clock->monotonic(), seconds{1000}) << "10000 * 0.1 s";
}

TEST(RecordedClock, SleepAtOrBelowZeroIsNothing) {
  InstantClock clock{""};
  clock->sleep(0);
  clock->sleep(-5);
  clock->sleep(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(clock->monotonic(), nanoseconds{0});
}

TEST(RecordedClock, EndlessSleepStopsAtTheEndOfTime) {
  InstantClock clock{""};
  clock->sleep(std::numeric_limits<double>::infinity());
  clock->sleep(5);
  EXPECT_EQ(clock->monotonic(), nanoseconds::max());
  EXPECT_EQ(clock->now(), Date::max());
}

TEST(RecordedClock, ClockWithoutAStartBeginsNow) {
  const Date before = std::chrono::system_clock::now();
  RecordedClock clock{parsedFile(R"({"frames": [{"at": 0}]})"), MachineFile::Pace::instant};
  EXPECT_GE(clock.now(), before);
  EXPECT_LE(clock.now(), Date{std::chrono::system_clock::now()});
}

TEST(RecordedClock, PositionGoesOnAfterTheEndWhenHolding) {
  InstantClock clock{R"(, "duration": 10)"};
  clock->sleep(25);
  EXPECT_EQ(clock->position().inPass, seconds{25});
  EXPECT_EQ(clock->position().passStart, seconds{0});
}

TEST(RecordedClock, PositionStartsOverWhenRepeating) {
  InstantClock clock{R"(, "atEnd": "repeat", "duration": 10)"};
  clock->sleep(9.5);
  EXPECT_EQ(clock->position().inPass, milliseconds{9500});
  clock->sleep(0.5);
  EXPECT_EQ(clock->position().inPass, seconds{0});
  EXPECT_EQ(clock->position().passStart, seconds{10});
  clock->sleep(13);
  EXPECT_EQ(clock->position().inPass, seconds{3});
  EXPECT_EQ(clock->position().passStart, seconds{20});
  EXPECT_EQ(clock->monotonic(), seconds{23}) << "the clock itself goes on";
}

constexpr const char* lidClosed = R"(, {"at": 60, "suspended": 600})";

TEST(RecordedClock, SleepThatEndsWhileSuspendedEndsAtTheWakeUp) {
  InstantClock clock{"", lidClosed};
  clock->sleep(59);
  EXPECT_EQ(clock->monotonic(), seconds{59});
  clock->sleep(2);
  EXPECT_EQ(clock->monotonic(), seconds{660}) << "60 s + 600 s";
}

TEST(RecordedClock, SuspensionHoldsFromItsFirstMoment) {
  InstantClock clock{"", lidClosed};
  clock->sleep(60);
  EXPECT_EQ(clock->monotonic(), seconds{660});
}

TEST(RecordedClock, SleepThatEndsWithTheSuspensionEndsThere) {
  InstantClock clock{"", lidClosed};
  clock->sleep(660);
  EXPECT_EQ(clock->monotonic(), seconds{660});
}

TEST(RecordedClock, SleepOverAWholeSuspensionIsNotMadeLonger) {
  InstantClock clock{"", lidClosed};
  clock->sleep(700);
  EXPECT_EQ(clock->monotonic(), seconds{700});
}

TEST(RecordedClock, AdjoiningSuspensionsAreOne) {
  InstantClock clock{"", R"(, {"at": 60, "suspended": 30}, {"at": 90, "suspended": 10})"};
  clock->sleep(61);
  EXPECT_EQ(clock->monotonic(), seconds{100});
}

TEST(RecordedClock, SuspensionComesBackInEveryPass) {
  InstantClock clock{R"(, "atEnd": "repeat", "duration": 100)", R"(, {"at": 60, "suspended": 20})"};
  clock->sleep(165);
  EXPECT_EQ(clock->monotonic(), seconds{180}) << "100 s + 60 s + 20 s";
}

TEST(RecordedClock, SuspensionMayReachIntoTheNextPass) {
  InstantClock clock{R"(, "atEnd": "repeat", "duration": 100)", R"(, {"at": 90, "suspended": 20})"};
  clock->sleep(5);
  EXPECT_EQ(clock->monotonic(), seconds{5}) << "the first pass has no pass before it";
  clock->sleep(100);
  EXPECT_EQ(clock->monotonic(), seconds{110}) << "90 s + 20 s";
}

TEST(RecordedClock, RecordingThatIsAlwaysSuspendedStillReturns) {
  InstantClock clock{R"(, "atEnd": "repeat", "duration": 10)", R"(, {"at": 5, "suspended": 10})"};
  clock->sleep(6);
  EXPECT_GE(clock->monotonic(), seconds{15});
}

TEST(RecordedClock, SuspensionBeyondTheRepeatedPassIsNeverReached) {
  InstantClock clock{R"(, "atEnd": "repeat", "duration": 10)", R"(, {"at": 15, "suspended": 3})"};
  clock->sleep(16);
  EXPECT_EQ(clock->monotonic(), seconds{16});
}

volatile std::sig_atomic_t interruptCount = 0;

/// Counts the interrupts that reach the process.
class InterruptCounter {
 public:
  InterruptCounter()
      : before_(std::signal(SIGINT, [](int) { interruptCount = interruptCount + 1; })) {
    interruptCount = 0;
  }
  ~InterruptCounter() { static_cast<void>(std::signal(SIGINT, before_)); }
  InterruptCounter(const InterruptCounter&) = delete;
  InterruptCounter& operator=(const InterruptCounter&) = delete;
  [[nodiscard]] int count() const { return interruptCount; }

 private:
  void (*before_)(int);
};

TEST(RecordedClock, FirstSleepThatReachesTheEndInterruptsOnce) {
  const InterruptCounter interrupts;
  InstantClock clock{R"(, "atEnd": "interrupt", "duration": 10)"};
  clock->sleep(9.9);
  EXPECT_EQ(interrupts.count(), 0);
  clock->sleep(0.1);
  EXPECT_EQ(interrupts.count(), 1);
  clock->sleep(5);
  EXPECT_EQ(interrupts.count(), 1);
}

TEST(RecordedClock, SleepBeyondTheEndInterruptsToo) {
  const InterruptCounter interrupts;
  InstantClock clock{R"(, "atEnd": "interrupt", "duration": 10)"};
  clock->sleep(100);
  EXPECT_EQ(interrupts.count(), 1);
  EXPECT_EQ(clock->position().inPass, seconds{100}) << "as hold";
}

TEST(RecordedClock, SuspensionThatReachesTheEndInterrupts) {
  const InterruptCounter interrupts;
  InstantClock clock{R"(, "atEnd": "interrupt", "duration": 70)",
                     R"(, {"at": 60, "suspended": 20})"};
  clock->sleep(60);
  EXPECT_EQ(interrupts.count(), 1);
}

TEST(RecordedClock, OtherEndsDoNotInterrupt) {
  const InterruptCounter interrupts;
  InstantClock {
    R"(, "atEnd": "hold", "duration": 10)"
    } -> sleep(20);
  InstantClock {
    R"(, "atEnd": "repeat", "duration": 10)"
    } -> sleep(20);
  EXPECT_EQ(interrupts.count(), 0);
}

TEST(RecordedClock, RealSleepReallySleeps) {
  RecordedClock clock{fileWith(""), MachineFile::Pace::real};
  const auto before = std::chrono::steady_clock::now();
  clock.sleep(0.002);
  EXPECT_GE(std::chrono::steady_clock::now() - before, milliseconds{2});
  EXPECT_GE(clock.monotonic(), milliseconds{2});
  EXPECT_GE(clock.now(), startDate() + milliseconds{2});
}

TEST(RecordedClock, RealClockReturnsAtOnceForNothing) {
  RecordedClock clock{fileWith(""), MachineFile::Pace::real};
  clock.sleep(0);
  clock.sleep(-1e9);
  clock.sleep(std::numeric_limits<double>::quiet_NaN());
  EXPECT_LT(clock.monotonic(), hours{1});
}

TEST(RecordedClock, RealClockIgnoresSuspensions) {
  RecordedClock clock{parsedFile(R"({"frames": [{"at": 0, "suspended": 3600}]})"),
                      MachineFile::Pace::real};
  clock.sleep(0.001);
  EXPECT_LT(clock.monotonic(), hours{1});
}

TEST(RecordedClock, RealSleepThatReachesTheEndInterruptsOnce) {
  const InterruptCounter interrupts;
  RecordedClock clock{fileWith(R"(, "atEnd": "interrupt", "duration": 0.001)"),
                      MachineFile::Pace::real};
  clock.sleep(0.002);
  EXPECT_EQ(interrupts.count(), 1);
  EXPECT_GE(clock.monotonic(), milliseconds{2});
  clock.sleep(0.001);
  EXPECT_EQ(interrupts.count(), 1);
}

}  // namespace
}  // namespace quorvex
