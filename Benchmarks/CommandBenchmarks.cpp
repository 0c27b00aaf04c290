#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "MonitorCommand.h"
#include "Output.h"
#include "RecordedMachine.h"

namespace quorvex {
namespace {

constexpr int ticksARun = 100;

/// Takes a number of documents and then says that nobody reads any more.
class CountingOutput final : public Output {
 public:
  explicit CountingOutput(int documents) : rest_(documents) {}

  bool print(std::string_view text) override {
    benchmark::DoNotOptimize(text.data());
    return --rest_ > 0;
  }
  void printError(std::string_view /*message*/) override { std::abort(); }
  void showProgress(std::string_view /*line*/) override { std::abort(); }

 private:
  int rest_;
};

std::unique_ptr<RecordedMachine> machineNamed(const std::string& name) {
  auto loaded = RecordedMachine::load(QUORVEX_MACHINES_FOLDER "/" + name + ".json",
                                      RecordedMachine::Pace::instant);
  if (auto* machine = std::get_if<std::unique_ptr<RecordedMachine>>(&loaded)) {
    return std::move(*machine);
  }
  std::abort();
}

/// One tick of `monitor`: all reads, the formatting and the hand-over, beside its sleeps, which
/// take no time on a recorded machine.
void BM_MonitorTick(benchmark::State& state, const char* machineName, bool json) {
  const auto machine = machineNamed(machineName);
  for (auto _ : state) {
    // The first document of a table run is the cleared screen.
    CountingOutput output{ticksARun + (json ? 0 : 1)};
    MonitorCommand{*machine, output, {.json = json, .noColor = false, .interval = 0.0}}.run();
  }
  state.counters["tick"] = benchmark::Counter(
      ticksARun, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(BM_MonitorTick, laptop, "laptop-unplugged", false);
BENCHMARK_CAPTURE(BM_MonitorTick, laptopJSON, "laptop-unplugged", true);
BENCHMARK_CAPTURE(BM_MonitorTick, desktop, "desktop-fans", false);
BENCHMARK_CAPTURE(BM_MonitorTick, busyNetwork, "network-busy", false);

/// Reading and checking a machine file.
void BM_LoadMachineFile(benchmark::State& state, const char* machineName) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(machineNamed(machineName));
  }
}
BENCHMARK_CAPTURE(BM_LoadMachineFile, laptop, "laptop-unplugged");
BENCHMARK_CAPTURE(BM_LoadMachineFile, day, "day-of-work");

}  // namespace
}  // namespace quorvex

BENCHMARK_MAIN();
