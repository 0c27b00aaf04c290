#include "PowermetricsParser.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

#include "PropertyList.h"

namespace quorvex {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr std::int32_t allTasksPid = -2;
/// No figure of a sample comes near; what does is garbage, and its sums would not stay finite.
constexpr double greatestFigure = 1e15;
/// Bytes of a name; the system's own limit is a quarter of it.
constexpr std::size_t longestName = 255;

/// A power with the key that gave it.
struct NamedPower {
  std::string key;
  double watts = 0.0;
};

using OptionalNumber = std::optional<double>;

/// The number at `key`. It counts only from 0 on: neither powers nor rates go below.
OptionalNumber numberAt(const PropertyListValue& dictionary, std::string_view key) {
  const PropertyListValue* value = dictionary.find(key);
  const auto number = value != nullptr ? value->number() : std::nullopt;
  return number && *number >= 0.0 && *number <= greatestFigure ? number : std::nullopt;
}

OptionalNumber sum(OptionalNumber left, OptionalNumber right) {
  return left && right ? OptionalNumber{*left + *right} : (left ? left : right);
}

/// A field per second: as told, or its total over the interval.
OptionalNumber rateAt(const PropertyListValue& row, const std::string& key,
                      OptionalNumber intervalSeconds) {
  if (const auto rate = numberAt(row, key + "_per_s")) {
    return rate;
  }
  const auto total = numberAt(row, key);
  return total && intervalSeconds ? OptionalNumber{*total / *intervalSeconds} : std::nullopt;
}

OptionalNumber secondsAt(const PropertyListValue& dictionary, std::string_view key) {
  const auto nanoseconds = numberAt(dictionary, key);
  return nanoseconds && *nanoseconds > 0.0 ? OptionalNumber{*nanoseconds / nanosecondsPerSecond}
                                           : std::nullopt;
}

/// The beginning of UTF-8 text, cut between two code points.
std::string shortened(std::string name) {
  if (name.size() > longestName) {
    std::size_t end = longestName;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) {
      --end;
    }
    name.resize(end);
  }
  return name;
}

class SampleReader {
 public:
  SampleReader(const PropertyListValue& root, Date now) : root_(root) {
    intervalSeconds_ = secondsAt(root, "elapsed_ns");
    snapshot_.isAvailable = true;
    snapshot_.source = "powermetrics";
    snapshot_.sampledAt = now;
    if (const PropertyListValue* timestamp = root.find("timestamp")) {
      snapshot_.sampledAt = timestamp->date().value_or(now);
    }
    // A sample of more than a day is no sample; what was asked for is then as good.
    const double milliseconds = intervalSeconds_.value_or(1.0) * 1000.0;
    snapshot_.sampleIntervalMilliseconds =
        milliseconds < 86'400'000.0 ? std::llround(milliseconds) : 1000;
  }

  [[nodiscard]] ProTelemetrySnapshot read() {
    readPowers();
    if (const PropertyListValue* all = root_.find("all_tasks")) {
      addRow(*all, true, "ALL_TASKS", allTasksPid);
    }
    readCoalitions();
    readTasks(root_);
    return std::move(snapshot_);
  }

 private:
  void readPowers() {
    std::string keys;
    const auto keep = [&](OptionalNumber& field, const std::optional<NamedPower>& power) {
      if (power) {
        field = power->watts;
        keys.append(keys.empty() ? "" : ", ").append(power->key);
      }
    };
    keep(snapshot_.cpuPowerWatts,
         firstPower({{"processor", "cpu_power"}, {"processor", "cpu_energy"}}));
    if (!snapshot_.cpuPowerWatts) {
      keep(snapshot_.cpuPowerWatts, clusterPower());
    }
    keep(snapshot_.gpuPowerWatts, firstPower({{"processor", "gpu_power"},
                                              {"gpu", "gpu_power"},
                                              {"processor", "gpu_energy"},
                                              {"gpu", "gpu_energy"}}));
    keep(snapshot_.anePowerWatts,
         firstPower({{"processor", "ane_power"}, {"processor", "ane_energy"}}));
    if (!keys.empty()) {
      snapshot_.rawSampleSummary = std::move(keys);
    }
  }

  struct Place {
    std::string_view section;
    std::string_view key;
  };

  [[nodiscard]] std::optional<NamedPower> firstPower(std::initializer_list<Place> places) const {
    for (const auto& [section, key] : places) {
      const PropertyListValue* dictionary = root_.find(section);
      const auto number = dictionary != nullptr ? numberAt(*dictionary, key) : std::nullopt;
      if (!number) {
        continue;
      }
      std::string path{section};
      path.append(".").append(key);
      // mW / 1000 = W, and mJ / 1000 / s = W.
      if (key.ends_with("_power")) {
        return NamedPower{std::move(path), *number / 1000.0};
      }
      if (intervalSeconds_) {
        return NamedPower{std::move(path), *number / 1000.0 / *intervalSeconds_};
      }
    }
    return std::nullopt;
  }

