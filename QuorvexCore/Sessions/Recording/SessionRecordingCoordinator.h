#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "AsyncContext.h"
#include "Clock.h"
#include "Date.h"
#include "Machine.h"
#include "MetricsEngine.h"
#include "Observable.h"
#include "PowerSessionRecorder.h"
#include "ProTelemetrySnapshot.h"
#include "SystemPowerState.h"
#include "TaskHandle.h"

namespace quorvex {

/// The clock of a recording: while a session is active it takes a state at the session's own
/// interval, window or not, attaches privileged telemetry without ever waiting for it, and hands
/// both to the recorder.
///
/// Main thread. A shared pointer owns the coordinator. Its tasks do not keep it alive, except while
/// a sample is taken; with it go its tasks.
class SessionRecordingCoordinator
    : public std::enable_shared_from_this<SessionRecordingCoordinator> {
 public:
  using SessionPointer = PowerSessionRecorder::SessionPointer;
  using ProTelemetry = std::optional<ProTelemetrySnapshot>;

  /// What the coordinator asks for and where it waits; all run on the main thread.
  struct Functions {
    std::function<asio::awaitable<SystemPowerState>()> stateProvider;  ///< a current state
    std::function<void()> ensureEngineRunning;  ///< called when sampling starts
    std::function<bool()> proTelemetryEnabled;  ///< asked at every use
    std::function<asio::awaitable<ProTelemetry>()> proTelemetryProvider;  ///< one privileged read
    /// Sleeps within a task for a number of seconds; cancelling the task may end it early. Without
    /// one the coordinator sleeps on the context's sleeper.
    std::function<asio::awaitable<void>(std::shared_ptr<TaskHandle> task, double seconds)> sleep;
  };

  /// The setting that privileged reads depend on.
  static constexpr const char* proTelemetryEnabledKey = "proTelemetryEnabled";

  /// At least `proTelemetrySampleInterval` seconds lie between two privileged reads. Samples
  /// nothing yet. `clock` outlives the coordinator.
  [[nodiscard]] static std::shared_ptr<SessionRecordingCoordinator> make(
      std::shared_ptr<PowerSessionRecorder> recorder, Functions functions, Clock& clock,
      AsyncContext context, double proTelemetrySampleInterval);
  /// The app's: states of the engine, privileged reads by the helper tool as the machine's user
  /// defaults allow them. Goes on recording a session that the recorder has adopted.
  [[nodiscard]] static std::shared_ptr<SessionRecordingCoordinator> make(
      std::shared_ptr<MetricsEngine> engine, std::shared_ptr<PowerSessionRecorder> recorder,
      Machine& machine, AsyncContext context, double proTelemetrySampleInterval);
  SessionRecordingCoordinator(const SessionRecordingCoordinator&) = delete;
  SessionRecordingCoordinator& operator=(const SessionRecordingCoordinator&) = delete;
  ~SessionRecordingCoordinator();

  [[nodiscard]] PowerSessionRecorder& recorder() const { return *recorder_; }
  [[nodiscard]] const Observable<bool>& isSampling() const { return isSampling_; }
  /// The newest privileged reading; observers hear of changes only.
  [[nodiscard]] const Observable<ProTelemetry>& latestProTelemetry() const {
    return latestProTelemetry_;
  }
  /// The last failure text of a privileged reading; a later success does not clear it.
  [[nodiscard]] const Observable<std::optional<std::string>>& lastMessage() const {
    return lastMessage_;
  }
  /// When the last privileged read was asked for.
  [[nodiscard]] std::optional<Date> lastProTelemetryRefreshAt() const {
    return lastProTelemetryRefreshAt_;
  }
  [[nodiscard]] double proTelemetrySampleInterval() const { return proTelemetrySampleInterval_; }

  /// Starts a session, or joins the active one, and samples it; null on failure.
  SessionPointer start(const std::optional<std::string>& title, PowerSessionSource source,
                       double sampleInterval, Date startedAt);
  /// Ends sampling and the session. A sample in flight finishes and finds no session.
  void stop(Date endedAt);
  /// Samples, if the recorder has an active session and nobody samples it yet.
  void resumeIfNeeded();

  /// One privileged read now, in place of one that is under way; absent while the setting is off.
  [[nodiscard]] asio::awaitable<ProTelemetry> sampleProTelemetryNow();
  /// One sample now, outside the loop's rhythm.
  [[nodiscard]] asio::awaitable<void> recordSampleNow();

 private:
  using Self = std::shared_ptr<SessionRecordingCoordinator>;
  using Task = std::shared_ptr<TaskHandle>;

  SessionRecordingCoordinator(std::shared_ptr<PowerSessionRecorder> recorder, Functions functions,
                              Clock& clock, AsyncContext context,
                              double proTelemetrySampleInterval);

  [[nodiscard]] bool hasActiveSession() const;
  [[nodiscard]] double sleepSeconds() const;
  void startSamplingIfNeeded();
  void stopSampling();
  /// Ends sampling from within its own task; a newer task goes on.
  void endSampling(const Task& task);
  [[nodiscard]] ProTelemetry proTelemetryForSample(Date date);
  void forgetProTelemetry();
  void cancelProTelemetryRefresh();
  void keepProTelemetry(ProTelemetry snapshot);

  // Coroutines own what they work on, since their caller may let go of it while they wait.
  static asio::awaitable<void> samplingLoop(std::weak_ptr<SessionRecordingCoordinator> weak,
                                            Task task, decltype(Functions::sleep) sleep);
  static asio::awaitable<void> recordCurrentSample(Self coordinator);
  static asio::awaitable<void> recordSample(Self coordinator);
  static asio::awaitable<void> refreshProTelemetry(
      std::weak_ptr<SessionRecordingCoordinator> weak, Task task,
      decltype(Functions::proTelemetryProvider) provider);
  static asio::awaitable<ProTelemetry> readProTelemetryNow(Self coordinator);

  std::shared_ptr<PowerSessionRecorder> recorder_;
  Functions functions_;
  Clock* clock_;
  AsyncContext context_;
  double proTelemetrySampleInterval_;
  Task samplingTask_;
  Task proTelemetryRefreshTask_;
  std::optional<Date> lastProTelemetryRefreshAt_;
  Observable<bool> isSampling_;
  Observable<ProTelemetry> latestProTelemetry_;
  Observable<std::optional<std::string>> lastMessage_;
};

}  // namespace quorvex
