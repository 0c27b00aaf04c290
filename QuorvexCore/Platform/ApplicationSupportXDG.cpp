#include <cstdlib>

#include "UserFolders.h"

namespace quorvex {

std::optional<std::filesystem::path> applicationSupportFolder() {
  const char* const folder = std::getenv("XDG_DATA_HOME");
  // The XDG rules: a relative path counts as none.
  if (folder != nullptr && *folder == '/') {
    return folder;
  }
  return homeFolder() / ".local" / "share";
}

}  // namespace quorvex
