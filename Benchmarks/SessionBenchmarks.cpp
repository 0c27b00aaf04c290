#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "GeneratedSession.h"
#include "JSONWalk.h"
#include "PowerSessionStore.h"
#include "RecordedMachine.h"
#include "SQLiteDatabase.h"
#include "SessionCommand.h"
#include "SystemClock.h"
#include "TemporaryFolder.h"
#include "ThreadTime.h"
#include "WholeProcess.h"

// What storing and concluding cost, each beside the least that could do the same, in turn within
// one run: a ratio of two times that the same machine gave in the same minute.

namespace quorvex {
namespace {

namespace fs = std::filesystem;
using benchmarks::JSONWalk;
using benchmarks::median;

constexpr std::size_t daySamples = 43'200;  // a day at 2 s
constexpr std::size_t listedSessions = 100;

struct Cost {
  double wall = 0.0;
  double cpu = 0.0;
};

Cost costOf(const std::function<void()>& work) {
  const std::clock_t cpu = std::clock();
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
  return {wall.count(), static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC};
}

template <typename Value>
void check(const StoreResult<Value>& answer) {
  if (!answer) {
    fmt::print(stderr, "{}\n", answer.error().description);
    std::exit(EXIT_FAILURE);
  }
}

template <typename Value>
Value valueOf(StoreResult<Value> answer) {
  check(answer);
  return *std::move(answer);
}

SystemClock& systemClock() {
  static SystemClock clock;
  return clock;
}

std::unique_ptr<PowerSessionStore> openStore(const fs::path& file) {
  return valueOf(PowerSessionStore::open({.appVersion = "0", .storeURL = file}, systemClock()));
}

std::vector<ProcessActivityInfo> generatedProcesses(std::size_t second) {
  std::vector<ProcessActivityInfo> rows;
  for (std::size_t i = 0; i < 5; ++i) {
    const auto divisor = static_cast<double>(3 + i);
    rows.emplace_back(static_cast<std::int32_t>(500 + i),
                      fmt::format("Application {}", (second / 5 + i) % 40), 100.0 / divisor,
                      1000.0 / (4.0 + divisor), 1e6 / divisor, std::nullopt,
                      100.0 / divisor + 10.0);
  }
  return rows;
}

/// What one poll gave.
struct Poll {
  SystemPowerState state;
  std::vector<ProcessActivityInfo> processes;
};

Poll generatedPoll(std::size_t second) {
  const bool withProcesses = second % 5 == 0;
  return {benchmarks::generatedState(second, withProcesses),
          withProcesses ? generatedProcesses(second) : std::vector<ProcessActivityInfo>{}};
}

void append(PowerSessionStore& store, PowerSession& session, const Poll& poll) {
  static_cast<void>(valueOf(store.appendSample(session, poll.state, poll.processes, std::nullopt)));
}

/// A store of `sessions` sessions that share the samples of a day.
void fill(const fs::path& file, std::size_t sessions) {
  const auto store = openStore(file);
  std::size_t second = 0;
  for (std::size_t i = 0; i < sessions; ++i) {
    const Date start = benchmarks::generatedState(second, false).timestamp;
    const auto session =
        valueOf(store->startSession(fmt::format("Run {}", i), PowerSessionSource::cli, 1.0, start));
    for (std::size_t n = 0; n < daySamples / sessions; ++n) {
      append(*store, *session, generatedPoll(second++));
    }
    check(store->stopSession(*session, benchmarks::generatedState(second, false).timestamp));
  }
}

void fillTen(const fs::path& file) {
  const auto store = openStore(file);
  const auto session = valueOf(store->startSession("Ten", PowerSessionSource::cli, 1.0,
                                                   benchmarks::generatedState(0, false).timestamp));
  for (std::size_t second = 0; second < 10; ++second) {
    append(*store, *session, generatedPoll(second));
  }
}

/// Reads every blob of a store and gets every value in it, on one thread.
std::size_t walkStore(const fs::path& file) {
  auto database = valueOf(SQLiteDatabase::open(file, SQLiteDatabase::Mode::existing, {}));
  auto blobs =
      valueOf(database.prepare("SELECT snapshotData, processActivityData, proTelemetryData "
                               "FROM PowerSessionSampleBlobs ORDER BY sample"));
  JSONWalk walk;
  std::size_t bytes = 0;
  while (valueOf(blobs.step())) {
    for (int column = 0; column < 3; ++column) {
      if (!blobs.isNull(column)) {
        const std::string_view blob = blobs.bytes(column);
        bytes += blob.size();
        walk.document(blob);
      }
    }
  }
  if (walk.sum() == 0) {
    std::abort();
  }
  return bytes;
}

void printRatio(std::string_view name, const std::vector<Cost>& ours,
                const std::vector<Cost>& floors, double budget) {
  std::vector<double> wall;
  std::vector<double> cpu;
  std::vector<double> wallRatios;
  std::vector<double> cpuRatios;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    wall.push_back(ours[i].wall);
    cpu.push_back(ours[i].cpu);
    wallRatios.push_back(ours[i].wall / floors[i].wall);
    cpuRatios.push_back(ours[i].cpu / floors[i].cpu);
  }
  fmt::print(
      "{:<34} {:8.1f} ms wall {:8.1f} ms CPU  {:.2f} x floor (budget {:.1f}), CPU {:.2f} x\n", name,
      median(wall) * 1e3, median(cpu) * 1e3, median(wallRatios), budget, median(cpuRatios));
}

void compareWithFloor(std::string_view name, const fs::path& file, int rounds, double budget,
                      const std::function<void()>& work) {
  std::vector<Cost> ours;
  std::vector<Cost> floors;
  walkStore(file);
  for (int i = 0; i < rounds; ++i) {
    floors.push_back(costOf([&] { walkStore(file); }));
    ours.push_back(costOf(work));
  }
  printRatio(name, ours, floors, budget);
}

/// Drops what is printed, and leaves after a number of texts.
class CountingOutput final : public Output {
 public:
  explicit CountingOutput(std::size_t lastText = SIZE_MAX) : lastText_(lastText) {}

