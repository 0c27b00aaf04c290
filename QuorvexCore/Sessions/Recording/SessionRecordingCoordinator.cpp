#include "SessionRecordingCoordinator.h"

#include <algorithm>
#include <utility>

#include "DetachedWork.h"
#include "ProTelemetryService.h"

namespace quorvex {

namespace {

constexpr double intervalWithoutSession = 2.0;
constexpr double shortestInterval = 0.5;
/// Seconds beyond its interval for which the engine's newest state counts as current.
constexpr double staleness = 0.5;

/// The engine's newest state; a new one when it is too old, or the engine polls none.
asio::awaitable<SystemPowerState> currentState(std::shared_ptr<MetricsEngine> engine,
                                               Clock& clock) {
  if (engine->isRunning().value() && !engine->history().value().empty()) {
    const SystemPowerState& state = engine->currentState().value();
    if (secondsBetween(state.timestamp, clock.now()) < engine->interval().value() + staleness) {
      co_return state;
    }
  }
  co_return co_await engine->sampleAndPublish();
}

/// What the app binds; the machine outlives it.
SessionRecordingCoordinator::Functions appFunctions(const std::shared_ptr<MetricsEngine>& engine,
                                                    Machine& machine, const AsyncContext& context) {
  using ProTelemetry = SessionRecordingCoordinator::ProTelemetry;
  return {
      .stateProvider = [engine, clock = &machine.clock()] { return currentState(engine, *clock); },
      .ensureEngineRunning =
          [engine] {
            if (!engine->isRunning().value()) {
              engine->start();
            }
          },
      .proTelemetryEnabled =
          [defaults = &machine.userDefaults()] {
            return defaults->boolean(SessionRecordingCoordinator::proTelemetryEnabledKey, false);
          },
      .proTelemetryProvider =
          [service = ProTelemetryService{machine.fileAttributes(), machine.childProcesses(),
                                         machine.clock()},
           workers = context.workers] {
            return runDetached(workers, [service] { return ProTelemetry{service.readSnapshot()}; });
          },
      .sleep = nullptr};
}

}  // namespace

std::shared_ptr<SessionRecordingCoordinator> SessionRecordingCoordinator::make(
    std::shared_ptr<PowerSessionRecorder> recorder, Functions functions, Clock& clock,
    AsyncContext context, double proTelemetrySampleInterval) {
  return std::shared_ptr<SessionRecordingCoordinator>{
      new SessionRecordingCoordinator(std::move(recorder), std::move(functions), clock,
                                      std::move(context), proTelemetrySampleInterval)};
}

std::shared_ptr<SessionRecordingCoordinator> SessionRecordingCoordinator::make(
    std::shared_ptr<MetricsEngine> engine, std::shared_ptr<PowerSessionRecorder> recorder,
    Machine& machine, AsyncContext context, double proTelemetrySampleInterval) {
  Functions functions = appFunctions(engine, machine, context);
  auto coordinator = make(std::move(recorder), std::move(functions), machine.clock(),
                          std::move(context), proTelemetrySampleInterval);
  coordinator->resumeIfNeeded();
  return coordinator;
}

SessionRecordingCoordinator::SessionRecordingCoordinator(
    std::shared_ptr<PowerSessionRecorder> recorder, Functions functions, Clock& clock,
    AsyncContext context, double proTelemetrySampleInterval)
    : recorder_(std::move(recorder)),
      functions_(std::move(functions)),
      clock_(&clock),
      context_(std::move(context)),
      proTelemetrySampleInterval_(proTelemetrySampleInterval) {
  if (!functions_.sleep) {
    functions_.sleep = [sleeper = context_.sleeper](Task task, double seconds) {
      return TaskHandle::sleep(std::move(task), *sleeper, seconds);
    };
  }
}

SessionRecordingCoordinator::~SessionRecordingCoordinator() {
  if (samplingTask_) {
    samplingTask_->cancel();
  }
  cancelProTelemetryRefresh();
}

SessionRecordingCoordinator::SessionPointer SessionRecordingCoordinator::start(
    const std::optional<std::string>& title, PowerSessionSource source, double sampleInterval,
    Date startedAt) {
  auto session = recorder_->start(title, source, sampleInterval, startedAt);
  if (session) {
    startSamplingIfNeeded();
  }
  return session;
}

void SessionRecordingCoordinator::stop(Date endedAt) {
  stopSampling();
  recorder_->stop(endedAt);
}

void SessionRecordingCoordinator::resumeIfNeeded() {
  startSamplingIfNeeded();
}

bool SessionRecordingCoordinator::hasActiveSession() const {
  return recorder_->activeSession().value() != nullptr;
}

double SessionRecordingCoordinator::sleepSeconds() const {
  const SessionPointer& session = recorder_->activeSession().value();
  return std::max(shortestInterval, session ? session->sampleInterval() : intervalWithoutSession);
}

void SessionRecordingCoordinator::startSamplingIfNeeded() {
  if (!hasActiveSession() || samplingTask_) {
    return;
  }
  functions_.ensureEngineRunning();
  samplingTask_ = std::make_shared<TaskHandle>();
  asio::co_spawn(context_.mainThread,
                 samplingLoop(weak_from_this(), samplingTask_, functions_.sleep), asio::detached);
  isSampling_.set(true);
}

void SessionRecordingCoordinator::stopSampling() {
  if (const Task task = std::exchange(samplingTask_, nullptr)) {
    task->cancel();
  }
  isSampling_.set(false);
}

void SessionRecordingCoordinator::endSampling(const Task& task) {
  if (samplingTask_ == task) {
    stopSampling();
  }
}

asio::awaitable<void> SessionRecordingCoordinator::samplingLoop(
    std::weak_ptr<SessionRecordingCoordinator> weak, Task task, decltype(Functions::sleep) sleep) {
  // The turn that started the loop ends first.
  co_await asio::post(asio::use_awaitable);
  if (const Self coordinator = weak.lock(); coordinator && !task->isCancelled()) {
    co_await recordCurrentSample(coordinator);
  }
  while (!task->isCancelled()) {
    double seconds = 0.0;
    if (const Self coordinator = weak.lock()) {
      seconds = coordinator->sleepSeconds();
    } else {
      co_return;
    }
    co_await sleep(task, seconds);
    const Self coordinator = weak.lock();
    if (!coordinator || task->isCancelled()) {
      break;
    }
    if (!coordinator->hasActiveSession()) {
      coordinator->endSampling(task);
      co_return;
    }
    co_await recordSample(coordinator);
  }
  if (const Self coordinator = weak.lock()) {
    coordinator->endSampling(task);
  }
}

asio::awaitable<void> SessionRecordingCoordinator::recordCurrentSample(Self coordinator) {
  if (!coordinator->hasActiveSession()) {
    coordinator->stopSampling();
    co_return;
  }
  co_await recordSample(coordinator);
}

asio::awaitable<void> SessionRecordingCoordinator::recordSample(Self coordinator) {
  SystemPowerState state = co_await coordinator->functions_.stateProvider();
  ProTelemetry telemetry = coordinator->proTelemetryForSample(state.timestamp);
  co_await coordinator->recorder_->record(std::move(state), std::move(telemetry));
}

asio::awaitable<void> SessionRecordingCoordinator::recordSampleNow() {
  return recordCurrentSample(shared_from_this());
}

SessionRecordingCoordinator::ProTelemetry SessionRecordingCoordinator::proTelemetryForSample(
    Date date) {
  if (!functions_.proTelemetryEnabled()) {
    forgetProTelemetry();
    return std::nullopt;
  }
  if (lastProTelemetryRefreshAt_ &&
      secondsBetween(*lastProTelemetryRefreshAt_, date) < proTelemetrySampleInterval_) {
    return latestProTelemetry_.value();
  }
  lastProTelemetryRefreshAt_ = date;
  if (!proTelemetryRefreshTask_) {
    proTelemetryRefreshTask_ = std::make_shared<TaskHandle>();
    asio::co_spawn(context_.mainThread,
                   refreshProTelemetry(weak_from_this(), proTelemetryRefreshTask_,
                                       functions_.proTelemetryProvider),
                   asio::detached);
  }
  return latestProTelemetry_.value();
}

asio::awaitable<void> SessionRecordingCoordinator::refreshProTelemetry(
    std::weak_ptr<SessionRecordingCoordinator> weak, Task task,
    decltype(Functions::proTelemetryProvider) provider) {
  // The sample that asked for the read does not get it.
  co_await asio::post(asio::use_awaitable);
  if (task->isCancelled()) {
    co_return;
  }
  ProTelemetry snapshot = co_await provider();
  const Self coordinator = weak.lock();
  if (!coordinator || task->isCancelled()) {
    co_return;
  }
  coordinator->keepProTelemetry(std::move(snapshot));
  if (coordinator->proTelemetryRefreshTask_ == task) {
    coordinator->proTelemetryRefreshTask_ = nullptr;
  }
}

asio::awaitable<SessionRecordingCoordinator::ProTelemetry>
SessionRecordingCoordinator::sampleProTelemetryNow() {
  return readProTelemetryNow(shared_from_this());
}

asio::awaitable<SessionRecordingCoordinator::ProTelemetry>
SessionRecordingCoordinator::readProTelemetryNow(Self coordinator) {
  if (!coordinator->functions_.proTelemetryEnabled()) {
    coordinator->forgetProTelemetry();
    co_return std::nullopt;
  }
  coordinator->cancelProTelemetryRefresh();
  ProTelemetry snapshot = co_await coordinator->functions_.proTelemetryProvider();
  coordinator->lastProTelemetryRefreshAt_ = coordinator->clock_->now();
  coordinator->keepProTelemetry(snapshot);
  co_return snapshot;
}

void SessionRecordingCoordinator::forgetProTelemetry() {
  latestProTelemetry_.setIfChanged(std::nullopt);
  lastProTelemetryRefreshAt_.reset();
  cancelProTelemetryRefresh();
}

void SessionRecordingCoordinator::cancelProTelemetryRefresh() {
  if (const Task task = std::exchange(proTelemetryRefreshTask_, nullptr)) {
    task->cancel();
  }
}

void SessionRecordingCoordinator::keepProTelemetry(ProTelemetry snapshot) {
  std::optional<std::string> error = snapshot ? snapshot->error : std::nullopt;
  latestProTelemetry_.setIfChanged(std::move(snapshot));
  if (error) {
    lastMessage_.set(std::move(error));
  }
}

}  // namespace quorvex
