#pragma once

// What the program uses of Darwin's kernel interface.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t mach_port_t;
typedef int kern_return_t;

extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_

#ifdef __cplusplus
}
#endif
