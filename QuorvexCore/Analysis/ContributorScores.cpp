#include "ContributorScores.h"

#include <algorithm>

#include "PowerSessionMetrics.h"

namespace quorvex {

void ContributorScores::add(Scores& scores, std::string_view name, double score) {
  if (!(score > 0.0)) {
    return;
  }
  const auto known = scores.find(name);
  if (known != scores.end()) {
    known->second += score;
  } else {
    scores.emplace(name, score);
  }
}

void ContributorScores::add(const Observation& observation) {
  Scores& scores = observation.hasProTelemetry ? privileged_ : activities_;
  for (const ObservedProcess& process : observation.processes) {
    add(scores, process.name, process.score);
  }
}

std::vector<PowerSessionContributor> ContributorScores::top(std::size_t limit) const {
  struct Entry {
    bool isPrivileged;
    const Scores::value_type* item;
  };
  std::vector<Entry> entries;
  entries.reserve(privileged_.size() + activities_.size());
  for (const auto& item : privileged_) {
    entries.push_back({true, &item});
  }
  for (const auto& item : activities_) {
    entries.push_back({false, &item});
  }
  std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
    if (left.item->second != right.item->second) {
      return left.item->second > right.item->second;
    }
    return left.isPrivileged != right.isPrivileged ? left.isPrivileged
                                                   : left.item->first < right.item->first;
  });
  std::vector<PowerSessionContributor> contributors;
  for (std::size_t i = 0; i < std::min(limit, entries.size()); ++i) {
    const auto& [name, score] = *entries[i].item;
    const bool isPrivileged = entries[i].isPrivileged;
    contributors.push_back({.name = name,
                            .source = isPrivileged ? "powermetrics" : "proc_pid_rusage",
                            .score = score,
                            .confidence = isPrivileged ? "derived" : "estimated",
                            .isAggregate = PowerSessionMetrics::isKnownAggregate(name)});
  }
  return contributors;
}

}  // namespace quorvex
