#pragma once

#include <signal.h>

namespace quorvex {

/// As long as it lives, the interrupt signal (Ctrl+C) of the process does nothing but raise the
/// flag. One at a time. Main thread.
class StopFlag {
 public:
  StopFlag();
  StopFlag(const StopFlag&) = delete;
  StopFlag& operator=(const StopFlag&) = delete;
  /// The signal does again what it did before.
  ~StopFlag();

  /// Whether the signal has come.
  [[nodiscard]] bool shouldStop() const;

 private:
  struct sigaction previous_ {};
};

}  // namespace quorvex
