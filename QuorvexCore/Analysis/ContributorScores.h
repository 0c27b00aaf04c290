#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Observation.h"
#include "PowerSessionContributor.h"
#include "TransparentHash.h"

namespace quorvex {

/// Adds up the scores of processes over a session, by name, apart for the two instruments that they
/// come from. Scores that are not above 0 are left out.
class ContributorScores {
 public:
  /// A row of the privileged telemetry, with its first present figure.
  void addPrivileged(std::string_view name, double score) { add(privileged_, name, score); }
  /// A row of the process activity, with its impact score.
  void addActivity(std::string_view name, double score) { add(activities_, name, score); }
  /// The rows of a stored sample.
  void add(const Observation& observation);

  /// The `limit` greatest. Equal ones in a fixed order: privileged rows first, then by the bytes of
  /// their names.
  [[nodiscard]] std::vector<PowerSessionContributor> top(std::size_t limit) const;

 private:
  using Scores = std::unordered_map<std::string, double, TransparentHash, std::equal_to<>>;

  static void add(Scores& scores, std::string_view name, double score);

  Scores privileged_;
  Scores activities_;
};

}  // namespace quorvex
