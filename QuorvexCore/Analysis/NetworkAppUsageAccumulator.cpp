#include "NetworkAppUsageAccumulator.h"

#include <algorithm>

#include "CheckedArithmetic.h"

namespace quorvex {

namespace {

/// Entries that may be kept beyond twice the present ones.
constexpr std::size_t spareEntries = 64;

std::uint64_t increase(std::uint64_t from, std::uint64_t to) {
  return to > from ? to - from : 0;
}

bool hasTraffic(const PowerSessionNetworkAppUsage& app) {
  return app.totalBytesIn > 0 || app.totalBytesOut > 0 || app.peakBytesInPerSec > 0.0 ||
         app.peakBytesOutPerSec > 0.0;
}

}  // namespace

void NetworkAppUsageAccumulator::ingest(std::span<const NetworkProcessInfo> processes,
                                        std::string_view fallbackSource, Date timestamp) {
  std::vector<ObservedNetworkProcess> rows;
  rows.reserve(processes.size());
  for (const NetworkProcessInfo& process : processes) {
    rows.push_back({.pid = process.id,
                    .name = process.name,
                    .isFromNettop = process.attributionSource == NetworkAttributionSource::nettop,
                    .bytesIn = process.bytesIn,
                    .bytesOut = process.bytesOut,
                    .bytesInPerSec = process.bytesInPerSec,
                    .bytesOutPerSec = process.bytesOutPerSec});
  }
  ingest(rows, fallbackSource, timestamp);
}

void NetworkAppUsageAccumulator::ingest(std::span<const ObservedNetworkProcess> processes,
                                        std::string_view fallbackSource, Date timestamp) {
  const double seconds = lastTimestamp_ ? secondsBetween(*lastTimestamp_, timestamp) : 0.0;
  const bool canDelta = seconds > 0.0 && (!maxSampleGap_ || seconds <= *maxSampleGap_);
  ++sample_;
  for (const ObservedNetworkProcess& process : processes) {
    PowerSessionNetworkAppUsage& usage =
        app(process.name,
            process.isFromNettop ? rawValue(NetworkAttributionSource::nettop) : fallbackSource);
    ++usage.sampleCount;
    usage.peakBytesInPerSec = std::max(usage.peakBytesInPerSec, process.bytesInPerSec);
    usage.peakBytesOutPerSec = std::max(usage.peakBytesOutPerSec, process.bytesOutPerSec);
    Counters& entry = counters(process);
    if (canDelta && entry.wasInSampleBefore) {
      usage.totalBytesIn =
          saturatingAdd(usage.totalBytesIn, increase(entry.bytesInBefore, process.bytesIn));
      usage.totalBytesOut =
          saturatingAdd(usage.totalBytesOut, increase(entry.bytesOutBefore, process.bytesOut));
    }
    entry.bytesIn = process.bytesIn;
    entry.bytesOut = process.bytesOut;
  }
  lastTimestamp_ = timestamp;
  forgetOldProcesses(processes.size());
}

PowerSessionNetworkAppUsage& NetworkAppUsageAccumulator::app(std::string_view name,
                                                             std::string_view source) {
  key_.assign(source).append("-").append(name);
  const auto known = apps_.find(key_);
  if (known != apps_.end()) {
    return known->second;
  }
  return apps_
      .emplace(key_, PowerSessionNetworkAppUsage{.name = std::string{name},
                                                 .source = std::string{source}})
      .first->second;
}

NetworkAppUsageAccumulator::Counters& NetworkAppUsageAccumulator::counters(
    const ObservedNetworkProcess& process) {
  auto place = processes_.find(ProcessKeyView{process.pid, process.name});
  if (place == processes_.end()) {
    place =
        processes_.emplace(ProcessKey{process.pid, std::string{process.name}}, Counters{}).first;
  }
  Counters& entry = place->second;
  if (entry.sample != sample_) {
    entry.wasInSampleBefore = entry.sample == sample_ - 1;
    entry.bytesInBefore = entry.bytesIn;
    entry.bytesOutBefore = entry.bytesOut;
    entry.sample = sample_;
  }
  return entry;
}

void NetworkAppUsageAccumulator::forgetOldProcesses(std::size_t presentCount) {
  if (processes_.size() > 2 * presentCount + spareEntries) {
    std::erase_if(processes_, [this](const auto& item) { return item.second.sample != sample_; });
  }
}

std::vector<PowerSessionNetworkAppUsage> NetworkAppUsageAccumulator::materialize(
    std::size_t limit) const {
  using Entry = decltype(apps_)::value_type;
  std::vector<const Entry*> entries;
  for (const Entry& entry : apps_) {
    if (hasTraffic(entry.second)) {
      entries.push_back(&entry);
    }
  }
  const auto isBefore = [](const Entry* left, const Entry* right) {
    const auto bytes = [](const PowerSessionNetworkAppUsage& app) {
      return saturatingAdd(app.totalBytesIn, app.totalBytesOut);
    };
    const auto peaks = [](const PowerSessionNetworkAppUsage& app) {
      return app.peakBytesInPerSec + app.peakBytesOutPerSec;
    };
    if (bytes(left->second) != bytes(right->second)) {
      return bytes(left->second) > bytes(right->second);
    }
    if (peaks(left->second) != peaks(right->second)) {
      return peaks(left->second) > peaks(right->second);
    }
    return left->first < right->first;
  };
  std::sort(entries.begin(), entries.end(), isBefore);
  std::vector<PowerSessionNetworkAppUsage> result;
  for (std::size_t i = 0; i < std::min(limit, entries.size()); ++i) {
    result.push_back(entries[i]->second);
  }
  return result;
}

}  // namespace quorvex
