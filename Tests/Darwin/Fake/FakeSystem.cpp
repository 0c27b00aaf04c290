#include <dlfcn.h>
#include <libproc.h>
#include <net/if.h>
#include <net/route.h>
#include <notify.h>
#include <spawn.h>
#include <sys/event.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/sysctl.h>
#include <sysdir.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <map>
#include <string>

#include "FakeDarwin.h"

using quorvex::darwin::fake;

namespace {

constexpr int pressureToken = 31;

/// Timers that were set, in nanoseconds, by the queue's descriptor.
std::map<int, std::uint64_t>& timers() {
  static std::map<int, std::uint64_t> values;
  return values;
}

/// Makes the queue's descriptor the one that polls as readable once the process has ended.
int watchProcess(int queue, pid_t process) {
  if (fake().processEventError != 0) {
    errno = fake().processEventError;
    return -1;
  }
  const auto watched = static_cast<int>(syscall(SYS_pidfd_open, process, 0U));
  if (watched < 0) {
    return -1;
  }
  dup2(watched, queue);
  close(watched);
  return 0;
}

template <typename Function>
Function* systemFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

uint32_t notify_register_check(const char* name, int* token) {
  fake().note(std::string{"notify_register_check "} + name);
  if (fake().registerStatus == 0) {
    *token = pressureToken;
    fake().opened("token");
  }
  return fake().registerStatus;
}

uint32_t notify_get_state(int token, uint64_t* state) {
  fake().note("notify_get_state");
  if (token != pressureToken || fake().openCount("token") != 1) {
    fake().fault("the state of another token");
  }
  if (fake().stateStatus == 0) {
    *state = fake().pressure;
  }
  return fake().stateStatus;
}

uint32_t notify_cancel(int token) {
  fake().note("notify_cancel");
  if (token != pressureToken) {
    fake().fault("another token was cancelled");
  }
  fake().closed("token");
  return 0;
}

int sysctl(int* name, unsigned int nameLength, void* old, size_t* oldSize, void* fresh,
           size_t freshSize) {
  std::string call = "sysctl";
  for (unsigned int i = 0; i < nameLength; ++i) {
    call.append(" ").append(std::to_string(name[i]));
  }
  if (old != nullptr) {
    call.append(" into ").append(std::to_string(*oldSize));
  }
  fake().note(call);
  if (fresh != nullptr || freshSize != 0) {
    fake().fault("sysctl was to change something");
  }
  return fake().readInterfaceList(old, oldSize);
}

char* if_indextoname(unsigned int index, char* buffer) noexcept {
  fake().note("if_indextoname " + std::to_string(index));
  const auto name = fake().interfaceName(index);
  if (!name) {
    return nullptr;
  }
  std::strncpy(buffer, name->c_str(), IF_NAMESIZE);
  return buffer;
}

int proc_listpids(uint32_t type, uint32_t typeinfo, void* buffer, int buffersize) {
  fake().note("proc_listpids " + std::to_string(type) + " " + std::to_string(typeinfo) + " " +
              std::to_string(buffersize));
  return fake().listProcesses(buffer, buffersize);
}

int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer) {
  fake().note("proc_pid_rusage " + std::to_string(pid) + " " + std::to_string(flavor));
  return fake().processUsage(pid, buffer);
}

int proc_name(int pid, void* buffer, uint32_t buffersize) {
  fake().note("proc_name " + std::to_string(pid) + " " + std::to_string(buffersize));
  return fake().processName(pid, static_cast<char*>(buffer), buffersize);
}

uint64_t clock_gettime_nsec_np(clockid_t clock) {
  if (clock == CLOCK_REALTIME) {
    return fake().wallClock();
  }
  if (clock != CLOCK_MONOTONIC_RAW) {
    fake().fault("another clock was read");
  }
  return fake().continuousClock();
}

int nanosleep(const struct timespec* length, struct timespec* /*rest*/) {
  const auto nanoseconds = static_cast<std::uint64_t>(length->tv_sec) * 1'000'000'000U +
                           static_cast<std::uint64_t>(length->tv_nsec);
  fake().note("nanosleep " + std::to_string(nanoseconds));
  fake().sleep(nanoseconds);
  return 0;
}

int kqueue() {
  fake().note("kqueue");
  if (!fake().hasQueues) {
    errno = EMFILE;
    return -1;
  }
  return eventfd(0, 0);
}

int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events,
           int eventCount, const struct timespec* timeout) {
  if (changeCount == 1 && events == nullptr && changes->filter == EVFILT_PROC &&
      changes->flags == EV_ADD && changes->fflags == NOTE_EXIT) {
    fake().note("kevent process");
    return watchProcess(queue, static_cast<pid_t>(changes->ident));
  }
  if (changeCount == 1 && events == nullptr && changes->filter == EVFILT_TIMER &&
      changes->flags == (EV_ADD | EV_ONESHOT) &&
      changes->fflags == (NOTE_NSECONDS | NOTE_MACH_CONTINUOUS_TIME)) {
    fake().note("kevent timer " + std::to_string(changes->data));
    timers()[queue] = static_cast<std::uint64_t>(changes->data);
    return 0;
  }
  if (changeCount != 0 || eventCount != 1 || timeout != nullptr || timers().count(queue) == 0) {
    fake().fault("kevent with other arguments");
    errno = EINVAL;
    return -1;
  }
  fake().note("kevent wait");
  const std::uint64_t length = timers()[queue];
  timers().erase(queue);
  if (fake().interruptedWaits > 0) {
    --fake().interruptedWaits;
    fake().sleep(length / 2);
    errno = EINTR;
    return -1;
  }
  fake().sleep(length);
  return 1;
}

/// This system knows no such flag; that it was set is in the log.
int posix_spawnattr_setflags(posix_spawnattr_t* attributes, short flags) noexcept {
  if ((flags & POSIX_SPAWN_CLOEXEC_DEFAULT) != 0) {
    fake().note("posix_spawn closes by default");
  }
  const auto known = static_cast<short>(flags & ~POSIX_SPAWN_CLOEXEC_DEFAULT);
  return systemFunction<int(posix_spawnattr_t*, short)>("posix_spawnattr_setflags")(attributes,
                                                                                    known);
}

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* actions, int descriptor) {
  fake().note("posix_spawn inherits " + std::to_string(descriptor));
  // What the flag above does there.
  return posix_spawn_file_actions_addclosefrom_np(actions, STDERR_FILENO + 1);
}

sysdir_search_path_enumeration_state sysdir_start_search_path_enumeration(
    sysdir_search_path_directory_t directory, sysdir_search_path_domain_mask_t domains) {
  fake().note("sysdir " + std::to_string(directory) + " " + std::to_string(domains));
  return 1;
}

sysdir_search_path_enumeration_state sysdir_get_next_search_path_enumeration(
    sysdir_search_path_enumeration_state state, char* path) {
  const auto& folders = fake().applicationSupport;
  if (state > folders.size()) {
    return 0;
  }
  std::strcpy(path, folders[state - 1].c_str());
  return state + 1;
}

}  // extern "C"
