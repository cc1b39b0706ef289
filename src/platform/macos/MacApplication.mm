// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

/// Handles the event instead of the application's delegate, which belongs to the toolkit.
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

class MacApplication : public Application {
public:
    void activate() override { [NSApplication.sharedApplication activateIgnoringOtherApps:YES]; }
    void terminate() override { [NSApplication.sharedApplication terminate:nil]; }
};

class MacMainScreen : public MainScreen {
public:
    [[nodiscard]] std::optional<double> backingScaleFactor() const override {
        NSScreen* const screen = NSScreen.mainScreen;
        return screen == nil ? std::nullopt : std::optional<double>(screen.backingScaleFactor);
    }
};

class MacAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override {
        NSAlert* const box = [[NSAlert alloc] init];
        box.alertStyle = NSAlertStyleInformational;
        box.messageText = nsString(alert.messageText);
        box.informativeText = nsString(alert.informativeText);
        [box addButtonWithTitle:nsString(alert.buttonTitle)];
        [box runModal];
    }
};

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
    /// The manager does not retain it.
    StowpocketReopenTarget* const target_;
};

class MacLoginItem : public LoginItem {
public:
    [[nodiscard]] Status status() const override {
        switch (SMAppService.mainAppService.status) {
        case SMAppServiceStatusNotRegistered:
            return Status::notRegistered;
        case SMAppServiceStatusEnabled:
            return Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::notFound;
        }
        return Status::notFound;
    }

    [[nodiscard]] bool registerItem() override { return [SMAppService.mainAppService registerAndReturnError:nil]; }
    [[nodiscard]] bool unregisterItem() override {
        return [SMAppService.mainAppService unregisterAndReturnError:nil];
    }
};

}  // namespace

std::unique_ptr<Application> makeMacApplication() {
    return std::make_unique<MacApplication>();
}

std::unique_ptr<MainScreen> makeMacMainScreen() {
    return std::make_unique<MacMainScreen>();
}

bool isMotionReduced() {
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

std::unique_ptr<Alerts> makeMacAlerts() {
    return std::make_unique<MacAlerts>();
}

std::unique_ptr<Observation> observeReopening(std::function<void()> reopened) {
    return std::make_unique<ReopenObservation>(std::move(reopened));
}

std::unique_ptr<LoginItem> makeMacLoginItem() {
    return std::make_unique<MacLoginItem>();
}

}  // namespace stowpocket
