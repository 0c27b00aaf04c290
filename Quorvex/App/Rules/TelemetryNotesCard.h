#pragma once

#include <span>
#include <string>
#include <vector>

#include "PowerSessionTelemetryChannelNote.h"

namespace quorvex {

/// What each channel of telemetry means and how far to trust it.
struct TelemetryNotesCard {
  struct Note {
    std::string channel;
    std::string trustLevel;
    std::string meaning;
    std::string caution;
    std::string accessibilityText;

    bool operator==(const Note&) const = default;
  };

  std::string heading;
  std::vector<Note> notes;

  bool operator==(const TelemetryNotesCard&) const = default;
};

[[nodiscard]] TelemetryNotesCard telemetryNotesCard(
    std::span<const PowerSessionTelemetryChannelNote> notes);

}  // namespace quorvex
