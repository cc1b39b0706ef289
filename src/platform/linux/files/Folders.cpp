// SPDX-License-Identifier: MIT
#include "platform/linux/files/Folders.h"

#include "platform/linux/files/DurableFile.h"

#include <QSocketNotifier>

#include <pwd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
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

constexpr std::uint32_t folderGone = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t entryGone = IN_DELETE | IN_MOVED_FROM;

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

FileWatch::FileWatch(const std::string& path, std::function<void()> onGone)
    : folder_(parentFolder(linkTarget(path))),
      name_(linkTarget(path).substr(linkTarget(path).rfind('/') + 1)),
      onGone_(std::move(onGone)),
      events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!events_.isOpen())
        return;
    notifier_ = std::make_unique<QSocketNotifier>(events_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readEvents(); });
    begin();
}

FileWatch::~FileWatch() = default;

void FileWatch::begin() {
    if (events_.isOpen())
        ::inotify_add_watch(events_.get(), folder_.c_str(), folderGone | entryGone | IN_ONLYDIR);
}

void FileWatch::readEvents() {
    std::array<char, sizeof(inotify_event) + NAME_MAX + 1> buffer{};
    bool isGone = false;
    for (;;) {
        const ssize_t length = ::read(events_.get(), buffer.data(), buffer.size());
        if (length <= 0)
            break;
        for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* const name = buffer.data() + at + sizeof event;
            at += sizeof event + event.len;
            isGone = isGone || (event.mask & folderGone) != 0 || (event.len > 0 && name_ == name);
        }
    }
    if (isGone)
        onGone_();
}

}  // namespace stowpocket
