#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "GeneratedSession.h"
#include "JSONWalk.h"
#include "ObservationLoader.h"
#include "RecordDecoder.h"

// What it costs to turn the blobs of a session into observations, against the least that a reader
// of every value can do with the general parser. The counter "ratio" is processor time over
// processor time, both measured in turn in one row, so that a busy machine does not bend it.

namespace quorvex {
namespace {

using benchmarks::JSONWalk;

constexpr std::size_t sampleCount = 5000;

const std::vector<benchmarks::GeneratedSample>& session() {
  static const auto samples = benchmarks::generatedSession(sampleCount);
  return samples;
}

void countSamples(benchmark::State& state) {
  std::size_t bytes = 0;
  for (const auto& sample : session()) {
    bytes += sample.snapshotData.size() + sample.processActivityData.value_or("").size();
  }
  state.counters["bytesPerSample"] = static_cast<double>(bytes) / sampleCount;
  state.counters["perSample"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * sampleCount,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// The session with the bytes behind each blob that the general parser wants.
const std::vector<benchmarks::GeneratedSample>& paddedSession() {
  static const auto samples = [] {
    auto padded = session();
    for (auto& sample : padded) {
      sample.snapshotData.reserve(sample.snapshotData.size() + simdjson::SIMDJSON_PADDING);
      if (sample.processActivityData) {
        sample.processActivityData->reserve(sample.processActivityData->size() +
                                            simdjson::SIMDJSON_PADDING);
      }
    }
    return padded;
  }();
  return samples;
}

void walkAll(JSONWalk& walk) {
  for (const auto& sample : paddedSession()) {
    walk.document(sample.snapshotData, sample.snapshotData.capacity());
    if (sample.processActivityData) {
      walk.document(*sample.processActivityData, sample.processActivityData->capacity());
    }
  }
}

void decodeAll(ObservationLoader::Threads threads) {
  ObservationLoader loader{session().size(), threads};
  for (const auto& sample : session()) {
    loader.add(sample.stored());
  }
  const ObservationSet set = loader.finish();
  benchmark::DoNotOptimize(set.observations().data());
}

void BM_WalkEveryValue(benchmark::State& state) {
  JSONWalk walk;
  for ([[maybe_unused]] auto _ : state) {
    walkAll(walk);
  }
  benchmark::DoNotOptimize(walk.sum());
  countSamples(state);
}
BENCHMARK(BM_WalkEveryValue)->Unit(benchmark::kMillisecond);

/// `range(0)`: without and with the second thread.
void BM_DecodeObservations(benchmark::State& state) {
  const auto threads = state.range(0) == 0 ? ObservationLoader::Threads::callerOnly
                                           : ObservationLoader::Threads::callerAndWorker;
  for ([[maybe_unused]] auto _ : state) {
    decodeAll(threads);
  }
  countSamples(state);
}
BENCHMARK(BM_DecodeObservations)
    ->Arg(0)
    ->Arg(1)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void BM_DecodeAgainstWalk(benchmark::State& state) {
  const auto threads = state.range(0) == 0 ? ObservationLoader::Threads::callerOnly
                                           : ObservationLoader::Threads::callerAndWorker;
  JSONWalk walk;
  std::clock_t walking = 0;
  std::clock_t decoding = 0;
  for ([[maybe_unused]] auto _ : state) {
    const std::clock_t begin = std::clock();
    walkAll(walk);
    const std::clock_t middle = std::clock();
    decodeAll(threads);
    walking += middle - begin;
    decoding += std::clock() - middle;
  }
  benchmark::DoNotOptimize(walk.sum());
  state.counters["ratio"] = static_cast<double>(decoding) / static_cast<double>(walking);
}
BENCHMARK(BM_DecodeAgainstWalk)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The whole records, which observations are checked against.
void BM_DecodeRecords(benchmark::State& state) {
  auto decoder = PowerSessionCoders::decoder();
  SystemPowerStateDTO snapshot;
  std::vector<ProcessActivityDTO> rows;
  for ([[maybe_unused]] auto _ : state) {
    for (const auto& sample : session()) {
      if (!decoder.decodeInto(snapshot, sample.snapshotData) ||
          (sample.processActivityData && !decoder.decodeInto(rows, *sample.processActivityData))) {
        std::abort();
      }
    }
  }
  countSamples(state);
}
BENCHMARK(BM_DecodeRecords)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex

BENCHMARK_MAIN();
