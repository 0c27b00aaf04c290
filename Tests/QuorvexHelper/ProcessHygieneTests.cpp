#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

#include "ProcessHygiene.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace quorvex {
namespace {

using ::testing::ExitedWithCode;

constexpr std::chrono::seconds lifetime{3600};

/// Prepares the (forked) process, which exits with 0 if `check` then holds.
template <typename Check>
[[noreturn]] void exitWhetherPrepared(Check check) {
  _exit(prepareProcess(lifetime) && check() ? 0 : 1);
}

TEST(ProcessHygieneDeathTest, EnvironmentIsEmptied) {
  setenv("DYLD_INSERT_LIBRARIES", "/tmp/evil", 1);
  EXPECT_EXIT(exitWhetherPrepared([] {
                return environ != nullptr && *environ == nullptr &&
                       std::getenv("DYLD_INSERT_LIBRARIES") == nullptr;
              }),
              ExitedWithCode(0), "");
  unsetenv("DYLD_INSERT_LIBRARIES");
}

TEST(ProcessHygieneDeathTest, InheritedDescriptorsAreClosed) {
  EXPECT_EXIT(
      {
        const int low = open("/dev/null", O_RDONLY);
        const int high = fcntl(low, F_DUPFD, 200);
        exitWhetherPrepared([=] {
          return low > STDERR_FILENO && high >= 200 && fcntl(low, F_GETFD) < 0 &&
                 fcntl(high, F_GETFD) < 0 && fcntl(STDERR_FILENO, F_GETFD) >= 0;
        });
      },
      ExitedWithCode(0), "");
}

TEST(ProcessHygieneDeathTest, ClosedStandardDescriptorsAreOpenedOnNothing) {
  EXPECT_EXIT(
      {
        for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
          close(number);
        }
        exitWhetherPrepared([] {
          struct stat nothing {};
          if (stat("/dev/null", &nothing) != 0) {
            return false;
          }
          for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            struct stat information {};
            if (fstat(number, &information) != 0 || information.st_rdev != nothing.st_rdev) {
              return false;
            }
          }
          return true;
        });
      },
      ExitedWithCode(0), "");
}

TEST(ProcessHygieneDeathTest, SignalsAreResetAndUnblocked) {
  EXPECT_EXIT(
      {
        static_cast<void>(std::signal(SIGCHLD, SIG_IGN));
        static_cast<void>(std::signal(SIGTERM, SIG_IGN));
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, nullptr);
        exitWhetherPrepared([] {
          sigset_t blocked;
          sigprocmask(SIG_SETMASK, nullptr, &blocked);
          return sigismember(&blocked, SIGTERM) == 0 && sigismember(&blocked, SIGALRM) == 0 &&
                 std::signal(SIGCHLD, SIG_DFL) == SIG_DFL &&
                 std::signal(SIGTERM, SIG_DFL) == SIG_DFL;
        });
      },
      ExitedWithCode(0), "");
}

TEST(ProcessHygieneDeathTest, FolderMaskCoreAndLifetimeAreSet) {
  EXPECT_EXIT(exitWhetherPrepared([] {
                std::array<char, 64> folder{};
                rlimit core{};
                return getcwd(folder.data(), folder.size()) != nullptr &&
                       std::string_view{folder.data()} == "/" && umask(0) == 077 &&
                       getrlimit(RLIMIT_CORE, &core) == 0 && core.rlim_cur == 0 &&
                       core.rlim_max == 0 && alarm(0) > 3000;
              }),
              ExitedWithCode(0), "");
}

TEST(ProcessHygieneDeathTest, AlarmOfTheCallerIsReplaced) {
  EXPECT_EXIT(
      {
        alarm(86400);
        exitWhetherPrepared([] { return alarm(0) <= 3600; });
      },
      ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quorvex
