#include <gtest/gtest.h>

#include "TelemetryNotesCard.h"

namespace quorvex {
namespace {

TEST(TelemetryNotesCard, ShowsEveryChannelWithAllItsWords) {
  const auto& notes = PowerSessionAnalysis::telemetryChannelNotes();
  const TelemetryNotesCard card = telemetryNotesCard(notes);
  EXPECT_EQ(card.heading, "Telemetry Channels");
  ASSERT_EQ(card.notes.size(), notes.size());
  for (std::size_t i = 0; i < notes.size(); ++i) {
    EXPECT_EQ(card.notes[i].channel, notes[i].channel);
    EXPECT_EQ(card.notes[i].trustLevel, notes[i].trustLevel);
    EXPECT_EQ(card.notes[i].meaning, notes[i].meaning);
    EXPECT_EQ(card.notes[i].caution, notes[i].caution);
  }
}

TEST(TelemetryNotesCard, ANoteIsToldInWords) {
  const std::vector<PowerSessionTelemetryChannelNote> notes{
      {"Channel", "trusted", "It measures.", "Be careful."}};
  EXPECT_EQ(telemetryNotesCard(notes).notes[0].accessibilityText,
            "Channel: trusted. It measures. Be careful.");
}

}  // namespace
}  // namespace quorvex
