// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

namespace stowpocket {

/// A window without a picture over the whole screen, below all others of its kind. It is hidden at the end.
class X11ScreenCover {
public:
    enum class Kind {
        unmanaged,  ///< the window manager does not know of it
        desktop,    ///< the window manager keeps it below all that it shows, and gives it no keyboard focus
    };

    X11ScreenCover(const X11Connection& connection, Kind kind) : connection_(connection), kind_(kind) {}
    X11ScreenCover(const X11ScreenCover&) = delete;
    X11ScreenCover& operator=(const X11ScreenCover&) = delete;
    ~X11ScreenCover() { hide(); }

    /// Does nothing on a server without transparent windows.
    void show();
    void hide();
    [[nodiscard]] bool isShownAs(xcb_window_t window) const { return window == window_ && window != x11None; }

private:
    void becomeDesktop() const;

    const X11Connection& connection_;
    const Kind kind_;
    xcb_window_t window_ = x11None;
    xcb_colormap_t colors_ = x11None;
};

}  // namespace stowpocket
