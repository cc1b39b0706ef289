// SPDX-License-Identifier: MIT
#include "presentation/Layout.h"
#include "presentation/Movement.h"
#include "presentation/Onboarding.h"
#include "presentation/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace stowpocket {
namespace {

TEST(ByteCountTest, readsAsThePlatformWritesFileSizes) {
    using Case = std::pair<std::int64_t, const char*>;
    for (const auto& [bytes, text] : {Case{0, "Zero KB"},
                                      {1, "1 byte"},
                                      {999, "999 bytes"},
                                      {12'499, "12 KB"},
                                      {12'500, "13 KB"},
                                      {999'500, "1 MB"},
                                      {3'449'999, "3.4 MB"},
                                      {999'949'999, "999.9 MB"},
                                      {999'950'000, "1 GB"},
                                      {1'250'000'000, "1.25 GB"},
                                      {1'050'000'000, "1.05 GB"},
                                      {5'000'000'000'000, "5 TB"},
                                      {std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
                                      {std::numeric_limits<std::int64_t>::min(), "-9.22 EB"}})
        EXPECT_EQ(byteCountText(bytes), text) << bytes;
}

TEST(TilePresentationTest, aFileNameIsOneHonestLine) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [filename, shown] : {
             Case{"two\nlines\t\x7f.txt", "two lines  .txt"},
             Case{"next\u0085line\u2028and\u2029paragraph", "next line and paragraph"},
             Case{"invoice\u202egpj.exe", "invoicegpj.exe"},
             Case{"\u2066isolated\u2069", "isolated"},
             Case{"עברית.txt", "עברית.txt"},
             Case{"👩‍👩‍👧‍👦.png", "👩‍👩‍👧‍👦.png"},
         })
        EXPECT_EQ(displayName(filename), shown);
}

constexpr Size content{320, 200};
constexpr double wholeHeight = 200 + popoverArrowHeight;
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
        EXPECT_EQ(placement.frame, (Rect{left, isBelow ? 28 : 772 - wholeHeight, 320, wholeHeight}));
        EXPECT_EQ(placement.arrowSide, isBelow ? ArrowSide::top : ArrowSide::bottom);
        EXPECT_EQ(placement.arrowTip, arrowTip);
    }
}

TEST(PopoverPlacement, takesTheRoomierSideAndIsCutWhenNeitherIsEnough) {
    const Size tall{320, 5000};
    EXPECT_EQ(placePopover({600, 3, 20, 22}, tall, belowBar, 0).frame, (Rect{450, 28, 320, 772 - popoverMargin}));
    EXPECT_EQ(placePopover({600, 775, 20, 22}, tall, aboveBar, 0).frame,
              (Rect{450, popoverMargin, 320, 772 - popoverMargin}));
    EXPECT_EQ(placePopover({600, 3, 20, 22}, content, {}, 14).window.width, 0) << "a screen that is gone";
}

TEST(PopoverPlacement, shadowNeverLeavesTheScreen) {
    const PopoverPlacement placement = placePopover({1230, 3, 20, 22}, content, belowBar, 14);
    EXPECT_EQ(placement.window,
              (Rect{1280 - popoverMargin - 320 - 14, 28, 320 + 14 + popoverMargin, wholeHeight + 14}));
}

TEST(PopoverPlacement, barsAreLeftFree) {
    constexpr Rect second{1280, 0, 1280, 800};
    EXPECT_EQ(areaBesideBar(second, {1280, 0, 1280, 30}), (Rect{1280, 30, 1280, 770}));
    EXPECT_EQ(areaBesideBar(second, {1280, 770, 1280, 30}), (Rect{1280, 0, 1280, 770}));
    EXPECT_EQ(areaBesideBar(second, {1280, 0, 40, 800}), (Rect{1320, 0, 1240, 800}));
    EXPECT_EQ(areaBesideBar(second, {2520, 0, 40, 800}), (Rect{1280, 0, 1240, 800}));
    for (const Rect& none : {Rect{}, Rect{1280, 0, 1280, 500}, Rect{1280, 0, 500, 800}})
        EXPECT_EQ(areaBesideBar(second, none), second);
    EXPECT_EQ(areaBesideBar(belowBar, {0, 0, 1280, 28}), belowBar) << "known already";
}

TEST(PopoverPlacement, iconThatNobodyPlacesIsLookedForAtTheBar) {
    constexpr Rect screen{1280, 0, 1280, 800};
    EXPECT_EQ(likelyIconPlace(screen, {1280, 0, 1280, 770}).y, 770) << "a bar below";
    EXPECT_EQ(likelyIconPlace(screen, {1280, 30, 1280, 740}), (Rect{2536, 30, 0, 0})) << "bars above and below";
    EXPECT_EQ(likelyIconPlace(screen, screen).y, 0) << "none";
}

TEST(PocketPlace, isBesideTheBarOfTheIcon) {
    constexpr Rect screen{0, 0, 1280, 900};
    constexpr Size pocket{44, 36};
    constexpr Rect below{1135, 868, 24, 24};
    EXPECT_EQ(pocketBesideBar(below, pocket, {0, 0, 1280, 860}), (Rect{1125, 816, 44, 36}));
    EXPECT_EQ(pocketBesideBar(below, pocket, screen), (Rect{1125, 816, 44, 36})) << "a bar that is not known";
    EXPECT_EQ(pocketBesideBar({8, 800, 24, 24}, pocket, screen), (Rect{48, 794, 44, 36})) << "at the left";
    EXPECT_EQ(pocketBesideBar({1248, 4, 24, 24}, pocket, screen), (Rect{1228, 40, 44, 36})) << "in a corner";
    EXPECT_EQ(pocketBesideBar({1280, 0, 0, 0}, pocket, screen), (Rect{1228, 8, 44, 36})) << "no icon";
}

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
    for (const StatusItemMeasure& measure : {empty, counted, hundreds}) {
        const Size wish = preferredStatusItemSize(measure);
        const StatusItemLayout layout = layOutStatusItem(measure, wish);
        EXPECT_EQ(layout.scale, 1);
        EXPECT_EQ(layout.countPlace, measure.titleWidth > 0 ? CountPlace::beside : CountPlace::none);
        expectInside(layout.symbol, wish);
        expectInside(layout.count, wish);
        EXPECT_EQ(layout.symbol.x, wish.width - layout.symbol.x - layout.symbol.width - measure.titleWidth);
    }
    EXPECT_EQ(layOutStatusItem(empty, {44, 44}).symbol, (Rect{6, 6, 32, 32})) << "it grows with the bar";
    EXPECT_GT(layOutStatusItem(counted, {1, 1}).scale, 0);
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
    EXPECT_EQ(layOutStatusItem(hundreds, {43, 43}).countPlace, CountPlace::beside) << "there is room";
    EXPECT_EQ(layOutBadge(empty, {22, 22}), layOutStatusItem(empty, {22, 22}));
}

TEST(AdaptiveGridTest, fillsItsColumnsInRowsAsHighAsTheirHighestTile) {
    constexpr AdaptiveGrid grid{
        .minimumColumnWidth = 80, .maximumColumnWidth = 100, .columnSpacing = 8, .rowSpacing = 8};
    using Case = std::pair<double, std::size_t>;
    for (const auto& [width, columns] : {Case{0, 1}, Case{167, 1}, Case{168, 2}, Case{300, 3}, Case{344, 4}})
        EXPECT_EQ(grid.columnCount(width), columns) << width;
    constexpr std::array<double, 5> heights{100, 110, 100, 90, 100};
    const GridLayout layout = grid.layout(255, 80, heights);  // two columns, not wider than 100
    EXPECT_EQ(layout.positions[0].x, (255 - 208) / 2.0 + 10);
    EXPECT_EQ(layout.positions[0].y, 5) << "in the middle of the row";
    EXPECT_EQ(layout.positions[2].y, 118);
}

using State = OnboardingState;

TEST(AnimationCurveTest, easesAsTheirControlPointsSay) {
    for (int sixteenths = 0; sixteenths <= 16; ++sixteenths) {
        const double parameter = sixteenths / 16.0;
        const double rest = 1 - parameter;
        const double first = 3 * rest * rest * parameter;
        const double second = 3 * rest * parameter * parameter;
        const double cube = parameter * parameter * parameter;
        EXPECT_NEAR(easeInOut(0.42 * first + 0.58 * second + cube), second + cube, 1e-5);
        EXPECT_NEAR(easeOut(0.58 * second + cube), second + cube, 1e-5);
    }
    EXPECT_EQ(easeOut(2), 1);
}

TEST(AnimationCurveTest, theSpringSwingsAndSettles) {
    constexpr Spring spring{.response = 0.6, .dampingFraction = 0.7};
    const double swing = 2 * std::numbers::pi / 0.6 * std::sqrt(1 - 0.7 * 0.7);
    const double overshoot = std::exp(-0.7 * std::numbers::pi / std::sqrt(1 - 0.7 * 0.7));
    EXPECT_EQ(spring.position(0), 0);
    EXPECT_NEAR(spring.position(std::numbers::pi / swing), 1 + overshoot, 1e-9);
    for (int percent = 0; percent < 100; ++percent)
        EXPECT_NEAR(spring.position(spring.settlingTime() + percent / 100.0), 1, 1e-3);
}

TEST(OnboardingTimelineTest, goesStepByStep) {
    struct Sample {
        double State::*property;
        double shown;  // seconds
        std::optional<Seconds> pressed;
        double value;
    };
    for (const auto& [property, shown, pressed, value] : {
             Sample{&State::appeared, 0.1, {}, easeOut(0.1 / 0.3)},
             Sample{&State::iconLanded, 0.2, {}, 0},
             Sample{&State::iconLanded, 0.5, {}, Spring{0.6, 0.7}.position(0.3)},
             Sample{&State::titleVisible, 0.7, {}, easeOut(0.5)},
             Sample{&State::bullet3Visible, 1.1, {}, easeOut(0.1 / 0.35)},
             Sample{&State::glowPulse, 1.3, {}, 0},
             Sample{&State::glowPulse, 1.8, {}, easeInOut(0.25)},
             Sample{&State::glowPulse, 4.8, {}, easeInOut(0.25)},
             Sample{&State::circleTrim, 60, {}, 0},
             Sample{&State::currentScreen, 0.8, Seconds(0.1), easeInOut(0.25)},
             Sample{&State::checkmarkTrim, 1.75, Seconds(1.05), easeOut(0.5)},
             Sample{&State::glowOpacity, 1.9, Seconds(1.2), 0.3},
             Sample{&State::glowOpacity, 4.3, Seconds(3.6), 0.3},
             Sample{&State::headlineVisible, 2.2, Seconds(1.5), easeOut(0.5)},
             Sample{&State::button2Visible, 3.0, Seconds(2.25), easeInOut(0.5)},
             Sample{&State::shimmerPhase, 5.5, Seconds(4.8), 0.25},
             Sample{&State::bullet3Visible, 2.7, Seconds(2.0), 1},
         })
        EXPECT_NEAR(onboardingState({Seconds(shown), pressed}).*property, value, 1e-6) << shown;
}

TEST(OnboardingTimelineTest, restsWhileNothingMoves) {
    const auto wait = [](double shown, std::optional<Seconds> pressed) {
        return timeToNextFrame({Seconds(shown), pressed}).value().count();
    };
    EXPECT_NEAR(wait(0.1, {}), 1 / 60.0, 1e-9);
    EXPECT_NEAR(wait(0.8, Seconds(0.42)), 0.08, 1e-9) << "until the circle is drawn";
    EXPECT_NEAR(wait(20, Seconds(10)), 1 / 30.0, 1e-9);
}

TEST(OnboardingPresentationTest, eachPartGoesFromItsStartToItsPlace) {
    const OnboardingPresentation start = onboardingPresentation({});
    const OnboardingPresentation end = onboardingPresentation({.iconLanded = 1,
                                                               .bullet2Visible = 1,
                                                               .buttonVisible = 1,
                                                               .glowPulse = 1,
                                                               .glowOpacity = 1,
                                                               .button2Visible = 1});
    for (const auto& [first, last, startsAt, endsAt] : {std::tuple{start.emblemOffset, end.emblemOffset, -30.0, 0.0},
                                                        {start.emblemGlow, end.emblemGlow, 0.08, 0.25},
                                                        {start.points[0].offset, end.points[0].offset, 8.0, 8.0},
                                                        {start.points[1].offset, end.points[1].offset, 8.0, 0.0},
                                                        {start.getStarted.scale, end.getStarted.scale, 0.9, 1.02},
                                                        {start.startUsing.scale, end.startUsing.scale, 0.88, 1.0},
                                                        {start.ringOpacity, end.ringOpacity, 0.09, 0.3}}) {
        EXPECT_DOUBLE_EQ(first, startsAt);
        EXPECT_DOUBLE_EQ(last, endsAt);
    }
}

TEST(OnboardingPresentationTest, slidesFromScreenToScreenAndLightOverTheButton) {
    const OnboardingPresentation switching = onboardingPresentation({.currentScreen = 0.25});
    EXPECT_EQ(switching.welcome.shift, -0.25);
    EXPECT_EQ(switching.welcome.opacity, 0.75);
    EXPECT_EQ(switching.closing.shift, 0.75);
    EXPECT_EQ(switching.closing.opacity, 0.25);
    EXPECT_DOUBLE_EQ(shimmer(200, 0).leadingEdge, -40) << "half of it on the button";
    EXPECT_DOUBLE_EQ(shimmer(200, 1).leadingEdge, 240) << "gone";
}

TEST(OnboardingCheckmarkTest, isDrawnByShareOfItsLength) {
    const Polyline mark = onboardingCheckmark(72, 72);
    EXPECT_TRUE(trimmed(mark, 0).empty());
    const double first = std::hypot(14.4, 10.8);
    const double whole = first + std::hypot(23.76, 25.2);
    for (const auto& [share, x, y] : {std::tuple{1e-12, 15.84, 36.0},
                                      {first / whole / 2, 23.04, 41.4},
                                      {(first / whole + 1) / 2, (30.24 + 54) / 2, (46.8 + 21.6) / 2},
                                      {1.0, 54.0, 21.6}}) {
        EXPECT_NEAR(trimmed(mark, share).back().x, x, 1e-9);
        EXPECT_NEAR(trimmed(mark, share).back().y, y, 1e-9);
    }
}

}  // namespace
}  // namespace stowpocket
