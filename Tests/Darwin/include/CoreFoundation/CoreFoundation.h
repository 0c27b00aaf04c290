#pragma once

// What the program uses of Core Foundation, declared for computers without its headers. The type of
// each reference is the framework's own, so that a wrong use does not compile here either.

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;

typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef uint32_t CFStringEncoding;
typedef CFIndex CFNumberType;

typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

enum { kCFStringEncodingUTF8 = 0x08000100 };
enum { kCFNumberSInt32Type = 3, kCFNumberSInt64Type = 4, kCFNumberFloat64Type = 6 };

extern const CFAllocatorRef kCFAllocatorDefault;

void CFRelease(CFTypeRef object);
CFTypeRef CFRetain(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

CFTypeID CFStringGetTypeID(void);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                         CFIndex maxBufferLength, CFIndex* usedBufferLength);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);

CFTypeID CFNumberGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);

extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

CFTypeID CFArrayGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

typedef struct CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct CFDictionaryValueCallBacks CFDictionaryValueCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
CFTypeID CFDictionaryGetTypeID(void);
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                  const void** values);
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);

extern const CFStringRef kCFPreferencesCurrentApplication;
CFTypeRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application);
void CFPreferencesSetAppValue(CFStringRef key, CFTypeRef value, CFStringRef application);
Boolean CFPreferencesAppSynchronize(CFStringRef application);

#ifdef __cplusplus
}
#endif
