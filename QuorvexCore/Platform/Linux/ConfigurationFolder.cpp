#include "ConfigurationFolder.h"

#include <cstdlib>

#include "UserFolders.h"

namespace quorvex {

std::string configurationFolder() {
  const char* const folder = std::getenv("XDG_CONFIG_HOME");
  // The XDG rules: a relative path counts as none.
  if (folder != nullptr && *folder == '/') {
    return folder;
  }
  return (homeFolder() / ".config").string();
}

}  // namespace quorvex
