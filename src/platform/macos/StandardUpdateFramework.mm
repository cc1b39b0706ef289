// SPDX-License-Identifier: MIT
#import "platform/macos/KeyPathObservation.h"
#include "platform/macos/MacSystem.h"

#import <Sparkle/Sparkle.h>

namespace stowpocket {
namespace {

class StandardUpdateFramework : public UpdateFramework {
public:
    StandardUpdateFramework()
        : controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                    updaterDelegate:nil
                                                                 userDriverDelegate:nil]),
          observation_([[StowpocketKeyPathObservation alloc]
              initWithObject:controller_.updater
                     keyPath:@"canCheckForUpdates"
                     options:NSKeyValueObservingOptionInitial | NSKeyValueObservingOptionNew
                     changed:[this](id value) {
                         changed_.emit([value isKindOfClass:NSNumber.class] &&
                                       static_cast<NSNumber*>(value).boolValue);
                     }]) {}

    [[nodiscard]] bool canCheckForUpdates() const override { return controller_.updater.canCheckForUpdates; }
    [[nodiscard]] Signal<bool>& canCheckForUpdatesChanged() override { return changed_; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override {
        controller_.updater.automaticallyDownloadsUpdates = automatically;
    }
    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

private:
    Signal<bool> changed_;
    SPUStandardUpdaterController* const controller_;
    /// Nothing else keeps it, so it ends with this object.
    StowpocketKeyPathObservation* const observation_;
};

}  // namespace

std::unique_ptr<UpdateFramework> startStandardUpdateFramework() {
    return std::make_unique<StandardUpdateFramework>();
}

}  // namespace stowpocket
