#include "PowerSessionRecorder.h"

#include <utility>

#include "DetachedWork.h"
#include "NetworkService.h"
#include "ProcessActivityService.h"
#include "ProcessSampleCadence.h"
#include "WattHours.h"

namespace quorvex {

std::shared_ptr<PowerSessionRecorder> PowerSessionRecorder::make(
    std::shared_ptr<PowerSessionStore> store, Machine& machine, asio::any_io_executor workers,
    double processSampleInterval) {
  return std::shared_ptr<PowerSessionRecorder>{new PowerSessionRecorder(
      std::move(store), machine, std::move(workers), processSampleInterval)};
}

PowerSessionRecorder::PowerSessionRecorder(std::shared_ptr<PowerSessionStore> store,
                                           Machine& machine, asio::any_io_executor workers,
                                           double processSampleInterval)
    : store_(std::move(store)),
      machine_(&machine),
      workers_(std::move(workers)),
      processSampleInterval_(processSampleInterval) {
  adoptActiveSession();
}

PowerSessionRecorder::~PowerSessionRecorder() = default;

void PowerSessionRecorder::refreshActiveSession() {
  adoptActiveSession();
}

void PowerSessionRecorder::refreshSummary() {
  rebuildRunningSummary();
}

void PowerSessionRecorder::adoptActiveSession() {
  auto active = store_->activeSession();
  if (!active) {
    lastError_.setIfChanged(active.error().description);
    return;
  }
  activeSession_.setIfChanged(*std::move(active));
  rebuildRunningSummary();
  lastError_.setIfChanged(std::nullopt);
}

void PowerSessionRecorder::rebuildRunningSummary() {
  const SessionPointer session = activeSession_.value();
  if (!session) {
    running_.set(RunningSummary{});
    activeSummary_.setIfChanged(PowerSessionSummary::empty());
    lastProTelemetrySampledAt_.setIfChanged(std::nullopt);
    lastRecordedStateTimestamp_.setIfChanged(std::nullopt);
    return;
  }
  RunningSummary rebuilt{maxSampleGap(session->sampleInterval())};
  const ObservationSet samples = store_->decodedSamples(*session);
  for (const Observation& sample : samples.observations()) {
    rebuilt.ingestStored(sample);
  }
  running_.set(std::move(rebuilt));
  lastProTelemetrySampledAt_.setIfChanged(running_.value().lastProTelemetrySampledAt());
  // The samples came in ascending order of time: the last one is the latest.
  lastRecordedStateTimestamp_.setIfChanged(running_.value().lastSampleTimestamp());
  activeSummary_.setIfChanged(running_.value().materialize(*session));
}

PowerSessionRecorder::SessionPointer PowerSessionRecorder::start(
    const std::optional<std::string>& title, PowerSessionSource source, double sampleInterval,
    Date startedAt) {
  const auto started = store_->startSession(title, source, sampleInterval, startedAt);
  if (!started) {
    lastError_.setIfChanged(started.error().description);
    return nullptr;
  }
  const SessionPointer session = *started;
  activeSession_.setIfChanged(session);
  running_.set(RunningSummary{maxSampleGap(session->sampleInterval())});
  forgetRecording();
  activeSummary_.setIfChanged(running_.value().materialize(*session));
  lastError_.setIfChanged(std::nullopt);
  return session;
}

void PowerSessionRecorder::stop(Date endedAt) {
  const SessionPointer session = activeSession_.value();
  if (!session) {
    return;
  }
  if (const auto stopped = store_->stopSession(*session, endedAt); !stopped) {
    lastError_.setIfChanged(stopped.error().description);
    return;
  }
  activeSession_.setIfChanged(nullptr);
  running_.set(RunningSummary{});
  activeSummary_.setIfChanged(PowerSessionSummary::empty());
  forgetRecording();
  lastError_.setIfChanged(std::nullopt);
}

void PowerSessionRecorder::forgetRecording() {
  lastProcessSampleAt_.setIfChanged(std::nullopt);
  lastProTelemetrySampledAt_.setIfChanged(std::nullopt);
  lastNetworkProcessCounters_.setIfChanged(std::nullopt);
  lastNetworkProcessSampleAt_.setIfChanged(std::nullopt);
  lastRecordedStateTimestamp_.setIfChanged(std::nullopt);
}

void PowerSessionRecorder::deleteSession(const SessionPointer& session) {
  // The session may be the observable's own pointer, which adoption clears.
  const SessionPointer deleted = session;
  if (const auto result = store_->deleteSession(*deleted); !result) {
    lastError_.setIfChanged(result.error().description);
    return;
  }
  adoptActiveSession();
}

StoreResult<std::string> PowerSessionRecorder::exportJSONL(const PowerSession& session) {
  return store_->exportJSONL(session, machine_->clock().now());
}

std::vector<PowerSessionRecorder::SessionPointer> PowerSessionRecorder::sessions() {
  auto all = store_->sessions();
  return all ? *std::move(all) : std::vector<SessionPointer>{};
}

PowerSessionSummary PowerSessionRecorder::summary(const PowerSession& session) {
  return store_->summary(session);
}

PowerSessionReport PowerSessionRecorder::report(const PowerSession& session) {
  return store_->report(session);
}

asio::awaitable<void> PowerSessionRecorder::record(
    SystemPowerState state, std::optional<ProTelemetrySnapshot> proTelemetry) {
  return recordState(shared_from_this(), std::move(state), std::move(proTelemetry));
}

asio::awaitable<void> PowerSessionRecorder::recordState(
    Self recorder, SystemPowerState state, std::optional<ProTelemetrySnapshot> proTelemetry) {
  const SessionPointer session = recorder->activeSession_.value();
  const std::optional<Date> recordedBefore = recorder->lastRecordedStateTimestamp_.value();
  if (!session || (recordedBefore && state.timestamp <= *recordedBefore)) {
    co_return;
  }
  // Said before the first wait, so that nobody records the same state meanwhile.
  recorder->lastRecordedStateTimestamp_.setIfChanged(state.timestamp);
  const bool shouldSample = isProcessSampleDue(recorder->lastProcessSampleAt_.value(),
                                               state.timestamp, recorder->processSampleInterval_);
  if (shouldSample) {
    recorder->lastProcessSampleAt_.setIfChanged(state.timestamp);
  }
  std::vector<ProcessActivityInfo> activities;
  if (shouldSample && !(proTelemetry && proTelemetry->isAvailable)) {
    activities = co_await recorder->sampleProcesses();
    if (!recorder->isRecording(session)) {
      co_return;
    }
  }
  if (shouldSample && state.network) {
    auto rows = co_await recorder->readNetworkProcesses();
    if (!recorder->isRecording(session)) {
      co_return;
    }
    recorder->attribute(state, std::move(rows));
  }
  const auto fresh = recorder->freshProTelemetry(std::move(proTelemetry));
  recorder->write(*session, state, activities, fresh, recordedBefore);
}

void PowerSessionRecorder::write(PowerSession& session, const SystemPowerState& state,
                                 const std::vector<ProcessActivityInfo>& activities,
                                 const std::optional<ProTelemetrySnapshot>& proTelemetry,
                                 std::optional<Date> recordedBefore) {
  if (const auto added = store_->appendSample(session, state, activities, proTelemetry); !added) {
    // The next poll is not a repeat, unless one was recorded while this one waited.
    if (lastRecordedStateTimestamp_.value() == state.timestamp) {
      lastRecordedStateTimestamp_.setIfChanged(recordedBefore);
    }
    lastError_.setIfChanged(added.error().description);
    return;
  }
  // It may have been forgotten while the state waited: its session was joined or adopted anew.
  if (lastRecordedStateTimestamp_.value().value_or(state.timestamp) <= state.timestamp) {
    lastRecordedStateTimestamp_.setIfChanged(state.timestamp);
  }
  running_.modify(
      [&](RunningSummary& running) { running.ingest(state, activities, proTelemetry); });
  activeSummary_.setIfChanged(running_.value().materialize(session));
  lastError_.setIfChanged(std::nullopt);
}

asio::awaitable<std::vector<ProcessActivityInfo>> PowerSessionRecorder::sampleProcesses() const {
  const ProcessActivityService service{machine_->processTable(), machine_->clock()};
  return runDetached(workers_, [service] {
    return service.sampleTopProcesses(ProcessActivityService::usualLimit,
                                      ProcessActivityService::usualInterval);
  });
}

asio::awaitable<std::vector<NetworkProcessInfo>> PowerSessionRecorder::readNetworkProcesses()
    const {
  const NetworkService service{
      machine_->interfaceTable(), machine_->childProcesses(), NetworkProcessAttributionMode::nettop,
      NetworkService::defaultNettopPath, NetworkService::defaultNettopTimeout};
  return runDetached(workers_, [service] { return service.readNettopProcessCounters(); });
}

void PowerSessionRecorder::attribute(SystemPowerState& state,
                                     std::vector<NetworkProcessInfo> rows) {
  if (rows.empty() || !state.network) {
    return;
  }
  NetworkSnapshot& network = *state.network;
  network.processes = rows;
  const auto& lastRows = lastNetworkProcessCounters_.value();
  const auto& lastTime = lastNetworkProcessSampleAt_.value();
  if (lastRows && lastTime) {
    network.processes = NetworkService::processThroughput(
        *lastRows, std::move(network.processes), secondsBetween(*lastTime, state.timestamp));
  }
  network.attributionSource = NetworkAttributionSource::nettop;
  network.attributionUnavailableReason.reset();
  lastNetworkProcessCounters_.setIfChanged(std::move(rows));
  lastNetworkProcessSampleAt_.setIfChanged(state.timestamp);
}

std::optional<ProTelemetrySnapshot> PowerSessionRecorder::freshProTelemetry(
    std::optional<ProTelemetrySnapshot> snapshot) {
  const std::optional<Date>& accepted = lastProTelemetrySampledAt_.value();
  if (!snapshot || !snapshot->isAvailable || (accepted && snapshot->sampledAt <= *accepted)) {
    return std::nullopt;
  }
  lastProTelemetrySampledAt_.setIfChanged(snapshot->sampledAt);
  return snapshot;
}

}  // namespace quorvex
