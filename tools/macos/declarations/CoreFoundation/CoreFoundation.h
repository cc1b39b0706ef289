// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include "../decl.h"

typedef unsigned char Boolean;
typedef unsigned long CFTypeID;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFNumber* CFNumberRef;

extern "C" {
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFBooleanGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);
void CFRelease(CFTypeRef object);
}
