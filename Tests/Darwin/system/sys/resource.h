#pragma once

// This system's own header, with the resource-usage record of Darwin's processes.

#include <stdint.h>
#include_next <sys/resource.h>

#define RUSAGE_INFO_V6 6

typedef void* rusage_info_t;

struct rusage_info_v6 {
  uint8_t ri_uuid[16];
  uint64_t ri_user_time;
  uint64_t ri_system_time;
  uint64_t ri_pkg_idle_wkups;
  uint64_t ri_interrupt_wkups;
  uint64_t ri_unused0[12];
  uint64_t ri_diskio_bytesread;
  uint64_t ri_diskio_byteswritten;
  uint64_t ri_unused1[22];
  uint64_t ri_energy_nj;
  uint64_t ri_unused2[15];
};
