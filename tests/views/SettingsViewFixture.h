// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "app/Settings.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
#include "ShelfViewFixture.h"
#include "updates/UpdaterController.h"
#include "views/controls/Button.h"
#include "views/controls/Choices.h"
#include "views/controls/ScrollView.h"
#include "views/settings/HotkeyRecorderView.h"
#include "views/settings/SettingsView.h"

namespace stowpocket {

/// The settings over a real shelf and real updates, both on fakes, in a window of their size.
struct SettingsViewFixture : ShelfViewFixture {
    SettingsViewFixture() { registerPreferenceDefaults(preferences); }

    SettingsView& openSettings(std::shared_ptr<ShelfViewModel> model) {
        delete settings;
        settings = new SettingsView(
            {{core, monitors, loginItem, [this](const auto& url) { opened = url; }, [this] { return hotkeySource; }},
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

    FakeEventMonitors monitors;
    FakeLoginItem loginItem;
    FakeFeedSession feed;
    FakeAlerts alerts;
    std::shared_ptr<UpdaterController> updater =
        UpdaterController::make({core, feed, alerts, [this] { return std::make_unique<FakeUpdateFramework>(); }});
    std::string opened;
    HotkeySource hotkeySource = HotkeySource::windowSystem;
    SettingsView* settings = nullptr;
};

}  // namespace stowpocket
