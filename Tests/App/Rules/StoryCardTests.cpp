#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "StoryCard.h"

namespace quorvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(StoryCard, TellsHeadlineAndEpisodes) {
  const StoryCard card =
      storyCard({.headline = "2h: battery draw · 12W avg",
                 .episodes = {{.timeRange = "14:05 – 14:40",
                               .phase = "Battery draw",
                               .narrative = "Moderate workload (12W avg)",
                               .highlights = {"Battery dropped 7%", "Peak ~31W"}}}});
  EXPECT_EQ(card.headline, "2h: battery draw · 12W avg");
  ASSERT_EQ(card.episodes.size(), 1U);
  EXPECT_EQ(card.episodes[0].timeRange, "14:05 – 14:40");
  EXPECT_EQ(card.episodes[0].phase, "Battery draw");
  EXPECT_EQ(card.episodes[0].narrative, "Moderate workload (12W avg)");
  EXPECT_THAT(card.episodes[0].highlights, ElementsAre("Battery dropped 7%", "Peak ~31W"));
  EXPECT_EQ(card.episodes[0].accessibilityText,
            "14:05 – 14:40, Battery draw: Moderate workload (12W avg), Battery dropped 7%, Peak "
            "~31W");
}

TEST(StoryCard, AStoryWithoutEpisodesIsItsHeadline) {
  const StoryCard card = storyCard({.headline = "0m 0-phase session"});
  EXPECT_EQ(card.headline, "0m 0-phase session");
  EXPECT_THAT(card.episodes, IsEmpty());
}

}  // namespace
}  // namespace quorvex
