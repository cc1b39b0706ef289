// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/ScreenCover.h"

#include <QTimer>

#include <functional>

namespace stowpocket {

/// Notices, while it lives, what GNOME Shell tells no X11 program in a Wayland session: clicks on the bare desktop,
/// and that the overview opens. For clicks it covers the desktop with an invisible window, so that they reach the X
/// server and not the Shell; its menu of the desktop then needs a second one. Nothing tells of clicks on the top bar.
class GnomeClicks {
public:
    [[nodiscard]] static bool areNeeded(const X11Connection& connection);

    /// `connection` outlives this.
    GnomeClicks(const X11Connection& connection, std::function<void()> onOverview);

    [[nodiscard]] bool isDesktop(xcb_window_t window) const { return desktop_.isShownAs(window); }

private:
    void askForOverview();

    const std::function<void()> onOverview_;
    X11ScreenCover desktop_;
    /// Fires as soon as it is started, which the signal of the Shell does.
    QTimer asking_;
};

}  // namespace stowpocket
