#pragma once

// What the program uses of the system's notifications, declared for computers without their header.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define NOTIFY_STATUS_OK 0

uint32_t notify_register_check(const char* name, int* token);
uint32_t notify_get_state(int token, uint64_t* state);
uint32_t notify_cancel(int token);

#ifdef __cplusplus
}
#endif
