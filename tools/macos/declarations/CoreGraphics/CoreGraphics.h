// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include "../CoreFoundation/CoreFoundation.h"

typedef double CGFloat;
struct CGPoint {
    CGFloat x, y;
};
struct CGSize {
    CGFloat width, height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return CGRect{{x, y}, {width, height}};
}

typedef struct CGColorSpace* CGColorSpaceRef;
typedef struct CGContext* CGContextRef;
typedef struct CGImage* CGImageRef;
typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
typedef uint16_t CGKeyCode;
DECL_OPTIONS(uint64_t, CGEventFlags){kCGEventFlagMaskShift = 0x20000};
enum CGImageAlphaInfo : uint32_t { kCGImageAlphaPremultipliedFirst = 2 };
DECL_OPTIONS(uint32_t, CGBitmapInfo){kCGBitmapByteOrder32Little = 2 << 12};
enum CGInterpolationQuality : int32_t { kCGInterpolationHigh = 3 };

extern "C" {
extern const CFStringRef _Nonnull kCGColorSpaceSRGB;
CGColorSpaceRef _Nullable CGColorSpaceCreateWithName(CFStringRef _Nullable name);
void CGColorSpaceRelease(CGColorSpaceRef _Nullable space);
CGContextRef _Nullable CGBitmapContextCreate(void* _Nullable data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space, uint32_t bitmapInfo);
CGImageRef _Nullable CGBitmapContextCreateImage(CGContextRef _Nullable context);
void CGContextRelease(CGContextRef _Nullable context);
void CGContextSetInterpolationQuality(CGContextRef _Nullable context, CGInterpolationQuality quality);
void CGContextDrawImage(CGContextRef _Nullable context, CGRect rect, CGImageRef _Nullable image);
size_t CGImageGetWidth(CGImageRef _Nullable image);
size_t CGImageGetHeight(CGImageRef _Nullable image);
void CGImageRelease(CGImageRef _Nullable image);
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode key, bool isDown);
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
}
