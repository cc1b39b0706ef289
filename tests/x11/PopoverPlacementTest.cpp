// SPDX-License-Identifier: MIT
#include "presentation/PopoverPlacement.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr Size content{320, 200};
constexpr double height = 200 + popoverArrowHeight;
/// A screen of 1280 x 800 with a bar of 28 at its top, and at its bottom.
constexpr Rect belowBar{0, 28, 1280, 772};
constexpr Rect aboveBar{0, 0, 1280, 772};

TEST(PopoverPlacement, hangsCentredBelowTheIcon) {
    const PopoverPlacement placement = placePopover({600, 3, 20, 22}, content, belowBar, 0);
    EXPECT_EQ(placement.frame, (Rect{450, 28, 320, height}));
    EXPECT_EQ(placement.arrowSide, ArrowSide::top);
    EXPECT_EQ(placement.arrowOffset, 160);
}

TEST(PopoverPlacement, staysOnTheScreenWithTheArrowAtTheIcon) {
    const PopoverPlacement right = placePopover({1230, 3, 20, 22}, content, belowBar, 0);
    EXPECT_EQ(right.frame.right(), 1280);
    EXPECT_EQ(right.frame.x + right.arrowOffset, 1240);

    const PopoverPlacement corner = placePopover({1270, 3, 20, 22}, content, belowBar, 0);
    EXPECT_EQ(corner.arrowOffset, 320 - popoverCornerRadius - popoverArrowWidth / 2);
    EXPECT_EQ(placePopover({-30, 3, 20, 22}, content, belowBar, 0).frame.x, 0);
}

TEST(PopoverPlacement, opensUpwardFromABarAtTheBottom) {
    const PopoverPlacement placement = placePopover({600, 775, 20, 22}, content, aboveBar, 0);
    EXPECT_EQ(placement.arrowSide, ArrowSide::bottom);
    EXPECT_EQ(placement.frame.bottom(), 772);
}

TEST(PopoverPlacement, takesTheRoomierSideAndIsCutWhenNeitherIsEnough) {
    const Size tall{320, 5000};
    EXPECT_EQ(placePopover({600, 3, 20, 22}, tall, belowBar, 0).frame, (Rect{450, 28, 320, 772}));
    EXPECT_EQ(placePopover({600, 775, 20, 22}, tall, aboveBar, 0).frame, (Rect{450, 0, 320, 772}));
    EXPECT_EQ(placePopover({10, 3, 20, 22}, content, {0, 28, 200, 772}, 0).frame.width, 200);
}

TEST(PopoverPlacement, shadowNeverLeavesTheScreen) {
    const PopoverPlacement placement = placePopover({1230, 3, 20, 22}, content, belowBar, 14);
    EXPECT_EQ(placement.window, (Rect{960 - 14, 28, 320 + 14, height + 14}));
    EXPECT_EQ(placement.frame, placePopover({1230, 3, 20, 22}, content, belowBar, 0).frame);
}

TEST(PopoverPlacement, survivesAScreenThatIsGone) {
    const PopoverPlacement placement = placePopover({600, 3, 20, 22}, content, {}, 14);
    EXPECT_EQ(placement.frame.width, 0);
    EXPECT_EQ(placement.window.width, 0);
}

}  // namespace
}  // namespace stowpocket
