#include "SessionSchema.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace quorvex::SessionSchema {

namespace {

using Kind = StoreError::Kind;
using std::filesystem::path;

// Columns stand under the names of the records' fields; `pk` and `session` are SQLite rows. Dates
// are nanoseconds since 1970-01-01T00:00:00Z, identifiers their 16 bytes. The blobs have a table of
// their own, so that listings and column reads never come near their pages.
constexpr const char* tables = R"(
CREATE TABLE PowerSession (
  pk INTEGER PRIMARY KEY,
  id BLOB NOT NULL,
  title TEXT NOT NULL,
  startedAt INTEGER NOT NULL,
  endedAt INTEGER,
  statusRaw TEXT,
  sourceRaw TEXT,
  appVersion TEXT NOT NULL,
  schemaVersion INTEGER NOT NULL,
  sampleInterval REAL NOT NULL,
  createdAt INTEGER NOT NULL
);
CREATE TABLE PowerSessionSample (
  pk INTEGER PRIMARY KEY,
  id BLOB NOT NULL,
  timestamp INTEGER NOT NULL,
  elapsedSeconds REAL NOT NULL,
  totalWatts REAL,
  batteryPercent INTEGER,
  acConnected INTEGER,
  thermalPressure INTEGER NOT NULL,
  maxFanRPM INTEGER,
  maxTemperature REAL,
  createdAt INTEGER NOT NULL,
  session INTEGER
);
CREATE TABLE PowerSessionSampleBlobs (
  sample INTEGER PRIMARY KEY,
  snapshotData BLOB NOT NULL,
  processActivityData BLOB,
  proTelemetryData BLOB
);
CREATE INDEX PowerSessionSampleBySession ON PowerSessionSample (session, timestamp);
)";

constexpr std::size_t headerSize = 100;

std::int64_t bigEndian32(std::string_view header, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = (value << 8U) | static_cast<unsigned char>(header[offset + i]);
  }
  return static_cast<std::int64_t>(value);
}

StoreError at(const path& file, StoreError error) {
  error.description = fmt::format("{}: {}", error.description, file.string());
  return error;
}

StoreError notAStore(const path& file) {
  return at(file, {Kind::notAStore, "The file is not a session store"});
}

StoreError newerSchema(const path& file) {
  return at(file,
            {Kind::newerSchema, "The session store was written by a newer version of Quorvex"});
}

/// Looks at a file that exists without opening it as a database, since even that may change a file
/// or make others beside it. The file's header carries the identification from the very first
/// transaction on.
StoreResult<void> inspect(const path& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return {};
  }
  if (error || !std::filesystem::is_regular_file(status)) {
    return at(file,
              {Kind::cannotOpen, error ? "The session store cannot be opened: " + error.message()
                                       : "The session store is not a regular file"});
  }
  const auto header = SQLiteDatabase::firstBytes(file, headerSize);
  if (!header) {
    return at(file, header.error());
  }
  if (header->empty()) {
    // What a crash leaves that came before the first page.
    return {};
  }
  constexpr std::size_t versionOffset = 60;
  constexpr std::size_t applicationOffset = 68;
  constexpr std::string_view magic{"SQLite format 3", 16};
  if (header->size() < headerSize || !header->starts_with(magic) ||
      bigEndian32(*header, applicationOffset) != applicationID) {
    return notAStore(file);
  }
  if (bigEndian32(*header, versionOffset) > version) {
    return newerSchema(file);
  }
  return {};
}

StoreResult<bool> hasTables(SQLiteDatabase& database) {
  const auto found = database.integerOf("PRAGMA user_version");
  if (!found) {
    return found.error();
  }
  return *found != 0;
}

StoreResult<void> createTables(SQLiteDatabase& database) {
  // Opening a store does not wait for who writes to it.
  auto found = hasTables(database);
  if (!found || *found) {
    return found ? StoreResult<void>{} : found.error();
  }
  SQLiteTransaction transaction{database};
  if (auto begun = transaction.begin(); !begun) {
    return begun;
  }
  // Another process may have been quicker.
  found = hasTables(database);
  if (!found || *found) {
    return found ? StoreResult<void>{} : found.error();
  }
  const std::string identification =
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", applicationID, version);
  if (auto created = database.execute(tables); !created) {
    return created;
  }
  if (auto identified = database.execute(identification.c_str()); !identified) {
    return identified;
  }
  return transaction.commit();
}

