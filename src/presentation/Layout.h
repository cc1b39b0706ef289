// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <cstddef>
#include <span>
#include <vector>

namespace stowpocket {

/// The positions of the tiles in a grid, relative to its top left corner, and the height of the grid.
struct GridLayout {
    std::vector<Point> positions;
    double height = 0;
};

/// A centred grid with as many columns as fit at their minimum width. The columns share the available width, up to
/// their maximum. A row is as high as its highest tile.
struct AdaptiveGrid {
    double minimumColumnWidth = 0;
    double maximumColumnWidth = 0;
    double columnSpacing = 0;
    double rowSpacing = 0;

    /// At least one.
    [[nodiscard]] std::size_t columnCount(double width) const;
    /// Lays out tiles of equal width, each centred in its column and row.
    [[nodiscard]] GridLayout layout(double width, double tileWidth, std::span<const double> tileHeights) const;
};

/// How the count is shown: not at all, beside the symbol, or as a badge on its corner if there is no room beside it.
enum class CountPlace { none, beside, badge };

/// The contents of the icon, measured at natural size.
struct StatusItemMeasure {
    double symbolSize = 0;
    double fontSize = 0;
    /// The width of the title with its leading space, and of the count alone; both 0 if there is no title.
    double titleWidth = 0;
    double countWidth = 0;
};

struct StatusItemLayout {
    Rect symbol;
    CountPlace countPlace = CountPlace::none;
    /// The area of the count, which is centred on a badge and left-aligned beside the symbol.
    Rect count;
    double fontSize = 0;
    /// The scale of natural sizes.
    double scale = 1;

    friend bool operator==(const StatusItemLayout&, const StatusItemLayout&) = default;
};

enum class BarDirection { horizontal, vertical };

/// The size that the item requests from the bar. In a vertical bar this is a square, since such bars shrink wider
/// items.
[[nodiscard]] Size preferredStatusItemSize(const StatusItemMeasure& measure,
                                           BarDirection bar = BarDirection::horizontal);

/// Lays out the icon in the size that the bar has granted, which may be any.
[[nodiscard]] StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted);

/// The same for a picture that the bar scales itself: the count, if there is one, is always a badge.
[[nodiscard]] StatusItemLayout layOutBadge(const StatusItemMeasure& measure, const Size& room);

/// The shape of the popover: a rounded panel with an arrow on the side of its anchor.
inline constexpr double popoverArrowHeight = 9;
inline constexpr double popoverArrowWidth = 16;
inline constexpr double popoverCornerRadius = 10;
/// The distance between the panel and the edges of the screen.
inline constexpr double popoverMargin = 4;

/// The distance between the pocket and the edges of the screen or of a bar.
inline constexpr double pocketMargin = 8;

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

/// The part of a screen that the bar with the icon leaves free. Qt does not know what bars take of each of several
/// screens. The whole screen if `bar` is empty or too thick to be a bar.
[[nodiscard]] Rect areaBesideBar(const Rect& available, const Rect& bar);

/// Where an icon that nobody places would most likely be: at the right end of a bar below `usable`, if the bars of
/// the screen leave room above, else at its top. Without a size.
[[nodiscard]] Rect likelyIconPlace(const Rect& screen, const Rect& usable);

/// Places the pocket beside the bar that the icon is in, as near to the icon as that allows: the bar is outside
/// `usable`, or at one of its edges where the system does not say so.
[[nodiscard]] Rect pocketBesideBar(const Rect& icon, const Size& pocket, const Rect& usable);

/// Places the popover centred below `anchor`, or above it if there is more room (the bar is at the bottom). It is
/// moved sideways and reduced in height to be inside `available`, a little away from its edges. The arrow points at
/// the anchor as far as the rounded corners allow. The shadow has the given width where there is room, and never
/// leaves `available`: window managers would move the whole window.
[[nodiscard]] PopoverPlacement placePopover(const Rect& anchor, const Size& content, const Rect& available,
                                            double shadow);

}  // namespace stowpocket
