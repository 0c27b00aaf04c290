#include "PowerSessionThermalDigest.h"

#include <algorithm>
#include <vector>

#include "Date.h"
#include "FatalError.h"
#include "WattHours.h"

namespace quorvex::PowerSessionThermalDigestBuilder {

namespace {

using Digest = PowerSessionThermalDigest;

constexpr std::int64_t throttlingPressure = 2;
constexpr double throttlingSeconds = 60.0;

struct Band {
  double fromCelsius = 0.0;
  double Digest::*seconds = nullptr;
};
constexpr std::array bands{Band{70.0, &Digest::timeAbove70C}, Band{80.0, &Digest::timeAbove80C},
                           Band{90.0, &Digest::timeAbove90C}, Band{95.0, &Digest::timeAbove95C},
                           Band{100.0, &Digest::timeAbove100C}};

struct Reading {
  Date timestamp{};
  std::optional<double> maxTemperature;
};

Digest::Verdict verdict(const Digest& digest) {
  if (digest.maxThermalPressure >= throttlingPressure || digest.timeAbove95C >= throttlingSeconds) {
    return Digest::Verdict::throttled;
  }
  if (digest.timeAbove80C > 0.0) {
    return Digest::Verdict::hotControlled;
  }
  return digest.timeAbove70C > 0.0 ? Digest::Verdict::warm : Digest::Verdict::cool;
}

void addTimes(Digest& digest, std::vector<Reading>& readings, double maxGap) {
  std::stable_sort(readings.begin(), readings.end(), [](const Reading& left, const Reading& right) {
    return left.timestamp < right.timestamp;
  });
  for (std::size_t i = 1; i < readings.size(); ++i) {
    const Reading& earlier = readings[i - 1];
    const Reading& later = readings[i];
    const double seconds = secondsBetween(earlier.timestamp, later.timestamp);
    if (seconds <= 0.0 || seconds > maxGap || !earlier.maxTemperature || !later.maxTemperature) {
      continue;
    }
    const double celsius = std::min(*earlier.maxTemperature, *later.maxTemperature);
    for (const Band& band : bands) {
      if (celsius >= band.fromCelsius) {
        digest.*band.seconds += seconds;
      }
    }
  }
}

template <typename Sample, typename ColumnsOf>
Digest digestOf(std::span<const Sample> samples, double sampleInterval, ColumnsOf columnsOf) {
  if (samples.empty()) {
    fatalError("a thermal digest needs at least one sample");
  }
  Digest digest;
  std::vector<Reading> readings;
  readings.reserve(samples.size());
  for (const Sample& sample : samples) {
    const SampleColumns& columns = columnsOf(sample);
    readings.push_back({columns.timestamp, columns.maxTemperature});
    if (columns.maxTemperature) {
      digest.peakTemperatureCelsius = std::max(
          digest.peakTemperatureCelsius.value_or(*columns.maxTemperature), *columns.maxTemperature);
    }
    digest.maxThermalPressure = std::max(digest.maxThermalPressure, columns.thermalPressure);
  }
  addTimes(digest, readings, maxSampleGap(sampleInterval));
  digest.thermalPressureWasTriggered = digest.maxThermalPressure > 0;
  digest.verdict = verdict(digest);
  return digest;
}

}  // namespace

PowerSessionThermalDigest digest(std::span<const SampleColumns> samples, double sampleInterval) {
  return digestOf(samples, sampleInterval,
                  [](const SampleColumns& columns) -> const SampleColumns& { return columns; });
}

PowerSessionThermalDigest digest(std::span<const Observation> samples, double sampleInterval) {
  return digestOf(
      samples, sampleInterval,
      [](const Observation& observation) -> const auto& { return observation.columns; });
}

}  // namespace quorvex::PowerSessionThermalDigestBuilder
