// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"

#include <cstdio>
#include <cstdlib>

namespace stowpocket {

void invariant(bool condition, const char* what) {
    if (condition) [[likely]]
        return;
    std::fprintf(stderr, "stowpocket: broken invariant: %s\n", what);
    std::abort();
}

}  // namespace stowpocket
