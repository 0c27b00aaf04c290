#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Clock.h"
#include "ObservationSet.h"
#include "PowerSession.h"
#include "PowerSessionReport.h"
#include "PowerSessionSample.h"
#include "PowerSessionSummary.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "SessionTables.h"
#include "StoreError.h"
#include "SystemPowerState.h"
#include "UUID.h"

namespace quorvex {

/// Where and how a store is opened.
struct PowerSessionStoreOptions {
  std::string appVersion;                         ///< copied into every new session and export
  std::optional<std::filesystem::path> storeURL;  ///< absent: `defaultStoreURL()`
  bool inMemory = false;  ///< holds nothing on disk; `storeURL` is then ignored
  std::chrono::milliseconds busyTimeout{5000};  ///< how long another process may keep it
};

/// The only code that touches stored sessions: makes, closes, lists and deletes them and adds
/// samples, one durable commit each.
///
/// What a failed save could not write stays pending and is part of every answer; the next save
/// commits it. Other processes may have the same file open: their commits are seen on the next
/// fetch. Sessions and samples are handed out as one object for each row.
///
/// It belongs to the thread that opened it, as do the records; any call from another thread is a
/// fatal error.
class PowerSessionStore {
 public:
  using SessionPointer = std::shared_ptr<PowerSession>;
  using SamplePointer = std::shared_ptr<const PowerSessionSample>;

  /// Opens the store, and makes it when there is none. `clock` must outlive it.
  [[nodiscard]] static StoreResult<std::unique_ptr<PowerSessionStore>> open(
      PowerSessionStoreOptions options, Clock& clock);

  /// "Quorvex/QuorvexSessions.store" in the user's Application Support folder. Makes the folder; a
  /// failure to do so shows when the store is opened.
  [[nodiscard]] static std::filesystem::path defaultStoreURL();

  /// `title` without white space at its ends, or "Power Session " and the date in the user's form
  /// when nothing is left.
  [[nodiscard]] static std::string normalizedTitle(const std::optional<std::string>& title,
                                                   Date startedAt);

  PowerSessionStore(const PowerSessionStore&) = delete;
  PowerSessionStore& operator=(const PowerSessionStore&) = delete;
  ~PowerSessionStore();

  [[nodiscard]] const std::string& appVersion() const { return appVersion_; }

  /// The newest session whose stored status is "active"; null without one.
  [[nodiscard]] StoreResult<SessionPointer> activeSession();
  /// Every session, newest first.
  [[nodiscard]] StoreResult<std::vector<SessionPointer>> sessions();
  /// Those whose stored status is not "active", newest first; also those without a status.
  [[nodiscard]] StoreResult<std::vector<SessionPointer>> completedSessions();
  /// The session with this identity; null without one.
  [[nodiscard]] StoreResult<SessionPointer> session(const UUID& id);

  /// Starts a session; joins the active one, as it stands, when there is one. `sampleInterval` is
  /// in seconds.
  [[nodiscard]] StoreResult<SessionPointer> startSession(const std::optional<std::string>& title,
                                                         PowerSessionSource source,
                                                         double sampleInterval, Date startedAt);
  /// Ends a session as completed.
  [[nodiscard]] StoreResult<void> stopSession(PowerSession& session, Date endedAt);
  /// Ends a session that no user stopped.
  [[nodiscard]] StoreResult<void> interruptSession(PowerSession& session, Date endedAt);
  /// Deletes a session with all its samples.
  [[nodiscard]] StoreResult<void> deleteSession(PowerSession& session);

  /// Adds a sample to a session of this store and commits it. Its time is `timestamp`, or that of
  /// the state. A state or row with a number that is not finite is refused and leaves nothing
  /// behind; such a privileged snapshot is left out. A sample of the same time as one of the
  /// session that is still pending takes that one's place: it is the same poll, offered again.
  [[nodiscard]] StoreResult<SamplePointer> appendSample(
      PowerSession& session, const SystemPowerState& state,
      const std::vector<ProcessActivityInfo>& processActivities,
      const std::optional<ProTelemetrySnapshot>& proTelemetry,
      std::optional<Date> timestamp = std::nullopt);

  /// The samples of a session in ascending order of time, those of one time in the order in which
  /// they were added. What cannot be read is left out.
  [[nodiscard]] PowerSessionSamples samples(const PowerSession& session);
  /// The same samples as conclusions see them, decoded while they are read: the quick way to all of
  /// them.
  [[nodiscard]] ObservationSet decodedSamples(const PowerSession& session);

