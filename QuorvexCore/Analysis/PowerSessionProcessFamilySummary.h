#pragma once

#include <cstdint>
#include <string>

#include "RecordFields.h"

namespace quorvex {

/// The process scores of a session that fell to one coarse family of names. A score ranks and is
/// never watts.
struct PowerSessionProcessFamilySummary {
  std::string family;            ///< identity
  double score = 0.0;            ///< sum over all rows of all samples
  std::int64_t sampleCount = 0;  ///< process rows summed, not samples
  std::string confidence;        ///< always "relative-observed-impact"
  std::string note;              ///< always the same text

  bool operator==(const PowerSessionProcessFamilySummary&) const = default;
};

template <>
struct RecordFields<PowerSessionProcessFamilySummary> {
  static constexpr std::tuple values{
      RecordField{"confidence", &PowerSessionProcessFamilySummary::confidence},
      RecordField{"family", &PowerSessionProcessFamilySummary::family},
      RecordField{"note", &PowerSessionProcessFamilySummary::note},
      RecordField{"sampleCount", &PowerSessionProcessFamilySummary::sampleCount},
      RecordField{"score", &PowerSessionProcessFamilySummary::score},
  };
};

}  // namespace quorvex
