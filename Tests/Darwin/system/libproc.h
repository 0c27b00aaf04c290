#pragma once

// What the program uses of Darwin's process functions.

#include <stdint.h>
#include <sys/resource.h>

#ifdef __cplusplus
extern "C" {
#endif

#define PROC_ALL_PIDS 1

int proc_listpids(uint32_t type, uint32_t typeinfo, void* buffer, int buffersize);
int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer);
int proc_name(int pid, void* buffer, uint32_t buffersize);

#ifdef __cplusplus
}
#endif
