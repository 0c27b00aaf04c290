#pragma once

#include <memory>
#include <string>

#include "ChildProcesses.h"

namespace quorvex {

class AbandonedChildren;

/// Starts children with posix_spawn: default signal dispositions, an empty signal mask, the
/// environment and folder of this process, and no descriptor but standard input and the two pipes.
/// A path that is not absolute, and a text with a NUL in it, is refused. Failures carry the
/// system's words for the error, such as "No such file or directory". Any thread.
class PosixChildProcesses final : public ChildProcesses {
 public:
  /// `root` goes before the path of every executable: the folder that stands for the whole file
  /// system.
  explicit PosixChildProcesses(std::string root = {});
  ~PosixChildProcesses() override;

  [[nodiscard]] LaunchResult launch(const std::string& executablePath,
                                    std::span<const std::string> arguments) override;

 private:
  std::string root_;
  std::shared_ptr<AbandonedChildren> abandoned_;
};

}  // namespace quorvex
