// SPDX-License-Identifier: MIT
#include "platform/linux/files/Folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace stowpocket {
namespace {

std::optional<std::string> absolutePath(const char* text) {
    const std::string_view path = text == nullptr ? "" : text;
    return path.starts_with('/') ? std::optional<std::string>(path) : std::nullopt;
}

std::optional<std::string> baseDirectory(const char* variable, std::string_view belowHome) {
    if (std::optional<std::string> path = absolutePath(std::getenv(variable)))
        return path;
    std::optional<std::string> home = homeFolder();
    return home ? std::optional(home->append(belowHome)) : std::nullopt;
}

constexpr mode_t userOnly = 0700;

bool isFolderOfUser(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

}  // namespace

std::optional<std::string> homeFolder() {
    if (std::optional<std::string> home = absolutePath(std::getenv("HOME")))
        return home;
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return std::nullopt;
    return absolutePath(found->pw_dir);
}

std::optional<std::string> configHome() {
    return baseDirectory("XDG_CONFIG_HOME", "/.config");
}

std::optional<std::string> dataHome() {
    return baseDirectory("XDG_DATA_HOME", "/.local/share");
}

bool makeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        const std::string above = path.substr(0, slash);
        if (::access(above.c_str(), F_OK) != 0)
            ::mkdir(above.c_str(), userOnly);
    }
    ::mkdir(path.c_str(), userOnly);
    return isFolderOfUser(path);
}

std::string parentFolder(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace stowpocket
