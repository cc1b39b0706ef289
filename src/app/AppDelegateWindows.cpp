// SPDX-License-Identifier: MIT
// The settings and the first-run window.
#include "app/AppDelegate.h"
#include "app/Preferences.h"

namespace stowpocket {

/// A settings window that was closed is never used again: the next request builds a fresh one.
void AppDelegate::openSettings() {
    closePopover();
    if (settingsWindow_ && settingsWindow_->isVisible()) {
        settingsWindow_->makeKeyAndOrderFront();
        settingsWindow_->orderFrontRegardless();
        services_.application.activate();
        return;
    }
    settingsWindow_ = services_.views.makeSettingsWindow(shelfViewModel_, updaterController_);
    settingsWindow_->center();
    settingsWindow_->makeKeyAndOrderFront();
    services_.application.activate();
}

void AppDelegate::openOnboarding() {
    onboardingWindow_ =
        services_.views.makeOnboardingWindow(services_.core.preferences, weakly(&AppDelegate::completeOnboarding));
    onboardingWindow_->center();
    onboardingWindow_->makeKeyAndOrderFront();
    services_.application.activate();
}

void AppDelegate::completeOnboarding() {
    services_.core.preferences.setValue(preferenceKey::onboardingShown, true);
    if (onboardingWindow_)
        onboardingWindow_->close();
    // The view that calls this is inside the window, so the window goes once the call is over.
    const std::shared_ptr<Window> window = std::move(onboardingWindow_);
    services_.core.dispatch.async([window] {});
}

}  // namespace stowpocket
