// SPDX-License-Identifier: MIT
#pragma once

#include "app/HotkeyManager.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace stowpocket {

class Dispatch;
class X11Connection;
class X11EventMonitors;

/// What hotkeys are built on; all of it outlives them.
struct LinuxHotkeyServices {
    X11Connection& connection;
    Dispatch& dispatch;
    X11EventMonitors& eventMonitors;
    PreferenceStore& preferences;
    NotificationCenter& notificationCenter;
    /// Gets the token that the desktop gave along with a pressed hotkey, before that is handled.
    std::function<void(const std::string& activationToken)> useToken;
};

/// The program's hotkeys: grabbed from the X server, or given by the desktop's portal in a Wayland session. Nothing
/// is asked for before the manager is.
class LinuxHotkeys {
public:
    explicit LinuxHotkeys(LinuxHotkeyServices services) : services_(std::move(services)) {}

    [[nodiscard]] HotkeyManager& sharedManager();
    [[nodiscard]] HotkeySource source() const { return service_ ? service_->source() : HotkeySource::windowSystem; }

private:
    [[nodiscard]] std::unique_ptr<HotkeyService> makeService() const;
    [[nodiscard]] std::unique_ptr<HotkeyService> makeKeyGrabs() const;

    const LinuxHotkeyServices services_;
    /// Made with the manager.
    std::unique_ptr<HotkeyService> service_;
    std::optional<HotkeyManager> manager_;
};

}  // namespace stowpocket
