// SPDX-License-Identifier: MIT
#include "platform/linux/files/FileIdentity.h"

#include "platform/linux/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <span>

namespace stowpocket {
namespace {

std::string hexadecimal(std::span<const unsigned char> bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const unsigned char byte : bytes) {
        text += digits[byte >> 4u];
        text += digits[byte & 0x0Fu];
    }
    return text;
}

std::string handleOf(int folder, const char* name) {
    alignas(file_handle) std::array<unsigned char, sizeof(file_handle) + MAX_HANDLE_SZ> buffer{};
    auto* const handle = reinterpret_cast<file_handle*>(buffer.data());
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mountId = 0;
    if (::name_to_handle_at(folder, name, handle, &mountId, 0) != 0)
        return {};
    const std::size_t begin = offsetof(file_handle, handle_type);
    const std::size_t end = sizeof(file_handle) + handle->handle_bytes;
    return hexadecimal(std::span(buffer).subspan(begin, end - begin));
}

FileType typeOf(unsigned mode) {
    if (S_ISREG(mode))
        return FileType::file;
    if (S_ISDIR(mode))
        return FileType::folder;
    return S_ISLNK(mode) ? FileType::link : FileType::other;
}

Moment momentOf(const struct statx_timestamp& time) {
    return {time.tv_sec, time.tv_nsec};
}

}  // namespace

Sighting lookAt(int folder, const char* name, Detail detail) {
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    struct statx found {};
    if (::statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID, &found) != 0) {
        const bool isAbsent = errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG;
        return {isAbsent ? Sighting::Kind::absent : Sighting::Kind::unknown, {}};
    }
    FileIdentity identity{.type = typeOf(found.stx_mode),
                          .inode = {.inode = found.stx_ino, .birth = std::nullopt},
                          .handle = {},
                          .size = static_cast<std::int64_t>(found.stx_size),
                          .modified = momentOf(found.stx_mtime),
                          .device = (std::uint64_t{found.stx_dev_major} << 32u) | found.stx_dev_minor,
                          .mountId = (found.stx_mask & STATX_MNT_ID) != 0 ? found.stx_mnt_id : 0};
    if ((found.stx_mask & STATX_BTIME) != 0)
        identity.inode.birth = momentOf(found.stx_btime);
    if (detail == Detail::handle || !identity.inode.birth)
        identity.handle = handleOf(folder, name);
    return {Sighting::Kind::present, std::move(identity)};
}

bool isSameFile(const FileIdentity& recorded, const FileIdentity& seen) {
    if (recorded.type != seen.type || recorded.inode.inode != seen.inode.inode)
        return false;
    const bool bothHaveHandles = !recorded.handle.empty() && !seen.handle.empty();
    if (bothHaveHandles && recorded.handle != seen.handle)
        return false;
    if (recorded.inode.birth && seen.inode.birth)
        return recorded.inode.birth == seen.inode.birth;
    return bothHaveHandles && recorded.size == seen.size && recorded.modified == seen.modified;
}

std::string volumeIdentifier(const std::string& mountPoint) {
    // FS_IOC_GETFSUUID of newer kernel headers.
    struct VolumeUUID {
        unsigned char length;
        std::array<unsigned char, 16> octets;
    };
    constexpr unsigned long getVolumeUUID = _IOR(0x15, 0, VolumeUUID);
    const FileDescriptor root(::open(mountPoint.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    VolumeUUID uuid{};
    if (!root.isOpen() || ::ioctl(root.get(), getVolumeUUID, &uuid) != 0)
        return {};
    const std::span<const unsigned char> octets(uuid.octets);
    const auto isZero = [](unsigned char octet) { return octet == 0; };
    return std::ranges::all_of(octets, isZero) ? std::string() : hexadecimal(octets);
}

}  // namespace stowpocket
