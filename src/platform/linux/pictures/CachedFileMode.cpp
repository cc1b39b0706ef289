// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/CachedFileMode.h"

#include "platform/linux/files/FileDescriptor.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace stowpocket {

std::optional<mode_t> cachedFileMode(const std::string& path) {
    open_how how{};
    how.flags = O_PATH | O_CLOEXEC;
    how.resolve = RESOLVE_CACHED;
    // The C library has no function for this call yet.
    const FileDescriptor file(static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how)));
    struct statx status {};
    if (!file.isOpen() ||
        ::statx(file.get(), "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_TYPE | STATX_MODE, &status) != 0)
        return std::nullopt;
    return status.stx_mode;
}

}  // namespace stowpocket
