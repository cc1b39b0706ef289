// SPDX-License-Identifier: MIT
#include "presentation/PopoverPlacement.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// Of the screen; whatever contains the icon and is thicker is no bar.
constexpr double thickestBar = 1.0 / 3;

/// `std::clamp` for a range that may be empty, as on a screen narrower than the popover: the lower bound wins.
double kept(double value, double low, double high) {
    return std::max(low, std::min(value, high));
}

Rect grown(const Rect& rect, double margin, const Rect& available) {
    const double left = kept(rect.x - margin, available.x, rect.x);
    const double top = kept(rect.y - margin, available.y, rect.y);
    const double right = kept(available.right(), rect.right(), rect.right() + margin);
    const double bottom = kept(available.bottom(), rect.bottom(), rect.bottom() + margin);
    return {left, top, right - left, bottom - top};
}

}  // namespace

Rect areaBesideBar(const Rect& available, const Rect& bar) {
    // One with few icons is about a square along either kind of edge; below or above it there is room in any case.
    const bool isAcross = bar.width * 2 >= bar.height;
    const double thickness = isAcross ? bar.height : bar.width;
    const double most = thickestBar * (isAcross ? available.height : available.width);
    if (thickness <= 0 || thickness > most)
        return available;
    double left = available.x;
    double top = available.y;
    double right = available.right();
    double bottom = available.bottom();
    if (isAcross && bar.bottom() - top < bottom - bar.y)
        top = std::max(top, bar.bottom());
    else if (isAcross)
        bottom = std::min(bottom, bar.y);
    else if (bar.right() - left < right - bar.x)
        left = std::max(left, bar.right());
    else
        right = std::min(right, bar.x);
    return {left, top, right - left, bottom - top};
}

PopoverPlacement placePopover(const Rect& anchor, const Size& content, const Rect& available, double shadow) {
    const double top = kept(anchor.bottom(), available.y, available.bottom());
    const double bottom = kept(anchor.y, available.y, available.bottom());
    const double roomBelow = std::max(0.0, available.bottom() - popoverMargin - top);
    const double roomAbove = std::max(0.0, bottom - popoverMargin - available.y);
    const double wished = content.height + popoverArrowHeight;
    const bool isBelow = wished <= roomBelow || roomBelow >= roomAbove;

    PopoverPlacement placement;
    Rect& frame = placement.frame;
    const double margin = kept((available.width - content.width) / 2, 0, popoverMargin);
    frame.width = std::min(content.width, available.width);
    frame.height = std::min(wished, isBelow ? roomBelow : roomAbove);
    frame.x =
        kept(anchor.centerX() - frame.width / 2, available.x + margin, available.right() - margin - frame.width);
    frame.y = isBelow ? top : bottom - frame.height;
    placement.window = grown(frame, shadow, available);
    placement.arrowSide = isBelow ? ArrowSide::top : ArrowSide::bottom;
    constexpr double cornerRoom = popoverCornerRadius + popoverArrowWidth / 2;
    placement.arrowTip = kept(anchor.centerX() - frame.x, cornerRoom, frame.width - cornerRoom);
    return placement;
}

}  // namespace stowpocket
