#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "AsyncContext.h"
#include "EngineSources.h"
#include "Machine.h"
#include "NetworkCounterAccumulator.h"
#include "Observable.h"
#include "SystemPowerState.h"
#include "TaskHandle.h"

namespace quorvex {

/// Owns the sources of the app role and turns them into a published stream of readings. Reads run
/// on the workers; only copying, rates and publishing run on the main thread, which owns the engine
/// and everything that can be observed. Sources answer with absence or emptiness, so there is no
/// error path: what they give is what is published.
///
/// A shared pointer owns the engine. Its loop does not keep it alive, except during a poll.
class MetricsEngine : public std::enable_shared_from_this<MetricsEngine> {
 public:
  /// `interval` seconds lie between the end of a poll and the start of the next; at most
  /// `historyLimit` readings are kept. Reads and publishes nothing yet. The machine outlives the
  /// engine and all its reads.
  [[nodiscard]] static std::shared_ptr<MetricsEngine> make(Machine& machine, AsyncContext context,
                                                           double interval,
                                                           std::int64_t historyLimit);
  MetricsEngine(const MetricsEngine&) = delete;
  MetricsEngine& operator=(const MetricsEngine&) = delete;
  ~MetricsEngine();

  /// The newest published reading; before the first poll one of no battery, silicon or network.
  [[nodiscard]] const Observable<SystemPowerState>& currentState() const { return currentState_; }
  /// Published readings, oldest first. Written after `currentState`, in the same turn.
  [[nodiscard]] const Observable<std::vector<SystemPowerState>>& history() const {
    return history_;
  }
  [[nodiscard]] const Observable<bool>& isRunning() const { return isRunning_; }
  /// Seconds that the last read took; absent before the first.
  [[nodiscard]] const Observable<std::optional<double>>& lastPollDuration() const {
    return lastPollDuration_;
  }
  [[nodiscard]] const Observable<double>& interval() const { return interval_; }
  [[nodiscard]] const Observable<bool>& lowImpactMode() const { return lowImpactMode_; }
  [[nodiscard]] const Observable<NetworkCounterAccumulator>& networkCounterAccumulator() const {
    return networkCounterAccumulator_;
  }
  /// Bytes received and sent since the engine was made; they never fall, and observers hear of
  /// changes only.
  [[nodiscard]] const Observable<std::uint64_t>& totalBytesInSinceStart() const {
    return totalBytesInSinceStart_;
  }
  [[nodiscard]] const Observable<std::uint64_t>& totalBytesOutSinceStart() const {
    return totalBytesOutSinceStart_;
  }
  [[nodiscard]] std::int64_t historyLimit() const { return historyLimit_; }
  /// The share of the interval that reading takes, 1 being all of it; absent before the first read.
  [[nodiscard]] std::optional<double> pollUtilizationFraction() const;

  /// Seconds, unchecked. A running loop begins again with a poll at once, whatever the value was.
  void setInterval(double seconds);
  /// Skips the silicon reading, which stays as it is, and the fallbacks for temperatures. Takes
  /// effect at the next read.
  void setLowImpactMode(bool isOn);

  /// Starts the poll loop, unless it runs: a poll in the next turn, then one after each interval.
  void start();
  /// Ends the poll loop. A poll that has been started is still published.
  void stop();

  /// One read that is not published; only `lastPollDuration` is. May overlap with other reads.
  [[nodiscard]] asio::awaitable<SystemPowerState> snapshot();
  /// One poll, then `currentState`. May overlap with other reads.
  [[nodiscard]] asio::awaitable<SystemPowerState> sampleAndPublish();

 private:
  using Self = std::shared_ptr<MetricsEngine>;

  MetricsEngine(Machine& machine, AsyncContext context, double interval, std::int64_t historyLimit);

  // Coroutines own what they work on, since their caller may let go of it while they wait.
  static asio::awaitable<void> pollLoop(std::weak_ptr<MetricsEngine> weakEngine,
                                        std::shared_ptr<TaskHandle> task, AsyncSleeper& sleeper);
  static asio::awaitable<void> poll(Self engine);
  static asio::awaitable<SystemPowerState> pollAndGet(Self engine);
  static asio::awaitable<SystemPowerState> readAll(Self engine);

  [[nodiscard]] SystemPowerState completed(EngineReading reading);
  void publish(SystemPowerState state);

  AsyncContext context_;
  std::shared_ptr<EngineSources> sources_;
  std::int64_t historyLimit_;
  std::shared_ptr<TaskHandle> pollingTask_;

  Observable<SystemPowerState> currentState_;
  Observable<std::vector<SystemPowerState>> history_;
  Observable<bool> isRunning_;
  Observable<std::optional<double>> lastPollDuration_;
  Observable<double> interval_;
  Observable<bool> lowImpactMode_;
  Observable<NetworkCounterAccumulator> networkCounterAccumulator_;
  Observable<std::uint64_t> totalBytesInSinceStart_;
  Observable<std::uint64_t> totalBytesOutSinceStart_;
};

}  // namespace quorvex
