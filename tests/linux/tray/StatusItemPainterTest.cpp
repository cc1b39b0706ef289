// SPDX-License-Identifier: MIT
#include "platform/linux/tray/StatusItemPainter.h"
#include "support/ComesTrue.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace stowpocket {
namespace {

TEST(StatusItemPainterTest, readsTheAnnouncedForeground) {
    constexpr std::array<std::uint32_t, 12> announced{0x1234, 0xABCD, 0xFFFF};
    EXPECT_EQ(announcedForeground(announced), QColor(0x12, 0xAB, 0xFF));
    EXPECT_EQ(announcedForeground(std::span(announced).first(2)), std::nullopt);
}

TEST(StatusItemPainterTest, standsOutFromTheBar) {
    const QColor white(Qt::white);
    EXPECT_EQ(readableOn({50, 50, 50}), white);
    EXPECT_EQ(readableOn({0, 0, 255}), white);
    EXPECT_NE(readableOn({238, 238, 238}), white);
    EXPECT_NE(readableOn({0, 255, 0}), white);
}

TEST(StatusItemPainterTest, theLatestCountWaitsForTheFontAndLaterOnesDoNot) {
    std::string drawn;
    CountFont font;
    font.whenLoaded([&] { drawn += "first"; });
    font.whenLoaded([&] { drawn += "second"; });
    EXPECT_EQ(drawn, "");
    EXPECT_TRUE(comesTrue([&] { return drawn == "second"; }));
    font.whenLoaded([&] { drawn = "third"; });
    EXPECT_EQ(drawn, "third");

    CountFont forgotten;
    forgotten.whenLoaded([] { FAIL() << "after its end"; });
}

}  // namespace
}  // namespace stowpocket
