#include "SQLiteDatabase.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

namespace quorvex {

namespace {

using Kind = StoreError::Kind;

std::string systemWords(sqlite3* database) {
  const int code = database == nullptr ? 0 : sqlite3_system_errno(database);
  return code == 0 ? std::string{} : ": " + std::generic_category().message(code);
}

/// The words for a result code; `database` knows more about it and may be null.
StoreError errorOf(int code, sqlite3* database) {
  const std::string detail =
      database == nullptr ? std::string{sqlite3_errstr(code)} : sqlite3_errmsg(database);
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {Kind::busy, "The session store is in use by another process"};
    case SQLITE_FULL:
      return {Kind::diskFull, "The session store cannot be written: the disk is full"};
    case SQLITE_READONLY:
      return {Kind::readOnly, "The session store is read-only"};
    case SQLITE_CORRUPT:
    // The program's own statements fail to compile only when tables or columns are missing.
    case SQLITE_ERROR:
      return {Kind::damaged, "The session store is damaged: " + detail};
    case SQLITE_NOTADB:
      return {Kind::notAStore, "The file is not a session store"};
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return {Kind::cannotOpen, "The session store cannot be opened" + systemWords(database)};
    case SQLITE_IOERR:
      return {sqlite3_system_errno(database) == ENOSPC ? Kind::diskFull : Kind::failedIO,
              "The session store cannot be read or written" + systemWords(database)};
    default:
      return {Kind::failedIO, "The session store failed: " + detail};
  }
}

}  // namespace

void SQLiteStatement::Finalizer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

void SQLiteStatement::bind(int position, std::int64_t value) {
  sqlite3_bind_int64(statement_.get(), position, value);
}

void SQLiteStatement::bind(int position, double value) {
  sqlite3_bind_double(statement_.get(), position, value);
}

void SQLiteStatement::bindText(int position, std::string_view text) {
  sqlite3_bind_text64(statement_.get(), position, text.data(), text.size(), SQLITE_STATIC,
                      SQLITE_UTF8);
}

void SQLiteStatement::bindBlob(int position, std::span<const std::uint8_t> bytes) {
  sqlite3_bind_blob64(statement_.get(), position, bytes.data(), bytes.size(), SQLITE_STATIC);
}

void SQLiteStatement::bindBlob(int position, std::string_view bytes) {
  sqlite3_bind_blob64(statement_.get(), position, bytes.data(), bytes.size(), SQLITE_STATIC);
}

void SQLiteStatement::bindNull(int position) {
  sqlite3_bind_null(statement_.get(), position);
}

StoreResult<bool> SQLiteStatement::step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) {
    return true;
  }
  if (code == SQLITE_DONE) {
    return false;
  }
  const StoreError error = errorOf(code, sqlite3_db_handle(statement_.get()));
  reset();
  return error;
}

StoreResult<void> SQLiteStatement::run() {
  while (true) {
    const auto hasRow = step();
    if (!hasRow) {
      return hasRow.error();
    }
    if (!*hasRow) {
      break;
    }
  }
  reset();
  return {};
}

void SQLiteStatement::reset() {
  sqlite3_reset(statement_.get());
}

bool SQLiteStatement::isNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::int64_t SQLiteStatement::integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

double SQLiteStatement::real(int column) const {
  return sqlite3_column_double(statement_.get(), column);
}

