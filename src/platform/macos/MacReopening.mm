// SPDX-License-Identifier: MIT
#include "platform/macos/MacSystem.h"

#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>

/// Takes the event in the place of the application's delegate, which is the toolkit's own.
@interface StowpocketReopenTarget : NSObject
- (instancetype)initWithReopened:(std::function<void()>)reopened;
- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
@end

@implementation StowpocketReopenTarget {
    std::function<void()> _reopened;
}

- (instancetype)initWithReopened:(std::function<void()>)reopened {
    self = [super init];
    if (self != nil)
        _reopened = std::move(reopened);
    return self;
}

- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply {
    _reopened();
}

@end

namespace stowpocket {
namespace {

class ReopenObservation : public Observation {
public:
    explicit ReopenObservation(std::function<void()> reopened)
        : target_([[StowpocketReopenTarget alloc] initWithReopened:std::move(reopened)]) {
        [[NSAppleEventManager sharedAppleEventManager] setEventHandler:target_
                                                           andSelector:@selector(handleReopen:withReplyEvent:)
                                                         forEventClass:kCoreEventClass
                                                            andEventID:kAEReopenApplication];
    }
    ~ReopenObservation() override {
        [[NSAppleEventManager sharedAppleEventManager] removeEventHandlerForEventClass:kCoreEventClass
                                                                            andEventID:kAEReopenApplication];
    }
    ReopenObservation(const ReopenObservation&) = delete;
    ReopenObservation& operator=(const ReopenObservation&) = delete;

private:
    /// The manager does not keep it.
    StowpocketReopenTarget* const target_;
};

}  // namespace

std::unique_ptr<Observation> observeReopening(std::function<void()> reopened) {
    return std::make_unique<ReopenObservation>(std::move(reopened));
}

}  // namespace stowpocket
