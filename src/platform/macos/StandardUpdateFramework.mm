// SPDX-License-Identifier: MIT
#include "platform/macos/MacSystem.h"

#import <Sparkle/Sparkle.h>

static void* const observationContext = const_cast<char*>("canCheckForUpdates");
static NSString* const observedKey = @"canCheckForUpdates";

/// Passes on the updater's answer whenever it changes, for as long as it lives.
@interface StowpocketUpdaterObservation : NSObject
- (instancetype)initWithUpdater:(SPUUpdater*)updater handler:(std::function<void(bool)>)handler;
@end

@implementation StowpocketUpdaterObservation {
    SPUUpdater* _updater;
    std::function<void(bool)> _handler;
}

- (instancetype)initWithUpdater:(SPUUpdater*)updater handler:(std::function<void(bool)>)handler {
    self = [super init];
    if (self != nil) {
        _updater = updater;
        _handler = std::move(handler);
        [updater addObserver:self
                  forKeyPath:observedKey
                     options:NSKeyValueObservingOptionInitial | NSKeyValueObservingOptionNew
                     context:observationContext];
    }
    return self;
}

- (void)dealloc {
    [_updater removeObserver:self forKeyPath:observedKey context:observationContext];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context != observationContext)
        return [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    id const value = change[NSKeyValueChangeNewKey];
    _handler([value isKindOfClass:NSNumber.class] && static_cast<NSNumber*>(value).boolValue);
}

@end

namespace stowpocket {
namespace {

class StandardUpdateFramework : public UpdateFramework {
public:
    StandardUpdateFramework()
        : controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                    updaterDelegate:nil
                                                                 userDriverDelegate:nil]),
          observation_([[StowpocketUpdaterObservation alloc]
              initWithUpdater:controller_.updater
                      handler:[this](bool can) { changed_.emit(can); }]) {}

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
    StowpocketUpdaterObservation* const observation_;
};

}  // namespace

std::unique_ptr<UpdateFramework> startStandardUpdateFramework() {
    return std::make_unique<StandardUpdateFramework>();
}

}  // namespace stowpocket