std::string_view SQLiteStatement::bytes(int column) const {
  const void* const data = sqlite3_column_blob(statement_.get(), column);
  const int size = sqlite3_column_bytes(statement_.get(), column);
  return data == nullptr
             ? std::string_view{}
             : std::string_view{static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

StoreResult<SQLiteDatabase> SQLiteDatabase::open(const std::filesystem::path& path, Mode mode,
                                                 std::chrono::milliseconds busyTimeout) {
  // One thread uses the connection, so that it needs no lock of its own.
  int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  if (mode != Mode::existing) {
    flags |= SQLITE_OPEN_CREATE;
  }
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(mode == Mode::inMemory ? ":memory:" : path.c_str(), &opened, flags, nullptr);
  SQLiteDatabase database{opened};
  if (code != SQLITE_OK) {
    return errorOf(code, opened);
  }
  sqlite3_busy_timeout(opened, static_cast<int>(busyTimeout.count()));
  return database;
}

StoreResult<std::string> SQLiteDatabase::firstBytes(const std::filesystem::path& path,
                                                    std::size_t count) {
  // By the database's own access to files: the system drops all locks that the process has on a
  // file when any other descriptor of it is closed, and a store may be open here already.
  sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
  // A database's name ends with two zeros.
  std::string name(static_cast<std::size_t>(vfs->mxPathname) + 2, '\0');
  if ((vfs->xFullPathname(vfs, path.c_str(), vfs->mxPathname + 1, name.data()) & 0xFF) !=
      SQLITE_OK) {
    return errorOf(SQLITE_CANTOPEN, nullptr);
  }
  std::vector<std::max_align_t> memory(
      static_cast<std::size_t>(vfs->szOsFile) / sizeof(std::max_align_t) + 1);
  auto* const file = reinterpret_cast<sqlite3_file*>(memory.data());
  if (vfs->xOpen(vfs, name.c_str(), file, SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr) !=
      SQLITE_OK) {
    const int reason = vfs->xGetLastError(vfs, 0, nullptr);
    return StoreError{Kind::cannotOpen, "The session store cannot be opened: " +
                                            std::generic_category().message(reason)};
  }
  // The size comes first: what another process adds after that is not taken for zeros.
  std::string bytes;
  sqlite3_int64 size = 0;
  int code = file->pMethods->xFileSize(file, &size);
  if (code == SQLITE_OK && size > 0) {
    bytes.resize(std::min(count, static_cast<std::size_t>(size)));
    code = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
  }
  file->pMethods->xClose(file);
  if (code != SQLITE_OK) {
    return errorOf(code, nullptr);
  }
  return bytes;
}

StoreResult<void> SQLiteDatabase::execute(const char* sql) {
  const int code = sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) {
    return errorOf(code, database_.get());
  }
  return {};
}

StoreResult<SQLiteStatement> SQLiteDatabase::prepare(std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (code != SQLITE_OK) {
    return errorOf(code, database_.get());
  }
  return SQLiteStatement{statement};
}

StoreResult<std::int64_t> SQLiteDatabase::integerOf(std::string_view sql) {
  auto statement = prepare(sql);
  if (!statement) {
    return statement.error();
  }
  const auto hasRow = statement->step();
  if (!hasRow) {
    return hasRow.error();
  }
  return *hasRow ? statement->integer(0) : std::int64_t{0};
}

std::int64_t SQLiteDatabase::lastInsertedRow() const {
  return sqlite3_last_insert_rowid(database_.get());
}

std::int64_t SQLiteDatabase::changedRows() const {
  return sqlite3_changes64(database_.get());
}

bool SQLiteDatabase::isInTransaction() const {
  return sqlite3_get_autocommit(database_.get()) == 0;
}

bool SQLiteDatabase::isReadOnly() const {
  return sqlite3_db_readonly(database_.get(), "main") == 1;
}

bool SQLiteDatabase::hasMoved() const {
  int moved = 0;
  const int code = sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return code == SQLITE_OK && moved != 0;
}

void SQLiteDatabase::keepLogOnClose(bool keep) {
  sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keep ? 1 : 0, nullptr);
}

void SQLiteDatabase::Closer::operator()(sqlite3* database) const {
  // Statements that are finalized later keep the connection until then.
  sqlite3_close_v2(database);
}

SQLiteTransaction::~SQLiteTransaction() {
  if (database_.isInTransaction()) {
    // A failure ends the transaction all the same.
    static_cast<void>(database_.execute("ROLLBACK"));
  }
}

StoreResult<void> SQLiteTransaction::begin() {
  // The system would let a commit into a deleted file succeed.
  if (database_.hasMoved()) {
    return StoreError{Kind::gone, "The session store was moved or deleted while it was open"};
  }
  return runPrepared(database_.begin_, "BEGIN IMMEDIATE");
}

StoreResult<void> SQLiteTransaction::commit() {
  return runPrepared(database_.commit_, "COMMIT");
}

StoreResult<void> SQLiteTransaction::runPrepared(std::optional<SQLiteStatement>& statement,
                                                 std::string_view sql) {
  if (!statement) {
    auto prepared = database_.prepare(sql);
    if (!prepared) {
      return prepared.error();
    }
    statement = *std::move(prepared);
  }
  return statement->run();
}

}  // namespace quorvex
