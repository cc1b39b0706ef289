// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QScreen;

namespace stowpocket {

/// Whether the X server, if there is one, only stands in for a Wayland compositor. Such a server learns of keys,
/// buttons and the pointer only while they concern X11 windows.
[[nodiscard]] bool isWaylandSession();

/// The part of a screen that no panel covers, as far as can be known, in points.
[[nodiscard]] QRect usableArea(const QScreen& screen);

}  // namespace stowpocket
