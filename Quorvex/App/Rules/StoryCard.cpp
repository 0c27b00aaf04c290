#include "StoryCard.h"

#include <fmt/format.h>

#include <utility>

namespace quorvex {

StoryCard storyCard(const PowerSessionStory& story) {
  StoryCard card{.headline = story.headline};
  for (const PowerSessionStory::Episode& episode : story.episodes) {
    std::string words =
        fmt::format("{}, {}: {}", episode.timeRange, episode.phase, episode.narrative);
    for (const std::string& highlight : episode.highlights) {
      words += ", " + highlight;
    }
    card.episodes.push_back({.timeRange = episode.timeRange,
                             .phase = episode.phase,
                             .narrative = episode.narrative,
                             .highlights = episode.highlights,
                             .accessibilityText = std::move(words)});
  }
  return card;
}

}  // namespace quorvex
