// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11PopoverHost.h"

namespace stowpocket {

bool X11PopoverHost::blendsWindows() const {
    return connection_.selectionOwner(X11Atom::compositorOwner) != x11None;
}

/// Window managers drop these requests of a window when it is hidden.
void X11PopoverHost::willShow(QWidget& window) {
    const auto shown = static_cast<xcb_window_t>(window.winId());
    connection_.keepAboveUnlisted(shown);
    startup_.markWindow(shown);
}

/// Asks as a pager would. A window manager may refuse the request of a program when the user has typed elsewhere
/// since, but here the user has just clicked the icon, dragged onto it or pressed the shortcut.
void X11PopoverHost::focus(QWidget& window) {
    constexpr std::uint32_t fromPager = 2;
    constexpr std::uint32_t managers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    const auto shown = static_cast<xcb_window_t>(window.winId());
    window.activateWindow();
    const xcb_timestamp_t time = startup_.takeTime(shown);
    connection_.sendMessage(connection_.root(), managers, shown, X11Atom::activeWindow, {fromPager, time, 0, 0, 0});
}

}  // namespace stowpocket
