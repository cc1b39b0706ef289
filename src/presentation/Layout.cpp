// SPDX-License-Identifier: MIT
#include "presentation/Layout.h"

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

/// The usual height of an icon in a bar; other heights scale everything.
constexpr double naturalHeight = 22;
constexpr double sidePadding = 3;
constexpr double smallestScale = 0.4;
constexpr double largestScale = 3;

/// Beside a badge the symbol is smaller and moves towards the other corner.
constexpr double badgedSymbol = 0.9;
constexpr double badgedSymbolInset = 1;
constexpr double badgeFontSize = 9;
constexpr double badgeHeight = 11;
constexpr double badgePadding = 2.5;

double scaleFor(double height) {
    return std::clamp(height / naturalHeight, smallestScale, largestScale);
}

/// At whole points, so that lines stay sharp.
Rect symbolAt(double x, double y, double side) {
    return {std::floor(x), std::floor(y), std::round(side), std::round(side)};
}

void placeBeside(StatusItemLayout& layout, const StatusItemMeasure& measure, const Size& granted) {
    const double side = std::round(measure.symbolSize * layout.scale);
    const double titleWidth = measure.titleWidth * layout.scale;
    layout.symbol = symbolAt((granted.width - side - titleWidth) / 2, (granted.height - side) / 2, side);
    layout.fontSize = measure.fontSize * layout.scale;
    if (titleWidth > 0) {
        layout.countPlace = CountPlace::beside;
        layout.count = {layout.symbol.right(), 0, titleWidth, granted.height};
    }
}

/// As a share of the screen. A thicker window with the icon is not a bar.
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

/// The bar of an icon at the edge of an area: as thick as the icon with the same distance on either side. Empty if
/// the icon is outside.
Rect barAround(const Rect& icon, const Rect& area) {
    const double left = icon.x - area.x;
    const double top = icon.y - area.y;
    const double bottom = area.bottom() - icon.bottom();
    const double gap = std::min({left, top, area.right() - icon.right(), bottom});
    const Size size{icon.width + 2 * gap, icon.height + 2 * gap};
    if (gap == top || gap == bottom)
        return {area.x, gap == top ? area.y : area.bottom() - size.height, area.width, size.height};
    return {gap == left ? area.x : area.right() - size.width, area.y, size.width, area.height};
}

}  // namespace

std::size_t AdaptiveGrid::columnCount(double width) const {
    const double fitting = (width + columnSpacing) / (minimumColumnWidth + columnSpacing);
    return fitting < 1 ? 1 : static_cast<std::size_t>(fitting);
}

GridLayout AdaptiveGrid::layout(double width, double tileWidth, std::span<const double> tileHeights) const {
    const std::size_t columns = columnCount(width);
    const double spacings = columnSpacing * static_cast<double>(columns - 1);
    const double columnWidth = std::min(maximumColumnWidth, (width - spacings) / static_cast<double>(columns));
    const double left = (width - spacings - columnWidth * static_cast<double>(columns)) / 2;

    GridLayout layout;
    layout.positions.reserve(tileHeights.size());
    for (std::size_t first = 0; first < tileHeights.size(); first += columns) {
        const auto row = tileHeights.subspan(first, std::min(columns, tileHeights.size() - first));
        const double top = first == 0 ? 0 : layout.height + rowSpacing;
        const double rowHeight = *std::ranges::max_element(row);
        for (std::size_t column = 0; column < row.size(); ++column) {
            const double columnLeft = left + static_cast<double>(column) * (columnWidth + columnSpacing);
            layout.positions.push_back(
                {columnLeft + (columnWidth - tileWidth) / 2, top + (rowHeight - row[column]) / 2});
        }
        layout.height = top + rowHeight;
    }
    return layout;
}

Size preferredStatusItemSize(const StatusItemMeasure& measure, BarDirection bar) {
    const double titleWidth = bar == BarDirection::vertical ? 0 : measure.titleWidth;
    return {measure.symbolSize + titleWidth + 2 * sidePadding, naturalHeight};
}

StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted) {
    const double byHeight = scaleFor(granted.height);
    const double byWidth = granted.width / preferredStatusItemSize(measure).width;
    // A narrower item would have to shrink the symbol to make room beside it.
    const bool isWideEnough = byWidth >= std::min(byHeight, 1.0);
    if (!isWideEnough && measure.titleWidth > 0)
        return layOutBadge(measure, granted);
    StatusItemLayout layout;
    layout.scale = std::max(smallestScale, std::min(byHeight, byWidth));
    placeBeside(layout, measure, granted);
    return layout;
}

/// The badge is in the lower right corner of a centred square, where it hides the least of the symbol. A wide count
/// shrinks to fit.
StatusItemLayout layOutBadge(const StatusItemMeasure& measure, const Size& room) {
    StatusItemLayout layout;
    layout.scale = scaleFor(std::min(room.width, room.height));
    if (measure.titleWidth <= 0) {
        placeBeside(layout, measure, room);
        return layout;
    }
    const double side = naturalHeight * layout.scale;
    const double left = (room.width - side) / 2;
    const double top = (room.height - side) / 2;
    const double inset = badgedSymbolInset * layout.scale;
    layout.symbol = symbolAt(left + inset, top + inset, badgedSymbol * measure.symbolSize * layout.scale);
    const double textScale = badgeFontSize / measure.fontSize;
    const double naturalWidth = std::max(badgeHeight, measure.countWidth * textScale + 2 * badgePadding);
    const double scale = std::min(layout.scale, side / naturalWidth);
    layout.countPlace = CountPlace::badge;
    layout.count = {left + side - naturalWidth * scale, top + side - badgeHeight * scale, naturalWidth * scale,
                    badgeHeight * scale};
    layout.fontSize = badgeFontSize * scale;
    return layout;
}

Rect likelyIconPlace(const Rect& screen, const Rect& usable) {
    constexpr double distanceFromEdge = 24;
    const bool isBarBelowOnly = usable.y == screen.y && usable.bottom() < screen.bottom();
    return {usable.right() - distanceFromEdge, isBarBelowOnly ? usable.bottom() : usable.y, 0, 0};
}

Rect areaBesideBar(const Rect& available, const Rect& bar) {
    // A bar with few icons is nearly a square along any edge; there is always room below or above it.
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

Rect pocketBesideBar(const Rect& icon, const Size& pocket, const Rect& usable) {
    const Rect free = areaBesideBar(usable, barAround(icon, usable));
    const auto inside = [](double middle, double length, double from, double to) {
        const double first = from + pocketMargin;
        return std::clamp(middle - length / 2, first, std::max(first, to - pocketMargin - length));
    };
    return {inside(icon.x + icon.width / 2, pocket.width, free.x, free.right()),
            inside(icon.y + icon.height / 2, pocket.height, free.y, free.bottom()), pocket.width, pocket.height};
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
