#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvex {

/// A file's POSIX attributes; each is none when it cannot be read.
struct FileAttributeRecord {
  std::optional<std::uint32_t> permissions;  ///< permission bits, setuid 0o4000 included
  std::optional<std::int64_t> ownerID;
  std::optional<std::int64_t> groupID;
};

/// Reads attributes of files. Any thread.
class FileAttributes {
 public:
  FileAttributes() = default;
  FileAttributes(const FileAttributes&) = delete;
  FileAttributes& operator=(const FileAttributes&) = delete;
  virtual ~FileAttributes() = default;

  [[nodiscard]] virtual bool fileExists(const std::string& path) = 0;
  /// None when the file is missing or its attributes are unreadable as a whole.
  [[nodiscard]] virtual std::optional<FileAttributeRecord> attributes(const std::string& path) = 0;
  /// Whether this user may execute the file.
  [[nodiscard]] virtual bool isExecutable(const std::string& path) = 0;
};

}  // namespace quorvex
