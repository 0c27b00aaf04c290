#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PowerSessionNetworkAppUsage.h"
#include "RecordFields.h"

namespace quorvex {

/// The network of a session in one place. A new record is the empty one.
struct PowerSessionNetworkSummary {
  /// Of an empty summary, and of one that was written before this record existed.
  static constexpr std::string_view emptyNote =
      "Network totals are observed counter deltas/maxes, not power causality.";
  /// Of a summary that was drawn from samples.
  static constexpr std::string_view observedNote =
      "Network totals and per-process rows are observed counter deltas/maxes; this report does not "
      "infer network power causality.";

  std::uint64_t totalBytesIn = 0;   ///< bytes
  std::uint64_t totalBytesOut = 0;  ///< bytes
  std::vector<PowerSessionNetworkAppUsage> topMovers;
  std::string note{emptyNote};

  bool operator==(const PowerSessionNetworkSummary&) const = default;
};

template <>
struct RecordFields<PowerSessionNetworkSummary> {
  static constexpr std::tuple values{
      RecordField{"note", &PowerSessionNetworkSummary::note},
      RecordField{"topMovers", &PowerSessionNetworkSummary::topMovers},
      RecordField{"totalBytesIn", &PowerSessionNetworkSummary::totalBytesIn},
      RecordField{"totalBytesOut", &PowerSessionNetworkSummary::totalBytesOut},
  };
};

}  // namespace quorvex
