// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One mounted file system: the kernel's number for the mount, and where it stands.
struct MountPoint {
    std::uint64_t id = 0;
    std::string path;

    friend auto operator<=>(const MountPoint&, const MountPoint&) = default;
};

/// Reads the form of /proc/self/mountinfo (proc(5)), sorted; lines that do not have it are left out.
[[nodiscard]] std::vector<MountPoint> mountPoints(std::string_view mountInfo);

struct MountChanges {
    bool mounted = false;
    bool unmounted = false;
};

/// What happened between two sorted lists. A mount that moved was unmounted and mounted; one whose options changed
/// did neither.
[[nodiscard]] MountChanges changesBetween(const std::vector<MountPoint>& before,
                                          const std::vector<MountPoint>& after);

}  // namespace stowpocket
