#include "ThermalAnalysis.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "SampleStatistics.h"

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr std::int64_t constrainedPressure = 2;
constexpr double warmCelsius = 80.0;
constexpr double highPercentile = 0.95;

template <typename Value>
void raise(std::optional<Value>& maximum, Value value) {
  maximum = maximum ? std::max(*maximum, value) : value;
}

std::optional<double> temperature(const Observation& observation) {
  if (observation.columns.maxTemperature || !observation.snapshot) {
    return observation.columns.maxTemperature;
  }
  return observation.snapshot->maxSensorTemperature;
}

std::optional<std::int64_t> fanRPM(const Observation& observation) {
  if (observation.columns.maxFanRPM || !observation.snapshot) {
    return observation.columns.maxFanRPM;
  }
  return observation.snapshot->maxFanRPM;
}

/// Counts texts that mostly repeat the one before.
class StateCounter {
 public:
  void count(std::string_view state) {
    if (last_ == counts_.end() || last_->first != state) {
      last_ = counts_.try_emplace(state, 0).first;
    }
    ++last_->second;
  }

  [[nodiscard]] std::vector<PowerSessionThermalPressureState> states() const {
    std::vector<PowerSessionThermalPressureState> result;
    for (const auto& [state, sampleCount] : counts_) {
      result.push_back({.state = std::string{state}, .sampleCount = sampleCount});
    }
    return result;
  }

 private:
  using Counts = std::map<std::string_view, std::int64_t>;

  Counts counts_;
  Counts::iterator last_ = counts_.end();
};

std::string verdict(const PowerSessionThermalSummary& summary) {
  if (summary.maxThermalPressure >= constrainedPressure) {
    return "thermally-constrained";
  }
  const bool isWarm =
      summary.maxTemperatureCelsius && *summary.maxTemperatureCelsius >= warmCelsius;
  return isWarm ? "warm-not-constrained" : "cool";
}

}  // namespace

PowerSessionThermalSummary thermalSummary(std::span<const Observation> observations) {
  PowerSessionThermalSummary summary;
  std::vector<double> maxima;
  maxima.reserve(observations.size());
  std::optional<std::int64_t> maxPressure;
  StateCounter states;
  for (const Observation& observation : observations) {
    if (const auto celsius = temperature(observation)) {
      maxima.push_back(*celsius);
      raise(summary.maxTemperatureCelsius, *celsius);
    }
    if (const auto rpm = fanRPM(observation)) {
      raise(summary.maxFanRPM, *rpm);
    }
    raise(maxPressure, observation.columns.thermalPressure);
    if (observation.snapshot) {
      states.count(observation.snapshot->thermalState);
    }
  }
  summary.maxThermalPressure = maxPressure.value_or(0);
  summary.pressureStates = states.states();
  summary.thermalPressureWasTriggered = summary.maxThermalPressure > 0;
  summary.medianMaxSensorTemperatureCelsius = median(maxima);
  summary.p95MaxSensorTemperatureCelsius = percentile(std::move(maxima), highPercentile);
  summary.verdict = verdict(summary);
  summary.note = summary.maxThermalPressure >= constrainedPressure
                     ? "macOS thermal pressure reported constraint."
                     : "Warm sensor readings are not treated as throttling without macOS pressure "
                       "evidence.";
  return summary;
}

}  // namespace quorvex::PowerSessionAnalysis
