#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <map>
#include <random>
#include <set>
#include <vector>

#include "StoreFixture.h"

// Processes that use one store at the same time, and processes that are killed while they do.

namespace quorvex {
namespace {

using testing::laptopState;
using testing::secondsIn;
using ::testing::SizeIs;

/// A child process that writes identifiers of samples to a pipe.
class Child {
 public:
  template <typename Work>
  explicit Child(Work work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
      ADD_FAILURE() << "no pipe";
      return;
    }
    pid_ = fork();
    if (pid_ == 0) {
      close(ends[0]);
      work(ends[1]);
      _exit(0);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { close(output_); }

  /// The next identifier; none when the child has ended.
  std::optional<UUID> next() {
    UUID::Bytes bytes{};
    std::size_t got = 0;
    while (got < bytes.size()) {
      const ssize_t count = read(output_, bytes.data() + got, bytes.size() - got);
      if (count <= 0) {
        return std::nullopt;
      }
      got += static_cast<std::size_t>(count);
    }
    return UUID{bytes};
  }
  void killNow() const { kill(pid_, SIGKILL); }
  int wait() const {
    int status = 0;
    waitpid(pid_, &status, 0);
    return status;
  }

 private:
  pid_t pid_ = -1;
  int output_ = -1;
};

void announce(int output, const UUID& id) {
  static_cast<void>(!write(output, id.bytes().data(), id.bytes().size()));
}

class StoreProcessTests : public testing::StoreTest {
 protected:
  std::unique_ptr<PowerSessionStore> openPatiently() {
    auto store = PowerSessionStore::open({.appVersion = appVersion,
                                          .storeURL = folder.store(),
                                          .busyTimeout = std::chrono::minutes{5}},
                                         clock);
    if (!store) {
      ADD_FAILURE() << store.error().description;
      return nullptr;
    }
    return *std::move(store);
  }
  /// Appends samples and tells each one that is committed, `count` of them.
  void appendAndAnnounce(int output, int count, double firstSecond) {
    const auto store = openPatiently();
    const auto session =
        store ? store->startSession("Run", PowerSessionSource::app, 2.0, secondsIn(0.0))
              : StoreError{};
    for (int i = 0; session && i < count; ++i) {
      const auto sample =
          store->appendSample(**session, laptopState(firstSecond + i), {}, std::nullopt);
      if (!sample) {
        _exit(2);
      }
      announce(output, (*sample)->id());
    }
    if (!session) {
      _exit(3);
    }
  }
  std::multiset<UUID> storedIds() {
    const auto store = openStore();
    std::multiset<UUID> ids;
    for (const auto& session : *store->sessions()) {
      for (const auto& sample : store->samples(*session)) {
        ids.insert(sample->id());
        // A row without its blobs would be half a sample.
        EXPECT_NE(sample->blobs().snapshotData, "");
      }
    }
    return ids;
  }
};

TEST_F(StoreProcessTests, AfterAKillAllAnnouncedSamplesAreThereAndAtMostOneMore) {
  constexpr int rounds = 25;
  std::minstd_rand random{20260131};
  std::multiset<UUID> announced;
  std::size_t inFlight = 0;
  for (int round = 0; round < rounds; ++round) {
    Child child{[&](int output) { appendAndAnnounce(output, 1'000'000, round * 1000.0); }};
    // From the opening of the file on: in the first rounds no store exists yet.
    const auto killAfter = static_cast<int>(random() % 12);
    for (int i = 0; i < killAfter; ++i) {
      const auto id = child.next();
      ASSERT_TRUE(id);
      announced.insert(*id);
    }
    child.killNow();
    while (const auto id = child.next()) {
      announced.insert(*id);
    }
    EXPECT_TRUE(WIFSIGNALED(child.wait()));
    const auto stored = storedIds();
    for (const UUID& id : announced) {
      EXPECT_EQ(stored.count(id), 1U) << id.text();
    }
    ++inFlight;
    EXPECT_LE(stored.size(), announced.size() + inFlight);
    EXPECT_THAT(*openStore()->sessions(), SizeIs(::testing::Le(1U)));
    announced = stored;
    inFlight = 0;
  }
  EXPECT_GT(announced.size(), 50U);
}

TEST_F(StoreProcessTests, AKilledProcessLeavesAnActiveSessionThatTheNextOneAdopts) {
  Child child{[&](int output) { appendAndAnnounce(output, 1'000'000, 0.0); }};
  ASSERT_TRUE(child.next());
  child.killNow();
  child.wait();
  const auto store = openStore();
  const auto adopted = *store->activeSession();
  ASSERT_NE(adopted, nullptr);
  EXPECT_EQ(adopted->endedAt(), std::nullopt);
  ASSERT_TRUE(store->appendSample(*adopted, laptopState(2'000'000.0), {}, std::nullopt));
  ASSERT_TRUE(store->stopSession(*adopted, secondsIn(2'000'001.0)));
}

TEST_F(StoreProcessTests, ProcessesThatAppendAtTheSameTimeLoseAndDoubleNothing) {
  constexpr int processes = 4;
  constexpr int samplesEach = 40;
  const auto store = openPatiently();
  const auto session = start(*store);
  std::vector<std::unique_ptr<Child>> children;
  for (int i = 0; i < processes; ++i) {
    children.push_back(std::make_unique<Child>(
        [&, i](int output) { appendAndAnnounce(output, samplesEach, i * 1000.0); }));
  }
  std::multiset<UUID> announced;
  for (const auto& child : children) {
    while (const auto id = child->next()) {
      announced.insert(*id);
    }
    EXPECT_EQ(child->wait(), 0);
  }
  EXPECT_EQ(announced.size(), static_cast<std::size_t>(processes * samplesEach));
  EXPECT_EQ(storedIds(), announced);
  // A store that was open all the time sees them as well.
  EXPECT_THAT(store->samples(*session), SizeIs(processes * samplesEach));
}

TEST_F(StoreProcessTests, AStoreThatOneProcessOpensTwiceKeepsItsLogWhenAnotherProcessLeaves) {
  std::array<int, 2> gate{};
  ASSERT_EQ(pipe(gate.data()), 0);
  // Made before anything is open, since a fork inherits no locks but all knowledge of them.
  Child visitor{[&](int output) {
    close(gate[1]);
    char unused = 0;
    static_cast<void>(!read(gate[0], &unused, 1));
    appendAndAnnounce(output, 1, 50.0);
  }};
  const auto store = openStore();
  const auto session = start(*store);
  // A worker of the app reads the same file for itself, and lets go of it.
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(openStore());
  }
  close(gate[1]);
  close(gate[0]);
  EXPECT_TRUE(visitor.next());
  EXPECT_EQ(visitor.wait(), 0);
  // The last to leave takes the log along; the visitor is not the last.
  EXPECT_TRUE(std::filesystem::exists(folder.store().string() + "-wal"));
  ASSERT_TRUE(store->appendSample(*session, laptopState(60.0), {}, std::nullopt));
  EXPECT_THAT(storedIds(), SizeIs(2));
}

TEST_F(StoreProcessTests, ProcessesThatMakeTheStoreAtTheSameTimeAllSucceed) {
  constexpr int processes = 6;
  for (int round = 0; round < 5; ++round) {
    std::filesystem::remove(folder.store());
    std::array<int, 2> gate{};
    ASSERT_EQ(pipe(gate.data()), 0);
    std::vector<std::unique_ptr<Child>> children;
    for (int i = 0; i < processes; ++i) {
      children.push_back(std::make_unique<Child>([&](int) {
        // All wait for the gate to close.
        close(gate[1]);
        char unused = 0;
        static_cast<void>(!read(gate[0], &unused, 1));
        _exit(openPatiently() ? 0 : 1);
      }));
    }
    close(gate[1]);
    close(gate[0]);
    for (const auto& child : children) {
      EXPECT_EQ(child->wait(), 0);
    }
    EXPECT_TRUE(openStore());
  }
}

}  // namespace
}  // namespace quorvex
