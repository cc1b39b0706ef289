// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/ScreenCover.h"

#include <QObject>
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

/// Lies invisibly over the screen, below a menu that has opened while another program has the keyboard. In a Wayland
/// session a click there closes the menu and does nothing else. Without the cover the click would go to a Wayland
/// window and leave the menu open, since the X server would not hear of it.
class MenuCover : public QObject {
public:
    /// `connection` outlives it.
    explicit MenuCover(const X11Connection& connection);

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;

    X11ScreenCover cover_;
    /// The menu above it, never followed.
    const QObject* menu_ = nullptr;
};

}  // namespace stowpocket
