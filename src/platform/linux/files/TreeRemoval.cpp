// SPDX-License-Identifier: MIT
#include "platform/linux/files/DirectoryStream.h"
#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/FileTree.h"

#include <fcntl.h>

#include <cerrno>

namespace stowpocket {
namespace {

bool isGone(int result) {
    return result == 0 || errno == ENOENT;
}

/// Goes by open folders, so that nobody can put a link in the way between looking and removing.
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

}  // namespace

bool removeTreeAt(int folder, const char* name) {
    return removeEntry(folder, name, 0);
}

bool removeTree(const std::string& path) {
    return removeEntry(AT_FDCWD, path.c_str(), 0);
}

}  // namespace stowpocket
