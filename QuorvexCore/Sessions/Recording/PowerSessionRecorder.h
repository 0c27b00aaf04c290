#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Coroutines.h"
#include "Date.h"
#include "Machine.h"
#include "NetworkSnapshot.h"
#include "Observable.h"
#include "PowerSessionReport.h"
#include "PowerSessionStore.h"
#include "PowerSessionSummary.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityInfo.h"
#include "RunningSummary.h"
#include "SystemPowerState.h"

namespace quorvex {

/// Stands between the sampling loop and the store: keeps the one active session, decides for each
/// offered state whether it is recorded and whether it gets the costly extras (process activity and
/// network attribution), writes the sample and keeps the live summary.
///
/// Failures are words in `lastError`, and recording goes on with the next sample. Observers hear of
/// changes only; of `running` they hear of every write. Main thread, apart from the extras, which
/// run on the workers. A shared pointer owns the recorder; a `record` that waits keeps it alive.
class PowerSessionRecorder : public std::enable_shared_from_this<PowerSessionRecorder> {
 public:
  using SessionPointer = PowerSessionStore::SessionPointer;

  /// Adopts the session that the store has as active. `processSampleInterval` seconds lie between
  /// two samples with extras. The machine outlives the recorder and all its recordings.
  [[nodiscard]] static std::shared_ptr<PowerSessionRecorder> make(
      std::shared_ptr<PowerSessionStore> store, Machine& machine, asio::any_io_executor workers,
      double processSampleInterval);
  PowerSessionRecorder(const PowerSessionRecorder&) = delete;
  PowerSessionRecorder& operator=(const PowerSessionRecorder&) = delete;
  ~PowerSessionRecorder();

  /// The session being recorded; null without one.
  [[nodiscard]] const Observable<SessionPointer>& activeSession() const { return activeSession_; }
  /// What live views show of it.
  [[nodiscard]] const Observable<PowerSessionSummary>& activeSummary() const {
    return activeSummary_;
  }
  /// Why the last operation failed; absent after a success.
  [[nodiscard]] const Observable<std::optional<std::string>>& lastError() const {
    return lastError_;
  }
  /// Time of the last state that got the extras.
  [[nodiscard]] const Observable<std::optional<Date>>& lastProcessSampleAt() const {
    return lastProcessSampleAt_;
  }
  [[nodiscard]] const Observable<RunningSummary>& running() const { return running_; }
  /// `sampledAt` of the last privileged snapshot that was accepted.
  [[nodiscard]] const Observable<std::optional<Date>>& lastProTelemetrySampledAt() const {
    return lastProTelemetrySampledAt_;
  }
  /// The rows of the last attribution, with rates as read, and the time of the state they went to.
  [[nodiscard]] const Observable<std::optional<std::vector<NetworkProcessInfo>>>&
  lastNetworkProcessCounters() const {
    return lastNetworkProcessCounters_;
  }
  [[nodiscard]] const Observable<std::optional<Date>>& lastNetworkProcessSampleAt() const {
    return lastNetworkProcessSampleAt_;
  }
  /// Time of the last recorded state.
  [[nodiscard]] const Observable<std::optional<Date>>& lastRecordedStateTimestamp() const {
    return lastRecordedStateTimestamp_;
  }
  [[nodiscard]] double processSampleInterval() const { return processSampleInterval_; }
  [[nodiscard]] PowerSessionStore& store() const { return *store_; }

  /// Adopts anew, for a session that was started elsewhere.
  void refreshActiveSession();
  /// Starts a session, or joins the one that the store has as active; null on failure. The live
  /// summary counts from here. `sampleInterval` is in seconds.
  SessionPointer start(const std::optional<std::string>& title, PowerSessionSource source,
                       double sampleInterval, Date startedAt);
  /// Ends the active session; one that cannot be ended stays active. Nothing without one.
  void stop(Date endedAt);
  /// Records a state in the active session, unless it is not later than the last recorded one. A
  /// session that ends or changes while the extras are taken loses the sample.
  [[nodiscard]] asio::awaitable<void> record(SystemPowerState state,
                                             std::optional<ProTelemetrySnapshot> proTelemetry);
  /// Deletes a session with its samples, then adopts anew.
  void deleteSession(const SessionPointer& session);

  /// The session as JSON Lines, exported now.
  [[nodiscard]] StoreResult<std::string> exportJSONL(const PowerSession& session);
  /// Every session, newest first; none on an error, which is not kept.
  [[nodiscard]] std::vector<SessionPointer> sessions();
  [[nodiscard]] PowerSessionSummary summary(const PowerSession& session);
  /// A session without samples is a fatal error.
  [[nodiscard]] PowerSessionReport report(const PowerSession& session);
  /// Builds the live summary anew from the stored samples.
  void refreshSummary();

 private:
  using Self = std::shared_ptr<PowerSessionRecorder>;

  PowerSessionRecorder(std::shared_ptr<PowerSessionStore> store, Machine& machine,
                       asio::any_io_executor workers, double processSampleInterval);

  void adoptActiveSession();
  void rebuildRunningSummary();
  void forgetRecording();
  [[nodiscard]] bool isRecording(const SessionPointer& session) const {
    return activeSession_.value() == session;
  }

  // It owns what it works on, since its caller may let go of it while it waits.
  static asio::awaitable<void> recordState(Self recorder, SystemPowerState state,
                                           std::optional<ProTelemetrySnapshot> proTelemetry);

  // The extras, on the workers.
  [[nodiscard]] asio::awaitable<std::vector<ProcessActivityInfo>> sampleProcesses() const;
  [[nodiscard]] asio::awaitable<std::vector<NetworkProcessInfo>> readNetworkProcesses() const;

  /// Puts the rows into the state's network, with the rates since the rows before.
  void attribute(SystemPowerState& state, std::vector<NetworkProcessInfo> rows);
  /// The snapshot, if it is available and later than the last accepted one.
  [[nodiscard]] std::optional<ProTelemetrySnapshot> freshProTelemetry(
      std::optional<ProTelemetrySnapshot> snapshot);

  /// Stores a sample and counts it. `recordedBefore`: the time of the state recorded before it.
  void write(PowerSession& session, const SystemPowerState& state,
             const std::vector<ProcessActivityInfo>& activities,
             const std::optional<ProTelemetrySnapshot>& proTelemetry,
             std::optional<Date> recordedBefore);

  std::shared_ptr<PowerSessionStore> store_;
  Machine* machine_;
  asio::any_io_executor workers_;
  double processSampleInterval_;

  Observable<SessionPointer> activeSession_;
  Observable<PowerSessionSummary> activeSummary_;
  Observable<std::optional<std::string>> lastError_;
  Observable<std::optional<Date>> lastProcessSampleAt_;
  Observable<RunningSummary> running_;
  Observable<std::optional<Date>> lastProTelemetrySampledAt_;
  Observable<std::optional<std::vector<NetworkProcessInfo>>> lastNetworkProcessCounters_;
  Observable<std::optional<Date>> lastNetworkProcessSampleAt_;
  Observable<std::optional<Date>> lastRecordedStateTimestamp_;
};

}  // namespace quorvex
