// SPDX-License-Identifier: MIT
#include "presentation/StatusItemLayout.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// The usual height of an icon's place in a bar; other heights scale everything.
constexpr double naturalHeight = 22;
constexpr double sidePadding = 3;
constexpr double smallestScale = 0.4;
constexpr double largestScale = 3;

constexpr double badgeFontSize = 9;
constexpr double badgeHeight = 11;
constexpr double badgePadding = 2.5;

void placeBeside(StatusItemLayout& layout, const StatusItemMeasure& measure, const Size& granted) {
    const double side = measure.symbolSize * layout.scale;
    const double titleWidth = measure.titleWidth * layout.scale;
    layout.symbol = {(granted.width - side - titleWidth) / 2, (granted.height - side) / 2, side, side};
    layout.fontSize = measure.fontSize * layout.scale;
    if (titleWidth > 0) {
        layout.countPlace = CountPlace::beside;
        layout.count = {layout.symbol.right(), 0, titleWidth, granted.height};
    }
}

/// In the lower right corner of the square, where it hides the least of the symbol; a wide count shrinks to fit.
void placeBadge(StatusItemLayout& layout, const StatusItemMeasure& measure, const Size& granted) {
    const double side = measure.symbolSize * layout.scale;
    layout.symbol = {(granted.width - side) / 2, (granted.height - side) / 2, side, side};
    const double textScale = badgeFontSize / measure.fontSize;
    const double naturalWidth = std::max(badgeHeight, measure.countWidth * textScale + 2 * badgePadding);
    const double scale = std::min(layout.scale, granted.width / naturalWidth);
    const Size badge{naturalWidth * scale, badgeHeight * scale};
    layout.countPlace = CountPlace::badge;
    layout.count = {granted.width - badge.width, granted.height - badge.height, badge.width, badge.height};
    layout.fontSize = badgeFontSize * scale;
}

}  // namespace

Size statusItemWish(const StatusItemMeasure& measure) {
    return {measure.symbolSize + measure.titleWidth + 2 * sidePadding, naturalHeight};
}

StatusItemLayout layOutStatusItem(const StatusItemMeasure& measure, const Size& granted) {
    const Size wish = statusItemWish(measure);
    StatusItemLayout layout;
    const double byHeight = std::clamp(granted.height / wish.height, smallestScale, largestScale);
    const double byWidth = granted.width / wish.width;
    // In a square the symbol would have to shrink to make room beside it.
    const bool isWideEnough = byWidth >= std::min(byHeight, 1.0) && granted.width != granted.height;
    if (isWideEnough || measure.titleWidth <= 0) {
        layout.scale = std::max(smallestScale, std::min(byHeight, byWidth));
        placeBeside(layout, measure, granted);
    } else {
        layout.scale =
            std::clamp(std::min(granted.width, granted.height) / naturalHeight, smallestScale, largestScale);
        placeBadge(layout, measure, granted);
    }
    return layout;
}

}  // namespace stowpocket
