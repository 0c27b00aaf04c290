#pragma once

// What the program uses of the Objective-C runtime's messages.

#include <objc/runtime.h>

#ifdef __cplusplus
extern "C" {
#endif

/// To be called as a function of the message's own type.
void objc_msgSend(void);

#ifdef __cplusplus
}
#endif
