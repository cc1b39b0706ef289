// SPDX-License-Identifier: MIT
#include "platform/linux/x11/WaylandSession.h"

#include <QScreen>

namespace stowpocket {

bool isWaylandSession() {
    return qEnvironmentVariable("XDG_SESSION_TYPE") == QStringLiteral("wayland") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QRect usableArea(const QScreen& screen) {
    const QRect available = screen.availableGeometry();
    if (!isWaylandSession() || available != screen.geometry())
        return available;
    // Not every compositor tells the X server of its panels; most of those have one at the top, rarely a higher one.
    constexpr int panelHeight = 48;
    return available.adjusted(0, panelHeight, 0, 0);
}

}  // namespace stowpocket
