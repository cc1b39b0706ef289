// SPDX-License-Identifier: MIT
#include "presentation/Layout.h"

#include <gtest/gtest.h>

#include <algorithm>

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
    EXPECT_EQ(preferredStatusItemSize(empty), (Size{22, 22}));
    for (const StatusItemMeasure& measure : {empty, counted, hundreds}) {
        const Size wish = preferredStatusItemSize(measure);
        const StatusItemLayout layout = layOutStatusItem(measure, wish);
        EXPECT_EQ(layout.scale, 1);
        EXPECT_EQ(layout.countPlace, measure.titleWidth > 0 ? CountPlace::beside : CountPlace::none);
        expectInside(layout.symbol, wish);
        expectInside(layout.count, wish);
        EXPECT_EQ(layout.symbol.x, wish.width - layout.symbol.x - layout.symbol.width - measure.titleWidth);
    }
}

/// How much of the symbol the count lies on.
double hiddenShare(const StatusItemLayout& layout) {
    const Rect& symbol = layout.symbol;
    const double width = std::min(symbol.right(), layout.count.right()) - std::max(symbol.x, layout.count.x);
    const double height = std::min(symbol.bottom(), layout.count.bottom()) - std::max(symbol.y, layout.count.y);
    return std::max(0.0, width) * std::max(0.0, height) / (symbol.width * symbol.height);
}

TEST(StatusItemLayout, makesABadgeOfTheCountWhereThereIsNoRoomBesideTheSymbol) {
    for (const Size room : {Size{12, 12}, {16, 16}, {22, 22}, {24, 24}, {30, 30}, {22, 38}}) {
        for (const StatusItemMeasure& measure : {counted, hundreds}) {
            const StatusItemLayout layout = layOutStatusItem(measure, room);
            EXPECT_EQ(layout.countPlace, CountPlace::badge) << room.width;
            expectInside(layout.symbol, room);
            expectInside(layout.count, room);
            EXPECT_GE(layout.count.width, measure.countWidth * layout.fontSize / measure.fontSize);
            EXPECT_LT(hiddenShare(layout), 0.35) << room.width;
        }
    }
    EXPECT_EQ(layOutStatusItem(empty, {22, 22}).countPlace, CountPlace::none);
    EXPECT_EQ(layOutStatusItem(hundreds, {43, 43}).countPlace, CountPlace::beside) << "there is room";
    EXPECT_EQ(layOutBadge(counted, {48, 48}).countPlace, CountPlace::badge) << "others may shrink it";
    EXPECT_EQ(layOutBadge(empty, {22, 22}), layOutStatusItem(empty, {22, 22}));
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
