// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "fakes/FakeInput.h"
#include "fakes/ShelfFixture.h"

namespace stowpocket {

/// The whole application on fakes, before its launch.
struct AppFixture : ShelfFixture {
    CallLog log;
    FakeStatusBar statusBar;
    FakeViewFactory views{log};
    FakeApplication application{log};
    FakeEventMonitors monitors;
    FakeHotkeyService hotkeyService{log};
    FakeSelection selection;
    FakeLoginItem loginItem{log};
    FakeVolumes volumes;
    std::optional<HotkeyManager> hotkeys;
    std::shared_ptr<AppDelegate> app =
        AppDelegate::make({services, statusBar, views, application, monitors, selection, loginItem, volumes,
                           [this]() -> HotkeyManager& {
                               if (!hotkeys)
                                   hotkeys.emplace(hotkeyService, preferences, notifications);
                               return *hotkeys;
                           }});

    /// Launches as on every day but the first, and forgets how.
    void launch() {
        preferences.setValue(preferenceKey::onboardingShown, true);
        app->applicationDidFinishLaunching();
        dispatch.runAll();
        log.clear();
    }
    [[nodiscard]] ShelfManager& shelf() const { return app->shelfViewModel().shelfManager(); }
    [[nodiscard]] DraggingDestination& dropView() const { return *statusBar.button->dropView; }
};

}  // namespace stowpocket
