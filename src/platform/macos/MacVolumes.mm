// SPDX-License-Identifier: MIT
#include "platform/macos/MacStorage.h"
#include "platform/macos/MacSystem.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <sys/mount.h>
#include <vector>

namespace stowpocket {
namespace {

class MacVolumes : public Volumes {
public:
    MacVolumes()
        : mountObserver_(observe(NSWorkspaceDidMountNotification, didMount_)),
          unmountObserver_(observe(NSWorkspaceDidUnmountNotification, didUnmount_)) {}
    ~MacVolumes() override {
        [center() removeObserver:mountObserver_];
        [center() removeObserver:unmountObserver_];
    }
    MacVolumes(const MacVolumes&) = delete;
    MacVolumes& operator=(const MacVolumes&) = delete;

    [[nodiscard]] Signal<>& didMount() override { return *didMount_; }
    [[nodiscard]] Signal<>& didUnmount() override { return *didUnmount_; }

private:
    /// Only the workspace's own notification centre posts these notifications.
    static NSNotificationCenter* center() { return NSWorkspace.sharedWorkspace.notificationCenter; }

    /// A notification may wait in the main queue while this object is destroyed, so the block must not use it.
    static id<NSObject> observe(NSNotificationName name, std::weak_ptr<Signal<>> signal) {
        return [center() addObserverForName:name
                                     object:nil
                                      queue:NSOperationQueue.mainQueue
                                 usingBlock:^(NSNotification*) {
                                   if (const auto alive = signal.lock())
                                       alive->emit();
                                 }];
    }

    const std::shared_ptr<Signal<>> didMount_ = std::make_shared<Signal<>>();
    const std::shared_ptr<Signal<>> didUnmount_ = std::make_shared<Signal<>>();
    const id<NSObject> mountObserver_;
    const id<NSObject> unmountObserver_;
};

using Mount = struct statfs;

/// Returns what the kernel remembers, without asking any file system.
std::vector<Mount> mounts() {
    constexpr int spare = 8;  // for mounts added between the two calls
    const int expected = getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<Mount> mounts(static_cast<std::size_t>(std::max(expected, 0) + spare));
    const int found = getfsstat(mounts.data(), static_cast<int>(mounts.size() * sizeof(Mount)), MNT_NOWAIT);
    mounts.resize(static_cast<std::size_t>(std::max(found, 0)));
    return mounts;
}

bool isBelow(std::string_view path, std::string_view folder) {
    return folder == "/" ||
           (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/'));
}

}  // namespace

std::unique_ptr<Volumes> makeMacVolumes() {
    return std::make_unique<MacVolumes>();
}

std::optional<std::string> remoteMountOn(const std::string& path) {
    for (const Mount& mount : mounts()) {
        const std::string_view point(static_cast<const char*>(mount.f_mntonname));
        if ((mount.f_flags & MNT_LOCAL) == 0 && isBelow(path, point))
            return std::string(point);
    }
    return std::nullopt;
}

}  // namespace stowpocket
