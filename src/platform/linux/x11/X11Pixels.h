// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QImage>

namespace stowpocket {

/// What the server shows in a part of a window, in pixels. Null when it does not say, as for parts off the screen.
[[nodiscard]] QImage x11Pixels(const X11Connection& connection, xcb_window_t window, const QRect& part);

/// What lies behind a window that has no transparency: has the server paint the parent's background into it and
/// reads that back. The window is left so. `size` is how large it is believed to be; where that is more than it is,
/// the server is asked a second time.
[[nodiscard]] QImage x11ParentBackground(const X11Connection& connection, xcb_window_t window, const QSize& size);

}  // namespace stowpocket
