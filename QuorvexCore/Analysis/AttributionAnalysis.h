#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Observation.h"
#include "PowerSessionMeasurementOverhead.h"
#include "PowerSessionProcessFamilySummary.h"
#include "ProcessFamily.h"

/// Which families of processes a session's scores fell to, and whether the monitors were among
/// them. Scores rank; they are never watts. Pure; any thread.
namespace quorvex::PowerSessionAnalysis {

/// The process scores of a session, added up by family. Rows of a privileged snapshot that stand
/// for groups of processes do not count: their members have rows of their own.
class ProcessScores {
 public:
  /// The texts of `observations` must outlive it.
  explicit ProcessScores(std::span<const Observation> observations);

  struct Sum {
    double score = 0.0;
    std::int64_t rows = 0;
  };

  [[nodiscard]] const Sum& of(ProcessFamily family) const {
    return sums_[static_cast<std::size_t>(family)];
  }

  /// Sum over all families, in the order of the rows.
  [[nodiscard]] double total() const { return total_; }

  /// The distinct names of a family, as written, in byte order.
  [[nodiscard]] std::vector<std::string_view> names(ProcessFamily family) const;

 private:
  static constexpr std::size_t familyCount = RawTexts<ProcessFamily>::values.size();

  std::array<Sum, familyCount> sums_;
  double total_ = 0.0;
  std::unordered_map<std::string_view, ProcessFamily> familyByName_;
};

/// One summary a family that has rows; greater scores first, equal ones in byte order of the
/// families' names.
[[nodiscard]] std::vector<PowerSessionProcessFamilySummary> processFamilySummaries(
    const ProcessScores& scores);

/// Whether the monitors took at least 15 % of all scores, and which ones were seen.
[[nodiscard]] PowerSessionMeasurementOverhead measurementOverheadSummary(
    const ProcessScores& scores);

}  // namespace quorvex::PowerSessionAnalysis
