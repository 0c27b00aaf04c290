#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FakeMachine.h"
#include "PowerSessionCoders.h"
#include "PowerSessionRecorder.h"
#include "ProcessActivityDTO.h"
#include "SQLiteDatabase.h"
#include "SteppedContext.h"
#include "StoreFixture.h"
#include "SystemPowerStateDTO.h"

namespace quorvex::testing {

/// Counts what the observers of an observable hear.
class Heard {
 public:
  template <typename Value>
  explicit Heard(const Observable<Value>& observable)
      : subscription_(observable.subscribe([this](const Value&) { ++count_; })) {}
  Heard(const Heard&) = delete;
  Heard& operator=(const Heard&) = delete;

  /// How often since the last call.
  [[nodiscard]] int times() { return std::exchange(count_, 0); }

 private:
  int count_ = 0;
  Subscription subscription_;
};

/// The laptop with one interface that receives `inPerSec` bytes a second.
inline SystemPowerState networkedState(double seconds, double inPerSec = 0.0) {
  SystemPowerState state = laptopState(seconds);
  state.network.emplace();
  state.network->interfaces = {samples::interface(4, "en0", 1000, 500, inPerSec, 0.0)};
  state.network->timestamp = state.timestamp;
  return state;
}

/// An available privileged snapshot with one row.
inline ProTelemetrySnapshot privileged(double sampledAfter, double energyImpact = 2.0) {
  ProTelemetrySnapshot snapshot;
  snapshot.isAvailable = true;
  snapshot.source = "powermetrics";
  snapshot.sampledAt = secondsIn(sampledAfter);
  snapshot.sampleIntervalMilliseconds = 1000;
  snapshot.processes = {{.pid = 7, .name = "measured", .energyImpact = energyImpact}};
  return snapshot;
}

/// A recorder over a store on disk, a computer of fakes and workers that are stepped by hand. The
/// clock stands at the start of the tests' sessions.
class RecordingTest : public ::testing::Test {
 protected:
  static constexpr double cadence = 10.0;
  static constexpr const char* nettop = "/usr/bin/nettop";
  static constexpr const char* helper = "/Library/PrivilegedHelperTools/com.quorvex.helper";
  /// Score of the one busy process: half of a core is 50 percent.
  static constexpr double workerScore = 50.0;

  RecordingTest() : store(openStore()) {
    machine.processes.setProcess(42, "worker", {});
    machine.time.duringSleep([this] {
      cpuTime_ += static_cast<std::uint64_t>(0.5 * 0.35 * 1e9);
      machine.processes.setProcess(42, "worker", {.userTime = cpuTime_});
    });
  }

  [[nodiscard]] std::shared_ptr<PowerSessionStore> openStore() {
    auto opened = PowerSessionStore::open({.appVersion = "0.14.0",
                                           .storeURL = folder.store(),
                                           .busyTimeout = std::chrono::milliseconds{0}},
                                          machine.time);
    EXPECT_TRUE(opened) << opened.error().description;
    return opened ? *std::move(opened) : nullptr;
  }
  void makeRecorder() {
    recorder = PowerSessionRecorder::make(store, machine, stepped.context().workers, cadence);
  }
  /// A recorder with an active session that starts at second 0 and samples every 2 seconds.
  PowerSessionRecorder::SessionPointer startRecording() {
    makeRecorder();
    auto session = recorder->start("Test", PowerSessionSource::app, 2.0, sessionStart);
    EXPECT_NE(session, nullptr);
    return session;
  }

  /// Another process starts a session and adds samples to it.
  void startElsewhere(double seconds, const std::vector<double>& sampleTimes) {
    const auto other = openStore();
    const auto session =
        other->startSession("Elsewhere", PowerSessionSource::cli, 2.0, secondsIn(seconds));
    ASSERT_TRUE(session);
    for (const double at : sampleTimes) {
      ASSERT_TRUE(other->appendSample(**session, laptopState(at), {}, std::nullopt));
    }
  }

  void setNettop(const std::string& rows, std::int32_t exitStatus = 0) {
    machine.children.answer(nettop, {"-P", "-x", "-L", "1", "-J", "bytes_in,bytes_out"},
                            {.output = rows, .exitStatus = exitStatus});
  }
  [[nodiscard]] std::size_t launchCount(const std::string& path) const {
    std::size_t count = 0;
    for (const FakeLaunch& launch : machine.children.launches()) {
      count += launch.path == path ? 1 : 0;
    }
    return count;
  }
  [[nodiscard]] std::int64_t processWalks() const {
    return machine.processes.count(FakeProcessTable::Call::Kind::list);
  }

  static asio::awaitable<bool> toTheEnd(asio::awaitable<void> operation) {
    co_await std::move(operation);
    co_return true;
  }
  /// Starts recording; whether it has ended appears in the result.
  auto spawnRecord(SystemPowerState state,
                   std::optional<ProTelemetrySnapshot> telemetry = std::nullopt) {
    return stepped.spawn(toTheEnd(recorder->record(std::move(state), std::move(telemetry))));
  }
  void record(SystemPowerState state,
              std::optional<ProTelemetrySnapshot> telemetry = std::nullopt) {
    const auto ended = spawnRecord(std::move(state), std::move(telemetry));
    stepped.settle();
    EXPECT_TRUE(ended->has_value());
  }

  [[nodiscard]] PowerSessionSamples samples() {
    const auto session = recorder->activeSession().value();
    return session ? store->samples(*session) : PowerSessionSamples{};
  }
  /// Times of the active session's samples, in seconds.
  [[nodiscard]] std::vector<double> recordedTimes() {
    std::vector<double> times;
    for (const auto& sample : samples()) {
      times.push_back(secondsBetween(sessionStart, sample->timestamp()));
    }
    return times;
  }
  [[nodiscard]] static SystemPowerStateDTO storedState(const PowerSessionSample& sample) {
    auto dto = PowerSessionCoders::decoder().decode<SystemPowerStateDTO>(
        std::string{sample.blobs().snapshotData});
    EXPECT_TRUE(dto);
    return dto ? *std::move(dto) : SystemPowerStateDTO{};
  }
  [[nodiscard]] const PowerSessionSummary& live() const {
    return recorder->activeSummary().value();
  }
  [[nodiscard]] const std::optional<std::string>& lastError() const {
    return recorder->lastError().value();
  }

  StoreFolder folder;
  FakeMachine machine;
  SteppedContext stepped{machine.time};
  std::shared_ptr<PowerSessionStore> store;
  std::shared_ptr<PowerSessionRecorder> recorder;

 private:
  std::uint64_t cpuTime_ = 0;
};

}  // namespace quorvex::testing
