#pragma once

#include <string_view>

#include "ChildProcesses.h"
#include "RecordedClock.h"
#include "RecordedHelperFile.h"
#include "Track.h"

namespace quorvex {

/// The recorded tools: nettop, the script runner and the helper. A tool that the frame does not
/// have, and any other path, fails to launch. A child writes all that it writes when it starts and
/// ends after its run's duration on the machine's clock. Any thread.
class RecordedChildProcesses final : public ChildProcesses {
 public:
  static constexpr std::string_view nettopPath = "/usr/bin/nettop";
  static constexpr std::string_view osascriptPath = "/usr/bin/osascript";
  /// Exit status of the helper for a command that it has no reply to.
  static constexpr std::int32_t unknownCommandStatus = 64;

  RecordedChildProcesses(const MachineFile& file, RecordedClock& clock, RecordedHelperFile& helper)
      : nettop_(&file.nettop), osascript_(&file.osascript), clock_(&clock), helper_(&helper) {}

  [[nodiscard]] LaunchResult launch(const std::string& executablePath,
                                    std::span<const std::string> arguments) override;

 private:
  [[nodiscard]] LaunchResult launchHelper(std::span<const std::string> arguments);
  [[nodiscard]] LaunchResult start(const RecordedRun& run);

  const Track<RecordedRun>* nettop_;
  const Track<RecordedScript>* osascript_;
  RecordedClock* clock_;
  RecordedHelperFile* helper_;
};

}  // namespace quorvex
