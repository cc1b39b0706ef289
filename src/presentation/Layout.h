// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"

#include <cstddef>
#include <span>
#include <vector>

namespace stowpocket {

/// Where the tiles of a grid stand, from the grid's top left corner, and how high the grid is.
struct GridLayout {
    std::vector<Point> positions;
    double height = 0;
};

/// A grid with as many columns as fit at their minimum width; they share the room up to their maximum width and
/// stand in the middle of it. A row is as high as its highest tile.
struct AdaptiveGrid {
    double minimumColumnWidth = 0;
    double maximumColumnWidth = 0;
    double columnSpacing = 0;
    double rowSpacing = 0;

    /// At least one.
    [[nodiscard]] std::size_t columnCount(double width) const;
    /// Places tiles of the same width, each in the middle of its column and its row.
    [[nodiscard]] GridLayout layout(double width, double tileWidth, std::span<const double> tileHeights) const;
};

/// How the count is shown: not at all, beside the symbol, or as a badge on its corner where there is no room beside
/// it.
enum class CountPlace { none, beside, badge };

/// What stands in the menu bar, measured at natural size.
struct StatusItemMeasure {
    double symbolSize = 0;
    double fontSize = 0;
    /// Of the title with its leading space, and of the count alone; both 0 when there is no title.
    double titleWidth = 0;
    double countWidth = 0;
};

struct StatusItemLayout {
    Rect symbol;
    CountPlace countPlace = CountPlace::none;
    /// Room of the count, in which it is centred on a badge and left-aligned beside the symbol.
    Rect count;
    double fontSize = 0;
    /// How far natural sizes were stretched or shrunk.
    double scale = 1;

    friend bool operator==(const StatusItemLayout&, const StatusItemLayout&) = default;
};

enum class BarDirection { horizontal, vertical };

/// How much room the item asks the bar for. Along a vertical bar that is a square: such bars shrink what is wider.
[[nodiscard]] Size statusItemWish(const StatusItemMeasure& measure, BarDirection bar = BarDirection::horizontal);

/// What is drawn where in the room that the bar granted, which may be any.
[[nodiscard]] StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted);

/// The same for a picture that others scale: the count, if there is one, is a badge at every size.
[[nodiscard]] StatusItemLayout layOutBadge(const StatusItemMeasure& measure, const Size& room);

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
