#pragma once

// What the program uses of the power-source service, declared for computers without its headers.

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

CFTypeRef IOPSCopyPowerSourcesInfo(void);
CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef snapshot);
/// Belongs to the snapshot.
CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef snapshot, CFTypeRef source);

#ifdef __cplusplus
}
#endif
