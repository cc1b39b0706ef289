// SPDX-License-Identifier: MIT
#include "presentation/StatusItemLayout.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr StatusItemMeasure empty{16, 9, 0, 0};
constexpr StatusItemMeasure counted{16, 9, 9, 6};
constexpr StatusItemMeasure hundreds{16, 9, 21, 18};

/// Every room that a bar might grant must show the whole symbol and the whole count.
void expectInside(const Rect& rect, const Size& room) {
    EXPECT_GE(rect.x, 0);
    EXPECT_GE(rect.y, 0);
    EXPECT_LE(rect.right(), room.width + 1e-9);
    EXPECT_LE(rect.bottom(), room.height + 1e-9);
}

TEST(StatusItemLayout, asksForTheRoomThatItThenUses) {
    EXPECT_EQ(statusItemWish(empty), (Size{22, 22}));
    for (const StatusItemMeasure& measure : {empty, counted, hundreds}) {
        const Size wish = statusItemWish(measure);
        const StatusItemLayout layout = layOutStatusItem(measure, wish);
        EXPECT_EQ(layout.scale, 1);
        EXPECT_EQ(layout.countPlace, measure.titleWidth > 0 ? CountPlace::beside : CountPlace::none);
        expectInside(layout.symbol, wish);
        expectInside(layout.count, wish);
        EXPECT_EQ(layout.symbol.x, wish.width - layout.symbol.x - layout.symbol.width - measure.titleWidth);
    }
}

TEST(StatusItemLayout, makesABadgeOfTheCountInASquare) {
    for (const double side : {12.0, 16.0, 22.0, 24.0, 48.0}) {
        for (const StatusItemMeasure& measure : {counted, hundreds}) {
            const StatusItemLayout layout = layOutStatusItem(measure, {side, side});
            EXPECT_EQ(layout.countPlace, CountPlace::badge) << side;
            expectInside(layout.symbol, {side, side});
            expectInside(layout.count, {side, side});
            EXPECT_GE(layout.count.width, measure.countWidth * layout.fontSize / measure.fontSize);
        }
    }
    EXPECT_EQ(layOutStatusItem(empty, {22, 22}).countPlace, CountPlace::none);
}

TEST(StatusItemLayout, growsAndShrinksWithTheBar) {
    EXPECT_EQ(layOutStatusItem(empty, {44, 44}).symbol, (Rect{6, 6, 32, 32}));
    EXPECT_EQ(layOutStatusItem(empty, {22, 44}).symbol.width, 16);
    EXPECT_LT(layOutStatusItem(counted, {31, 16}).symbol.height, 16);
    EXPECT_EQ(layOutStatusItem(counted, {31, 16}).countPlace, CountPlace::beside);
    EXPECT_GT(layOutStatusItem(counted, {1, 1}).scale, 0);
}

}  // namespace
}  // namespace stowpocket
