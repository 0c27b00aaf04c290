#pragma once

#include <chrono>
#include <mutex>

#include "FileAttributes.h"
#include "RecordedClock.h"
#include "Track.h"

namespace quorvex {

/// The one file that a recorded machine has: the helper tool, as the frames tell it or as an
/// installation has left it. Any thread.
class RecordedHelperFile final : public FileAttributes {
 public:
  static constexpr std::string_view helperPath =
      "/Library/PrivilegedHelperTools/com.quorvex.helper";

  RecordedHelperFile(const MachineFile& file, RecordedClock& clock)
      : helper_(&file.helper), clock_(&clock) {}

  [[nodiscard]] bool fileExists(const std::string& path) override;
  [[nodiscard]] std::optional<FileAttributeRecord> attributes(const std::string& path) override;
  [[nodiscard]] bool isExecutable(const std::string& path) override;

  /// The file as it is now; null when there is none. Valid as long as the machine.
  [[nodiscard]] const RecordedHelper* current();
  /// Puts `helper` in the file's place until a later frame carries one. It outlives this object.
  void install(const RecordedHelper& helper);

 private:
  [[nodiscard]] const RecordedHelper* at(const std::string& path);
  [[nodiscard]] bool hasFrameSince(std::chrono::nanoseconds moment, RecordedClock::Position now);

  const Track<RecordedHelper>* helper_;
  RecordedClock* clock_;
  std::mutex mutex_;  ///< guards the installation
  const RecordedHelper* installed_ = nullptr;
  std::chrono::nanoseconds installedAt_{0};
};

}  // namespace quorvex
