// SPDX-License-Identifier: MIT
// What the declarations in this folder are written with; see README.md.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__OBJC_BOOL_IS_BOOL) && __OBJC_BOOL_IS_BOOL
typedef bool BOOL;  // arm64
#else
typedef signed char BOOL;  // x86_64
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))

#define SINCE(version) __attribute__((availability(macos, introduced = version)))

// An enumeration of a fixed type, and a set of options, which is a plain integer so that `|` needs no cast.
#define DECL_ENUM(T, N)                                                                                              \
    enum N : T;                                                                                                      \
    typedef enum N N;                                                                                                \
    enum __attribute__((enum_extensibility(open))) N : T
#define DECL_OPTIONS(T, N)                                                                                           \
    typedef T N;                                                                                                     \
    enum __attribute__((flag_enum, enum_extensibility(open))) : T
