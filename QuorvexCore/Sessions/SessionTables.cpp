#include "SessionTables.h"

#include <utility>

namespace quorvex {

namespace {

std::int64_t nanoseconds(Date date) {
  return date.time_since_epoch().count();
}

Date date(std::int64_t nanosecondCount) {
  return Date{std::chrono::nanoseconds{nanosecondCount}};
}

std::optional<std::int64_t> optionalInteger(const SQLiteStatement& statement, int column) {
  return statement.isNull(column) ? std::nullopt : std::optional{statement.integer(column)};
}

std::optional<double> optionalReal(const SQLiteStatement& statement, int column) {
  return statement.isNull(column) ? std::nullopt : std::optional{statement.real(column)};
}

std::optional<std::string> optionalText(const SQLiteStatement& statement, int column) {
  return statement.isNull(column) ? std::nullopt
                                  : std::optional{std::string{statement.bytes(column)}};
}

UUID identifier(const SQLiteStatement& statement, int column) {
  UUID::Bytes bytes{};
  const std::string_view stored = statement.bytes(column);
  if (stored.size() == bytes.size()) {
    std::copy(stored.begin(), stored.end(), bytes.begin());
  }
  return UUID{bytes};
}

void bindOptionalText(SQLiteStatement& statement, int position,
                      const std::optional<std::string>& text) {
  if (text) {
    statement.bindText(position, *text);
  } else {
    statement.bindNull(position);
  }
}

void bindOptionalBytes(SQLiteStatement& statement, int position,
                       const std::optional<std::string>& bytes) {
  if (bytes) {
    statement.bindBlob(position, *bytes);
  } else {
    statement.bindNull(position);
  }
}

std::optional<std::int64_t> optionalNanoseconds(const std::optional<Date>& moment) {
  return moment ? std::optional{nanoseconds(*moment)} : std::nullopt;
}

PowerSessionColumns sessionColumns(const SQLiteStatement& row) {
  const auto endedAt = optionalInteger(row, 4);
  return {.id = identifier(row, 1),
          .title = std::string{row.bytes(2)},
          .startedAt = date(row.integer(3)),
          .endedAt = endedAt ? std::optional{date(*endedAt)} : std::nullopt,
          .statusRaw = optionalText(row, 5),
          .sourceRaw = optionalText(row, 6),
          .appVersion = std::string{row.bytes(7)},
          .schemaVersion = row.integer(8),
          .sampleInterval = row.real(9),
          .createdAt = date(row.integer(10))};
}

PowerSessionSampleColumns sampleColumns(const SQLiteStatement& row) {
  const auto acConnected = optionalInteger(row, 6);
  return {.id = identifier(row, 1),
          .timestamp = date(row.integer(2)),
          .elapsedSeconds = row.real(3),
          .totalWatts = optionalReal(row, 4),
          .batteryPercent = optionalInteger(row, 5),
          .acConnected = acConnected ? std::optional{*acConnected != 0} : std::nullopt,
          .thermalPressure = row.integer(7),
          .maxFanRPM = optionalInteger(row, 8),
          .maxTemperature = optionalReal(row, 9),
          .createdAt = date(row.integer(10))};
}

}  // namespace

StoreResult<std::unique_ptr<SessionTables>> SessionTables::over(SQLiteDatabase database) {
  std::unique_ptr<SessionTables> tables{new SessionTables{std::move(database)}};
  if (auto prepared = tables->prepare(); !prepared) {
    return prepared.error();
  }
  return tables;
}

StoreResult<void> SessionTables::prepare() {
  SQLiteStatement scanBlobs;
  const std::initializer_list<std::pair<SQLiteStatement*, const char*>> statements{
      {&dataVersion_, "PRAGMA data_version"},
      {&selectSessions_,
       "SELECT pk, id, title, startedAt, endedAt, statusRaw, sourceRaw, appVersion, schemaVersion, "
       "sampleInterval, createdAt FROM PowerSession ORDER BY startedAt DESC, pk DESC"},
      {&selectSessionRow_, "SELECT pk FROM PowerSession WHERE id = ?1"},
      {&insertSession_,
       "INSERT INTO PowerSession (id, title, startedAt, endedAt, statusRaw, sourceRaw, appVersion, "
       "schemaVersion, sampleInterval, createdAt) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, "
       "?10)"},
      {&updateSession_, "UPDATE PowerSession SET endedAt = ?2, statusRaw = ?3 WHERE id = ?1"},
      {&deleteSession_, "DELETE FROM PowerSession WHERE id = ?1"},
      {&deleteBlobs_,
       "DELETE FROM PowerSessionSampleBlobs WHERE sample IN (SELECT pk FROM PowerSessionSample "
       "WHERE session = (SELECT pk FROM PowerSession WHERE id = ?1))"},
      {&deleteSamples_,
       "DELETE FROM PowerSessionSample WHERE session = (SELECT pk FROM PowerSession WHERE id = "
       "?1)"},
      {&selectSamples_,
       "SELECT pk, id, timestamp, elapsedSeconds, totalWatts, batteryPercent, acConnected, "
       "thermalPressure, maxFanRPM, maxTemperature, createdAt FROM PowerSessionSample "
       "WHERE session = (SELECT pk FROM PowerSession WHERE id = ?1) AND pk > ?2 "
       "ORDER BY timestamp, pk"},
      {&selectSample_,
       "SELECT pk FROM PowerSessionSample WHERE session = ?1 AND timestamp = ?2 AND id = ?3"},
      {&insertSample_,
       "INSERT INTO PowerSessionSample (id, timestamp, elapsedSeconds, totalWatts, batteryPercent, "
       "acConnected, thermalPressure, maxFanRPM, maxTemperature, createdAt, session) "
       "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)"},
      {&insertBlobs_,
       "INSERT INTO PowerSessionSampleBlobs (sample, snapshotData, processActivityData, "
       "proTelemetryData) VALUES (?1, ?2, ?3, ?4)"},
      {&scanBlobs,
       "SELECT sample, snapshotData, processActivityData, proTelemetryData "
       "FROM PowerSessionSampleBlobs WHERE sample >= ?1 ORDER BY sample"},
  };
  for (const auto& [statement, sql] : statements) {
    auto prepared = database_.prepare(sql);
    if (!prepared) {
      return prepared.error();
    }
    *statement = *std::move(prepared);
  }
  blobs_ = std::make_shared<StoredBlobReader>(std::move(scanBlobs));
  return {};
}

StoreResult<std::int64_t> SessionTables::dataVersion() {
  const auto hasRow = dataVersion_.step();
  const std::int64_t version = hasRow && *hasRow ? dataVersion_.integer(0) : 0;
  dataVersion_.reset();
  return hasRow ? StoreResult<std::int64_t>{version} : StoreResult<std::int64_t>{hasRow.error()};
}

StoreResult<std::vector<SessionTables::SessionRow>> SessionTables::sessions() {
  std::vector<SessionRow> rows;
  while (true) {
    const auto hasRow = selectSessions_.step();
    if (!hasRow) {
      return hasRow.error();
    }
    if (!*hasRow) {
      selectSessions_.reset();
      return rows;
    }
    rows.push_back({selectSessions_.integer(0), sessionColumns(selectSessions_)});
  }
}

StoreResult<std::optional<std::int64_t>> SessionTables::rowOfSession(const UUID& id) {
  selectSessionRow_.bindBlob(1, id.bytes());
  const auto hasRow = selectSessionRow_.step();
  if (!hasRow) {
    return hasRow.error();
  }
  const auto row = *hasRow ? std::optional{selectSessionRow_.integer(0)} : std::nullopt;
  selectSessionRow_.reset();
  return row;
}

StoreResult<void> SessionTables::insert(const PowerSessionColumns& columns) {
  const auto isThere = rowOfSession(columns.id);
  if (!isThere) {
    return isThere.error();
  }
  if (*isThere) {
    return {};
  }
  insertSession_.bindBlob(1, columns.id.bytes());
  insertSession_.bindText(2, columns.title);
  insertSession_.bind(3, nanoseconds(columns.startedAt));
  insertSession_.bind(4, optionalNanoseconds(columns.endedAt));
  bindOptionalText(insertSession_, 5, columns.statusRaw);
  bindOptionalText(insertSession_, 6, columns.sourceRaw);
  insertSession_.bindText(7, columns.appVersion);
  insertSession_.bind(8, columns.schemaVersion);
  insertSession_.bind(9, columns.sampleInterval);
  insertSession_.bind(10, nanoseconds(columns.createdAt));
  return insertSession_.run();
}

StoreResult<bool> SessionTables::update(const PowerSessionColumns& columns) {
  updateSession_.bindBlob(1, columns.id.bytes());
  updateSession_.bind(2, optionalNanoseconds(columns.endedAt));
  bindOptionalText(updateSession_, 3, columns.statusRaw);
  if (auto updated = updateSession_.run(); !updated) {
    return updated.error();
  }
  return database_.changedRows() > 0;
}

StoreResult<void> SessionTables::deleteSession(const UUID& id) {
  deleteSession_.bindBlob(1, id.bytes());
  return deleteSession_.run();
}

StoreResult<void> SessionTables::deleteSamples(const UUID& sessionID) {
  for (SQLiteStatement* statement : {&deleteBlobs_, &deleteSamples_}) {
    statement->bindBlob(1, sessionID.bytes());
    if (auto deleted = statement->run(); !deleted) {
      return deleted;
    }
  }
  return {};
}

StoreResult<void> SessionTables::samples(
    const UUID& sessionID, std::int64_t after,
    const std::function<void(std::int64_t row, const PowerSessionSampleColumns&)>& visit) {
  selectSamples_.bindBlob(1, sessionID.bytes());
  selectSamples_.bind(2, after);
  while (true) {
    const auto hasRow = selectSamples_.step();
    if (!hasRow) {
      return hasRow.error();
    }
    if (!*hasRow) {
      selectSamples_.reset();
      return {};
    }
    visit(selectSamples_.integer(0), sampleColumns(selectSamples_));
  }
}

StoreResult<std::optional<std::int64_t>> SessionTables::rowOfSample(
    const PowerSessionSampleColumns& columns, std::int64_t session) {
  selectSample_.bind(1, session);
  selectSample_.bind(2, nanoseconds(columns.timestamp));
  selectSample_.bindBlob(3, columns.id.bytes());
  const auto isThere = selectSample_.step();
  if (!isThere) {
    return isThere.error();
  }
  const auto row = *isThere ? std::optional{selectSample_.integer(0)} : std::nullopt;
  selectSample_.reset();
  return row;
}

StoreResult<std::optional<std::int64_t>> SessionTables::insert(
    const PowerSessionSampleColumns& columns, const PowerSessionBlobs& blobs, const UUID& sessionID,
    Presence presence) {
  const auto session = rowOfSession(sessionID);
  if (!session || !*session) {
    return session;
  }
  if (presence == Presence::possible) {
    auto found = rowOfSample(columns, **session);
    if (!found || *found) {
      return found;
    }
  }
  insertSample_.bindBlob(1, columns.id.bytes());
  insertSample_.bind(2, nanoseconds(columns.timestamp));
  insertSample_.bind(3, columns.elapsedSeconds);
  insertSample_.bind(4, columns.totalWatts);
  insertSample_.bind(5, columns.batteryPercent);
  if (columns.acConnected) {
    insertSample_.bind(6, std::int64_t{*columns.acConnected ? 1 : 0});
  } else {
    insertSample_.bindNull(6);
  }
  insertSample_.bind(7, columns.thermalPressure);
  insertSample_.bind(8, columns.maxFanRPM);
  insertSample_.bind(9, columns.maxTemperature);
  insertSample_.bind(10, nanoseconds(columns.createdAt));
  insertSample_.bind(11, **session);
  if (auto inserted = insertSample_.run(); !inserted) {
    return inserted.error();
  }
  const std::int64_t row = database_.lastInsertedRow();
  insertBlobs_.bind(1, row);
  insertBlobs_.bindBlob(2, blobs.snapshotData);
  bindOptionalBytes(insertBlobs_, 3, blobs.processActivityData);
  bindOptionalBytes(insertBlobs_, 4, blobs.proTelemetryData);
  if (auto inserted = insertBlobs_.run(); !inserted) {
    return inserted.error();
  }
  return std::optional{row};
}

}  // namespace quorvex
