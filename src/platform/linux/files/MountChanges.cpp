// SPDX-License-Identifier: MIT
#include "platform/linux/files/MountChanges.h"

#include <algorithm>

namespace stowpocket {

MountChanges changesBetween(Mounts before, Mounts after) {
    std::ranges::sort(before);
    std::ranges::sort(after);
    return {.mounted = !std::ranges::includes(before, after), .unmounted = !std::ranges::includes(after, before)};
}

}  // namespace stowpocket
