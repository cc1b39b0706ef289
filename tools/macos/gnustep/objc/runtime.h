// SPDX-License-Identifier: MIT
// The runtime's own header, without its inline object_getClass: that one reads a member of an object, which automatic
// reference counting forbids. Runtime.c has the function.
#pragma once

#include_next <objc/objc.h>

#pragma push_macro("nil")
#undef nil
#define nil 0
struct StowpocketUnused {
    Class class_pointer;
};
#define object_getClass(ignored) stowpocketUnused(struct StowpocketUnused* object)
#include_next <objc/runtime.h>
#undef object_getClass
#pragma pop_macro("nil")

#ifdef __cplusplus
extern "C"
#endif
    Class
    object_getClass(id object);
