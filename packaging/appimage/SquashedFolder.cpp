// SPDX-License-Identifier: MIT
#include "SquashedFolder.h"

extern "C" {
#include <squashfuse.h>
}

#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

namespace stowpocket {
namespace {

constexpr std::size_t pieceSize = std::size_t{128} << 10u;
constexpr mode_t permissions = 0777;
constexpr mode_t userMayWrite = 0200;
constexpr mode_t userMayAll = 0700;

/// One file after another out of the file system, as long as all goes well.
class Unpacking {
public:
    Unpacking(int image, std::size_t offset) : isOpen_(sqfs_init(&system_, image, offset) == SQFS_OK) {}
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;
    ~Unpacking() {
        if (isOpen_)
            sqfs_destroy(&system_);
    }

    std::string into(const std::string& path) {
        sqfs_traverse walk{};
        if (!isOpen_ || sqfs_traverse_open(&walk, &system_, sqfs_inode_root(&system_)) != SQFS_OK)
            return damaged;
        std::string problem = ::mkdir(path.c_str(), userMayAll) == 0 ? std::string() : problemWith(path);
        sqfs_err error = SQFS_OK;
        while (problem.empty() && sqfs_traverse_next(&walk, &error)) {
            if (!walk.dir_end)
                problem = unpack(sqfs_dentry_inode(&walk.entry), path + '/' + walk.path);
        }
        sqfs_traverse_close(&walk);
        return problem.empty() && error != SQFS_OK ? damaged : problem;
    }

private:
    static constexpr auto damaged = "the file is damaged";

    static std::string problemWith(const std::string& path) { return path + ": " + std::strerror(errno); }

    std::string unpack(sqfs_inode_id id, const std::string& path) {
        sqfs_inode inode{};
        if (sqfs_inode_get(&system_, &inode, id) != SQFS_OK)
            return damaged;
        const mode_t mode = inode.base.mode & permissions;
        if (S_ISDIR(inode.base.mode))
            return ::mkdir(path.c_str(), mode | userMayAll) == 0 ? std::string() : problemWith(path);
        if (S_ISLNK(inode.base.mode))
            return unpackLink(inode, path);
        return S_ISREG(inode.base.mode) ? unpackFile(inode, path, mode | userMayWrite) : damaged;
    }

    std::string unpackLink(sqfs_inode& inode, const std::string& path) {
        std::array<char, PATH_MAX> target{};
        std::size_t size = target.size();
        if (sqfs_readlink(&system_, &inode, target.data(), &size) != SQFS_OK)
            return damaged;
        return ::symlink(target.data(), path.c_str()) == 0 ? std::string() : problemWith(path);
    }

    std::string unpackFile(sqfs_inode& inode, const std::string& path, mode_t mode) {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        std::string problem = file < 0 ? problemWith(path) : std::string();
        const auto end = static_cast<sqfs_off_t>(inode.xtra.reg.file_size);
        for (sqfs_off_t at = 0; problem.empty() && at < end;) {
            sqfs_off_t size = pieceSize;
            if (sqfs_read_range(&system_, &inode, at, &size, piece_.data()) != SQFS_OK || size <= 0)
                problem = damaged;
            else if (::write(file, piece_.data(), static_cast<std::size_t>(size)) != size)
                problem = problemWith(path);
            at += size;
        }
        if (file >= 0 && ::close(file) != 0 && problem.empty())
            problem = problemWith(path);
        return problem;
    }

    sqfs system_{};
    const bool isOpen_;
    std::array<char, pieceSize> piece_{};
};

}  // namespace

std::string unpackSquashedFolder(const std::string& image, std::size_t offset, const std::string& path) {
    const int file = ::open(image.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return std::strerror(errno);
    std::string problem = Unpacking(file, offset).into(path);
    ::close(file);
    return problem;
}

void removeFolder(const std::string& path) {
    constexpr int openFolders = 16;
    const auto removeOne = [](const char* name, const struct stat*, int, FTW*) { return std::remove(name); };
    ::nftw(path.c_str(), removeOne, openFolders, FTW_DEPTH | FTW_PHYS);
}

}  // namespace stowpocket
