#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "LinuxMachine.h"
#include "ProcessActivityService.h"
#include "ThreadTime.h"

// What the ranking of processes costs beside the system calls that it cannot do without.

namespace quorvex {
namespace {

using benchmarks::threadSeconds;

constexpr std::size_t fewestProcesses = 500;

/// The process ids under /proc, in the kernel's order.
std::vector<pid_t> livePids() {
  std::vector<pid_t> pids;
  DIR* folder = opendir("/proc");
  if (folder == nullptr) {
    std::abort();
  }
  while (const dirent* entry = readdir(folder)) {
    const std::string_view name = entry->d_name;
    pid_t pid = 0;
    if (std::from_chars(name.data(), name.data() + name.size(), pid).ptr ==
        name.data() + name.size()) {
      pids.push_back(pid);
    }
  }
  closedir(folder);
  return pids;
}

/// Processes that do nothing, as many as are missing from `fewestProcesses`; they end with it.
class SleepingProcesses {
 public:
  SleepingProcesses() {
    const pid_t parent = getpid();
    for (std::size_t count = livePids().size(); count < fewestProcesses + margin; ++count) {
      const pid_t pid = fork();
      if (pid < 0) {
        std::abort();
      }
      if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (getppid() == parent) {
          pause();
        }
        _exit(EXIT_SUCCESS);
      }
      pids_.push_back(pid);
    }
  }
  SleepingProcesses(const SleepingProcesses&) = delete;
  SleepingProcesses& operator=(const SleepingProcesses&) = delete;
  ~SleepingProcesses() {
    for (const pid_t pid : pids_) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
  }

 private:
  /// Others may end while we measure.
  static constexpr std::size_t margin = 20;
  std::vector<pid_t> pids_;
};

/// A clock that does not let anybody wait.
class ImpatientClock final : public Clock {
 public:
  Date now() override { return {}; }
  std::chrono::nanoseconds monotonic() override { return {}; }
  void sleep(double /*seconds*/) override {}
};

/// Reads a file to its end and drops what it says.
void readAndDrop(const char* path) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return;
  }
  std::array<char, 4096> chunk;
  while (read(file, chunk.data(), chunk.size()) > 0) {
  }
  close(file);
}

/// The system calls of one walk of the process table and nothing else: no text is taken apart.
void walkBySystemCalls() {
  std::array<char, 64> path{};
  for (const pid_t pid : livePids()) {
    for (const char* file : {"stat", "status", "io", "comm"}) {
      *fmt::format_to(path.data(), "/proc/{}/{}", pid, file) = '\0';
      readAndDrop(path.data());
    }
  }
}

/// The same walk through the port, its answers dropped.
void walkByPort(ProcessTable& table) {
  std::vector<std::int32_t> pids(4096);
  std::array<char, 1024> name{};
  const auto bytes = static_cast<std::size_t>(table.listProcessIDs(pids));
  pids.resize(bytes / sizeof(std::int32_t));
  for (const std::int32_t pid : pids) {
    benchmark::DoNotOptimize(table.resources(pid));
    benchmark::DoNotOptimize(table.processName(pid, name));
  }
}

template <typename Work>
double cpuSecondsOf(Work work) {
  const double start = threadSeconds();
  work();
  return threadSeconds() - start;
}

/// A whole ranking, two walks, in turns with the bare system calls and with the port alone, so that
/// all three see the same machine. The ratios are of the sums.
void BM_SampleTopProcesses(benchmark::State& state) {
  const SleepingProcesses processes;
  LinuxMachine machine;
  ImpatientClock clock;
  const ProcessActivityService service{machine.processTable(), clock};
  double callSeconds = 0.0;
  double portSeconds = 0.0;
  double serviceSeconds = 0.0;
  std::size_t fewest = livePids().size();
  for (auto _ : state) {
    callSeconds += cpuSecondsOf([] {
      walkBySystemCalls();
      walkBySystemCalls();
    });
    portSeconds += cpuSecondsOf([&] {
      walkByPort(machine.processTable());
      walkByPort(machine.processTable());
    });
    const double seconds =
        cpuSecondsOf([&] { benchmark::DoNotOptimize(service.sampleTopProcesses()); });
    serviceSeconds += seconds;
    state.SetIterationTime(seconds);
    fewest = std::min(fewest, livePids().size());
  }
  const auto rounds = static_cast<double>(state.iterations());
  state.counters["processes"] = static_cast<double>(fewest);
  state.counters["ms_calls"] = callSeconds / rounds * 1e3;
  state.counters["ms_port"] = portSeconds / rounds * 1e3;
  state.counters["ratio_to_calls"] = serviceSeconds / callSeconds;
  state.counters["ratio_to_port"] = serviceSeconds / portSeconds;
}
BENCHMARK(BM_SampleTopProcesses)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex

BENCHMARK_MAIN();
