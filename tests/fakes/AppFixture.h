// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
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
    FakeFeedSession feed;
    FakeAlerts alerts;
    FakeImageTool imageTool{log};
    MainBundle bundle{*FileURL::fromPath("/usr/bin/stowpocket"), {}};
    std::shared_ptr<AppDelegate> app =
        AppDelegate::make({.shelf = services,
                           .statusBar = statusBar,
                           .views = views,
                           .application = application,
                           .eventMonitors = monitors,
                           .fileManagerSelection = selection,
                           .loginItem = loginItem,
                           .volumes = volumes,
                           .sharedHotkeyManager = [this]() -> HotkeyManager& { return sharedHotkeys(); },
                           .updates = {preferences, feed, alerts, dispatch, bundle,
                                       [this] { return std::make_unique<FakeUpdateFramework>(log); }},
                           .installerImage = {dispatch, imageTool, imageTool, files, imageTool}});

    [[nodiscard]] HotkeyManager& sharedHotkeys() {
        if (!hotkeys)
            hotkeys.emplace(hotkeyService, preferences, notifications);
        return *hotkeys;
    }
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
