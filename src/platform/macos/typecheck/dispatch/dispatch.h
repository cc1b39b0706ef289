// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include <stdint.h>

typedef void (^dispatch_block_t)(void);
@protocol OS_dispatch_queue
@end
typedef id<OS_dispatch_queue> dispatch_queue_t;
typedef uint64_t dispatch_time_t;
enum : dispatch_time_t { DISPATCH_TIME_NOW = 0 };
#define NSEC_PER_SEC 1000000000ull
#define QOS_CLASS_UTILITY 0x11
extern "C" {
dispatch_queue_t _Nonnull dispatch_get_main_queue(void);
dispatch_queue_t _Nonnull dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
}
