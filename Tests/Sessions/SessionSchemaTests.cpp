#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "SessionSchema.h"
#include "StoreFixture.h"

// What is opened as a store, what is refused, and that what is refused stays as it is.

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using testing::laptopState;
using testing::secondsIn;
using Kind = StoreError::Kind;

class SessionSchemaTests : public testing::StoreTest {
 protected:
  /// Expects that opening fails in these words and changes nothing in the folder.
  void expectRefusal(Kind kind, const std::string& words) {
    const std::string before = folder.contentOf(folder.store());
    const std::string listing = folder.listing();
    const auto store = tryOpen();
    ASSERT_FALSE(store);
    EXPECT_EQ(store.error(), (StoreError{kind, words}));
    EXPECT_EQ(folder.contentOf(folder.store()), before);
    EXPECT_EQ(folder.listing(), listing);
  }
  SQLiteDatabase database() {
    return *SQLiteDatabase::open(folder.store(), SQLiteDatabase::Mode::create, {});
  }
  std::string name() { return folder.store().string(); }
  void makeStore() {
    const auto store = openStore();
    const auto session = start(*store);
    ASSERT_TRUE(store->appendSample(*session, laptopState(), {}, std::nullopt));
  }
};

TEST_F(SessionSchemaTests, ANewStoreIsMarkedAsOneFromItsFirstTransactionOn) {
  ASSERT_TRUE(openStore());
  SQLiteDatabase opened = database();
  EXPECT_EQ(*opened.integerOf("PRAGMA application_id"), SessionSchema::applicationID);
  EXPECT_EQ(*opened.integerOf("PRAGMA user_version"), SessionSchema::version);
  EXPECT_EQ(
      *opened.integerOf("SELECT count(*) FROM pragma_journal_mode WHERE journal_mode = 'wal'"), 1);
}

TEST_F(SessionSchemaTests, ARowIsDurableWhenItsCommitReturns) {
  auto opened = SessionSchema::open(folder.store(), {});
  ASSERT_TRUE(opened);
  constexpr std::int64_t full = 2;
  EXPECT_EQ(*opened->integerOf("PRAGMA synchronous"), full);
  EXPECT_EQ(*opened->integerOf("PRAGMA fullfsync"), 1);
}

TEST_F(SessionSchemaTests, SamplesAreFoundByAnIndexOfSessionAndTime) {
  auto opened = SessionSchema::open(folder.store(), {});
  EXPECT_EQ(
      *opened->integerOf("SELECT count(*) FROM pragma_index_info('PowerSessionSampleBySession') "
                         "WHERE name IN ('session', 'timestamp')"),
      2);
}

TEST_F(SessionSchemaTests, AnEmptyFileBecomesAStore) {
  folder.write(folder.store(), "");
  EXPECT_TRUE(openStore());
}

TEST_F(SessionSchemaTests, AFileOfAnotherKindIsRefused) {
  folder.write(folder.store(), "Dear diary");
  expectRefusal(Kind::notAStore, "The file is not a session store: " + name());
  folder.write(folder.store(), std::string(5000, 'x'));
  expectRefusal(Kind::notAStore, "The file is not a session store: " + name());
}

TEST_F(SessionSchemaTests, AnotherProgramsDatabaseIsRefused) {
  ASSERT_TRUE(database().execute("CREATE TABLE Notes (text)"));
  expectRefusal(Kind::notAStore, "The file is not a session store: " + name());
}

TEST_F(SessionSchemaTests, AnotherProgramsDatabaseWithALogIsRefused) {
  SQLiteDatabase other = database();
  ASSERT_TRUE(other.execute("PRAGMA journal_mode = WAL; CREATE TABLE Notes (text)"));
  expectRefusal(Kind::notAStore, "The file is not a session store: " + name());
}

TEST_F(SessionSchemaTests, AStoreOfANewerProgramIsRefused) {
  makeStore();
  ASSERT_TRUE(database().execute("PRAGMA user_version = 2"));
  expectRefusal(Kind::newerSchema,
                "The session store was written by a newer version of Quorvex: " + name());
}

TEST_F(SessionSchemaTests, AStoreWhoseNewerSchemaIsStillInItsLogIsRefused) {
  makeStore();
  SQLiteDatabase newer = database();
  ASSERT_TRUE(newer.execute("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 2"));
  expectRefusal(Kind::newerSchema,
                "The session store was written by a newer version of Quorvex: " + name());
}

