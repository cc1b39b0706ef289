// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/ScreenCover.h"

#include <QObject>

namespace stowpocket {

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
