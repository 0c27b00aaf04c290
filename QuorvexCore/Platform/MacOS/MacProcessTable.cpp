#include "MacProcessTable.h"

#include <libproc.h>
#include <sys/resource.h>

namespace quorvex {

namespace {

static_assert(PROC_ALL_PIDS == 1);
static_assert(RUSAGE_INFO_V6 == 6);
static_assert(sizeof(pid_t) == sizeof(std::int32_t));
static_assert(sizeof(rusage_info_v6) == 464);
static_assert(offsetof(rusage_info_v6, ri_user_time) == 16);
static_assert(offsetof(rusage_info_v6, ri_system_time) == 24);
static_assert(offsetof(rusage_info_v6, ri_pkg_idle_wkups) == 32);
static_assert(offsetof(rusage_info_v6, ri_interrupt_wkups) == 40);
static_assert(offsetof(rusage_info_v6, ri_diskio_bytesread) == 144);
static_assert(offsetof(rusage_info_v6, ri_diskio_byteswritten) == 152);
static_assert(offsetof(rusage_info_v6, ri_energy_nj) == 336);

}  // namespace

std::int64_t MacProcessTable::listProcessIDs(std::span<std::int32_t> buffer) {
  return proc_listpids(PROC_ALL_PIDS, 0, buffer.data(), static_cast<int>(buffer.size_bytes()));
}

std::optional<ProcessResources> MacProcessTable::resources(std::int32_t pid) {
  rusage_info_v6 record{};
  if (proc_pid_rusage(pid, RUSAGE_INFO_V6, reinterpret_cast<rusage_info_t*>(&record)) != 0) {
    return std::nullopt;
  }
  return ProcessResources{.userTime = record.ri_user_time,
                          .systemTime = record.ri_system_time,
                          .idleWakeups = record.ri_pkg_idle_wkups,
                          .interruptWakeups = record.ri_interrupt_wkups,
                          .bytesRead = record.ri_diskio_bytesread,
                          .bytesWritten = record.ri_diskio_byteswritten,
                          .energy = record.ri_energy_nj};
}

std::int64_t MacProcessTable::processName(std::int32_t pid, std::span<char> buffer) {
  return proc_name(pid, buffer.data(), static_cast<std::uint32_t>(buffer.size()));
}

}  // namespace quorvex
