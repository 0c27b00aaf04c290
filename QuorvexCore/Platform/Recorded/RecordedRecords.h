#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "SMCKeyRecord.h"

namespace quorvex {

/// A counter that grows with the clock: `start` plus `perSecond` times the seconds since its frame.
struct RecordedCounter {
  std::uint64_t start = 0;
  double perSecond = 0;  ///< finite; negative falls

  /// The counter `since` its frame, truncated to a whole number, within 0 to 2^64-1.
  [[nodiscard]] std::uint64_t value(std::chrono::nanoseconds since) const;
};

struct RecordedEnergyChannel {
  std::optional<std::string> name;
  std::int64_t delta = 0;  ///< over the pair of samples that one read takes
};

struct RecordedSMCValue {
  std::uint32_t key = 0;       ///< four-character code
  std::uint32_t dataType = 0;  ///< four-character code
  std::uint32_t dataSize = 0;  ///< as the key info tells it, whatever `bytes` holds
  decltype(SMCKeyRecord::bytes) bytes{};
};

/// Sorted by key, each key once.
using RecordedSMCKeys = std::vector<RecordedSMCValue>;

struct RecordedThermal {
  std::int64_t state = 0;
  std::optional<std::uint64_t> pressure;  ///< none: the notification fails
  bool isLowPowerMode = false;
};

struct RecordedInterface {
  std::uint16_t index = 0;
  std::optional<std::string> name;
  RecordedCounter bytesIn;
  RecordedCounter bytesOut;
  std::uint8_t messageType = 0;
};

struct RecordedProcess {
  std::int32_t pid = 0;
  std::optional<std::string> name;
  RecordedCounter userTime;
  RecordedCounter systemTime;
  RecordedCounter idleWakeups;
  RecordedCounter interruptWakeups;
  RecordedCounter bytesRead;
  RecordedCounter bytesWritten;
  RecordedCounter energy;
  bool isAccessible = true;
};

struct RecordedProcessList {
  std::vector<RecordedProcess> processes;  ///< in the order in which the system lists them
  std::vector<std::size_t> byPID;          ///< indices of `processes`, ascending by pid

  /// The first process of this pid; null when there is none.
  [[nodiscard]] const RecordedProcess* find(std::int32_t pid) const;
};

/// One run of a tool.
struct RecordedRun {
  std::int32_t status = 0;
  std::string output;
  std::string error;
  std::chrono::nanoseconds duration{0};  ///< how long the tool runs before it exits
};

/// The file at the helper path.
struct RecordedHelper {
  std::optional<std::uint32_t> permissions;
  std::optional<std::int64_t> ownerID;
  std::optional<std::int64_t> groupID;
  bool isExecutable = false;
  std::map<std::string, RecordedRun, std::less<>> replies;  ///< by command word
};

/// What the script runner does.
struct RecordedScript {
  RecordedRun run;
  std::optional<RecordedHelper> installs;  ///< the helper file from a run with status 0 on
};

}  // namespace quorvex
