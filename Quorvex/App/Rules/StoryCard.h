#pragma once

#include <string>
#include <vector>

#include "PowerSessionStory.h"

namespace quorvex {

/// A session in plain language.
struct StoryCard {
  struct Episode {
    std::string timeRange;
    std::string phase;
    std::string narrative;
    std::vector<std::string> highlights;  ///< each after a bullet
    std::string accessibilityText;        ///< the episode in words

    bool operator==(const Episode&) const = default;
  };

  std::string headline;
  std::vector<Episode> episodes;

  bool operator==(const StoryCard&) const = default;
};

[[nodiscard]] StoryCard storyCard(const PowerSessionStory& story);

}  // namespace quorvex
