// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"
#include "services/Pictures.h"

namespace stowpocket {

/// The shape of the popover: a rounded panel with an arrow on the side of its anchor.
inline constexpr double popoverArrowHeight = 9;
inline constexpr double popoverArrowWidth = 16;
inline constexpr double popoverCornerRadius = 10;
/// Left free between the panel and the edges of the screen.
inline constexpr double popoverMargin = 4;

enum class ArrowSide { top, bottom };

struct PopoverPlacement {
    /// The panel and its arrow, on the screen.
    Rect frame;
    /// The frame and the shadow around it.
    Rect window;
    ArrowSide arrowSide = ArrowSide::top;
    /// From the frame's left edge.
    double arrowTip = 0;

    friend bool operator==(const PopoverPlacement&, const PopoverPlacement&) = default;
};

/// What the bar that the icon stands in leaves of a screen: Qt does not know how much of each of several screens is
/// taken by bars. All of the screen where `bar` is too thick for one, or empty.
[[nodiscard]] Rect areaBesideBar(const Rect& available, const Rect& bar);

/// Where the popover stands: centred below `anchor`, or above it when only there is room (the bar is at the bottom),
/// moved sideways and cut down in height so that all of it is in `available`, a little away from its edges. The arrow
/// keeps pointing at the anchor as far as the rounded corners let it. The shadow is that wide where there is room for
/// it and never leaves `available` either: window managers would push the whole window back.
[[nodiscard]] PopoverPlacement placePopover(const Rect& anchor, const Size& content, const Rect& available,
                                            double shadow);

}  // namespace stowpocket
