// SPDX-License-Identifier: MIT
#include "platform/linux/files/FileWatch.h"

#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/Folders.h"

#include <QSocketNotifier>

#include <sys/inotify.h>

#include <array>
#include <climits>
#include <cstring>

namespace stowpocket {
namespace {

constexpr std::uint32_t folderGone = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t entryGone = IN_DELETE | IN_MOVED_FROM;

}  // namespace

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
