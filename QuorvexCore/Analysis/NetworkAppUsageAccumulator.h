#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Date.h"
#include "NetworkSnapshot.h"
#include "Observation.h"
#include "PowerSessionNetworkAppUsage.h"
#include "TransparentHash.h"

namespace quorvex {

/// Adds up the traffic of processes by name and attribution source, from their running counters.
/// Samples come in ascending order of time.
class NetworkAppUsageAccumulator {
 public:
  /// `maxSampleGap`: seconds across which counters are not compared; absent: there is no limit.
  explicit NetworkAppUsageAccumulator(std::optional<double> maxSampleGap = std::nullopt)
      : maxSampleGap_(maxSampleGap) {}

  /// The rows of a stored snapshot.
  void ingest(const ObservedNetwork& network, Date timestamp) {
    ingest(network.processes, network.attributionSource, timestamp);
  }
  /// The rows of a live snapshot. `fallbackSource` stands for rows that name none.
  void ingest(std::span<const NetworkProcessInfo> processes, std::string_view fallbackSource,
              Date timestamp);
  /// A process counts from one sample to the next if it is in both; a counter that fell adds
  /// nothing and is the new baseline.
  void ingest(std::span<const ObservedNetworkProcess> processes, std::string_view fallbackSource,
              Date timestamp);

  /// The `limit` apps with most bytes, then with the greatest peaks, then in the byte order of
  /// source and name. Those without any traffic are left out.
  [[nodiscard]] std::vector<PowerSessionNetworkAppUsage> materialize(std::size_t limit) const;

 private:
  struct ProcessKey {
    std::int32_t pid;
    std::string name;
  };
  struct ProcessKeyView {
    std::int32_t pid;
    std::string_view name;
  };
  struct ProcessKeyHash {
    using is_transparent = void;

    template <typename Key>
    [[nodiscard]] std::size_t operator()(const Key& key) const {
      return TransparentHash{}(key.name) ^
             (static_cast<std::size_t>(key.pid) * 0x9E3779B97F4A7C15U);
    }
  };
  struct ProcessKeyEqual {
    using is_transparent = void;

    template <typename Left, typename Right>
    [[nodiscard]] bool operator()(const Left& left, const Right& right) const {
      return left.pid == right.pid && left.name == right.name;
    }
  };
  /// Counters of a process in the sample of number `sample`, and in the one before it.
  struct Counters {
    std::uint64_t sample = 0;
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    bool wasInSampleBefore = false;
    std::uint64_t bytesInBefore = 0;
    std::uint64_t bytesOutBefore = 0;
  };

  [[nodiscard]] PowerSessionNetworkAppUsage& app(std::string_view name, std::string_view source);
  /// The entry of a process, turned to the present sample.
  [[nodiscard]] Counters& counters(const ObservedNetworkProcess& process);
  void forgetOldProcesses(std::size_t presentCount);

  std::optional<double> maxSampleGap_;
  /// Entries of earlier samples are no baselines; they stay only to be used again.
  std::unordered_map<ProcessKey, Counters, ProcessKeyHash, ProcessKeyEqual> processes_;
  std::uint64_t sample_ = 1;
  std::optional<Date> lastTimestamp_;
  std::unordered_map<std::string, PowerSessionNetworkAppUsage, TransparentHash, std::equal_to<>>
      apps_;  ///< by "{source}-{name}"
  std::string key_;
};

}  // namespace quorvex
