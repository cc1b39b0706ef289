// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

namespace stowpocket {

/// Ends the process, in every build, when a promise inside the program is broken, after writing `what` to standard
/// error. Only for mistakes that no input can cause: bad input is reported by a return value.
inline void invariant(bool condition, const char* what) {
    if (condition) [[likely]]
        return;
    std::fprintf(stderr, "stowpocket: broken invariant: %s\n", what);
    std::abort();
}

}  // namespace stowpocket
