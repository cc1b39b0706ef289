// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/storage/FileDescriptor.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

struct Mount {
    std::uint64_t id = 0;
    std::string point;
    std::string type;
};
using Mounts = std::vector<Mount>;

/// The mounted file systems as this process sees them, read again only when the kernel says that they changed. Any
/// thread.
class MountTable {
public:
    MountTable();
    /// In the order of mounting; empty where there is no /proc.
    [[nodiscard]] std::shared_ptr<const Mounts> mounts();

private:
    std::mutex mutex_;
    const FileDescriptor file_;
    std::shared_ptr<const Mounts> mounts_;
};

/// Reads the form of /proc/self/mountinfo (proc(5)); lines that do not have it are left out.
[[nodiscard]] Mounts parseMounts(std::string_view text);

/// Whether a file system of that type asks another machine or program, which may never answer.
[[nodiscard]] bool mayHang(std::string_view fileSystemType);

/// The first mount on the way to `path` that may hang; none when the whole way is local. Follows links on the way,
/// without touching what lies behind such a mount.
[[nodiscard]] std::optional<std::string> hangingMountOn(const Mounts& mounts, const std::string& path);

}  // namespace stowpocket
