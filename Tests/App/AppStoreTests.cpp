#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "AppFixture.h"
#include "DashboardModel.h"
#include "FaultyVFS.h"
#include "SQLiteDatabase.h"

// The app and its session store: a store that cannot be used, one that fails while a session is
// recorded, and a session that outlives the app.

namespace quorvex {
namespace {

namespace fs = std::filesystem;

using ::testing::ElementsAre;
using testing::FaultyVFS;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AppStoreTest : public testing::AppTest {
 protected:
  ~AppStoreTest() override { closeApp(); }

  [[nodiscard]] fs::path folder() const { return home.path() / "Quorvex"; }
  [[nodiscard]] fs::path file() const { return folder() / "QuorvexSessions.store"; }

  void closeApp() {
    dashboard.reset();
    commands.reset();
    app.reset();
  }
  /// Starts the app with its dashboard open, and a session of a sample every 2 seconds.
  void startRecording() {
    startApp();
    dashboard = std::make_unique<DashboardModel>(*app, *commands, SavePanel{});
    dashboard->setShown(true);
    commands->startSession(QStringLiteral("Overnight"));
    settle();
    ASSERT_EQ(liveSampleCount(), 1);
  }
  [[nodiscard]] std::int64_t liveSampleCount() const {
    return app->sessionRecorder().activeSummary().value().sampleCount;
  }
  [[nodiscard]] bool isSampling() const {
    return app->sessionRecordingCoordinator().isSampling().value();
  }
  /// The error below the dashboard's session controls, and the name of its colour; empty without.
  [[nodiscard]] std::pair<std::string, std::string> shownError() const {
    const QVariantMap error =
        dashboard->session()->content().value(QStringLiteral("error")).toMap();
    return {error.value(QStringLiteral("text")).toString().toStdString(),
            error.value(QStringLiteral("color")).toString().toStdString()};
  }

  /// The only session as another process finds it in the file, and the times of its samples.
  struct Stored {
    PowerSessionColumns session;
    std::vector<Date> times;
  };
  [[nodiscard]] Stored stored() {
    const auto store =
        PowerSessionStore::open({.appVersion = "0.14.0", .storeURL = file()}, machine.time);
    EXPECT_TRUE(store);
    const auto sessions = *(*store)->sessions();
    EXPECT_THAT(sessions, SizeIs(1));
    Stored result{.session = sessions.front()->columns(), .times = {}};
    for (const auto& sample : (*store)->samples(*sessions.front())) {
      result.times.push_back(sample->timestamp());
    }
    return result;
  }
  /// The app without persistence: it records, keeps what it has, and says nothing about it.
  void expectSilentMemory() {
    startApp();
    EXPECT_EQ(app->storeFile(), std::nullopt);
    EXPECT_EQ(app->sessionRecorder().lastError().value(), std::nullopt);
    startRecording();
    advance(10.0);
    EXPECT_THAT(liveSampleCount(), Ge(4));
    EXPECT_EQ(shownError().first, "");
    commands->stopSession();
    EXPECT_THAT(app->sessionRecorder().sessions(), SizeIs(1));
    dashboard.reset();
    startApp();
    EXPECT_THAT(app->sessionRecorder().sessions(), IsEmpty());
  }

  std::unique_ptr<DashboardModel> dashboard;
};

// A store that cannot be used

TEST_F(AppStoreTest, AFolderThatCannotBeMadeGivesWayToMemorySilently) {
  std::ofstream{folder()} << "a file in the folder's place";
  expectSilentMemory();
}

TEST_F(AppStoreTest, AFolderInTheStoresPlaceGivesWayToMemorySilently) {
  fs::create_directories(file());
  expectSilentMemory();
}

TEST_F(AppStoreTest, ADamagedStoreGivesWayToMemorySilentlyAndStaysAsItIs) {
  fs::create_directories(folder());
  std::ofstream{file()} << "no store at all";
  expectSilentMemory();
  EXPECT_EQ(fs::file_size(file()), std::string{"no store at all"}.size());
}

using AppStoreDeathTest = AppStoreTest;

TEST_F(AppStoreDeathTest, AStoreThatMayNotBeWrittenGivesWayToMemorySilently) {
  startApp();
  closeApp();
  fs::permissions(home.path(), fs::perms{0755});
  fs::permissions(folder(), fs::perms{0555});
  fs::permissions(file(), fs::perms{0444});
  // The superuser may write all files, so that the app runs as an ordinary user.
  const auto runAsOrdinaryUser = [this] {
    constexpr unsigned nobody = 65534;
    if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) {
      _exit(3);
    }
    startApp();
    commands->startSession(QStringLiteral("Lost at exit"));
    settle();
    const bool isRecording = liveSampleCount() == 1;
    const bool isSilent = !app->sessionRecorder().lastError().value();
    _exit(!app->storeFile() && isRecording && isSilent ? 0 : 1);
  };
  EXPECT_EXIT(runAsOrdinaryUser(), ::testing::ExitedWithCode(0), "");
  fs::permissions(folder(), fs::perms{0755});
}

TEST_F(AppStoreDeathTest, WithoutAStoreEvenInMemoryTheProcessEnds) {
  const auto startWithoutMemory = [this] {
    sqlite3_hard_heap_limit64(1);
    startApp();
  };
  EXPECT_DEATH(startWithoutMemory(),
               "Unable to initialize Quorvex session store: The session store failed: "
               "out of memory");
}

// A store that fails while a session is recorded

TEST_F(AppStoreTest, AStoreThatIsBusyIsToldAndItsSamplesComeWithTheFirstSaveAfterwards) {
  startRecording();
  auto other = SQLiteDatabase::open(file(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other);
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  const Date busySince = machine.time.now();
  advance(6.0);
  EXPECT_EQ(shownError(), (std::pair<std::string, std::string>{
                              "The session store is in use by another process", "orange"}));
  EXPECT_TRUE(isSampling());
  EXPECT_EQ(liveSampleCount(), 1);
  EXPECT_THAT(stored().times, SizeIs(1));
  ASSERT_TRUE(other->execute("COMMIT"));
  advance(2.0);
  EXPECT_EQ(shownError().first, "");
  const Date busyUntil = machine.time.now();
  const auto times = stored().times;
  EXPECT_THAT(times, SizeIs(Ge(4U)));
  // The samples of the busy time among them, each once.
  EXPECT_EQ(std::set<Date>(times.begin(), times.end()).size(), times.size());
  EXPECT_GT(times[1], busySince);
  EXPECT_LT(secondsBetween(times[1], times[2]), 3.0);
  EXPECT_LE(times.back(), busyUntil);
}

TEST_F(AppStoreTest, ADiskThatIsFullIsToldUntilThereIsRoomAgain) {
  FaultyVFS disk;
  startRecording();
  disk.failAfter(0, SQLITE_FULL);
  advance(6.0);
  EXPECT_EQ(shownError(), (std::pair<std::string, std::string>{
                              "The session store cannot be written: the disk is full", "orange"}));
  EXPECT_TRUE(isSampling());
  disk.repair();
  advance(2.0);
  EXPECT_EQ(shownError().first, "");
  EXPECT_THAT(stored().times, SizeIs(Ge(4U)));
  closeApp();
}

TEST_F(AppStoreTest, AStoreThatIsDeletedIsToldAndTheNextStartMakesANewOne) {
  startRecording();
  fs::remove_all(folder());
  advance(6.0);
  EXPECT_EQ(shownError(),
            (std::pair<std::string, std::string>{
                "The session store was moved or deleted while it was open", "orange"}));
  EXPECT_TRUE(isSampling());
  // What the app had is still there to be seen.
  EXPECT_THAT(app->sessionRecorder().sessions(), SizeIs(1));
  commands->stopSession();
  settle();
  EXPECT_NE(shownError().first, "");
  closeApp();
  startApp();
  EXPECT_EQ(app->storeFile(), file());
  EXPECT_EQ(app->sessionRecorder().lastError().value(), std::nullopt);
  EXPECT_THAT(app->sessionRecorder().sessions(), IsEmpty());
}

TEST_F(AppStoreTest, AStartThatFailsIsToldAndTheNextOneSucceeds) {
  startApp();
  dashboard = std::make_unique<DashboardModel>(*app, *commands, SavePanel{});
  dashboard->setShown(true);
  auto other = SQLiteDatabase::open(file(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other);
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  commands->startSession(QStringLiteral("Overnight"));
  settle();
  EXPECT_EQ(shownError().first, "The session store is in use by another process");
  EXPECT_EQ(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_FALSE(isSampling());
  ASSERT_TRUE(other->execute("COMMIT"));
  commands->startSession(QStringLiteral("Overnight"));
  settle();
  EXPECT_EQ(shownError().first, "");
  EXPECT_TRUE(isSampling());
  EXPECT_EQ(stored().session.title, "Overnight");
}

TEST_F(AppStoreTest, AStopThatFailsIsToldAndCanBeRepeated) {
  startRecording();
  auto other = SQLiteDatabase::open(file(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other);
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  commands->stopSession();
  settle();
  EXPECT_EQ(shownError().first, "The session store is in use by another process");
  EXPECT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  ASSERT_TRUE(other->execute("COMMIT"));
  machine.time.advance(1.0);
  commands->stopSession();
  settle();
  EXPECT_EQ(shownError().first, "");
  EXPECT_EQ(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_EQ(stored().session.endedAt, machine.time.now());
}

TEST_F(AppStoreTest, AStoreThatAnotherProcessWritesToAtTheStartIsUsedAllTheSame) {
  startRecording();
  closeApp();
  auto other = SQLiteDatabase::open(file(), SQLiteDatabase::Mode::existing, {});
  ASSERT_TRUE(other);
  ASSERT_TRUE(other->execute("BEGIN IMMEDIATE"));
  startApp();
  EXPECT_EQ(app->storeFile(), file());
  EXPECT_NE(app->sessionRecorder().activeSession().value(), nullptr);
  EXPECT_EQ(app->sessionRecorder().lastError().value(), std::nullopt);
  ASSERT_TRUE(other->execute("COMMIT"));
}

// A session that outlives the app

TEST_F(AppStoreTest, QuittingLeavesTheSessionActiveAndItResumesAtTheNextStart) {
  startRecording();
  advance(10.0);
  closeApp();
  const Stored left = stored();
  EXPECT_EQ(left.session.statusRaw, "active");
  EXPECT_EQ(left.session.endedAt, std::nullopt);
  ASSERT_THAT(left.times, SizeIs(Ge(4U)));

  machine.time.advance(60.0);
  startApp();
  EXPECT_TRUE(isSampling());
  EXPECT_EQ(app->sessionRecorder().activeSession().value()->id(), left.session.id);
  EXPECT_EQ(liveSampleCount(), static_cast<std::int64_t>(left.times.size()));
  settle();
  const Stored resumed = stored();
  EXPECT_EQ(resumed.session.id, left.session.id);
  ASSERT_THAT(resumed.times, SizeIs(left.times.size() + 1));
  EXPECT_GE(secondsBetween(left.times.back(), resumed.times.back()), 60.0);
  EXPECT_EQ(liveSampleCount(), static_cast<std::int64_t>(resumed.times.size()));
  // A minute is no gap: 18 W all along.
  EXPECT_DOUBLE_EQ(app->sessionRecorder().activeSummary().value().maxWatts.value_or(0.0),
                   12.0 * 1.5);
  EXPECT_NE(app->sessionRecorder().activeSummary().value().totalWattHours, std::nullopt);
}

TEST_F(AppStoreTest, QuittingWhileASampleIsTakenLosesThatSampleOnly) {
  startRecording();
  advance(9.0);
  const auto before = stored().times;
  // The next sample takes the extras, and waits for a worker.
  machine.time.advance(3.0);
  stepped.sleeper().wakeNext();
  stepped.sleeper().wakeNext();
  stepped.runMainThread();
  closeApp();
  const Stored left = stored();
  EXPECT_EQ(left.session.statusRaw, "active");
  EXPECT_EQ(left.times, before);
}

}  // namespace
}  // namespace quorvex
