// SPDX-License-Identifier: MIT
#include "main/linux/LinuxHotkeys.h"

#include "platform/linux/hotkeys/PortalHotkeyService.h"
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "platform/linux/x11/WaylandSession.h"
#include "platform/linux/x11/X11Connection.h"

namespace stowpocket {
namespace {

PortalHotkeyService::Name portalName(const HotkeyIdentifier& hotkey) {
    if (hotkey == quickDropHotkey)
        return {QStringLiteral("quick-drop"), QStringLiteral("Quick Drop")};
    return {QStringLiteral("open-close-shelf"), QStringLiteral("Open/Close Shelf")};
}

}  // namespace

HotkeyManager& LinuxHotkeys::sharedManager() {
    if (!manager_) {
        service_ = makeService();
        manager_.emplace(*service_, services_.preferences, services_.notificationCenter);
    }
    return *manager_;
}

std::unique_ptr<HotkeyService> LinuxHotkeys::makeService() const {
    if (!isWaylandSession())
        return makeKeyGrabs();
    return std::make_unique<PortalHotkeyService>(
        QDBusConnection::sessionBus(), services_.preferences, portalName, [this] { return makeKeyGrabs(); },
        services_.useToken);
}

std::unique_ptr<HotkeyService> LinuxHotkeys::makeKeyGrabs() const {
    auto grabs = std::make_unique<X11HotkeyService>(services_.connection.raw(), services_.dispatch);
    // A shortcut that is in force can be recorded for the other purpose too.
    grabs->setOwnWindows(
        [&monitors = services_.eventMonitors](const KeyEvent& event) { return monitors.swallowsGrabbed(event); });
    return grabs;
}

}  // namespace stowpocket
