// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/MountInfo.h"

namespace stowpocket {

struct MountChanges {
    bool mounted = false;
    bool unmounted = false;
};

/// What happened between two moments. A mount that moved was unmounted and mounted; one whose options or place in
/// the list changed did neither.
[[nodiscard]] MountChanges changesBetween(Mounts before, Mounts after);

}  // namespace stowpocket
