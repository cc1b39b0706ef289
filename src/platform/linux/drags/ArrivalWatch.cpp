// SPDX-License-Identifier: MIT
#include "platform/linux/drags/ArrivalWatch.h"

#include <array>
#include <sys/inotify.h>

namespace stowpocket {

ArrivalWatch::ArrivalWatch(const FileURL& folder, std::function<void()> written)
    : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), written_(std::move(written)) {
    if (!events_.isOpen() ||
        ::inotify_add_watch(events_.get(), folder.path().c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(events_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { takeEvents(); });
}

void ArrivalWatch::takeEvents() {
    alignas(inotify_event) std::array<char, 4096> ignored{};
    while (::read(events_.get(), ignored.data(), ignored.size()) > 0) {
    }
    written_();
}

}  // namespace stowpocket
