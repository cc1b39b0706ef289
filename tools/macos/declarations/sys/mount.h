// SPDX-License-Identifier: MIT
// Declarations for the type check, as in getfsstat(2); see ../README.md.
#pragma once

#include <stdint.h>

#define MNT_NOWAIT 2
#define MNT_LOCAL 0x00001000

struct statfs {
    uint32_t f_flags;
    char f_mntonname[1024];
};
extern "C" int getfsstat(struct statfs* buffer, int size, int flags);
