#pragma once

#include <string>
#include <vector>

namespace quorvex {

/// A session in plain language.
struct PowerSessionStory {
  /// One phase of it.
  struct Episode {
    std::string timeRange;                ///< local times of begin and end: "14:05 – 14:40"
    std::string phase;                    ///< the power source's label
    std::string narrative;                ///< "Moderate workload (12W avg)"
    std::vector<std::string> highlights;  ///< at most three

    bool operator==(const Episode&) const = default;
  };

  std::string headline;           ///< the whole session in one line
  std::vector<Episode> episodes;  ///< in time order

  bool operator==(const PowerSessionStory&) const = default;
};

}  // namespace quorvex
