#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Date.h"
#include "Dictionary.h"
#include "HIDTemperatures.h"
#include "RecordedRecords.h"
#include "Track.h"

namespace quorvex {

/// Why a machine file was refused: "{path}: {what is wrong, with the JSON path of the place}".
struct MachineFileError {
  std::string message;
  bool operator==(const MachineFileError&) const = default;
};

/// The content of a machine file: raw platform answers over time, and what the clock says.
struct MachineFile {
  /// How the clock advances.
  enum class Pace {
    real,     ///< with real time; sleeps really sleep
    instant,  ///< only by sleeps, which return at once
  };
  /// What happens when the clock reaches `duration`.
  enum class AtEnd {
    hold,       ///< the last frame goes on answering
    repeat,     ///< the recording starts over
    interrupt,  ///< as hold, and the sleep that gets there delivers one SIGINT
  };
  /// A lid closed from `at` on.
  struct Suspension {
    std::chrono::nanoseconds at{0};
    std::chrono::nanoseconds length{0};  ///< above 0
  };

  std::string name;
  std::optional<Date> startedAt;  ///< none: the moment the process starts
  Pace pace = Pace::real;
  AtEnd atEnd = AtEnd::hold;
  std::chrono::nanoseconds duration{0};  ///< above 0 with AtEnd::repeat
  std::vector<Suspension> suspensions;   ///< ascending

  Track<Dictionary> registry;
  Track<std::vector<std::optional<Dictionary>>> powerSources;
  Track<std::vector<RecordedEnergyChannel>> energyChannels;
  Track<RecordedSMCKeys> smc;
  Track<std::vector<HIDTemperatureService>> hid;
  Track<RecordedThermal> thermal;
  Track<std::vector<RecordedInterface>> interfaces;
  Track<std::vector<std::byte>> interfaceBuffer;
  Track<RecordedRun> nettop;
  Track<RecordedProcessList> processes;
  Track<RecordedHelper> helper;
  Track<RecordedScript> osascript;
};

/// Reads the text of a machine file. Strict: an unknown or repeated key, a value of another type or
/// out of range, and text that is not JSON are refused. `path` is only for the message.
[[nodiscard]] std::variant<MachineFile, MachineFileError> parseMachineFile(std::string_view text,
                                                                           const std::string& path);

/// Reads a machine file from disk.
[[nodiscard]] std::variant<MachineFile, MachineFileError> loadMachineFile(const std::string& path);

}  // namespace quorvex
