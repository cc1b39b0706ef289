// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include <stdint.h>

typedef void (^dispatch_block_t)(void);
@protocol OS_dispatch_queue
@end
typedef id<OS_dispatch_queue> dispatch_queue_t;
@protocol OS_dispatch_semaphore
@end
typedef id<OS_dispatch_semaphore> dispatch_semaphore_t;
typedef uint64_t dispatch_time_t;
enum : dispatch_time_t { DISPATCH_TIME_NOW = 0 };
enum : unsigned int { QOS_CLASS_DEFAULT = 0x15 };
extern "C" {
dispatch_queue_t _Nonnull dispatch_get_main_queue(void);
dispatch_queue_t _Nonnull dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
dispatch_semaphore_t _Nonnull dispatch_semaphore_create(intptr_t value);
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t _Nonnull semaphore);
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t _Nonnull semaphore, dispatch_time_t timeout);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
}