  /// What the session comes to; `PowerSessionSummary::empty` without samples. Kept until this store
  /// changes the session: what other processes have added since is not in it.
  [[nodiscard]] PowerSessionSummary summary(const PowerSession& session);
  /// All that is shown of the session, kept likewise. A session without samples is a fatal error.
  [[nodiscard]] PowerSessionReport report(const PowerSession& session);
  /// The session as JSON Lines: its envelope, with a summary made anew, then each sample whose
  /// snapshot decodes, in time order; a line feed behind every line.
  [[nodiscard]] StoreResult<std::string> exportJSONL(const PowerSession& session, Date exportedAt);

  /// `observer` hears now and then how many of a session's samples have been read, and of how many,
  /// while a summary, report or export is made. It must not call the store.
  using ReadingObserver = std::function<void(std::size_t done, std::size_t total)>;
  void observeReading(ReadingObserver observer) { readingObserver_ = std::move(observer); }

 private:
  /// The sample objects of one session that are alive: whoever holds one sample holds all.
  struct LoadedSamples {
    std::deque<PowerSessionSample> objects;  ///< only grows, so that pointers stay good
    std::vector<PowerSessionSample*> listed;
    std::int64_t lastRow = 0;                 ///< rows up to here are listed
    std::optional<std::int64_t> dataVersion;  ///< of the store at the listing; absent before it
  };
  struct PendingSample {
    UUID session;
    std::shared_ptr<PowerSessionSample> sample;
    bool mayBeStored = false;  ///< a commit that told of a failure may have succeeded
  };
  struct DecodedSession {
    UUID session;
    ObservationSet observations;
  };
  /// Changes that are not committed yet.
  struct PendingChanges {
    std::vector<UUID> deleted;
    std::vector<SessionPointer> inserted;
    std::map<UUID, SessionPointer> updated;
    std::deque<PendingSample> samples;
  };
  /// Where the pending changes were written by a transaction that is still open.
  struct WrittenRows {
    std::vector<std::optional<std::int64_t>> samples;  ///< absent: the session is gone
    std::vector<UUID> missingSessions;
  };
  /// Samples that are kept while nothing can be written; the oldest is given up first.
  static constexpr std::size_t mostPendingSamples = 1000;

  PowerSessionStore(std::string appVersion, std::unique_ptr<SessionTables> tables, Clock& clock);

  /// What every operation begins with: the thread check, and the end of any running blob scan.
  void beginOperation() const;
  /// Commits all pending changes. The sessions that were to be updated and are gone.
  [[nodiscard]] StoreResult<std::vector<UUID>> save();
  [[nodiscard]] StoreResult<WrittenRows> writePending();
  void finishSave(const WrittenRows& rows);
  /// After a commit that failed: it may have reached the file all the same.
  void expectStored();
  [[nodiscard]] StoreResult<void> close(PowerSession& session, PowerSessionStatus status,
                                        Date endedAt);
  [[nodiscard]] SessionPointer objectFor(PowerSessionColumns columns);
  [[nodiscard]] bool isPendingInsert(const UUID& id) const;
  [[nodiscard]] std::shared_ptr<LoadedSamples> loadedSamples(const UUID& id);
  [[nodiscard]] StoreResult<void> load(const PowerSession& session, LoadedSamples& loaded);
  void addPending(const UUID& session, std::shared_ptr<PowerSessionSample> sample);
  void unlist(const PendingSample& sample);
  void forgetSession(const UUID& id);
  /// The session's samples, decoded while they are read, and kept until another session is asked
  /// for or this one's report is made: who looks at a summary often wants the report next.
  [[nodiscard]] const ObservationSet& observations(const PowerSession& session);
  void tellReading(std::size_t done, std::size_t total) const;
  void forgetConclusions(const UUID& id);

  std::string appVersion_;
  Clock& clock_;
  std::thread::id owner_ = std::this_thread::get_id();
  std::unique_ptr<SessionTables> tables_;
  std::map<UUID, std::weak_ptr<PowerSession>> sessionObjects_;
  std::map<UUID, std::weak_ptr<LoadedSamples>> sampleObjects_;
  PendingChanges pending_;
  std::optional<DecodedSession> decoded_;
  std::unordered_map<UUID, PowerSessionSummary> summaryCache_;
  std::unordered_map<UUID, PowerSessionReport> reportCache_;
  ReadingObserver readingObserver_;
};

}  // namespace quorvex
