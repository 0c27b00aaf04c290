#include "PosixFileAttributes.h"

#include <sys/stat.h>
#include <unistd.h>

namespace quorvex {

bool PosixFileAttributes::fileExists(const std::string& path) {
  return access((root_ + path).c_str(), F_OK) == 0;
}

std::optional<FileAttributeRecord> PosixFileAttributes::attributes(const std::string& path) {
  constexpr std::uint32_t permissionBits = 07777;
  struct stat status {};
  if (lstat((root_ + path).c_str(), &status) != 0) {
    return std::nullopt;
  }
  return FileAttributeRecord{
      .permissions = std::uint32_t{status.st_mode} & permissionBits,
      .ownerID = std::int64_t{status.st_uid},
      .groupID = std::int64_t{status.st_gid},
  };
}

bool PosixFileAttributes::isExecutable(const std::string& path) {
  return access((root_ + path).c_str(), X_OK) == 0;
}

}  // namespace quorvex
