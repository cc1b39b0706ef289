// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
#include "fakes/ShelfFixture.h"

namespace stowpocket {

/// The whole application on fakes, before its launch.
struct AppFixture : ShelfFixture {
    FakeStatusBar statusBar;
    FakeViewFactory views;
    FakeApplication application;
    FakeEventMonitors monitors;
    FakeHotkeyService hotkeyService;
    FakeSelection selection;
    FakeLoginItem loginItem;
    FakeVolumes volumes;
    std::optional<HotkeyManager> hotkeys;
    FakeFeedSession feed;
    FakeAlerts alerts;
    FakeImageTool imageTool;
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
                                       [this] { return std::make_unique<FakeUpdateFramework>(); }},
                           .installerImage = {dispatch, imageTool, imageTool, files, imageTool}});

    [[nodiscard]] HotkeyManager& sharedHotkeys() {
        if (!hotkeys)
            hotkeys.emplace(hotkeyService, preferences, notifications);
        return *hotkeys;
    }
    /// Launches as on every day but the first.
    void launch() {
        preferences.setValue(preferenceKey::onboardingShown, true);
        app->applicationDidFinishLaunching();
        dispatch.runAll();
    }
    [[nodiscard]] ShelfManager& shelf() const { return app->shelfViewModel().shelfManager(); }
    /// How the shelf came up since the last look, with the keyboard.
    std::string opening() {
        FakePopover& popover = *views.popover;
        const bool isUp = popover.isOpen && std::exchange(popover.isKey, false) &&
                          std::exchange(application.isActive, false) && popover.animates;
        return !isUp ? "none" : popover.wasAnimated ? "animated" : "at once";
    }
    [[nodiscard]] DraggingDestination& dropView() const { return *statusBar.button->dropView; }
};

}  // namespace stowpocket
