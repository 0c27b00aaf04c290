#pragma once

#include <string>
#include <utility>

#include "FileAttributes.h"

namespace quorvex {

/// Attributes of the files of the computer that the process runs on. `fileExists` and
/// `isExecutable` follow symbolic links; `attributes` describes a link itself, so that a link to a
/// set-uid tool never passes for one. Any thread.
class PosixFileAttributes final : public FileAttributes {
 public:
  /// `root` goes before every path: the folder that stands for the whole file system.
  explicit PosixFileAttributes(std::string root = {}) : root_(std::move(root)) {}

  [[nodiscard]] bool fileExists(const std::string& path) override;
  [[nodiscard]] std::optional<FileAttributeRecord> attributes(const std::string& path) override;
  [[nodiscard]] bool isExecutable(const std::string& path) override;

 private:
  std::string root_;
};

}  // namespace quorvex
