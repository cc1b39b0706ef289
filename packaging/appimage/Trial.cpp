// SPDX-License-Identifier: MIT
#include "Trial.h"

#include "UnpackedFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace stowpocket {
namespace {

/// As the program names them: `replacedPath` and `startedPath` in src/platform/linux/updates/InstalledProgram.h.
std::string replacedPath(const std::string& file) {
    return file + ".old";
}
std::string startedPath(const std::string& file) {
    const std::size_t name = file.rfind('/') + 1;
    return file.substr(0, name) + '.' + file.substr(name) + ".started";
}

/// False also when both names are of one file: an installation was cut off before the new version had its place.
bool isOnTrial(const std::string& file, const std::string& replaced) {
    struct stat now {};
    struct stat before {};
    if (::stat(file.c_str(), &now) != 0 || ::lstat(replaced.c_str(), &before) != 0)
        return false;
    return S_ISREG(before.st_mode) && (now.st_dev != before.st_dev || now.st_ino != before.st_ino);
}

[[noreturn]] void becomeReplaced(const std::string& file, char** argv) {
    std::fprintf(stderr, "%s: the new version did not start, so the one before it is back\n", file.c_str());
    if (::rename(replacedPath(file).c_str(), file.c_str()) == 0) {
        ::unlink(startedPath(file).c_str());
        ::execv(file.c_str(), argv);
    }
    fail(file, std::strerror(errno));
}

}  // namespace

void beginTrial(const std::string& file, char** argv) {
    if (!isOnTrial(file, replacedPath(file)))
        return;
    const bool isCommand = argv[0] != nullptr && argv[1] != nullptr;
    const int flags = O_RDWR | O_NOFOLLOW | (isCommand ? O_CLOEXEC : O_CREAT);
    const int mark = ::open(startedPath(file).c_str(), flags, S_IRUSR | S_IWUSR);
    if (mark < 0)
        return;
    if (::flock(mark, LOCK_EX | LOCK_NB) != 0) {
        ::close(mark);  // it runs
        return;
    }
    struct stat status {};
    if (::fstat(mark, &status) == 0 && status.st_size > 0) {
        ::close(mark);
        becomeReplaced(file, argv);
    }
    // Otherwise it stays open for what this process becomes, whose end lets go of it.
    if (isCommand || ::write(mark, "1", 1) != 1)
        ::close(mark);
}

}  // namespace stowpocket
