#include "TelemetryNotesCard.h"

#include <fmt/format.h>

namespace quorvex {

TelemetryNotesCard telemetryNotesCard(std::span<const PowerSessionTelemetryChannelNote> notes) {
  TelemetryNotesCard card{.heading = "Telemetry Channels"};
  for (const PowerSessionTelemetryChannelNote& note : notes) {
    card.notes.push_back(
        {.channel = note.channel,
         .trustLevel = note.trustLevel,
         .meaning = note.meaning,
         .caution = note.caution,
         .accessibilityText = fmt::format("{}: {}. {} {}", note.channel, note.trustLevel,
                                          note.meaning, note.caution)});
  }
  return card;
}

}  // namespace quorvex
