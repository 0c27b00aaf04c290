#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <variant>

#include "MetricsEngine.h"
#include "RecordedMachine.h"
#include "ResidentMemory.h"
#include "ThreadTime.h"

// What a poll of the engine costs on a recorded machine at instant pace, where the 0.1 s between
// the two energy samples takes no time.

namespace quorvex {
namespace {

using benchmarks::residentKilobytes;
using benchmarks::threadSeconds;

constexpr double pollInterval = 2.0;
constexpr std::int64_t historyLimit = 60;

/// Sleeps until it is told that the time is over; one sleep at a time.
class CommandedSleeper final : public AsyncSleeper {
 public:
  std::unique_ptr<PendingSleep> sleep(double /*seconds*/, std::function<void()> wake) override {
    wake_ = std::move(wake);
    return std::make_unique<PendingSleep>();
  }

  [[nodiscard]] bool isAsleep() const { return wake_ != nullptr; }
  void wake() { std::exchange(wake_, nullptr)(); }

 private:
  std::function<void()> wake_;
};

enum class Workers {
  stepped,  ///< on the calling thread, between two turns of the main thread
  thread    ///< on a thread of their own, as in the app
};

std::unique_ptr<RecordedMachine> machineNamed(const std::string& name) {
  auto loaded = RecordedMachine::load(QUORVEX_MACHINES_FOLDER "/" + name + ".json",
                                      RecordedMachine::Pace::instant);
  if (auto* machine = std::get_if<std::unique_ptr<RecordedMachine>>(&loaded)) {
    return std::move(*machine);
  }
  std::abort();
}

/// A running engine whose polls come when they are asked for. Its history is full from the start.
class PolledEngine {
 public:
  static constexpr std::int64_t pollsOfConstruction = historyLimit;

  PolledEngine(const std::string& machineName, Workers workers)
      : machine_(machineNamed(machineName)),
        engine_(MetricsEngine::make(
            *machine_, {mainThread_.get_executor(), workers_.get_executor(), &sleeper_},
            pollInterval, historyLimit)) {
    if (workers == Workers::thread) {
      workerThread_ = std::thread{[this] { workers_.run(); }};
    }
    engine_->start();
    finishPoll();
    for (std::int64_t i = 1; i < pollsOfConstruction; ++i) {
      poll();
    }
  }
  PolledEngine(const PolledEngine&) = delete;
  PolledEngine& operator=(const PolledEngine&) = delete;
  ~PolledEngine() {
    workersStay_.reset();
    if (workerThread_.joinable()) {
      workerThread_.join();
    }
  }

  /// The interval is over: one poll, until the engine sleeps again. Seconds of CPU that the main
  /// thread took; with a thread for the workers, waiting for it and being woken are part of it.
  double poll() {
    machine_->clock().sleep(pollInterval);
    const double start = threadSeconds();
    sleeper_.wake();
    return threadSeconds() - start + finishPoll();
  }

 private:
  double finishPoll() {
    double used = 0.0;
    while (!sleeper_.isAsleep()) {
      const double start = threadSeconds();
      if (workerThread_.joinable()) {
        mainThread_.run_one();
      } else {
        mainThread_.poll();
      }
      used += threadSeconds() - start;
      if (!workerThread_.joinable()) {
        workers_.poll_one();
      }
    }
    return used;
  }

  using WorkGuard = asio::executor_work_guard<asio::io_context::executor_type>;

  std::unique_ptr<RecordedMachine> machine_;
  CommandedSleeper sleeper_;
  // Work that is never run is handed back to the main thread, which therefore goes last.
  asio::io_context mainThread_;
  asio::io_context workers_;
  WorkGuard mainThreadStays_{mainThread_.get_executor()};
  WorkGuard workersStay_{workers_.get_executor()};
  std::shared_ptr<MetricsEngine> engine_;
  std::thread workerThread_;
};

/// The main thread's share of a poll: all that a view's thread loses. Nobody observes.
void BM_MainThreadShare(benchmark::State& state, const char* machineName) {
  PolledEngine engine{machineName, Workers::stepped};
  for (auto _ : state) {
    state.SetIterationTime(engine.poll());
  }
}
BENCHMARK_CAPTURE(BM_MainThreadShare, laptop, "laptop-unplugged")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_MainThreadShare, desktop, "desktop-fans")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_MainThreadShare, busyNetwork, "network-busy")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

/// A whole poll with its worker thread; the column "CPU" counts both threads.
void BM_WholePoll(benchmark::State& state, const char* machineName) {
  PolledEngine engine{machineName, Workers::thread};
  for (auto _ : state) {
    benchmark::DoNotOptimize(engine.poll());
  }
}
BENCHMARK_CAPTURE(BM_WholePoll, laptop, "laptop-unplugged")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_WholePoll, desktop, "desktop-fans")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_WholePoll, fanlessHID, "laptop-fanless-hid")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_WholePoll, busyNetwork, "network-busy")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

/// Whether a long run grows: resident memory early in it, later, and at its end. A leak grows from
/// the second to the third about ten times as much as from the first to the second.
void BM_MemoryOfLongRun(benchmark::State& state) {
  for (auto _ : state) {
    PolledEngine engine{"laptop-unplugged", Workers::thread};
    std::int64_t polls = PolledEngine::pollsOfConstruction;
    for (const std::int64_t mark : {1'000, 10'000, 100'000}) {
      for (; polls < mark; ++polls) {
        engine.poll();
      }
      state.counters["kB_after_" + std::to_string(mark)] = residentKilobytes();
    }
  }
}
BENCHMARK(BM_MemoryOfLongRun)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace quorvex

BENCHMARK_MAIN();
