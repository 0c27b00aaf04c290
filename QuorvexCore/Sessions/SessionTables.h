#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "PowerSessionSample.h"
#include "SQLiteDatabase.h"
#include "StoreError.h"
#include "StoredBlobReader.h"
#include "UUID.h"

namespace quorvex {

/// The rows of an open store: what SQL is run for which record. It keeps no records and begins no
/// transactions. One thread.
class SessionTables {
 public:
  struct SessionRow {
    std::int64_t row = 0;
    PowerSessionColumns columns;
  };

  /// Fails on a file whose tables are not those of a store.
  [[nodiscard]] static StoreResult<std::unique_ptr<SessionTables>> over(SQLiteDatabase database);

  [[nodiscard]] SQLiteDatabase& database() { return database_; }
  [[nodiscard]] const std::shared_ptr<StoredBlobReader>& blobs() const { return blobs_; }

  /// A number that differs from the last one when another connection has committed since.
  [[nodiscard]] StoreResult<std::int64_t> dataVersion();

  /// All rows, newest `startedAt` first; among equals the later row first.
  [[nodiscard]] StoreResult<std::vector<SessionRow>> sessions();
  [[nodiscard]] StoreResult<std::optional<std::int64_t>> rowOfSession(const UUID& id);
  /// Adds a session, once: one that is there already, by its `id`, is not added again.
  [[nodiscard]] StoreResult<void> insert(const PowerSessionColumns& columns);
  /// Writes the changeable columns, by the session's `id`; false when it is not in the store.
  [[nodiscard]] StoreResult<bool> update(const PowerSessionColumns& columns);
  [[nodiscard]] StoreResult<void> deleteSession(const UUID& id);
  /// Batch-deletes the samples of a session, with their blobs.
  [[nodiscard]] StoreResult<void> deleteSamples(const UUID& sessionID);

  /// Calls `visit` for each sample of a session behind row `after`, in ascending order of time,
  /// rows of one time in their order.
  [[nodiscard]] StoreResult<void> samples(
      const UUID& sessionID, std::int64_t after,
      const std::function<void(std::int64_t row, const PowerSessionSampleColumns&)>& visit);
  /// Whether a row that is to be added can be there already.
  enum class Presence { excluded, possible };

  /// Adds a sample with its blobs. Where that is possible, a row that is there already, by its
  /// `id`, is found and not added again. Absent when the session is not in the store.
  [[nodiscard]] StoreResult<std::optional<std::int64_t>> insert(
      const PowerSessionSampleColumns& columns, const PowerSessionBlobs& blobs,
      const UUID& sessionID, Presence presence);

 private:
  explicit SessionTables(SQLiteDatabase database) : database_(std::move(database)) {}

  [[nodiscard]] StoreResult<void> prepare();
  [[nodiscard]] StoreResult<std::optional<std::int64_t>> rowOfSample(
      const PowerSessionSampleColumns& columns, std::int64_t session);

  SQLiteDatabase database_;
  SQLiteStatement dataVersion_;
  SQLiteStatement selectSessions_;
  SQLiteStatement selectSessionRow_;
  SQLiteStatement insertSession_;
  SQLiteStatement updateSession_;
  SQLiteStatement deleteSession_;
  SQLiteStatement deleteBlobs_;
  SQLiteStatement deleteSamples_;
  SQLiteStatement selectSamples_;
  SQLiteStatement selectSample_;
  SQLiteStatement insertSample_;
  SQLiteStatement insertBlobs_;
  std::shared_ptr<StoredBlobReader> blobs_;
};

}  // namespace quorvex
