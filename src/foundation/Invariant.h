// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

namespace stowpocket {

/// Ends the process, in every build, when a promise inside the program is broken: `what` goes to standard error
/// first. For mistakes that no user input can cause; whatever comes from outside is answered with a value instead.
inline void invariant(bool condition, const char* what) {
    if (condition) [[likely]]
        return;
    std::fprintf(stderr, "stowpocket: broken invariant: %s\n", what);
    std::abort();
}

}  // namespace stowpocket
