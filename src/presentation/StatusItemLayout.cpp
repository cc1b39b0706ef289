// SPDX-License-Identifier: MIT
#include "presentation/StatusItemLayout.h"

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

/// The usual height of an icon's place in a bar; other heights scale everything.
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

/// On whole points, so that its lines stay sharp.
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

}  // namespace

Size statusItemWish(const StatusItemMeasure& measure, BarDirection bar) {
    const double titleWidth = bar == BarDirection::vertical ? 0 : measure.titleWidth;
    return {measure.symbolSize + titleWidth + 2 * sidePadding, naturalHeight};
}

StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted) {
    const double byHeight = scaleFor(granted.height);
    const double byWidth = granted.width / statusItemWish(measure).width;
    // Otherwise the symbol would have to shrink to make room beside it.
    const bool isWideEnough = byWidth >= std::min(byHeight, 1.0);
    if (!isWideEnough && measure.titleWidth > 0)
        return layOutBadge(measure, granted);
    StatusItemLayout layout;
    layout.scale = std::max(smallestScale, std::min(byHeight, byWidth));
    placeBeside(layout, measure, granted);
    return layout;
}

/// In the lower right corner of a square in the middle, where it hides the least of the symbol; a wide count shrinks
/// to fit.
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

}  // namespace stowpocket
