// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/MountInfo.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

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

/// Whether a file system of that type asks another machine or program, which may never answer.
[[nodiscard]] bool mayHang(std::string_view fileSystemType);

/// The first mount on the way to `path` that may hang; none when the whole way is local. Follows links on the way,
/// without touching what lies behind such a mount.
[[nodiscard]] std::optional<std::string> hangingMountOn(const Mounts& mounts, const std::string& path);

}  // namespace stowpocket
