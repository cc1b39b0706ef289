// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <AppKit/AppKit.h>

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

}  // namespace stowpocket
