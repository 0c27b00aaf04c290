#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "GeneratedSession.h"
#include "ObservationLoader.h"
#include "RecordDecoder.h"

// What it costs to turn the blobs of a session into observations, against the least that a reader
// of every value can do with the general parser. The counter "perSample" of two rows, divided, is
// their ratio; the program prints it at its end.

namespace quorvex {
namespace {

constexpr std::size_t sampleCount = 5000;

const std::vector<benchmarks::GeneratedSample>& session() {
  static const auto samples = benchmarks::generatedSession(sampleCount);
  return samples;
}

/// Gets every key and every value: the floor that decoding is measured against.
class Walk {
 public:
  void document(const std::string& json) {
    simdjson::ondemand::document document;
    check(parser_.iterate(json.data(), json.size(), json.capacity()).get(document));
    simdjson::ondemand::value root;
    check(document.get_value().get(root));
    value(root);
  }

  [[nodiscard]] std::uint64_t sum() const { return sum_; }

 private:
  static void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS) {
      std::abort();
    }
  }

  void value(simdjson::ondemand::value json) {
    switch (json.type().value()) {
      case simdjson::ondemand::json_type::object:
        for (auto field : json.get_object()) {
          sum_ += field.unescaped_key().value().size();
          value(field.value().value());
        }
        break;
      case simdjson::ondemand::json_type::array:
        for (auto item : json.get_array()) {
          value(item.value());
        }
        break;
      case simdjson::ondemand::json_type::string:
        sum_ += json.get_string().value().size();
        break;
      case simdjson::ondemand::json_type::number:
        sum_ += static_cast<std::uint64_t>(json.get_double().value());
        break;
      case simdjson::ondemand::json_type::boolean:
        sum_ += json.get_bool().value() ? 1 : 0;
        break;
      case simdjson::ondemand::json_type::null:
        break;
    }
  }

  simdjson::ondemand::parser parser_;
  std::uint64_t sum_ = 0;
};

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

void BM_WalkEveryValue(benchmark::State& state) {
  auto samples = session();
  for (auto& sample : samples) {
    sample.snapshotData.reserve(sample.snapshotData.size() + simdjson::SIMDJSON_PADDING);
    if (sample.processActivityData) {
      sample.processActivityData->reserve(sample.processActivityData->size() +
                                          simdjson::SIMDJSON_PADDING);
    }
  }
  Walk walk;
  for ([[maybe_unused]] auto _ : state) {
    for (const auto& sample : samples) {
      walk.document(sample.snapshotData);
      if (sample.processActivityData) {
        walk.document(*sample.processActivityData);
      }
    }
  }
  benchmark::DoNotOptimize(walk.sum());
  countSamples(state);
}
BENCHMARK(BM_WalkEveryValue)->Unit(benchmark::kMillisecond);

/// `range(0)`: without and with the second thread.
void BM_DecodeObservations(benchmark::State& state) {
  std::vector<StoredSample> samples;
  for (const auto& sample : session()) {
    samples.push_back(sample.stored());
  }
  const auto threads = state.range(0) == 0 ? ObservationLoader::Threads::callerOnly
                                           : ObservationLoader::Threads::callerAndWorker;
  for ([[maybe_unused]] auto _ : state) {
    ObservationLoader loader{samples.size(), threads};
    for (const StoredSample& sample : samples) {
      loader.add(sample);
    }
    const ObservationSet set = loader.finish();
    benchmark::DoNotOptimize(set.observations().data());
  }
  countSamples(state);
}
BENCHMARK(BM_DecodeObservations)
    ->Arg(0)
    ->Arg(1)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

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
