// SPDX-License-Identifier: MIT
#include "platform/linux/files/PosixFileManager.h"

#include "platform/linux/files/BaseDirectories.h"
#include "platform/linux/files/FileTree.h"
#include "platform/linux/files/Folders.h"
#include "platform/posix/FileProbe.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace stowpocket {
namespace {

/// None when there is nothing, or it may not be looked at. An automount point is not mounted just for looking.
std::optional<struct statx> status(const std::string& path, int flags = 0) {
    struct statx found {};
    if (::statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT | flags, STATX_BASIC_STATS, &found) != 0)
        return std::nullopt;
    return found;
}

/// Of a link itself, as on macOS.
std::optional<FileAttributes> attributesOf(const std::string& path) {
    const std::optional<struct statx> found = status(path, AT_SYMLINK_NOFOLLOW);
    if (!found)
        return std::nullopt;
    FileAttributes attributes;
    if ((found->stx_mask & STATX_SIZE) != 0)
        attributes.size = static_cast<std::int64_t>(found->stx_size);
    return attributes;
}

}  // namespace

bool PosixFileManager::fileExists(const FileURL& url) {
    const std::string path = url.path();
    return probe_.ask<bool>(path, [path] { return status(path).has_value(); }).value_or(true);
}

std::optional<FileAttributes> PosixFileManager::attributes(const FileURL& url) {
    using Answer = std::optional<FileAttributes>;
    const std::string path = url.path();
    return probe_.ask<Answer>(path, [path] { return attributesOf(path); }).value_or(FileAttributes{});
}

bool PosixFileManager::createDirectory(const FileURL& url) {
    const std::string path = url.path();
    return probe_.ask<bool>(path, [path] { return makeFolders(path); }).value_or(false);
}

bool PosixFileManager::copyItem(const FileURL& from, const FileURL& to) {
    return copyTree(from.path(), to.path());
}

bool PosixFileManager::removeItem(const FileURL& url) {
    return removeTree(url.path());
}

std::optional<FileURL> PosixFileManager::applicationSupportDirectory() {
    const std::optional<std::string> folder = dataHome();
    return folder ? FileURL::fromPath(*folder) : std::nullopt;
}

std::optional<FileURL> PosixFileManager::homeDirectory() {
    const std::optional<std::string> folder = homeFolder();
    return folder ? FileURL::fromPath(*folder) : std::nullopt;
}

}  // namespace stowpocket