  bool print(std::string_view /*text*/) override {
    ++texts_;
    cpuAt_.push_back(benchmarks::threadSeconds());
    return texts_ < lastText_;
  }
  void printError(std::string_view message) override {
    fmt::print(stderr, "{}\n", message);
    std::exit(EXIT_FAILURE);
  }
  void showProgress(std::string_view /*line*/) override {}

  /// Mean CPU seconds of the texts `from` up to `to`.
  [[nodiscard]] double meanBetween(std::size_t from, std::size_t to) const {
    return (cpuAt_.at(to) - cpuAt_.at(from)) / static_cast<double>(to - from);
  }

 private:
  std::size_t lastText_;
  std::size_t texts_ = 0;
  std::vector<double> cpuAt_;
};

std::unique_ptr<RecordedMachine> machineNamed(const std::string& name) {
  auto loaded = RecordedMachine::load(QUORVEX_MACHINES_FOLDER "/" + name + ".json",
                                      RecordedMachine::Pace::instant);
  return std::move(std::get<std::unique_ptr<RecordedMachine>>(loaded));
}

void runSessionCommand(Output& output, std::vector<std::string> words, const std::string& machine,
                       CommandLineOptions options = {}) {
  const auto recorded = machineNamed(machine);
  words.insert(words.begin(), "session");
  SessionCommand{*recorded, output, std::move(words), options}.run();
}

/// The same bytes in the same tables by the same pragmas, and nothing else.
class BareStore {
 public:
  explicit BareStore(const fs::path& file) {
    static_cast<void>(openStore(file));
    database_ = std::make_unique<SQLiteDatabase>(
        valueOf(SQLiteDatabase::open(file, SQLiteDatabase::Mode::existing, {})));
    check(
        database_->execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; "
                           "PRAGMA fullfsync = ON;"));
    sample_ = valueOf(database_->prepare(
        "INSERT INTO PowerSessionSample (id, timestamp, elapsedSeconds, totalWatts, "
        "batteryPercent, acConnected, thermalPressure, maxFanRPM, maxTemperature, createdAt, "
        "session) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    blobs_ = valueOf(database_->prepare(
        "INSERT INTO PowerSessionSampleBlobs (sample, snapshotData, processActivityData, "
        "proTelemetryData) VALUES (?, ?, ?, ?)"));
  }

  void append(const benchmarks::GeneratedSample& sample, std::int64_t number) {
    SQLiteTransaction transaction{*database_};
    check(transaction.begin());
    static constexpr std::string_view identity = "0123456789abcdef";
    sample_.bindBlob(1, identity);
    for (int column = 2; column <= 11; ++column) {
      sample_.bind(column, number);
    }
    check(sample_.run());
    blobs_.bind(1, database_->lastInsertedRow());
    blobs_.bindBlob(2, sample.snapshotData);
    if (sample.processActivityData) {
      blobs_.bindBlob(3, *sample.processActivityData);
    } else {
      blobs_.bindNull(3);
    }
    blobs_.bindNull(4);
    check(blobs_.run());
    check(transaction.commit());
  }

 private:
  std::unique_ptr<SQLiteDatabase> database_;
  SQLiteStatement sample_;
  SQLiteStatement blobs_;
};

void compareAppending(const fs::path& folder, int rounds) {
  constexpr std::size_t batch = 200;
  const auto store = openStore(folder / "append.store");
  const auto session = valueOf(store->startSession("Run", PowerSessionSource::cli, 1.0,
                                                   benchmarks::generatedState(0, false).timestamp));
  BareStore bare{folder / "bare.store"};
  const auto samples = benchmarks::generatedSession(batch);
  std::vector<double> rates;
  std::size_t second = 0;
  for (int i = 0; i < rounds * 4; ++i) {
    const Cost bareCost = costOf([&] {
      for (const auto& sample : samples) {
        bare.append(sample, static_cast<std::int64_t>(second));
      }
    });
    std::vector<Poll> polls;
    for (std::size_t n = 0; n < batch; ++n) {
      polls.push_back(generatedPoll(second++));
    }
    const Cost cost = costOf([&] {
      for (const Poll& poll : polls) {
        append(*store, *session, poll);
      }
    });
    rates.push_back(bareCost.wall / cost.wall);
  }
  fmt::print("{:<34} {:.2f} x the rate of a bare transaction (budget at least 0.9)\n",
             "appendSample", median(rates));
}

