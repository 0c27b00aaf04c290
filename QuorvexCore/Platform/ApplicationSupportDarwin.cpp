#include <sysdir.h>

#include <array>
#include <climits>
#include <string_view>

#include "UserFolders.h"

namespace quorvex {

std::optional<std::filesystem::path> applicationSupportFolder() {
  std::array<char, PATH_MAX> buffer{};
  auto state = sysdir_start_search_path_enumeration(SYSDIR_DIRECTORY_APPLICATION_SUPPORT,
                                                    SYSDIR_DOMAIN_MASK_USER);
  state = sysdir_get_next_search_path_enumeration(state, buffer.data());
  if (state == 0) {
    return std::nullopt;
  }
  // The system gives the user's own folders with a tilde in place of the home folder.
  const std::string_view folder{buffer.data()};
  if (folder.starts_with("~/")) {
    return homeFolder() / folder.substr(2);
  }
  return folder;
}

}  // namespace quorvex
