// The root-owned helper tool: installed set-uid, it reads for any user what only root may read. It
// takes one word, opens nothing that the user names, and trusts nothing that the user left behind.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "HelperCommands.h"
#include "PrivilegedSMCHelperService.h"
#include "ProcessHygiene.h"
#include "SystemSMC.h"

namespace {

using namespace quorvex;  // NOLINT(google-build-using-namespace): this file only

/// Longer than any command may take, shorter than any client waits.
constexpr std::chrono::seconds lifetime{18};

InstalledFile installedFile() {
  const char* const path = PrivilegedSMCHelperService::defaultHelperPath;
  InstalledFile file;
  struct stat information {};
  if (lstat(path, &information) == 0) {
    file.attributes = FileAttributeRecord{.permissions = information.st_mode & 07777U,
                                          .ownerID = information.st_uid,
                                          .groupID = information.st_gid};
  }
  file.isExecutable = access(path, X_OK) == 0;
  return file;
}

HelperAnswer telemetry() {
  if (geteuid() != 0) {
    return {
        .exitStatus = failureStatus,
        .output = {},
        .error = "not running as root: the tool must be installed with owner root and mode 4755\n"};
  }
  const auto output = runBounded(powermetricsCommand());
  return answerTelemetry(
      output, std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now()));
}

HelperAnswer answerTo(std::optional<HelperCommand> command) {
  if (!command) {
    return answerUsage();
  }
  switch (*command) {
    case HelperCommand::status:
      return answerStatus(installedFile());
    case HelperCommand::telemetry:
      return telemetry();
    case HelperCommand::temperatures:
      return answerTemperatures(systemSMC().get());
  }
  return answerUsage();
}

/// Whether all of it was written.
bool writeWhole(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(descriptor, text.data(), text.size());
    if (count < 0 && errno != EINTR) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(count < 0 ? 0 : count));
  }
  return true;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (!prepareProcess(lifetime)) {
    return failureStatus;
  }
  const HelperAnswer answer = answerTo(helperCommand(argumentCount, arguments));
  const bool isWritten =
      writeWhole(STDERR_FILENO, answer.error) && writeWhole(STDOUT_FILENO, answer.output);
  return isWritten ? answer.exitStatus : failureStatus;
}
