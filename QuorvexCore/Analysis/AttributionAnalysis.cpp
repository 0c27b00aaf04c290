#include "AttributionAnalysis.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace quorvex::PowerSessionAnalysis {

namespace {

constexpr double leastObservedFraction = 0.15;

/// Families by where a name lies in memory. Decoded names are kept once, so that nearly every row
/// is answered by its address, without hashing its text; a name that lies elsewhere only costs the
/// look-up by text that it would have cost anyhow.
class FamiliesByAddress {
 public:
  /// The family of the name, from `familyOf(name)` unless it was the last to be asked for here.
  template <typename FamilyOf>
  ProcessFamily find(std::string_view name, const FamilyOf& familyOf) {
    Entry& entry = entries_[slot(name.data())];
    if (entry.text != name.data() || entry.length != name.size()) {
      entry = {.text = name.data(), .length = name.size(), .family = familyOf(name)};
    }
    return entry.family;
  }

 private:
  struct Entry {
    const char* text = nullptr;
    std::size_t length = 0;
    ProcessFamily family = ProcessFamily::other;
  };

  static constexpr unsigned slotBits = 12;

  /// The upper bits of a product with an odd constant without pattern: neighbouring texts spread.
  static std::size_t slot(const char* text) {
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(text));
    return static_cast<std::size_t>((address * 0x9E3779B97F4A7C15U) >> (64U - slotBits));
  }

  std::vector<Entry> entries_ = std::vector<Entry>(std::size_t{1} << slotBits);
};

}  // namespace

ProcessScores::ProcessScores(std::span<const Observation> observations) {
  FamiliesByAddress known;
  const auto familyOf = [this](std::string_view name) {
    const auto [entry, isNew] = familyByName_.try_emplace(name, ProcessFamily::other);
    if (isNew) {
      entry->second = processFamily(name);
    }
    return entry->second;
  };
  for (const Observation& observation : observations) {
    for (const ObservedProcess& process : observation.processes) {
      if (observation.hasProTelemetry && process.isAggregate) {
        continue;
      }
      Sum& sum = sums_[static_cast<std::size_t>(known.find(process.name, familyOf))];
      sum.score += process.score;
      ++sum.rows;
      total_ += process.score;
    }
  }
}

std::vector<std::string_view> ProcessScores::names(ProcessFamily family) const {
  std::vector<std::string_view> result;
  for (const auto& [name, nameFamily] : familyByName_) {
    if (nameFamily == family) {
      result.push_back(name);
    }
  }
  std::sort(result.begin(), result.end());
  return result;
}

std::vector<PowerSessionProcessFamilySummary> processFamilySummaries(const ProcessScores& scores) {
  std::vector<PowerSessionProcessFamilySummary> summaries;
  for (const auto& [family, text] : RawTexts<ProcessFamily>::values) {
    const ProcessScores::Sum& sum = scores.of(family);
    if (sum.rows > 0) {
      summaries.push_back(
          {.family = std::string{text},
           .score = sum.score,
           .sampleCount = sum.rows,
           .confidence = "relative-observed-impact",
           .note = "Grouped powermetrics/proc scores are relative attribution, not validated "
                   "per-process Wh."});
    }
  }
  std::sort(summaries.begin(), summaries.end(), [](const auto& left, const auto& right) {
    return left.score != right.score ? left.score > right.score : left.family < right.family;
  });
  return summaries;
}

PowerSessionMeasurementOverhead measurementOverheadSummary(const ProcessScores& scores) {
  const auto names = scores.names(ProcessFamily::monitoringOverhead);
  PowerSessionMeasurementOverhead overhead{
      .overheadScore = scores.of(ProcessFamily::monitoringOverhead).score,
      .totalObservedProcessScore = scores.total(),
      .processNames = {names.begin(), names.end()}};
  if (scores.total() > 0.0) {
    const double fraction = overhead.overheadScore / scores.total();
    overhead.overheadFraction = fraction;
    overhead.observed = fraction >= leastObservedFraction;
  }
  overhead.note = overhead.observed
                      ? "Measurement overhead observed in process impact; treat process rankings "
                        "as affected by the observer."
                      : "No large Quorvex/powermetrics/sysmond/Activity Monitor share was observed "
                        "in process impact.";
  return overhead;
}

}  // namespace quorvex::PowerSessionAnalysis
