// SPDX-License-Identifier: MIT
#pragma once

#include "app/HandOver.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
#include "fakes/ShelfFixture.h"

namespace stowpocket {

/// The whole application on fakes, before its launch.
struct AppFixture : ShelfFixture {
    FakeStatusBar statusBar;
    FakeViewFactory views;
    FakeApplication application;
    FakeEventMonitors eventMonitors;
    FakeHotkeyService hotkeyService;
    FakeSelection fileManagerSelection;
    FakeFileOpener opener;
    FakeLoginItem loginItem;
    FakeVolumes volumes;
    std::optional<HotkeyManager> hotkeys;
    FakeFeedSession feedSession;
    FakeAlerts alerts;
    FakeImageTool imageTool;
    std::shared_ptr<AppDelegate> app = AppDelegate::make(appServices());

    [[nodiscard]] AppServices appServices() {
        AppServices list = appServicesOf(*this, *this, *this);
        list.installerImage.emplace(InstallerImageServices{core, imageTool, imageTool, imageTool});
        return list;
    }
    [[nodiscard]] static std::unique_ptr<UpdateFramework> startFramework() {
        return std::make_unique<FakeUpdateFramework>();
    }
    [[nodiscard]] HotkeyManager& sharedHotkeyManager() {
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
