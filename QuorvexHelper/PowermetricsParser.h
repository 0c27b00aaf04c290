#pragma once

#include <string>
#include <string_view>

#include "Date.h"
#include "ProTelemetrySnapshot.h"
#include "Result.h"

namespace quorvex {

/// Why powermetrics' output is no sample: one line, for people.
struct PowermetricsError {
  std::string description;
  bool operator==(const PowermetricsError&) const = default;
};

/// The first sample of powermetrics' property-list output. Which keys a sample has differs between
/// versions of the system; what is missing, or is no number from 0 to 1e15, is absent:
///
/// | field              | from                                                                    |
/// |--------------------|-------------------------------------------------------------------------|
/// | cpuPowerWatts      | processor.cpu_power, processor.cpu_energy, or the clusters' power       |
/// | gpuPowerWatts      | processor.gpu_power, gpu.gpu_power, processor.gpu_energy, gpu.gpu_energy|
/// | anePowerWatts      | processor.ane_power, processor.ane_energy                               |
/// | energyImpact       | energy_impact_per_s, energy_impact                                      |
/// | cpuTimePercent     | cputime_ms_per_s, or cputime_ns over the interval                       |
/// | wakeupsPerSecond   | interrupt and idle wakeups together                                     |
/// | diskBytesPerSecond | bytes read and written together                                         |
///
/// Powers are milliwatts there and energies millijoules over the sample. The keys that gave the
/// powers are named in `rawSampleSummary`. Rows come in this order: all_tasks, coalitions, tasks;
/// the first two are aggregates, and so are tasks that stand for none (ALL_TASKS, DEAD_TASKS, a
/// negative pid). `now` is the sample's time if it has none of its own. A sample with neither a
/// power nor a row is an error. Pure; any text may be given.
[[nodiscard]] Result<ProTelemetrySnapshot, PowermetricsError> parsePowermetrics(
    std::string_view output, Date now);

}  // namespace quorvex