/// CPU of a sample late in a day's recording against an early one.
void compareRecording(const fs::path& folder) {
  constexpr std::size_t late = 40'000;
  constexpr std::size_t early = 400;
  constexpr std::size_t window = 400;
  setenv("XDG_DATA_HOME", (folder / "record").c_str(), 1);
  CountingOutput output{late + window + 2};
  runSessionCommand(output, {"record", "Day"}, "day-of-work", {.interval = 0.5});
  fmt::print("{:<34} {:.1f} us CPU at sample {}, {:.2f} x that at sample {} (budget 1.2)\n",
             "session record", output.meanBetween(late, late + window) * 1e6, late,
             output.meanBetween(late, late + window) / output.meanBetween(early, early + window),
             early);
}

void compareWholeProcesses(const fs::path& dayFolder, const fs::path& dayStore,
                           const fs::path& tenFolder, int rounds) {
  const auto idIn = [](const fs::path& file) {
    return valueOf(openStore(file)->sessions()).front()->id().text();
  };
  const std::string machine = "QUORVEX_MACHINE=" QUORVEX_MACHINES_FOLDER "/laptop-unplugged.json";
  const fs::path exported = dayFolder / "export.jsonl";
  const benchmarks::Command exporting{
      "session export",
      {QUORVEX_EXECUTABLE, "session", "export", idIn(dayStore), "--output", exported.string()},
      {machine, "QUORVEX_PACE=instant", "XDG_DATA_HOME=" + dayFolder.string()}};
  const benchmarks::Run run = benchmarks::run(exporting);
  const double text = static_cast<double>(fs::file_size(exported)) / 1048576.0;
  fmt::print("{:<34} {:8.1f} MB peak, {:.2f} x the text of {:.0f} MB (budget 3)\n",
             "session export, whole process", run.peakMegabytes, run.peakMegabytes / text, text);
  const benchmarks::Command showing{
      "session show",
      {QUORVEX_EXECUTABLE, "session", "show", idIn(tenFolder / "Quorvex/QuorvexSessions.store")},
      {machine, "QUORVEX_PACE=instant", "XDG_DATA_HOME=" + tenFolder.string()}};
  std::vector<double> walls;
  for (int i = 0; i < rounds * 10; ++i) {
    walls.push_back(benchmarks::run(showing).wallSeconds);
  }
  fmt::print("{:<34} {:8.1f} ms wall (budget 15)\n", "session show of ten samples",
             median(walls) * 1e3);
}

fs::path storeIn(const fs::path& folder) {
  fs::create_directories(folder / "Quorvex");
  return folder / "Quorvex/QuorvexSessions.store";
}

/// Runs the benchmarks whose name contains `wanted`.
void runAll(int rounds, std::string_view wanted) {
  const testing::TemporaryFolder temporary;
  const fs::path& folder = temporary.path();
  const auto isWanted = [wanted](std::string_view name) {
    return name.find(wanted) != std::string_view::npos;
  };
  if (isWanted("append")) {
    compareAppending(folder, rounds);
  }
  if (isWanted("record")) {
    compareRecording(folder);
  }
  const fs::path day = storeIn(folder / "day");
  if (isWanted("report") || isWanted("export") || isWanted("show")) {
    fill(day, 1);
  }
  if (isWanted("report")) {
    compareWithFloor("summary and report of a day", day, rounds, 1.0, [&] {
      const auto store = openStore(day);
      const auto session = valueOf(store->sessions()).front();
      static_cast<void>(store->summary(*session));
      static_cast<void>(store->report(*session));
    });
  }
  if (isWanted("export")) {
    compareWithFloor("export of a day", day, rounds, 2.5, [&] {
      const auto store = openStore(day);
      const auto session = valueOf(store->sessions()).front();
      static_cast<void>(valueOf(store->exportJSONL(*session, systemClock().now())));
    });
  }
  if (isWanted("list")) {
    const fs::path many = storeIn(folder / "many");
    fill(many, listedSessions);
    setenv("XDG_DATA_HOME", (folder / "many").c_str(), 1);
    compareWithFloor("session list of 100 sessions", many, rounds, 1.2, [&] {
      CountingOutput output;
      runSessionCommand(output, {"list"}, "laptop-unplugged");
    });
  }
  if (isWanted("show")) {
    fillTen(storeIn(folder / "ten"));
    compareWholeProcesses(folder / "day", day, folder / "ten", rounds);
  }
}

}  // namespace
}  // namespace quorvex

/// Optional arguments: the rounds, and a part of the names of the benchmarks to run, which are
/// "append", "record", "report", "export", "list" and "show".
int main(int argumentCount, char** arguments) {
  quorvex::runAll(argumentCount > 1 ? std::max(1, std::atoi(arguments[1])) : 7,
                  argumentCount > 2 ? arguments[2] : "");
  return EXIT_SUCCESS;
}
