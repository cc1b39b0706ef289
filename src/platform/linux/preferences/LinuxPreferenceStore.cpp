// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/LinuxPreferenceStore.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"
#include "platform/linux/preferences/PropertyList.h"
#include "services/Dispatch.h"

#include <QLoggingCategory>

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(preferencesLog, "stowpocket.preferences")

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
    // Without O_NONBLOCK a named pipe at this path would keep the program from starting.
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

/// Renames without ever replacing an earlier file. Not every file system supports this directly.
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

std::optional<PropertyValue::Dictionary> valuesIn(const std::string& contents) {
    const std::optional<PropertyValue> values = parsePropertyList(contents);
    const PropertyValue::Dictionary* const dictionary = values ? values->dictionary() : nullptr;
    return dictionary == nullptr ? std::nullopt : std::optional(*dictionary);
}

/// For the user, who knows disks and folders.
std::string problemOf(const std::error_code& error) {
    if (error == std::errc::no_space_on_device || error.value() == EDQUOT)
        return "the disk is full";
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
        error == std::errc::read_only_file_system)
        return "the folder of the settings cannot be written to";
    return error.message();
}

using namespace std::chrono_literals;

/// Some programs move a file away before they write the new one.
constexpr auto replacementTime = 1000ms;

}  // namespace

/// The earlier version does not replace a file that is missing: the user may have removed it.
PreferenceFile::Values PreferenceFile::read() {
    removeUnfinishedReplacements(path_);
    const bool wasThere = isThere();
    std::optional<Values> values = readFile();
    if (!values && wasThere)
        values = valuesIn(readBounded(previousPath(), maxPropertyListSize).contents);
    contents_ = values.value_or(Values());
    return contents_;
}

/// None if there is nothing to read. A damaged file has been moved out of the way then.
std::optional<PreferenceFile::Values> PreferenceFile::readFile() {
    seen_ = version();
    const ReadResult result = readBounded(path_, maxPropertyListSize);
    isUnreadable_ = result.finding == Finding::unreadable;
    if (isUnreadable_)
        warnOnce("cannot be read (" + result.error.message() + "); changes are not kept until it can");
    if (isUnreadable_ || result.finding == Finding::absent)
        return std::nullopt;
    std::optional<Values> values = valuesIn(result.contents);
    if (!values) {
        setAside();
        seen_ = version();
    }
    return values;
}

/// The earlier version is put back first, so that a later failure cannot lose it.
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
    if (!isAside)
        return warnOnce("is damaged and cannot be set aside (" + lastError().message() + "); changes are not kept");
    const bool hasPrevious = ::link(previousPath().c_str(), file.c_str()) == 0;
    warnOnce("is damaged; it was set aside as " + aside + " and " +
             (hasPrevious ? "the version before it is used" : "defaults are used"));
}

bool PreferenceFile::isThere() {
    struct stat status {};
    return ::lstat(linkTarget(path_).c_str(), &status) == 0 || errno != ENOENT;
}

PreferenceFile::Saved PreferenceFile::save(const Values& base, const Values& values) {
    if (const std::optional<Version> now = version(); now && (isUnreadable_ || now != seen_)) {
        if (std::optional<Values> theirs = readFile())
            contents_ = std::move(*theirs);
    }
    if (isUnreadable_ && isThere())
        return {"the file of the settings cannot be read"};
    isUnreadable_ = false;
    Values merged = mergedValues(base, values, contents_);
    static_cast<void>(makeFolders(parentFolder(linkTarget(path_))));
    if (const std::error_code error =
            replaceFile(path_, writePropertyList(merged), Durability::power, previousPath())) {
        warnOnce("cannot be written (" + error.message() + ")");
        return {problemOf(error)};
    }
    hasWarned_ = false;
    contents_ = merged;
    seen_ = version();
    return {std::nullopt, std::move(merged)};
}

std::optional<PreferenceFile::Version> PreferenceFile::version() const {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0)
        return std::nullopt;
    return Version{status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::string PreferenceFile::previousPath() const {
    return linkTarget(path_) + ".previous";
}

void PreferenceFile::warnOnce(const std::string& what) {
    if (std::exchange(hasWarned_, true))
        return;
    qCWarning(preferencesLog, "the preference file %s %s", path_.c_str(), what.c_str());
}

LinuxPreferenceStore::LinuxPreferenceStore(Dispatch& dispatch, const std::string& path)
    : SavedPreferenceStore(dispatch, std::make_shared<PreferenceFile>(path)),
      dispatch_(dispatch),
      watch_(path, [this] {
          writingAgain_ = dispatch_.after(replacementTime, [this] {
              saveAgain();
              whenSaved([this](const std::optional<std::string>&) { watch_.begin(); });
          });
      }) {}

std::optional<std::string> LinuxPreferenceStore::defaultPath() {
    std::optional<std::string> folder = configHome();
    return folder ? std::optional(folder->append("/stowpocket/preferences.plist")) : std::nullopt;
}

}  // namespace stowpocket
