// SPDX-License-Identifier: MIT
#include "platform/linux/files/PosixFileManager.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "platform/posix/FileProbe.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace stowpocket {
namespace {

constexpr mode_t permissionBits = 0777;

/// A name in an open folder.
struct Place {
    int folder;
    const char* name;
};

enum class Progress { done, failed, unsupported };

/// Copies within the kernel, sharing blocks if the file system can.
Progress copyInKernel(int from, int to) {
    constexpr std::size_t atOnce = std::size_t{1} << 30;
    for (bool isFirst = true;; isFirst = false) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, atOnce, 0);
        if (copied < 0)
            return isFirst && errno != ENOSPC && errno != EIO ? Progress::unsupported : Progress::failed;
        // Files whose contents the kernel generates while they are read (in /proc, on some FUSE mounts) have nothing
        // to copy.
        if (copied == 0)
            return isFirst ? Progress::unsupported : Progress::done;
    }
}

bool copyThroughMemory(int from, int to) {
    std::array<char, 65536> part;
    for (;;) {
        const ssize_t got = ::read(from, part.data(), part.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0;
        if (writeAll(to, {part.data(), static_cast<std::size_t>(got)}))
            return false;
    }
}

bool copyFile(int from, mode_t mode, Place to) {
    const FileDescriptor copy(
        ::openat(to.folder, to.name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!copy.isOpen())
        return false;
    const Progress progress = copyInKernel(from, copy.get());
    const bool isWhole =
        progress == Progress::done || (progress == Progress::unsupported && copyThroughMemory(from, copy.get()));
    // On a file system without permissions the copy is complete without them.
    static_cast<void>(::fchmod(copy.get(), mode & permissionBits));
    if (!isWhole)
        removeTreeAt(to.folder, to.name);
    return isWhole;
}

bool copyLink(Place from, Place to) {
    std::array<char, PATH_MAX> text{};
    const ssize_t length = ::readlinkat(from.folder, from.name, text.data(), text.size() - 1);
    return length > 0 && ::symlinkat(text.data(), to.folder, to.name) == 0;
}

bool copyEntry(Place from, Place to, int depth);

bool copyEntries(DirectoryStream from, int to, int depth) {
    if (!from.isOpen())
        return false;
    while (const dirent* const entry = from.next()) {
        if (!copyEntry({from.folder(), entry->d_name}, {to, entry->d_name}, depth + 1))
            return false;
    }
    return !from.hasFailed();
}

bool copyFolder(FileDescriptor from, mode_t mode, Place to, int depth) {
    if (depth >= maxTreeDepth || ::mkdirat(to.folder, to.name, S_IRWXU) != 0)
        return false;
    const FileDescriptor copy(::openat(to.folder, to.name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const bool isWhole = copy.isOpen() && copyEntries(DirectoryStream(std::move(from)), copy.get(), depth);
    if (isWhole)
        static_cast<void>(::fchmod(copy.get(), mode & permissionBits));
    else
        removeTreeAt(to.folder, to.name);
    return isWhole;
}

/// `from` is opened without waiting, because the file may have become a pipe meanwhile.
bool copyOpened(FileDescriptor from, Place to, int depth) {
    struct stat status {};
    if (!from.isOpen() || ::fstat(from.get(), &status) != 0)
        return false;
    if (S_ISREG(status.st_mode))
        return copyFile(from.get(), status.st_mode, to);
    return S_ISDIR(status.st_mode) && copyFolder(std::move(from), status.st_mode, to, depth);
}

bool copyEntry(Place from, Place to, int depth) {
    struct stat status {};
    if (::fstatat(from.folder, from.name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    if (S_ISLNK(status.st_mode))
        return copyLink(from, to);
    if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
        return false;
    return copyOpened(
        FileDescriptor(::openat(from.folder, from.name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC)), to, depth);
}

bool isInside(const std::string& folder, const std::string& outer) {
    const std::unique_ptr<char, decltype(&std::free)> inner(::realpath(folder.c_str(), nullptr), &std::free);
    const std::unique_ptr<char, decltype(&std::free)> around(::realpath(outer.c_str(), nullptr), &std::free);
    return inner && around && (std::string(inner.get()) + '/').starts_with(std::string(around.get()) + '/');
}

bool isGone(int result) {
    return result == 0 || errno == ENOENT;
}

/// Uses open folders, so that nobody can insert a link between looking and removing.
bool removeEntry(int folder, const char* name, int depth) {
    if (isGone(::unlinkat(folder, name, 0)) || errno == ENOTDIR)  // a file where its path wants a folder
        return true;
    if (errno != EISDIR && errno != EPERM)
        return false;
    if (isGone(::unlinkat(folder, name, AT_REMOVEDIR)))
        return true;
    DirectoryStream entries(FileDescriptor(::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)));
    if (depth >= maxTreeDepth || !entries.isOpen())
        return false;
    while (const dirent* const entry = entries.next()) {
        if (!removeEntry(entries.folder(), entry->d_name, depth + 1))
            return false;
    }
    return isGone(::unlinkat(folder, name, AT_REMOVEDIR));
}

/// None if there is nothing or access is denied. An automount point is not mounted for this.
std::optional<struct statx> status(const std::string& path, int flags = 0) {
    struct statx found {};
    if (::statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT | flags, STATX_BASIC_STATS, &found) != 0)
        return std::nullopt;
    return found;
}

/// For a link, its own attributes, as on macOS.
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

bool copyTree(const std::string& from, const std::string& to) {
    // Opening a device may already have an effect, so its type is checked first.
    struct stat status {};
    if (::stat(from.c_str(), &status) != 0 || (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)))
        return false;
    // A folder copied into itself would grow while it is read.
    const std::string folder = parentFolder(to);
    if (S_ISDIR(status.st_mode) && isInside(folder, from))
        return false;
    const FileDescriptor target(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::string name = to.substr(to.rfind('/') + 1);
    return target.isOpen() && copyOpened(FileDescriptor(::open(from.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)),
                                         {target.get(), name.c_str()}, 0);
}

bool removeTreeAt(int folder, const char* name) {
    return removeEntry(folder, name, 0);
}

bool removeTree(const std::string& path) {
    return removeEntry(AT_FDCWD, path.c_str(), 0);
}

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
