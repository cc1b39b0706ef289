// SPDX-License-Identifier: MIT
#include "platform/linux/files/DurableFile.h"

#include "platform/linux/files/Folders.h"
#include "platform/linux/files/PosixFileManager.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdio>
#include <utility>

namespace stowpocket {
namespace {

constexpr mode_t userOnly = 0600;
constexpr std::string_view unfinishedSuffix = ".new";

/// The prefix of the names of unfinished files; the process id of the writer follows.
std::string unfinishedPrefix(const std::string& path) {
    return '.' + path.substr(path.rfind('/') + 1) + '.';
}

std::error_code writeNewFile(const std::string& path, std::string_view bytes, Durability durability) {
    const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, userOnly));
    if (!file.isOpen())
        return lastError();
    if (const std::error_code error = writeAll(file.get(), bytes))
        return error;
    const bool isSafe = durability == Durability::program || ::fsync(file.get()) == 0;
    return isSafe ? std::error_code() : lastError();
}

bool isRunning(pid_t process) {
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

/// The writer of an unfinished file, taken from the name of the file; 0 if it is not an unfinished file.
pid_t writerOf(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix) || !name.ends_with(unfinishedSuffix) ||
        name.size() <= prefix.size() + unfinishedSuffix.size())
        return 0;
    name.remove_prefix(prefix.size());
    name.remove_suffix(unfinishedSuffix.size());
    pid_t process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    return error == std::errc() && end == name.data() + name.size() && process > 0 ? process : 0;
}

}  // namespace

std::error_code replaceFile(const std::string& path, std::string_view bytes, Durability durability,
                            const std::string& previous) {
    const std::string target = linkTarget(path);
    const std::string folder = parentFolder(target);
    std::string unfinished = folder + '/' + unfinishedPrefix(target);
    unfinished.append(std::to_string(::getpid())).append(unfinishedSuffix);
    ::unlink(unfinished.c_str());
    std::error_code error = writeNewFile(unfinished, bytes, durability);
    if (!error && !previous.empty()) {
        ::unlink(previous.c_str());
        [[maybe_unused]] const int result = ::link(target.c_str(), previous.c_str());
    }
    if (!error && std::rename(unfinished.c_str(), target.c_str()) != 0)
        error = lastError();
    if (error) {
        ::unlink(unfinished.c_str());
        return error;
    }
    if (durability == Durability::program)
        return {};
    // The new file is in place already. If the folder does not reach the disk, a power failure brings the old file
    // back.
    const FileDescriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        static_cast<void>(::fsync(directory.get()));
    return {};
}

void removeUnfinishedReplacements(const std::string& path) {
    const std::string target = linkTarget(path);
    const std::string prefix = unfinishedPrefix(target);
    const std::string folder = parentFolder(target);
    DirectoryStream entries(FileDescriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
    while (const dirent* const entry = entries.isOpen() ? entries.next() : nullptr) {
        const pid_t writer = writerOf(entry->d_name, prefix);
        if (writer != 0 && writer != ::getpid() && !isRunning(writer))
            ::unlinkat(entries.folder(), entry->d_name, 0);
    }
}

std::string linkTarget(const std::string& path) {
    constexpr int maxLinks = 40;  // the kernel's own limit
    std::string target = path;
    for (int links = 0; links < maxLinks; ++links) {
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length = ::readlink(target.c_str(), buffer.data(), buffer.size());
        if (length <= 0)
            return target;
        std::string next(buffer.data(), static_cast<std::size_t>(length));
        if (!next.starts_with('/'))
            next.insert(0, parentFolder(target).append("/"));
        target = std::move(next);
    }
    return path;
}

std::error_code writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return lastError();
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

}  // namespace stowpocket
