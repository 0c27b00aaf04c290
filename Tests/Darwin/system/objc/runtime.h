#pragma once

// What the program uses of the Objective-C runtime.

#ifdef __cplusplus
extern "C" {
#endif

typedef struct objc_class* Class;
typedef struct objc_object* id;
typedef struct objc_selector* SEL;

Class objc_getClass(const char* name);
SEL sel_registerName(const char* name);

#ifdef __cplusplus
}
#endif
