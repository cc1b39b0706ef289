// SPDX-License-Identifier: MIT
// What lies between the system's pictures and colours and those of the toolkit.
#include "platform/macos/MacPictures.h"
#include "platform/macos/QtBridge.h"
#include "views/controls/Theme.h"

#include <gtest/gtest.h>

namespace stowpocket {

using Rgba = std::array<double, 4>;

/// A system that has one colour.
std::optional<Rgba> rgbaOf(MacColor color, bool isDark) {
    if (color == MacColor::secondaryLabel)
        return isDark ? Rgba{1, 1, 1, 0.5} : Rgba{0, 0, 0, 0.5};
    return std::nullopt;
}
std::optional<Pixels> systemSymbolPixels(const SymbolPicture&, int) {
    return std::nullopt;
}

namespace {

TEST(SystemColorsTest, areThoseOfTheWindowsAppearance) {
    const QPalette light(Qt::white);
    const QPalette dark = Theme::darkPalette();
    EXPECT_EQ(Theme::color(ColorRole::secondary, light).rgba(), qRgba(0, 0, 0, 128));
    EXPECT_EQ(Theme::color(ColorRole::secondary, dark, 0.5).rgba(), qRgba(255, 255, 255, 64));
    EXPECT_GT(Theme::color(ColorRole::orange, dark).red(), 200) << "the program's own where the system has none";
}

TEST(QtPixelsTest, keepsEveryPixelBothWays) {
    QImage image(3, 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(255, 128, 0));
    const Pixels pixels = pixelsOfImage(image);
    EXPECT_EQ(Bytes(pixels.bytes.begin(), pixels.bytes.begin() + 4), (Bytes{0, 128, 255, 255}));
    EXPECT_EQ(qImageOf(pixels), image);
    EXPECT_TRUE(qImageOf({3, 2, Bytes(23)}).isNull()) << "one byte is missing";
}

}  // namespace
}  // namespace stowpocket
