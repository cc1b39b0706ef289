// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "app/DesktopShortcuts.h"
#include "app/Settings.h"
#include "fakes/FakeDesktopSettings.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
#include "ShelfViewFixture.h"
#include "updates/UpdaterController.h"
#include "views/controls/Button.h"
#include "views/controls/Choices.h"
#include "views/controls/ScrollView.h"
#include "views/settings/SettingsView.h"
#include "views/settings/ShortcutViews.h"

namespace stowpocket {

/// The settings over a real shelf and real updates, both on fakes, in a window of their size.
struct SettingsViewFixture : ShelfViewFixture {
    SettingsViewFixture() { registerPreferenceDefaults(preferences); }

    SettingsView& openSettings(std::shared_ptr<ShelfViewModel> model) {
        delete settings;
        settings = new SettingsView(
            {{core, monitors, loginItem, [this](const auto& url) { opened = url; }, {}, makerOfDesktopShortcuts()},
             std::move(model),
             updater});
        settings->setParent(&host);
        host.resize(450, 520);
        settings->resize(host.size());
        host.show();
        settings->show();
        host.activateWindow();
        QApplication::processEvents();
        return *settings;
    }

    std::function<std::shared_ptr<DesktopShortcuts>()> makerOfDesktopShortcuts() {
        if (!shortcutDesktop)
            return {};
        return [this] {
            return DesktopShortcuts::make({core, clipboard, desktopSettings, [this] { return hotkeySource; },
                                           [](std::uint32_t key) { return key == 1 ? "s" : "d"; }, *shortcutDesktop,
                                           "stowpocket"});
        };
    }

    FakeEventMonitors monitors;
    FakeLoginItem loginItem;
    FakeFeedSession feed;
    FakeAlerts alerts;
    std::shared_ptr<UpdaterController> updater =
        UpdaterController::make({core, feed, alerts, [this] { return std::make_unique<FakeUpdateFramework>(); }});
    std::string opened;
    /// None where the window system gives shortcuts.
    std::optional<ShortcutDesktop> shortcutDesktop;
    HotkeySource hotkeySource = HotkeySource::none;
    std::shared_ptr<FakeDesktopSettings> desktopSettings = std::make_shared<FakeDesktopSettings>();
    SettingsView* settings = nullptr;
};

}  // namespace stowpocket
