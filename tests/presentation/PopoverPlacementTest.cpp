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
    EXPECT_EQ(placement.arrowTip, 160);
}

TEST(PopoverPlacement, staysOnTheScreenWithTheArrowAtTheIcon) {
    const PopoverPlacement right = placePopover({1230, 3, 20, 22}, content, belowBar, 0);
    EXPECT_EQ(right.frame.right(), 1280 - popoverMargin);
    EXPECT_EQ(right.frame.x + right.arrowTip, 1240);

    const PopoverPlacement corner = placePopover({1256, 3, 24, 22}, content, belowBar, 0);
    EXPECT_EQ(corner.frame.right(), 1280 - popoverMargin);
    EXPECT_EQ(corner.arrowTip, 320 - popoverCornerRadius - popoverArrowWidth / 2) << "beside the rounded corner";
    EXPECT_GE(corner.frame.x + corner.arrowTip, 1256) << "under the icon in the corner";
    EXPECT_EQ(placePopover({-30, 3, 20, 22}, content, belowBar, 0).frame.x, popoverMargin);
}

TEST(PopoverPlacement, opensUpwardFromABarAtTheBottom) {
    const PopoverPlacement placement = placePopover({600, 775, 20, 22}, content, aboveBar, 0);
    EXPECT_EQ(placement.arrowSide, ArrowSide::bottom);
    EXPECT_EQ(placement.frame.bottom(), 772);
}

TEST(PopoverPlacement, takesTheRoomierSideAndIsCutWhenNeitherIsEnough) {
    const Size tall{320, 5000};
    EXPECT_EQ(placePopover({600, 3, 20, 22}, tall, belowBar, 0).frame, (Rect{450, 28, 320, 772 - popoverMargin}));
    EXPECT_EQ(placePopover({600, 775, 20, 22}, tall, aboveBar, 0).frame,
              (Rect{450, popoverMargin, 320, 772 - popoverMargin}));
    EXPECT_EQ(placePopover({10, 3, 20, 22}, content, {0, 28, 200, 772}, 0).frame.width, 200);
}

TEST(PopoverPlacement, shadowNeverLeavesTheScreen) {
    const PopoverPlacement placement = placePopover({1230, 3, 20, 22}, content, belowBar, 14);
    EXPECT_EQ(placement.window, (Rect{1280 - popoverMargin - 320 - 14, 28, 320 + 14 + popoverMargin, height + 14}));
    EXPECT_EQ(placement.frame, placePopover({1230, 3, 20, 22}, content, belowBar, 0).frame);
}

TEST(PopoverPlacement, barsAreLeftFree) {
    constexpr Rect second{1280, 0, 1280, 800};
    EXPECT_EQ(areaBesideBar(second, {1280, 0, 1280, 30}), (Rect{1280, 30, 1280, 770}));
    EXPECT_EQ(areaBesideBar(second, {1280, 770, 1280, 30}), (Rect{1280, 0, 1280, 770}));
    EXPECT_EQ(areaBesideBar(second, {1280, 0, 40, 800}), (Rect{1320, 0, 1240, 800}));
    EXPECT_EQ(areaBesideBar(second, {2520, 0, 40, 800}), (Rect{1280, 0, 1240, 800}));
    for (const Rect& none : {Rect{}, Rect{1280, 0, 1280, 500}, Rect{1280, 0, 500, 800}})
        EXPECT_EQ(areaBesideBar(second, none), second);
    EXPECT_EQ(areaBesideBar(second, {2536, 0, 24, 28}), (Rect{1280, 28, 1280, 772})) << "with one icon";
    EXPECT_EQ(areaBesideBar(belowBar, {0, 0, 1280, 28}), belowBar) << "known already";
}

TEST(PopoverPlacement, survivesAScreenThatIsGone) {
    const PopoverPlacement placement = placePopover({600, 3, 20, 22}, content, {}, 14);
    EXPECT_EQ(placement.frame.width, 0);
    EXPECT_EQ(placement.window.width, 0);
}

}  // namespace
}  // namespace stowpocket
