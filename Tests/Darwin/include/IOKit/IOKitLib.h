#pragma once

// What the program uses of IOKit's registry and user clients, declared for computers without its
// headers.

#include <CoreFoundation/CoreFoundation.h>
#include <mach/mach.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef mach_port_t io_object_t;
typedef io_object_t io_service_t;
typedef io_object_t io_registry_entry_t;
typedef io_object_t io_connect_t;
typedef uint32_t IOOptionBits;

extern const mach_port_t kIOMainPortDefault;

CFMutableDictionaryRef IOServiceMatching(const char* className);
CFMutableDictionaryRef IOServiceNameMatching(const char* name);
/// Releases the matching dictionary.
io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching);
kern_return_t IOObjectRelease(io_object_t object);
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry,
                                                CFMutableDictionaryRef* properties,
                                                CFAllocatorRef allocator, IOOptionBits options);
kern_return_t IOServiceOpen(io_service_t service, mach_port_t owningTask, uint32_t type,
                            io_connect_t* connection);
kern_return_t IOServiceClose(io_connect_t connection);
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void* input, size_t inputSize, void* output,
                                        size_t* outputSize);

#ifdef __cplusplus
}
#endif
