#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "StoreError.h"

struct sqlite3;
struct sqlite3_stmt;

namespace quorvex {

/// One prepared statement. Positions count from 1 for parameters and from 0 for columns, as SQLite
/// does. It must not outlive its database.
class SQLiteStatement {
 public:
  SQLiteStatement() = default;
  explicit SQLiteStatement(sqlite3_stmt* statement) : statement_(statement) {}

  void bind(int position, std::int64_t value);
  void bind(int position, double value);
  /// The bytes must stay where they are until the statement is reset.
  void bindText(int position, std::string_view text);
  void bindBlob(int position, std::span<const std::uint8_t> bytes);
  void bindBlob(int position, std::string_view bytes);
  void bindNull(int position);
  template <typename Value>
  void bind(int position, const std::optional<Value>& value) {
    if (value) {
      bind(position, *value);
    } else {
      bindNull(position);
    }
  }

  /// One step: true with a row, false at the end.
  [[nodiscard]] StoreResult<bool> step();
  /// Runs a statement without rows to its end and resets it.
  [[nodiscard]] StoreResult<void> run();
  /// Ends the statement, and with it the transaction that only it held open.
  void reset();

  [[nodiscard]] bool isNull(int column) const;
  [[nodiscard]] std::int64_t integer(int column) const;
  [[nodiscard]] double real(int column) const;
  /// The bytes of a text or blob, until the next step or reset.
  [[nodiscard]] std::string_view bytes(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const;
  };

  std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

/// One connection to a SQLite file. One thread.
class SQLiteDatabase {
 public:
  /// How a file is opened. A missing file is made by `create` only.
  enum class Mode { existing, create, inMemory };

  [[nodiscard]] static StoreResult<SQLiteDatabase> open(const std::filesystem::path& path,
                                                        Mode mode,
                                                        std::chrono::milliseconds busyTimeout);

  /// The first bytes of a file, at most `count`, without opening it as a database.
  [[nodiscard]] static StoreResult<std::string> firstBytes(const std::filesystem::path& path,
                                                           std::size_t count);

  /// Runs statements without parameters; rows are dropped.
  [[nodiscard]] StoreResult<void> execute(const char* sql);
  [[nodiscard]] StoreResult<SQLiteStatement> prepare(std::string_view sql);
  /// The integer in the first column of the first row; 0 without a row.
  [[nodiscard]] StoreResult<std::int64_t> integerOf(std::string_view sql);

  [[nodiscard]] std::int64_t lastInsertedRow() const;
  [[nodiscard]] std::int64_t changedRows() const;
  /// Whether a transaction is open.
  [[nodiscard]] bool isInTransaction() const;
  /// Whether the file could be opened for reading only.
  [[nodiscard]] bool isReadOnly() const;
  /// Whether the file is no longer where it was opened: what is written would be lost with it.
  [[nodiscard]] bool hasMoved() const;
  /// Whether the write-ahead log stays as it is when this connection closes as the last.
  void keepLogOnClose(bool keep);

 private:
  friend class SQLiteTransaction;
  struct Closer {
    void operator()(sqlite3* database) const;
  };

  explicit SQLiteDatabase(sqlite3* database) : database_(database) {}

  std::unique_ptr<sqlite3, Closer> database_;
  std::optional<SQLiteStatement> begin_;
  std::optional<SQLiteStatement> commit_;
};

/// A write transaction: begun at once, so that it waits for other writers before it reads, and
/// rolled back unless `commit` succeeds. None begins in a file that was moved or deleted.
class SQLiteTransaction {
 public:
  explicit SQLiteTransaction(SQLiteDatabase& database) : database_(database) {}
  SQLiteTransaction(const SQLiteTransaction&) = delete;
  SQLiteTransaction& operator=(const SQLiteTransaction&) = delete;
  ~SQLiteTransaction();

  [[nodiscard]] StoreResult<void> begin();
  [[nodiscard]] StoreResult<void> commit();

 private:
  StoreResult<void> runPrepared(std::optional<SQLiteStatement>& statement, std::string_view sql);

  SQLiteDatabase& database_;
};

}  // namespace quorvex
