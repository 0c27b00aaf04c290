#include "MetricsEngine.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "DetachedWork.h"

namespace quorvex {

namespace {

/// Divisor in place of an interval of next to nothing.
constexpr double shortestDivisor = 0.001;

SystemPowerState emptyState(Clock& clock) {
  SystemPowerState state;
  state.timestamp = clock.now();
  return state;
}

}  // namespace

std::shared_ptr<MetricsEngine> MetricsEngine::make(Machine& machine, AsyncContext context,
                                                   double interval, std::int64_t historyLimit) {
  return std::shared_ptr<MetricsEngine>{
      new MetricsEngine(machine, std::move(context), interval, historyLimit)};
}

MetricsEngine::MetricsEngine(Machine& machine, AsyncContext context, double interval,
                             std::int64_t historyLimit)
    : context_(std::move(context)),
      sources_(std::make_shared<EngineSources>(machine)),
      historyLimit_(historyLimit),
      currentState_(emptyState(machine.clock())),
      interval_(interval) {}

MetricsEngine::~MetricsEngine() {
  if (pollingTask_) {
    pollingTask_->cancel();
  }
}

std::optional<double> MetricsEngine::pollUtilizationFraction() const {
  const std::optional<double>& duration = lastPollDuration_.value();
  if (!duration) {
    return std::nullopt;
  }
  return *duration / std::max(interval_.value(), shortestDivisor);
}

void MetricsEngine::setInterval(double seconds) {
  interval_.set(seconds);
  if (isRunning_.value()) {
    stop();
    start();
  }
}

void MetricsEngine::setLowImpactMode(bool isOn) {
  lowImpactMode_.set(isOn);
}

void MetricsEngine::start() {
  if (isRunning_.value()) {
    return;
  }
  pollingTask_ = std::make_shared<TaskHandle>();
  asio::co_spawn(context_.mainThread, pollLoop(weak_from_this(), pollingTask_, *context_.sleeper),
                 asio::detached);
  isRunning_.set(true);
}

void MetricsEngine::stop() {
  if (const auto task = std::exchange(pollingTask_, nullptr)) {
    task->cancel();
  }
  isRunning_.set(false);
}

asio::awaitable<SystemPowerState> MetricsEngine::snapshot() {
  return readAll(shared_from_this());
}

asio::awaitable<SystemPowerState> MetricsEngine::sampleAndPublish() {
  return pollAndGet(shared_from_this());
}

asio::awaitable<void> MetricsEngine::pollLoop(std::weak_ptr<MetricsEngine> weakEngine,
                                              std::shared_ptr<TaskHandle> task,
                                              AsyncSleeper& sleeper) {
  // The turn that started the loop ends first, and what it still sets counts for the first poll.
  co_await asio::post(asio::use_awaitable);
  while (true) {
    double seconds = 0.0;
    {
      Self engine = weakEngine.lock();
      if (!engine) {
        co_return;
      }
      co_await poll(engine);
      seconds = engine->interval_.value();
    }
    if (task->isCancelled()) {
      co_return;
    }
    co_await TaskHandle::sleep(task, sleeper, seconds);
    if (task->isCancelled()) {
      co_return;
    }
  }
}

asio::awaitable<void> MetricsEngine::poll(Self engine) {
  engine->publish(co_await readAll(engine));
}

asio::awaitable<SystemPowerState> MetricsEngine::pollAndGet(Self engine) {
  co_await poll(engine);
  co_return engine->currentState_.value();
}

asio::awaitable<SystemPowerState> MetricsEngine::readAll(Self engine) {
  const bool lowImpact = engine->lowImpactMode_.value();
  std::optional<PowerMetrics> carriedPower;
  if (lowImpact) {
    carriedPower = engine->currentState_.value().power;
  }
  auto read = [sources = engine->sources_, lowImpact, carriedPower] {
    return sources->read(lowImpact, carriedPower);
  };
  EngineReading reading = co_await runDetached(engine->context_.workers, std::move(read));
  co_return engine->completed(std::move(reading));
}

SystemPowerState MetricsEngine::completed(EngineReading reading) {
  lastPollDuration_.set(reading.duration);
  SystemPowerState& state = reading.state;
  const std::optional<NetworkSnapshot>& last = currentState_.value().network;
  if (last && !last->interfaces.empty()) {
    reading.interfaces =
        NetworkService::throughput(last->interfaces, std::move(reading.interfaces),
                                   secondsBetween(last->timestamp, state.timestamp));
  }
  state.network = NetworkSnapshot{.interfaces = std::move(reading.interfaces),
                                  .processes = std::move(reading.processes),
                                  .attributionSource = NetworkAttributionSource::none,
                                  .attributionUnavailableReason = std::nullopt,
                                  .timestamp = state.timestamp};
  return std::move(state);
}

void MetricsEngine::publish(SystemPowerState state) {
  currentState_.set(state);
  if (state.network) {
    NetworkCounterAccumulator::Counters totals;
    networkCounterAccumulator_.modify([&](NetworkCounterAccumulator& accumulator) {
      totals = accumulator.ingest(state.network->interfaces);
    });
    totalBytesInSinceStart_.setIfChanged(totals.bytesIn);
    totalBytesOutSinceStart_.setIfChanged(totals.bytesOut);
  }
  history_.modify([&](std::vector<SystemPowerState>& history) {
    history.push_back(std::move(state));
    const auto count = static_cast<std::int64_t>(history.size());
    const std::int64_t excess = std::clamp<std::int64_t>(count - historyLimit_, 0, count);
    history.erase(history.begin(), history.begin() + static_cast<std::ptrdiff_t>(excess));
  });
}

}  // namespace quorvex
