// SPDX-License-Identifier: MIT
#include "platform/linux/files/Folders.h"

#include <sys/stat.h>
#include <unistd.h>

namespace stowpocket {
namespace {

constexpr mode_t userOnly = 0700;

bool isFolderOfUser(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

}  // namespace

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
