#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "DetachedWork.h"
#include "RecordingFixture.h"
#include "SessionRecordingCoordinator.h"

namespace quorvex::testing {

/// A coordinator whose functions the test answers for. States carry the clock's time; privileged
/// reads and, when the test wishes, states wait for a worker to be stepped.
class CoordinatorTest : public RecordingTest {
 protected:
  using ProTelemetry = SessionRecordingCoordinator::ProTelemetry;

  static constexpr double telemetryInterval = 10.0;

  CoordinatorTest() { makeRecorder(); }

  [[nodiscard]] SessionRecordingCoordinator::Functions functions() {
    return {.stateProvider = [this] { return provideState(); },
            .ensureEngineRunning = [this] { ++engineStarts; },
            .proTelemetryEnabled = [this] { return isEnabled; },
            .proTelemetryProvider = [this] { return readTelemetry(); },
            .sleep = nullptr};
  }
  void makeCoordinator() { makeCoordinator(functions()); }
  void makeCoordinator(SessionRecordingCoordinator::Functions given) {
    coordinator = SessionRecordingCoordinator::make(recorder, std::move(given), machine.time,
                                                    stepped.context(), telemetryInterval);
  }
  PowerSessionRecorder::SessionPointer start(double sampleInterval = 2.0) {
    return coordinator->start("Test", PowerSessionSource::app, sampleInterval, machine.time.now());
  }
  /// Seconds since the start of the tests' sessions.
  [[nodiscard]] double now() { return secondsBetween(sessionStart, machine.time.now()); }
  /// Which samples of the active session carry a privileged snapshot.
  [[nodiscard]] std::vector<bool> privilegedSamples() {
    std::vector<bool> result;
    for (const auto& sample : samples()) {
      result.push_back(sample->blobs().proTelemetryData.has_value());
    }
    return result;
  }
  /// The next privileged reads; without any the last one goes on answering.
  std::deque<ProTelemetry> telemetry{privileged(0.0)};
  int telemetryReads = 0;
  int stateReads = 0;
  int engineStarts = 0;
  bool isEnabled = false;
  /// Whether a state waits for a worker.
  bool statesWait = false;
  std::shared_ptr<SessionRecordingCoordinator> coordinator;

 private:
  asio::awaitable<SystemPowerState> provideState() {
    ++stateReads;
    SystemPowerState state = laptopState(now());
    if (statesWait) {
      auto wait = [state] { return state; };
      state = co_await runDetached(stepped.context().workers, std::move(wait));
    }
    co_return state;
  }
  asio::awaitable<ProTelemetry> readTelemetry() {
    ++telemetryReads;
    ProTelemetry next = telemetry.front();
    if (telemetry.size() > 1) {
      telemetry.pop_front();
    }
    return runDetached(stepped.context().workers, [next] { return next; });
  }
};

}  // namespace quorvex::testing
