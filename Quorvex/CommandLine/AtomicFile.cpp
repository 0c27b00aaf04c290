#include "AtomicFile.h"

#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "UUID.h"
#include "UserFolders.h"

namespace quorvex {

namespace {

namespace fs = std::filesystem;

/// Holds back the signals by which people end programs, so that none leaves a half file behind.
class SignalDelay {
 public:
  SignalDelay() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      sigaddset(&signals, number);
    }
    pthread_sigmask(SIG_BLOCK, &signals, &previous_);
  }
  SignalDelay(const SignalDelay&) = delete;
  SignalDelay& operator=(const SignalDelay&) = delete;
  ~SignalDelay() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }

 private:
  sigset_t previous_{};
};

/// 0, or the system's error number.
int writeWhole(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

/// Brings what was written to the disk; a file system that cannot is no failure.
int synchronize(int descriptor) {
  return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
}

int closeAfter(int descriptor, int error) {
  return close(descriptor) == 0 || error != 0 ? error : errno;
}

int writeInPlace(const fs::path& file, std::string_view content) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  return descriptor < 0 ? errno : closeAfter(descriptor, writeWhole(descriptor, content));
}

int writeNew(const fs::path& file, std::string_view content, const struct stat* replaced) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) {
    return errno;
  }
  int error = writeWhole(descriptor, content);
  if (error == 0 && replaced != nullptr &&
      fchmod(descriptor, replaced->st_mode & mode_t{07777}) != 0) {
    error = errno;
  }
  if (error == 0) {
    error = synchronize(descriptor);
  }
  return closeAfter(descriptor, error);
}

int replaceFile(const fs::path& file, std::string_view content, const struct stat* replaced) {
  const fs::path temporary = file.parent_path() / (".quorvex-" + UUID::random().text());
  const SignalDelay delay;
  int error = writeNew(temporary, content, replaced);
  if (error == 0 && rename(temporary.c_str(), file.c_str()) != 0) {
    error = errno;
  }
  if (error != 0) {
    unlink(temporary.c_str());
    return error;
  }
  // The file has its content; that its new name lies on the disk too is worth a try.
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path{"."};
  if (const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      descriptor >= 0) {
    static_cast<void>(synchronize(descriptor));
    close(descriptor);
  }
  return 0;
}

/// Where a link leads in the end; the path itself when it is none.
fs::path withoutLinks(const fs::path& file) {
  std::error_code ignored;
  if (!fs::is_symlink(file, ignored)) {
    return file;
  }
  const fs::path target = fs::weakly_canonical(file, ignored);
  return target.empty() ? file : target;
}

}  // namespace

std::optional<std::string> writeAtomically(const fs::path& file, std::string_view content) {
  const fs::path target = withoutLinks(file);
  struct stat found {};
  const bool exists = stat(target.c_str(), &found) == 0;
  int error = 0;
  if (exists && S_ISDIR(found.st_mode)) {
    error = EISDIR;
  } else if (exists && !S_ISREG(found.st_mode)) {
    error = writeInPlace(target, content);
  } else {
    error = replaceFile(target, content, exists ? &found : nullptr);
  }
  if (error == 0) {
    return std::nullopt;
  }
  return file.string() + ": " + std::generic_category().message(error);
}

fs::path expandingTilde(const std::string& path) {
  if (!path.starts_with("~")) {
    return path;
  }
  const std::size_t nameEnd = std::min(path.find('/'), path.size());
  const std::string name = path.substr(1, nameEnd - 1);
  fs::path home;
  if (name.empty()) {
    home = homeFolder();
  } else if (const passwd* user = getpwnam(name.c_str())) {
    home = user->pw_dir;
  } else {
    return path;
  }
  return home.string() + path.substr(nameEnd);
}

}  // namespace quorvex
