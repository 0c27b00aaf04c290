#include "UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace quorvex {

std::filesystem::path homeFolder() {
  const char* const home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') {
    return home;
  }
  const passwd* const account = getpwuid(getuid());
  return account != nullptr && account->pw_dir != nullptr && *account->pw_dir != '\0'
             ? std::filesystem::path{account->pw_dir}
             : std::filesystem::path{"/"};
}

}  // namespace quorvex
