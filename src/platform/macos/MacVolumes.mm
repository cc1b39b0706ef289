// SPDX-License-Identifier: MIT
#include "platform/macos/MacSystem.h"

#import <AppKit/AppKit.h>

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
    /// Such notifications come from the workspace's own centre only.
    static NSNotificationCenter* center() { return NSWorkspace.sharedWorkspace.notificationCenter; }

    /// A notification may wait in the main queue while this object goes, so the block must not count on it.
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

}  // namespace

std::unique_ptr<Volumes> makeMacVolumes() {
    return std::make_unique<MacVolumes>();
}

}  // namespace stowpocket
