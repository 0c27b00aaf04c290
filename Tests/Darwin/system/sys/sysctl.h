#pragma once

// What the program uses of Darwin's system information.

#include <stddef.h>

#define CTL_NET 4

#ifdef __cplusplus
extern "C" {
#endif

int sysctl(int* name, unsigned int nameLength, void* old, size_t* oldSize, void* fresh,
           size_t freshSize);

#ifdef __cplusplus
}
#endif
