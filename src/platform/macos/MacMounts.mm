// SPDX-License-Identifier: MIT
#include "platform/macos/MacStorage.h"

#include <sys/mount.h>

#include <algorithm>
#include <vector>

namespace stowpocket {
namespace {

using Mount = struct statfs;

/// What the kernel has in mind, so that no file system is asked.
std::vector<Mount> mounts() {
    constexpr int spare = 8;  // may come in between
    const int expected = getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<Mount> mounts(static_cast<std::size_t>(std::max(expected, 0) + spare));
    const int found = getfsstat(mounts.data(), static_cast<int>(mounts.size() * sizeof(Mount)), MNT_NOWAIT);
    mounts.resize(static_cast<std::size_t>(std::max(found, 0)));
    return mounts;
}

bool isBelow(std::string_view path, std::string_view folder) {
    return folder == "/" ||
           (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
}

}  // namespace

std::optional<std::string> remoteMountOn(const std::string& path) {
    for (const Mount& mount : mounts()) {
        const std::string_view point(static_cast<const char*>(mount.f_mntonname));
        if ((mount.f_flags & MNT_LOCAL) == 0 && isBelow(path, point))
            return std::string(point);
    }
    return std::nullopt;
}

}  // namespace stowpocket
