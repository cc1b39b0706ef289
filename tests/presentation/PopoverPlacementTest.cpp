// SPDX-License-Identifier: MIT
#include "presentation/Layout.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr Size content{320, 200};
constexpr double height = 200 + popoverArrowHeight;
/// A screen of 1280 x 800 with a bar of 28 at its top, and at its bottom.
constexpr Rect belowBar{0, 28, 1280, 772};
constexpr Rect aboveBar{0, 0, 1280, 772};

TEST(PopoverPlacement, hangsCentredFromTheBarButStaysOnTheScreenWithTheArrowAtTheIcon) {
    constexpr double farRight = 1280 - popoverMargin - 320;
    constexpr double besideTheCorner = 320 - popoverCornerRadius - popoverArrowWidth / 2;
    for (const auto& [icon, screen, left, arrowTip] : {std::tuple(Rect{600, 3, 20, 22}, belowBar, 450.0, 160.0),
                                                       {{600, 775, 20, 22}, aboveBar, 450.0, 160.0},
                                                       {{1230, 3, 20, 22}, belowBar, farRight, 1240 - farRight},
                                                       {{1256, 3, 24, 22}, belowBar, farRight, besideTheCorner}}) {
        const PopoverPlacement placement = placePopover(icon, content, screen, 0);
        const bool isBelow = screen == belowBar;
        EXPECT_EQ(placement.frame, (Rect{left, isBelow ? 28 : 772 - height, 320, height}));
        EXPECT_EQ(placement.arrowSide, isBelow ? ArrowSide::top : ArrowSide::bottom);
        EXPECT_EQ(placement.arrowTip, arrowTip);
    }
    EXPECT_GE(farRight + besideTheCorner, 1256) << "under the icon in the corner";
    EXPECT_EQ(placePopover({-30, 3, 20, 22}, content, belowBar, 0).frame.x, popoverMargin);
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
