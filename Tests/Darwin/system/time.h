// This system's own header, with Darwin's clock calls. Libraries include it in parts and more than
// once.

#include_next <time.h>

#if defined(_TIME_H) && !defined(QUORVEX_DARWIN_TIME_H)
#define QUORVEX_DARWIN_TIME_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

uint64_t clock_gettime_nsec_np(clockid_t clock);

#ifdef __cplusplus
}
#endif
#endif
