// SPDX-License-Identifier: MIT
#include "platform/linux/storage/PreferenceFile.h"

#include "platform/linux/storage/DurableFile.h"
#include "platform/linux/storage/FileDescriptor.h"
#include "platform/linux/storage/Folders.h"
#include "platform/linux/storage/PropertyList.h"

#include <QtGlobal>

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

namespace stowpocket {
namespace {

enum class Finding { absent, unreadable, tooLarge, contents };

struct ReadResult {
    Finding finding = Finding::absent;
    std::string contents;
    std::error_code error;
};

ReadResult unreadable() {
    return {errno == ENOENT ? Finding::absent : Finding::unreadable, {}, lastError()};
}

ReadResult readBounded(const std::string& path, std::size_t maxSize) {
    // Without O_NONBLOCK a named pipe in this place would keep the program from starting.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return unreadable();
    if (!S_ISREG(status.st_mode))
        return {Finding::unreadable, {}, std::make_error_code(std::errc::invalid_argument)};
    if (static_cast<std::uintmax_t>(status.st_size) > maxSize)
        return {Finding::tooLarge, {}, {}};
    std::string contents(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < contents.size()) {
        const ssize_t got = ::read(file.get(), contents.data() + length, contents.size() - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return unreadable();
        if (got == 0)
            break;
        length += static_cast<std::size_t>(got);
    }
    contents.resize(length);
    return {Finding::contents, std::move(contents), {}};
}

std::string localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &parts);
    return {text.data(), length};
}

/// Renames without ever covering an earlier file. Not every file system can refuse to by itself.
bool renameToNewName(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (::access(to.c_str(), F_OK) == 0) {
        errno = EEXIST;
        return false;
    }
    return std::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

PropertyValue::Dictionary PreferenceFile::read() {
    removeUnfinishedReplacements(path_);
    const ReadResult result = readBounded(path_, maxPropertyListSize);
    if (result.finding == Finding::absent)
        return {};
    if (result.finding == Finding::unreadable) {
        isUnreadable_ = true;
        warnOnce("cannot be read (" + result.error.message() + "); changes are not kept until it can");
        return {};
    }
    const std::optional<PropertyValue> values = parsePropertyList(result.contents);
    if (values && values->dictionary() != nullptr)
        return *values->dictionary();
    setAside();
    return {};
}

void PreferenceFile::setAside() {
    constexpr int maxAttempts = 100;
    const std::string file = linkTarget(path_);
    const std::string name = file + ".damaged-" + localTime();
    std::string aside = name;
    bool isAside = renameToNewName(file, aside);
    for (int attempt = 2; !isAside && errno == EEXIST && attempt <= maxAttempts; ++attempt) {
        aside = name + '-' + std::to_string(attempt);
        isAside = renameToNewName(file, aside);
    }
    isUnreadable_ = !isAside;
    if (isAside)
        warnOnce("is damaged; it was set aside as " + aside + " and defaults are used");
    else
        warnOnce("is damaged and cannot be set aside (" + lastError().message() + "); changes are not kept");
}

bool PreferenceFile::mustNotBeTouched() const {
    struct stat status {};
    return isUnreadable_ && (::lstat(path_.c_str(), &status) == 0 || errno != ENOENT);
}

void PreferenceFile::write(const PropertyValue::Dictionary& values, std::uint64_t generation) {
    if (generation <= writtenGeneration_ || mustNotBeTouched())
        return;
    isUnreadable_ = false;
    static_cast<void>(makeFolders(parentFolder(linkTarget(path_))));
    if (const std::error_code error = replaceFile(path_, writePropertyList(values))) {
        warnOnce("cannot be written (" + error.message() + ")");
        return;
    }
    hasWarned_ = false;
    writtenGeneration_ = generation;
}

void PreferenceFile::warnOnce(const std::string& what) {
    if (std::exchange(hasWarned_, true))
        return;
    qWarning("stowpocket: the preference file %s %s", path_.c_str(), what.c_str());
}

}  // namespace stowpocket