/// Switches the file to write-ahead logging, for good. Two processes that do it to a new file at
/// the same time get in each other's way for a moment, which the database's own waiting does not
/// cover.
StoreResult<void> useWriteAheadLog(SQLiteDatabase& database) {
  constexpr int attempts = 1000;
  auto result = database.execute("PRAGMA journal_mode = WAL");
  for (int i = 0; i < attempts && !result && result.error().kind == Kind::busy; ++i) {
    // Waits for a writer, if there is one.
    static_cast<void>(database.execute("BEGIN IMMEDIATE; ROLLBACK"));
    result = database.execute("PRAGMA journal_mode = WAL");
  }
  return result;
}

/// Every sample is on the disk when its commit returns. The two settings of macOS make its drive
/// caches take part; other systems ignore them.
StoreResult<void> makeDurable(SQLiteDatabase& database) {
  return database.execute(
      "PRAGMA synchronous = FULL; PRAGMA fullfsync = ON; PRAGMA checkpoint_fullfsync = ON;");
}

/// Reads along the edges at which the next sample will be added, and checks the small table whole.
/// The large ones are too large to be read at each start.
StoreResult<void> checkContent(SQLiteDatabase& database) {
  for (const char* edge :
       {"SELECT max(pk) FROM PowerSessionSample", "SELECT max(sample) FROM PowerSessionSampleBlobs",
        "SELECT max(session) FROM PowerSessionSample"}) {
    if (const auto result = database.integerOf(edge); !result) {
      return result.error();
    }
  }
  auto check = database.prepare("PRAGMA quick_check(PowerSession)");
  if (!check) {
    return check.error();
  }
  const auto hasRow = check->step();
  if (!hasRow) {
    return hasRow.error();
  }
  if (*hasRow && check->bytes(0) != "ok") {
    return StoreError{Kind::damaged,
                      fmt::format("The session store is damaged: {}", check->bytes(0))};
  }
  return {};
}

StoreResult<void> verify(SQLiteDatabase& database, const path& file) {
  if (database.isReadOnly()) {
    return at(file, {Kind::readOnly, "The session store is read-only"});
  }
  // Until the file is known to be a store nothing is written to it, not even what its log holds.
  database.keepLogOnClose(true);
  // One read transaction for all of it: another process may be making the store at this moment.
  if (auto begun = database.execute("BEGIN"); !begun) {
    return begun;
  }
  const auto application = database.integerOf("PRAGMA application_id");
  const auto pages = database.integerOf("PRAGMA page_count");
  const auto schema = database.integerOf("PRAGMA user_version");
  const auto ended = database.execute("ROLLBACK");
  for (const auto* answer : {&application, &pages, &schema}) {
    if (!*answer) {
      return answer->error();
    }
  }
  if (!ended) {
    return ended;
  }
  if (*application != applicationID && *pages != 0) {
    return notAStore(file);
  }
  if (*schema > version) {
    return newerSchema(file);
  }
  return {};
}

}  // namespace

StoreResult<SQLiteDatabase> open(const path& file, std::chrono::milliseconds busyTimeout) {
  if (auto inspected = inspect(file); !inspected) {
    return inspected.error();
  }
  auto database = SQLiteDatabase::open(file, SQLiteDatabase::Mode::create, busyTimeout);
  if (!database) {
    return at(file, database.error());
  }
  if (auto verified = verify(*database, file); !verified) {
    return verified.error();
  }
  for (const auto step : {createTables, useWriteAheadLog, makeDurable, checkContent}) {
    if (auto done = step(*database); !done) {
      return at(file, done.error());
    }
  }
  database->keepLogOnClose(false);
  return database;
}

StoreResult<SQLiteDatabase> openInMemory() {
  auto database = SQLiteDatabase::open({}, SQLiteDatabase::Mode::inMemory, {});
  if (!database) {
    return database;
  }
  if (auto created = createTables(*database); !created) {
    return created.error();
  }
  return database;
}

}  // namespace quorvex::SessionSchema
