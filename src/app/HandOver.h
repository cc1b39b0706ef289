// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"

#include <memory>

namespace stowpocket {

/// A service that its owner holds as a member, or by a pointer of its own.
template <class Service>
[[nodiscard]] Service& held(Service& service) {
    return service;
}
template <class Service>
[[nodiscard]] Service& held(const std::unique_ptr<Service>& service) {
    return *service;
}

template <class Storage>
[[nodiscard]] CoreServices coreServicesOf(Storage& storage) {
    return {.preferences = held(storage.preferences),
            .dispatch = held(storage.dispatch),
            .clock = held(storage.clock),
            .notifications = storage.notifications,
            .files = held(storage.files),
            .bundle = storage.bundle};
}

/// What the application is built on, from those who own it: each service has the same name on every platform and in
/// the tests. The owners outlive the application.
template <class Storage, class Desktop, class Updates>
[[nodiscard]] AppServices appServicesOf(Storage& storage, Desktop& desktop, Updates& updates) {
    const CoreServices core = coreServicesOf(storage);
    return {
        .core = core,
        .shelf = {.core = core,
                  .bookmarks = held(storage.bookmarks),
                  .thumbnails = held(desktop.thumbnails),
                  .workspaceIcons = held(desktop.icons),
                  .mainScreen = held(desktop.screen)},
        .statusBar = held(desktop.statusBar),
        .views = desktop.views,
        .application = held(desktop.application),
        .eventMonitors = held(desktop.eventMonitors),
        .clipboard = held(desktop.clipboard),
        .fileManagerSelection = desktop.fileManagerSelection,
        .opener = held(desktop.opener),
        .loginItem = held(desktop.loginItem),
        .volumes = held(desktop.volumes),
        .sharedHotkeyManager = [&desktop]() -> HotkeyManager& { return desktop.sharedHotkeyManager(); },
        .updates = {.core = core,
                    .feedSession = held(updates.feedSession),
                    .alerts = held(updates.alerts),
                    .startUpdateFramework = [&updates] { return updates.startFramework(); }},
        .installerImage = {},
    };
}

}  // namespace stowpocket
