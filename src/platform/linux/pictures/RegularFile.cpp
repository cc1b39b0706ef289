// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/RegularFile.h"

#include "platform/linux/files/DurableFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// statfs(2) lists these without naming them in a header.
constexpr std::uint32_t cifsMagic = 0xFF534D42;
constexpr std::uint32_t fuseMagic = 0x65735546;
constexpr std::array<std::uint32_t, 8> networkMagics{
    NFS_SUPER_MAGIC,  cifsMagic,        SMB_SUPER_MAGIC, SMB2_SUPER_MAGIC,
    CODA_SUPER_MAGIC, CEPH_SUPER_MAGIC, AFS_SUPER_MAGIC, V9FS_MAGIC,
};

}  // namespace

std::optional<FileState> RegularFile::stateAt(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileState{status.st_dev, status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size};
}

std::optional<RegularFile> RegularFile::open(const std::string& path) {
    // The type is checked before opening, because opening a device may have an effect, and again afterwards, because
    // a pipe may have replaced the file meanwhile. Without O_NONBLOCK that pipe would wait for a writer.
    if (!stateAt(path))
        return std::nullopt;
    FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return RegularFile(std::move(descriptor), status.st_size);
}

Bytes RegularFile::head(std::size_t limit) const {
    Bytes bytes(std::min(limit, static_cast<std::size_t>(size_)));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count =
            ::pread(descriptor(), bytes.data() + filled, bytes.size() - filled, static_cast<off_t>(filled));
        if (count <= 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

bool RegularFile::isOnNetwork() const {
    struct statfs system {};
    struct stat status {};
    if (::fstatfs(descriptor(), &system) != 0 || ::fstat(descriptor(), &status) != 0)
        return true;
    const auto magic = static_cast<std::uint32_t>(system.f_type);
    // FUSE is used for local disks (with a block device) as well as for servers (without one).
    if (magic == fuseMagic)
        return ::major(status.st_dev) == 0;
    return std::ranges::find(networkMagics, magic) != networkMagics.end();
}

std::optional<mode_t> cachedFileMode(const std::string& path) {
    open_how how{};
    how.flags = O_PATH | O_CLOEXEC;
    how.resolve = RESOLVE_CACHED;
    // The C library does not have a function for this call yet.
    const FileDescriptor file(static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how)));
    struct statx status {};
    if (!file.isOpen() ||
        ::statx(file.get(), "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_TYPE | STATX_MODE, &status) != 0)
        return std::nullopt;
    return status.stx_mode;
}

}  // namespace stowpocket
