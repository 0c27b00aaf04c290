#include "ProcessHygiene.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <vector>

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace quorvex {

namespace {

void dropEnvironment() {
  static std::array<char*, 1> empty{nullptr};
  environ = empty.data();
}

/// A descriptor that is closed at the start would be given to the first file that is opened, and
/// words meant for people would go there.
bool openStandardDescriptors() {
  for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
    if (fcntl(number, F_GETFD) < 0 &&
        (errno != EBADF ||
         open("/dev/null", number == STDIN_FILENO ? O_RDONLY : O_WRONLY) != number)) {
      return false;
    }
  }
  return true;
}

bool closeInheritedDescriptors() {
  DIR* const folder = opendir("/dev/fd");
  if (folder == nullptr) {
    return false;
  }
  // Numbers first: closing while reading would change what is read.
  std::vector<int> numbers;
  while (const dirent* const entry =
             readdir(folder)) {                   // NOLINT(concurrency-mt-unsafe): one thread
    const int number = std::atoi(entry->d_name);  // NOLINT(cert-err34-c): "." and ".." give 0
    if (number > STDERR_FILENO && number != dirfd(folder)) {
      numbers.push_back(number);
    }
  }
  closedir(folder);
  for (const int number : numbers) {
    close(number);
  }
  return true;
}

bool resetSignals() {
  for (int number = 1; number < NSIG; ++number) {
    // Fails for those that cannot be changed, which is as good.
    static_cast<void>(std::signal(number, SIG_DFL));
  }
  sigset_t none;
  sigemptyset(&none);
  return sigprocmask(SIG_SETMASK, &none, nullptr) == 0;
}

bool forbidCores() {
  const rlimit limit{0, 0};
  return setrlimit(RLIMIT_CORE, &limit) == 0;
}

}  // namespace

bool prepareProcess(std::chrono::seconds lifetime) {
  dropEnvironment();
  if (!openStandardDescriptors() || !closeInheritedDescriptors() || !resetSignals() ||
      !forbidCores() || chdir("/") != 0) {
    return false;
  }
  umask(077);
  alarm(static_cast<unsigned>(lifetime.count()));
  return true;
}

}  // namespace quorvex