TEST_F(SessionSchemaTests, AStoreThatLacksATableIsDamaged) {
  ASSERT_TRUE(openStore());
  ASSERT_TRUE(database().execute("DROP TABLE PowerSessionSampleBlobs"));
  const auto store = tryOpen();
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error(), (StoreError{Kind::damaged,
                                       "The session store is damaged: no such table: "
                                       "PowerSessionSampleBlobs: " +
                                           name()}));
}

TEST_F(SessionSchemaTests, AStoreThatLacksAColumnIsDamaged) {
  ASSERT_TRUE(openStore());
  ASSERT_TRUE(database().execute("ALTER TABLE PowerSession DROP COLUMN title"));
  const auto store = tryOpen();
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error().kind, Kind::damaged);
}

TEST_F(SessionSchemaTests, AStoreWithABrokenTableIsDamagedAndStaysAsItIs) {
  makeStore();
  std::string content = folder.contentOf(folder.store());
  constexpr std::size_t pageSize = 4096;
  ASSERT_GT(content.size(), 2 * pageSize);
  for (std::size_t page = 1; page * pageSize < content.size(); ++page) {
    std::string broken = content;
    std::fill_n(broken.begin() + static_cast<std::ptrdiff_t>(page * pageSize), pageSize, '\xA5');
    folder.write(folder.store(), broken);
    const auto store = tryOpen();
    ASSERT_FALSE(store) << "page " << page;
    EXPECT_EQ(store.error().kind, Kind::damaged);
    EXPECT_THAT(store.error().description, HasSubstr("The session store is damaged: "));
    EXPECT_EQ(folder.contentOf(folder.store()), broken);
  }
}

TEST_F(SessionSchemaTests, AStoreThatWasCutOffIsDamagedAndStaysAsItIs) {
  makeStore();
  const std::string content = folder.contentOf(folder.store());
  folder.write(folder.store(), content.substr(0, content.size() / 2));
  const std::string cut = folder.contentOf(folder.store());
  const auto store = tryOpen();
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error().kind, Kind::damaged);
  EXPECT_EQ(folder.contentOf(folder.store()), cut);
}

TEST_F(SessionSchemaTests, AMissingFolderIsNamed) {
  const auto path = folder.path() / "missing" / "a.store";
  const auto store = PowerSessionStore::open({.appVersion = "1", .storeURL = path}, clock);
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error(), (StoreError{Kind::cannotOpen,
                                       "The session store cannot be opened: No such file or "
                                       "directory: " +
                                           path.string()}));
}

TEST_F(SessionSchemaTests, AFolderIsNoStore) {
  std::filesystem::create_directory(folder.store());
  const auto store = tryOpen();
  ASSERT_FALSE(store);
  EXPECT_EQ(store.error(),
            (StoreError{Kind::cannotOpen, "The session store is not a regular file: " + name()}));
}

TEST_F(SessionSchemaTests, AStoreIsOpenedWhileAnotherProcessWritesToIt) {
  makeStore();
  SQLiteDatabase other = database();
  ASSERT_TRUE(other.execute("BEGIN IMMEDIATE"));
  const auto store = tryOpen();
  ASSERT_TRUE(store) << store.error().description;
  EXPECT_NE(*(*store)->activeSession(), nullptr);
}

TEST_F(SessionSchemaTests, AStoreBehindASymbolicLinkIsOpened) {
  makeStore();
  const auto link = folder.path() / "link.store";
  std::filesystem::create_symlink(folder.store(), link);
  const auto store = PowerSessionStore::open({.appVersion = "1", .storeURL = link}, clock);
  ASSERT_TRUE(store) << store.error().description;
  EXPECT_NE(*(*store)->activeSession(), nullptr);
}

TEST_F(SessionSchemaTests, AReadOnlyFileIsRefused) {
  makeStore();
  std::filesystem::permissions(folder.store(), std::filesystem::perms{0444});
  const std::string before = folder.contentOf(folder.store());
  // The superuser may write all files, so that the store is opened as an ordinary user.
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    constexpr unsigned nobody = 65534;
    if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) {
      _exit(3);
    }
    const auto store = tryOpen();
    _exit(!store && store.error() ==
                        StoreError{Kind::readOnly, "The session store is read-only: " + name()}
              ? 0
              : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(folder.contentOf(folder.store()), before);
}

TEST_F(SessionSchemaTests, AFileThatMayNotBeReadIsRefused) {
  makeStore();
  std::filesystem::permissions(folder.store(), std::filesystem::perms{0});
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    constexpr unsigned nobody = 65534;
    if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) {
      _exit(3);
    }
    const auto store = tryOpen();
    _exit(!store &&
                  store.error() ==
                      StoreError{Kind::cannotOpen,
                                 "The session store cannot be opened: Permission denied: " + name()}
              ? 0
              : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace quorvex
