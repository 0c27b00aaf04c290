#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

#include "Clock.h"
#include "MachineFile.h"

namespace quorvex {

/// The clock of a recorded machine. Any thread; no lock is held while a thread really sleeps.
class RecordedClock final : public Clock {
 public:
  /// Where the recording stands.
  struct Position {
    std::chrono::nanoseconds inPass{
        0};  ///< since the start of this pass; frames are looked up here
    std::chrono::nanoseconds passStart{
        0};  ///< since the clock's start; 0 unless the recording repeats
  };

  RecordedClock(const MachineFile& file, MachineFile::Pace pace);

  [[nodiscard]] Date now() override;
  /// The distance from the start.
  [[nodiscard]] std::chrono::nanoseconds monotonic() override;
  void sleep(double seconds) override;
  /// `sleep` for a length in nanoseconds.
  void sleepFor(std::chrono::nanoseconds length);

  [[nodiscard]] Position position();
  [[nodiscard]] std::chrono::nanoseconds positionInPass() { return position().inPass; }
  /// The length of a pass; 0 unless the recording repeats.
  [[nodiscard]] std::chrono::nanoseconds passLength() const;

 private:
  void sleepReally(std::chrono::nanoseconds length);
  void advance(std::chrono::nanoseconds length);
  [[nodiscard]] std::chrono::nanoseconds afterSuspensions(std::chrono::nanoseconds wakeUp) const;
  void interruptAtEnd();

  const Date startedAt_;
  const MachineFile::Pace pace_;
  const MachineFile::AtEnd atEnd_;
  const std::chrono::nanoseconds duration_;
  const std::vector<MachineFile::Suspension> suspensions_;
  const std::chrono::steady_clock::time_point realStart_;

  std::mutex mutex_;                     ///< guards `elapsed_`
  std::chrono::nanoseconds elapsed_{0};  ///< instant pace only
  std::atomic<bool> interruptDelivered_{false};
};

}  // namespace quorvex