  [[nodiscard]] std::optional<NamedPower> clusterPower() const {
    const PropertyListValue* processor = root_.find("processor");
    const PropertyListValue* clusters =
        processor != nullptr ? processor->find("clusters") : nullptr;
    OptionalNumber milliwatts;
    if (clusters != nullptr) {
      for (const PropertyListValue& cluster : clusters->items()) {
        milliwatts = sum(milliwatts, numberAt(cluster, "power"));
      }
    }
    return milliwatts ? std::optional{NamedPower{"processor.clusters.power", *milliwatts / 1000.0}}
                      : std::nullopt;
  }

  void readCoalitions() {
    const PropertyListValue* coalitions = root_.find("coalitions");
    if (coalitions == nullptr) {
      return;
    }
    for (const PropertyListValue& coalition : coalitions->items()) {
      // Coalitions are numbered apart from processes: below the negative ids of the tool's own
      // rows.
      const PropertyListValue* id = coalition.find("id");
      const auto number = id != nullptr ? id->integer() : std::nullopt;
      if (number && *number > 0 && *number < std::numeric_limits<std::int32_t>::max() - 1) {
        addRow(coalition, true, "coalition " + std::to_string(*number),
               allTasksPid - static_cast<std::int32_t>(*number));
      }
    }
    // Either the sample lists its tasks itself, or they stand under their coalitions.
    const PropertyListValue* tasks = root_.find("tasks");
    if (tasks == nullptr || tasks->items().empty()) {
      for (const PropertyListValue& coalition : coalitions->items()) {
        readTasks(coalition);
      }
    }
  }

  void readTasks(const PropertyListValue& owner) {
    const PropertyListValue* tasks = owner.find("tasks");
    if (tasks == nullptr) {
      return;
    }
    for (const PropertyListValue& task : tasks->items()) {
      addRow(task, false, {}, std::nullopt);
    }
  }

  /// Adds a row under its own name and pid, or the ones given. A row without a pid is none.
  void addRow(const PropertyListValue& row, bool isGroup, std::string name,
              std::optional<std::int32_t> pid) {
    if (const PropertyListValue* own = row.find("pid")) {
      const auto number = own->integer();
      if (number && *number >= std::numeric_limits<std::int32_t>::min() &&
          *number <= std::numeric_limits<std::int32_t>::max()) {
        pid = static_cast<std::int32_t>(*number);
      }
    }
    if (!pid) {
      return;
    }
    if (const PropertyListValue* own = row.find("name");
        own != nullptr && own->string() != nullptr && !own->string()->empty()) {
      name = *own->string();
    }
    if (name.empty()) {
      name = "pid " + std::to_string(*pid);
    }
    ProProcessEnergy& result = snapshot_.processes.emplace_back();
    result.pid = *pid;
    result.isAggregate = isGroup || *pid < 0 || name == "ALL_TASKS" || name == "DEAD_TASKS";
    result.name = shortened(std::move(name));

    const OptionalNumber ownSeconds = secondsAt(row, "interval_ns");
    const OptionalNumber seconds = ownSeconds ? ownSeconds : intervalSeconds_;
    result.energyImpact = numberAt(row, "energy_impact_per_s");
    if (!result.energyImpact) {
      result.energyImpact = numberAt(row, "energy_impact");
    }
    // 1000 ms of processor time a second are 100 percent of a core.
    if (const auto milliseconds = numberAt(row, "cputime_ms_per_s")) {
      result.cpuTimePercent = *milliseconds / 10.0;
    } else if (const auto nanoseconds = numberAt(row, "cputime_ns"); nanoseconds && seconds) {
      result.cpuTimePercent = *nanoseconds / nanosecondsPerSecond / *seconds * 100.0;
    }
    result.wakeupsPerSecond =
        sum(rateAt(row, "intr_wakeups", seconds), rateAt(row, "idle_wakeups", seconds));
    result.diskBytesPerSecond =
        sum(rateAt(row, "diskio_bytesread", seconds), rateAt(row, "diskio_byteswritten", seconds));
  }

  const PropertyListValue& root_;
  OptionalNumber intervalSeconds_;
  ProTelemetrySnapshot snapshot_;
};

/// powermetrics ends each sample but the last with a NUL.
std::string_view firstDocument(std::string_view output) {
  output.remove_prefix(
      std::min(output.find_first_not_of(std::string_view{"\0 \n\r\t", 5}), output.size()));
  return output.substr(0, output.find('\0'));
}

}  // namespace

Result<ProTelemetrySnapshot, PowermetricsError> parsePowermetrics(std::string_view output,
                                                                  Date now) {
  const auto root = parsePropertyList(firstDocument(output));
  if (!root) {
    return PowermetricsError{"no property list: " + root.error().description};
  }
  ProTelemetrySnapshot snapshot = SampleReader{*root, now}.read();
  const bool hasPower = snapshot.cpuPowerWatts || snapshot.gpuPowerWatts || snapshot.anePowerWatts;
  if (!hasPower && snapshot.processes.empty()) {
    return PowermetricsError{"neither power nor processes in the sample"};
  }
  return snapshot;
}

}  // namespace quorvex
