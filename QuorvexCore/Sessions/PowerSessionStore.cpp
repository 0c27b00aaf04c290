#include "PowerSessionStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

#include "FatalError.h"
#include "LocalizedDate.h"
#include "PowerSessionCoders.h"
#include "PowerSessionMetrics.h"
#include "ProcessActivityDTO.h"
#include "SessionSchema.h"
#include "SystemPowerStateDTO.h"
#include "Text.h"
#include "UserFolders.h"

namespace quorvex {

namespace {

using Kind = StoreError::Kind;

bool isActive(const PowerSession& session) {
  return session.columns().statusRaw == rawValue(PowerSessionStatus::active);
}

StoreError sessionDeleted() {
  return {Kind::sessionDeleted, "The session is no longer in the store"};
}

StoreError notEncodable(const EncodingError& error) {
  return {Kind::notEncodable, "The sample cannot be stored: " + error.description};
}

/// The columns that are taken from the live state, beside its blob.
PowerSessionSampleColumns denormalizedColumns(const SystemPowerState& state) {
  const SampleColumns live = PowerSessionMetrics::liveColumns(state);
  PowerSessionSampleColumns columns;
  columns.totalWatts = live.totalWatts;
  columns.batteryPercent = live.batteryPercent;
  columns.acConnected = live.acConnected;
  columns.thermalPressure = live.thermalPressure;
  columns.maxFanRPM = live.maxFanRPM;
  columns.maxTemperature = live.maxTemperature;
  return columns;
}

StoreResult<PowerSessionBlobs> encodedBlobs(
    const SystemPowerState& state, const std::vector<ProcessActivityInfo>& processActivities,
    const std::optional<ProTelemetrySnapshot>& proTelemetry) {
  const RecordEncoder encoder = PowerSessionCoders::encoder();
  PowerSessionBlobs blobs;
  auto snapshot = encoder.encode(SystemPowerStateDTO{state});
  if (!snapshot) {
    return notEncodable(snapshot.error());
  }
  blobs.snapshotData = *std::move(snapshot);
  if (!processActivities.empty()) {
    const std::vector<ProcessActivityDTO> rows(processActivities.begin(), processActivities.end());
    auto activities = encoder.encode(rows);
    if (!activities) {
      return notEncodable(activities.error());
    }
    blobs.processActivityData = *std::move(activities);
  }
  if (proTelemetry) {
    // The sample is worth more than a privileged snapshot that cannot be written.
    if (auto telemetry = encoder.encode(*proTelemetry)) {
      blobs.proTelemetryData = *std::move(telemetry);
    }
  }
  return blobs;
}

}  // namespace

StoreResult<std::unique_ptr<PowerSessionStore>> PowerSessionStore::open(
    PowerSessionStoreOptions options, Clock& clock) {
  const std::filesystem::path file =
      options.inMemory || options.storeURL ? options.storeURL.value_or("") : defaultStoreURL();
  auto database = options.inMemory ? SessionSchema::openInMemory()
                                   : SessionSchema::open(file, options.busyTimeout);
  if (!database) {
    return database.error();
  }
  auto tables = SessionTables::over(*std::move(database));
  if (!tables) {
    return StoreError{tables.error().kind, tables.error().description + ": " + file.string()};
  }
  return std::unique_ptr<PowerSessionStore>{
      new PowerSessionStore{std::move(options.appVersion), *std::move(tables), clock}};
}

PowerSessionStore::PowerSessionStore(std::string appVersion, std::unique_ptr<SessionTables> tables,
                                     Clock& clock)
    : appVersion_(std::move(appVersion)), clock_(clock), tables_(std::move(tables)) {}

PowerSessionStore::~PowerSessionStore() = default;

std::filesystem::path PowerSessionStore::defaultStoreURL() {
  const std::filesystem::path folder =
      applicationSupportFolder().value_or(homeFolder() / "Library" / "Application Support") /
      "Quorvex";
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  return folder / "QuorvexSessions.store";
}

std::string PowerSessionStore::normalizedTitle(const std::optional<std::string>& title,
                                               Date startedAt) {
  const std::string_view given = text::trimmed(title ? std::string_view{*title} : "");
  if (!given.empty()) {
    return std::string{given};
  }
  return "Power Session " + mediumDateShortTime(startedAt, userLocaleForDates());
}

StoreResult<PowerSessionStore::SessionPointer> PowerSessionStore::activeSession() {
  auto all = sessions();
  if (!all) {
    return all.error();
  }
  const auto found = std::ranges::find_if(*all, [](const auto& item) { return isActive(*item); });
  return found == all->end() ? nullptr : *found;
}

StoreResult<std::vector<PowerSessionStore::SessionPointer>> PowerSessionStore::sessions() {
  beginOperation();
  auto rows = tables_->sessions();
  if (!rows) {
    return rows.error();
  }
  const auto hasExpired = [](const auto& item) { return item.second.expired(); };
  std::erase_if(sessionObjects_, hasExpired);
  std::erase_if(sampleObjects_, hasExpired);

  std::vector<SessionPointer> result{pending_.inserted.rbegin(), pending_.inserted.rend()};
  for (SessionTables::SessionRow& row : *rows) {
    if (!std::ranges::count(pending_.deleted, row.columns.id)) {
      result.push_back(objectFor(std::move(row.columns)));
    }
  }
  std::ranges::stable_sort(result, std::ranges::greater{},
                           [](const SessionPointer& item) { return item->startedAt(); });
  return result;
}

StoreResult<std::vector<PowerSessionStore::SessionPointer>> PowerSessionStore::completedSessions() {
  auto all = sessions();
  if (all) {
    std::erase_if(*all, [](const auto& item) { return isActive(*item); });
  }
  return all;
}

StoreResult<PowerSessionStore::SessionPointer> PowerSessionStore::session(const UUID& id) {
  auto all = sessions();
  if (!all) {
    return all.error();
  }
  const auto found = std::ranges::find(*all, id, [](const auto& item) { return item->id(); });
  return found == all->end() ? nullptr : *found;
}

StoreResult<PowerSessionStore::SessionPointer> PowerSessionStore::startSession(
    const std::optional<std::string>& title, PowerSessionSource source, double sampleInterval,
    Date startedAt) {
  auto active = activeSession();
  if (!active || *active) {
    return active;
  }
  auto session = std::make_shared<PowerSession>(
      UUID::random(), normalizedTitle(title, startedAt), startedAt, std::nullopt,
      PowerSessionStatus::active, source, appVersion_, PowerSession::currentSchemaVersion,
      sampleInterval, clock_.now());
  sessionObjects_[session->id()] = session;
  pending_.inserted.push_back(session);
  if (auto saved = save(); !saved) {
    return saved.error();
  }
  return session;
}

StoreResult<void> PowerSessionStore::stopSession(PowerSession& session, Date endedAt) {
  return close(session, PowerSessionStatus::completed, endedAt);
}

StoreResult<void> PowerSessionStore::interruptSession(PowerSession& session, Date endedAt) {
  return close(session, PowerSessionStatus::interrupted, endedAt);
}

StoreResult<void> PowerSessionStore::close(PowerSession& session, PowerSessionStatus status,
                                           Date endedAt) {
  beginOperation();
  session.setStatus(status);
  session.setEndedAt(endedAt);
  if (!isPendingInsert(session.id())) {
    pending_.updated[session.id()] = session.shared_from_this();
  }
  forgetConclusions(session.id());
  const auto missing = save();
  if (!missing) {
    return missing.error();
  }
  return std::ranges::count(*missing, session.id()) == 0 ? StoreResult<void>{} : sessionDeleted();
}

StoreResult<void> PowerSessionStore::deleteSession(PowerSession& session) {
  beginOperation();
  const UUID id = session.id();
  SQLiteTransaction transaction{tables_->database()};
  if (auto begun = transaction.begin(); !begun) {
    return begun;
  }
  if (auto deleted = tables_->deleteSamples(id); !deleted) {
    return deleted;
  }
  forgetSession(id);
  pending_.deleted.push_back(id);
  const auto written = writePending();
  if (!written) {
    return written.error();
  }
  if (auto committed = transaction.commit(); !committed) {
    expectStored();
    return committed;
  }
  finishSave(*written);
  return {};
}

StoreResult<PowerSessionStore::SamplePointer> PowerSessionStore::appendSample(
    PowerSession& session, const SystemPowerState& state,
    const std::vector<ProcessActivityInfo>& processActivities,
    const std::optional<ProTelemetrySnapshot>& proTelemetry, std::optional<Date> timestamp) {
  beginOperation();
  auto blobs = encodedBlobs(state, processActivities, proTelemetry);
  if (!blobs) {
    return blobs.error();
  }
  PowerSessionSampleColumns columns = denormalizedColumns(state);
  columns.id = UUID::random();
  columns.timestamp = timestamp.value_or(state.timestamp);
  columns.elapsedSeconds = std::max(0.0, secondsBetween(session.startedAt(), columns.timestamp));
  columns.createdAt = clock_.now();

  const auto loaded = loadedSamples(session.id());
  PowerSessionSample& object =
      loaded->objects.emplace_back(columns, *std::move(blobs), session.weak_from_this());
  loaded->listed.push_back(&object);
  const std::shared_ptr<PowerSessionSample> sample{loaded, &object};
  addPending(session.id(), sample);
  forgetConclusions(session.id());
  if (auto saved = save(); !saved) {
    return saved.error();
  }
  if (!sample->row()) {
    return sessionDeleted();
  }
  return SamplePointer{sample};
}

PowerSessionSamples PowerSessionStore::samples(const PowerSession& session) {
  beginOperation();
  const auto loaded = loadedSamples(session.id());
  // What cannot be listed now is left out; the next call tries again.
  static_cast<void>(load(session, *loaded));
  PowerSessionSamples result;
  result.reserve(loaded->listed.size());
  for (PowerSessionSample* sample : loaded->listed) {
    result.emplace_back(loaded, sample);
  }
  const auto isEarlier = [](const SamplePointer& left, const SamplePointer& right) {
    constexpr auto notStored = std::numeric_limits<std::int64_t>::max();
    return left->timestamp() != right->timestamp()
               ? left->timestamp() < right->timestamp()
               : left->row().value_or(notStored) < right->row().value_or(notStored);
  };
  if (!std::ranges::is_sorted(result, isEarlier)) {
    std::ranges::stable_sort(result, isEarlier);
  }
  if (!result.empty() && result.back()->row()) {
    tables_->blobs()->endAfter(*result.back()->row());
  }
  return result;
}

}  // namespace quorvex
