// SPDX-License-Identifier: MIT
#include "UnpackedFolder.h"

#include "SquashedFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace stowpocket {
namespace {

constexpr mode_t userOnly = 0700;
constexpr mode_t othersMayWrite = 022;
constexpr int cannotRun = 127;
/// A folder that is being filled, or whose filling was cut off.
constexpr auto unfinished = ".new";
constexpr auto lockName = "lock";

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// The folder that is for all versions, and for this user only.
std::string cacheFolder(const Image& image) {
    std::string path = environment("XDG_CACHE_HOME");
    if (!path.starts_with('/')) {
        path = environment("HOME") + "/.cache";
        if (!path.starts_with('/') || path == "/.cache")
            fail(image.file, "HOME does not say where your home folder is");
    }
    for (const char* const part : {"", "/stowpocket", "/AppImage"})
        ::mkdir((path += part).c_str(), userOnly);
    // The program compares this with the place that the kernel tells, which has no links.
    char* const real = ::realpath(path.c_str(), nullptr);
    struct stat status {};
    if (real == nullptr || ::stat(real, &status) != 0)
        fail(image.file, path + ": " + std::strerror(errno));
    if (status.st_uid != ::geteuid() || (status.st_mode & othersMayWrite) != 0)
        fail(image.file, path + ": others may write there");
    path = real;
    std::free(real);
    return path;
}

/// Removes what is neither named nor in use.
void removeOthers(const std::string& folder, const std::string& kept) {
    DIR* const listing = ::opendir(folder.c_str());
    if (listing == nullptr)
        return;
    while (const dirent* const entry = ::readdir(listing)) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || name == lockName || name == kept)
            continue;
        const std::string path = folder + '/' + name;
        const int held = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (held >= 0 && ::flock(held, LOCK_EX | LOCK_NB) == 0)
            removeFolder(path);
        ::close(held);
    }
    ::closedir(listing);
}

void checkRoom(const Image& image, const std::string& folder) {
    struct statvfs room {};
    if (::statvfs(folder.c_str(), &room) != 0 || room.f_bavail >= image.size / room.f_frsize + 1)
        return;
    constexpr std::uint64_t megabyte = 1000 * 1000;
    fail(image.file,
         folder + ": there is no room for the " + std::to_string(image.size / megabyte) + " MB that it unpacks");
}

void unpack(const Image& image, const std::string& folder, const std::string& path) {
    checkRoom(image, folder);
    const std::string filled = path + unfinished;
    removeFolder(filled);
    std::string problem = unpackSquashedFolder(image.file, image.offset, filled);
    // All of it must be on the disk before it has the name under which it counts.
    const int held = ::open(filled.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (problem.empty() && (held < 0 || ::syncfs(held) != 0 || ::rename(filled.c_str(), path.c_str()) != 0))
        problem = path + ": " + std::strerror(errno);
    ::close(held);
    if (problem.empty())
        return;
    removeFolder(filled);
    fail(image.file, problem);
}

}  // namespace

std::string unpackedFolder(const Image& image) {
    const std::string folder = cacheFolder(image);
    const std::string path = folder + '/' + image.name;
    const int lock = ::open((folder + '/' + lockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (lock >= 0)
        ::flock(lock, LOCK_EX);
    removeOthers(folder, image.name);
    if (::access((path + "/AppRun").c_str(), X_OK) != 0) {
        removeFolder(path);
        unpack(image, folder, path);
    }
    // Stays open for what this process becomes.
    const int held = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
    if (held >= 0)
        ::flock(held, LOCK_SH);
    ::close(lock);
    return path;
}

void fail(const std::string& image, const std::string& problem) {
    std::fprintf(stderr, "%s: %s\n", image.c_str(), problem.c_str());
    std::exit(cannotRun);
}

}  // namespace stowpocket
