#pragma once

// What the program uses of Darwin's event queues.

#include <stdint.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

struct kevent {
  uintptr_t ident;
  int16_t filter;
  uint16_t flags;
  uint32_t fflags;
  intptr_t data;
  void* udata;
};

#define EVFILT_PROC (-5)
#define EVFILT_TIMER (-7)
#define EV_ADD 0x0001
#define EV_ONESHOT 0x0010
#define NOTE_EXIT 0x80000000
#define NOTE_NSECONDS 0x00000004
#define NOTE_MACH_CONTINUOUS_TIME 0x00000080

#define EV_SET(event, a, b, c, d, e, f) \
  do {                                  \
    struct kevent* set_ = (event);      \
    set_->ident = (a);                  \
    set_->filter = (b);                 \
    set_->flags = (c);                  \
    set_->fflags = (d);                 \
    set_->data = (e);                   \
    set_->udata = (f);                  \
  } while (0)

int kqueue(void);
int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events,
           int eventCount, const struct timespec* timeout);

#ifdef __cplusplus
}
#endif
