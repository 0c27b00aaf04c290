#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "PowerSessionStory.h"

namespace quorvex {

/// A session in plain language.
struct StoryCard {
  struct Episode {
    std::string timeRange;
    std::string phase;
    std::string narrative;
    std::vector<std::string> highlights;  ///< each after `highlightBullet`
    std::string accessibilityText;        ///< the episode in words

    bool operator==(const Episode&) const = default;
  };

  static constexpr std::string_view highlightBullet = "•";

  std::string headline;
  std::vector<Episode> episodes;

  bool operator==(const StoryCard&) const = default;
};

[[nodiscard]] StoryCard storyCard(const PowerSessionStory& story);

}  // namespace quorvex
